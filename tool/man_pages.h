#pragma once
// Manual pages of the command and of each of its commands, from the tables that its help is made from.

#include "tool/command.h"

#include <string>
#include <vector>

namespace tool {

struct ManPage {
    std::string name; ///< "quillbrook-log-import", in section 1
    std::string text; ///< for the `man` macros
};

/// That of the whole first.
std::vector<ManPage> man_pages();

} // namespace tool
