#pragma once
// What is asked of the logging table of a cutlist.

#include <string>

namespace tool {

/// What is wrong with the kind of film that a logging table names, in its head or, before that, in its first row; empty
/// where it is one.
std::string fault_of_film(const std::string& log);

} // namespace tool
