#pragma once
// Reads FCPXML as edits: files (.fcpxml), and folders that hold one (.fcpxmld).

#include "formats/edit_reading.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace formats {

/// Of a file or folder. The edits of a file are its projects; where it has none that holds anything, its clips.
ReadResult read_fcpxml(const std::string& path, const ReadOptions& options = {});
/// The same of a text in memory. `file_time` is in seconds since the epoch; an edit that knows no other time of its
/// last change has this.
ReadResult read_fcpxml_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                             const ReadOptions& options = {});

} // namespace formats
