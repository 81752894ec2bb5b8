#pragma once
// Where the pieces of each format lie. None of these refuses anything: what doesn't look as it should gives other
// pieces.

#include "fuzz/mutators/structure.h"

namespace fuzz {

Structure json_structure(std::string_view text);
Structure xml_structure(std::string_view text);
/// Lines of words between blanks: edit lists, logs, arguments, reports.
Structure line_structure(std::string_view text);
/// Lines of fields between `mark`s, where fields of one column stand well in each other's place: tables and logs.
Structure column_structure(std::string_view text, char mark);

} // namespace fuzz
