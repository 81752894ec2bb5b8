#pragma once
// Shows where two texts part.

#include <string>

namespace golden {

/// Empty when the texts are equal; else their first difference as a unified diff, with control characters
/// written out and no more than a dozen lines of each side.
std::string first_difference(const std::string& expected, const std::string& made);

} // namespace golden
