#pragma once
// Logs of editing systems: a heading of pairs, a line of column names, and a row a clip, parted by tabs.

#include "formats/logs/log_row.h"
#include "formats/text_lines.h"

namespace formats {

/// `path` is for messages.
Log read_ale(const TextLines& text, const std::string& path, const LogOptions& options = {});
/// A first line "Heading".
bool looks_like_ale(const TextLines& text);

} // namespace formats
