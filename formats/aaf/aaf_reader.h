#pragma once
// Reads AAF files as edits: the composition that they hold, with the chain of its clips to tape and film.

#include "formats/edit_reading.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace formats {

/// Of several compositions `ReadOptions::sequence` says which.
ReadResult read_aaf(const std::string& path, const ReadOptions& options = {});
/// The same of a file in memory. `file_time` is in seconds since the epoch, for a composition without a time of its
/// last change.
ReadResult read_aaf_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                          const ReadOptions& options = {});

} // namespace formats
