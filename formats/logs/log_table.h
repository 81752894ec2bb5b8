#pragma once
// Rows of logs as film logging tables, and back.

#include "formats/logs/log_row.h"
#include "host/recdb.h"

namespace formats {

/// A table is read up to as many rows.
constexpr std::size_t most_table_rows = 32000;
/// Of the timecodes of a table whose header names none.
constexpr const char* unnamed_standard = "24fps";

/// Appends the rows to a new logging table and takes its header from the first of them. The table's shots are then what
/// the rows say: each row names its own standards, and its pulldown phase at midnight.
void fill_table(recdb& table, const std::vector<LogRow>& rows);

/// The first bytes of a record table.
bool is_table(std::string_view bytes);
/// The rows of a saved logging table, with their lines in the file. Tables keep no key number of the end.
Log read_log_table(std::string_view bytes, const std::string& path);

} // namespace formats
