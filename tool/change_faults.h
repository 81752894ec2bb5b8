#pragma once
// What an error of the comparison doesn't say: which of the tables it means, and what is wrong with that.

#include <string>
#include <vector>

namespace tool {

/// The line that tells an error: its text, whole again where a long path had it cut, with the tables and the cause.
std::string told_error(const std::string& error, const std::vector<std::string>& reels);

} // namespace tool
