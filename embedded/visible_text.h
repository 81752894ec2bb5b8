#pragma once
// The door for texts that come from outside: edits, logs, tables that others made, paths in messages. A control
// character in one of them would add rows and pages to a list, or move the cursor of a terminal.

#include "embedded/warning.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace embedded {

/// Line ends, tabs, escapes and all other control characters become the signs for them, as U+240A for a line end. All
/// else stays, bytes that are no UTF-8 too. True where there were any.
bool make_visible(std::string& text);
std::string visible(std::string text);

/// Names are cut at that many bytes when they come in; 65536 where nothing else is set.
void set_longest_name(std::size_t bytes);

/// What becomes of a name at the door.
struct Received {
    bool control_characters = false; ///< they are signs now
    bool cut = false;
    bool page_marks = false; ///< it holds "|d" or "|p", which lists print as the date or the page number

    bool is_plain() const { return !control_characters && !cut && !page_marks; }
};
Received receive(std::string& name);
/// A name that `receive` would surely leave as it is and tell nothing of; most are, and no copy is needed to know.
bool is_surely_plain(std::string_view name);
/// The same of all texts in a table's file, which tabs and line ends part.
bool are_surely_plain(std::string_view lines);
/// The same with a line for each of these; `owner` begins them, as "source".
void receive(std::string& name, const std::string& owner, Warnings& warnings);
/// What there is to tell of a name; nothing of a plain one.
Warnings told(const Received& what, const std::string& owner, const std::string& name);

} // namespace embedded
