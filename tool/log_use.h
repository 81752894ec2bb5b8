#pragma once
// What a cutlist found in its logging table.

#include "embedded/warning.h"
#include "host/edit.h"
#include "tool/channels.h"

#include <string>
#include <vector>

namespace tool {

/// Throws `JobError` unless the file is a logging table.
void check_is_log_table(const std::string& path);

/// What is wrong with the kind of film that a logging table names, in its head or, before that, in its first row; empty
/// where it is one.
std::string fault_of_film(const std::string& log);

/// Warnings about the reels of an edit, on its channels of a kind, whose timecodes count otherwise
/// than the rows of these reels: numbers are looked up by frame numbers alone.
embedded::Warnings warnings_of_counting(const std::string& log, const EditPtr& edit, ChannelKind kind);

/// Warnings about the events of a table (.cdb) that was made with a logging table: those without a row.
embedded::Warnings warnings_of_missing_rows(const std::string& log, const std::string& table);

} // namespace tool
