#pragma once
// Reads logs of all kinds: what the file holds decides, and where that tells nothing its extension.

#include "formats/logs/log_row.h"

namespace formats {

enum class LogKind { ale, flex, keylog, delimited, table, unknown };

/// A file on disc. With an `error` there are no rows.
Log read_log(const std::string& path, const LogOptions& options = {});
/// The same of a text in memory; `path` gives the extension and stands in messages.
Log read_log_bytes(std::string_view bytes, const std::string& path, const LogOptions& options = {});

} // namespace formats
