#pragma once
// Opens logs and logging tables for the commands.

#include "embedded/warning.h"
#include "formats/logs/log_row.h"
#include "quillbrook/logging_tables.h"
#include "tool/job_parts.h"

#include <memory>

namespace tool {

/// A kind of key numbers as people name it: "35mm,3perf", "16mm", "35mm-4p". Throws `UsageError`.
int parse_film_kind(const std::string& text);

LightweightString<wchar_t> wide_path(const std::string& path);

/// The rows of all files in their order; what couldn't be used goes to `warnings`. Throws `JobError` when a file
/// can't be read at all.
std::vector<formats::LogRow> open_logs(const LogInput& input, embedded::Warnings& warnings);

/// From here on tables are read that don't fit their seal; which of `paths` don't is told as a warning.
void read_in_spite_of_seals(const std::vector<std::string>& paths, bool quiet);

/// A saved logging table. Throws `JobError`.
std::unique_ptr<filmdb> open_log_table(const std::string& path);

/// Adds the rows of `other`, which is the table of `path`, and tells what they can't say there. Throws `JobError`.
void merge_log_table(filmdb& table, filmdb& other, const std::string& path, bool quiet);

/// Everything about a table's file that can be refused before a job begins. Throws `JobError`.
void check_table_output(const std::vector<std::string>& inputs, const Output& output);

/// Saves a table to the file of the output. Throws `JobError`.
void save_log_table(filmdb& table, const Output& output);

} // namespace tool
