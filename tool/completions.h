#pragma once
// Completion of command lines for shells, from the tables of the options.

#include <string>

namespace tool {

/// Each is a script that the shell loads by itself from where it looks for those of "quillbrook".
std::string bash_completion();
std::string zsh_completion();
std::string fish_completion();

} // namespace tool
