#pragma once
// What may stand behind each option, for the completion of command lines.
//
// An option that takes one of some words needs a row in tool/value_words.cpp; a test tells which one lacks it, and
// which words the command doesn't take. Others go by what the help calls their value, as FILE.

#include "tool/option_table.h"

#include <string>
#include <vector>

namespace tool {

enum class ValueKind {
    free,    ///< a name or a number that nobody can foresee
    words,   ///< one of the words
    list,    ///< some of them, parted by commas
    keys,    ///< one of them, "=" and a value
    files,   ///< a file with one of these extensions, "otio" and so on; any file where there are none
    folders, ///< a folder
};

struct ValueWords {
    ValueKind kind = ValueKind::free;
    std::vector<std::string> words;
};

ValueWords value_words(const std::string& command, const Option& option);

} // namespace tool
