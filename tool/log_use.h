#pragma once
// What a cutlist found in its logging table.

#include <string>
#include <vector>

namespace tool {

/// Throws `JobError` unless the file is a logging table.
void check_is_log_table(const std::string& path);

/// Warnings about the events of a table (.cdb) that was made with a logging table: those without a row, and
/// timecodes that count otherwise than the rows.
std::vector<std::string> warnings_of_log(const std::string& log, const std::string& table);

} // namespace tool
