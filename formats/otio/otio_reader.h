#pragma once
// Reads OpenTimelineIO files as edits.

#include "formats/edit_reading.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace formats {

/// Of a file, or of a folder that is a bundle (.otiod).
ReadResult read_otio(const std::string& path, const ReadOptions& options = {});
/// The same of a text in memory. `file_time` is in seconds since the epoch; an edit that knows no other time of its
/// last change has this.
ReadResult read_otio_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                           const ReadOptions& options = {});

} // namespace formats
