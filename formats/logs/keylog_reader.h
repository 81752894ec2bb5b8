#pragma once
// Keylog text, each column read by its name in the header and put where that name says.

#include "formats/logs/log_row.h"
#include "formats/text_lines.h"

namespace formats {

/// A column runs from its name in the header to the next name. A header without DUR_FRAMES or DUR_FR has its second
/// half on the line below, and so has every row. `path` is for messages.
Log read_keylog(const TextLines& text, const std::string& path, const LogOptions& options = {});
/// A line that begins with "Record#" and names CAMROLL.
bool looks_like_keylog(const TextLines& text);

} // namespace formats
