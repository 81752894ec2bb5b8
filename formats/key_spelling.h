#pragma once
// Key numbers in the spellings that other programs and laboratories write. `plain_key_number` reads all of them.

#include "host/labels.h"

#include <string>
#include <string_view>

namespace formats {

/// What stands between the groups of a number: maker, stock, roll, count, frames.
struct KeySpelling {
    const char* name;
    const char* like; ///< an example
    const char *behind_maker, *behind_stock, *behind_roll, *behind_count;
    bool bracketed; ///< the perforation, as "(1)" in place of ".1"
};

/// Our own: "KJ1234567890+12".
const KeySpelling& plain_spelling();
/// Null where there is none of that name.
const KeySpelling* key_spelling_named(std::string_view name);
/// "plain, dashed, ...".
std::vector<std::string> key_spelling_names();

/// A number of another form than ten characters and digits has no groups, and stays.
std::string spelled(LabelPoint key, const KeySpelling& spelling);

} // namespace formats
