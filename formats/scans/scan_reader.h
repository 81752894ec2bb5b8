#pragma once
// Scanned film as a log: a row for each stretch of a sequence that runs on without a break.

#include "formats/logs/log_row.h"
#include "formats/scans/scan_frames.h"

namespace formats {

/// The rows of all folders and those below them. A scan has one picture a frame of film, so that no row has pulldown.
/// Without a rate, or where a folder holds no pictures, there is an error.
Log read_scans(const std::vector<std::string>& folders, const ScanOptions& options);

} // namespace formats
