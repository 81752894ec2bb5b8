#pragma once
// Text with a header row, its cells parted by tabs, commas or semicolons.

#include "formats/logs/log_row.h"
#include "formats/text_lines.h"

namespace formats {

/// The header is the first line that names a start; what stands above it is left out. Cells may stand in double
/// quotes, doubled within them, and then go over several lines. `path` is for messages.
Log read_delimited(const TextLines& text, const std::string& path, const LogOptions& options = {});

} // namespace formats
