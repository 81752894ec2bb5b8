#pragma once
// FLEx files of telecine sessions: fixed columns, each line a record that begins with a code of three digits.

#include "formats/logs/log_row.h"
#include "formats/text_lines.h"

namespace formats {

/// One row for each record 100. Fields that have drifted are found by the words before them. `path` is for messages.
Log read_flex(const TextLines& text, const std::string& path, const LogOptions& options = {});
/// A first line that begins with a code.
bool looks_like_flex(const TextLines& text);

} // namespace formats
