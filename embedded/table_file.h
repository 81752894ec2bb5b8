#pragma once
// The text form of a record table.
//
//   %recdb 2
//   name=value          one line a parameter
//                       an empty line
//   event   track       column names
//   a       t           column types
//   001     1           one line a record
//   %end 1 4A3B2C1D     the seal: the number of records, and a checksum of all bytes ahead of this line
//
// Names, types and fields are parted by tabs. A backslash, tab, LF and CR within them are written \\, \t, \n
// and \r, and "=" in the name of a parameter \=. A table that begins with "%recdb 1" has no seal.

#include "embedded/table_data.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace embedded {

/// Reads a table with at most `max_records` records. False, with the table empty and the reason in `why`, when the
/// bytes are no table, or don't fit their seal and the setting "read_broken_tables" isn't 1. Of a table without a
/// seal a last line without its line end is taken as it stands.
bool read_table(std::string_view bytes, std::size_t max_records, TableData* table, std::string* why = nullptr);
std::string table_text(const TableData& table);
/// The lines of the records alone, all of them, in the present sort order.
std::string record_lines(const TableData& table);

} // namespace embedded
