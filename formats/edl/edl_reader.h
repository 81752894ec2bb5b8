#pragma once
// Reads CMX 3600 edit lists as edits.

#include "formats/edit_reading.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// A list in memory.
struct EdlText {
    std::string_view bytes;
    std::string path;           ///< for messages, and for the edit's name where the list has no title
    std::int64_t file_time = 0; ///< seconds since the epoch
};

/// One edit of the lists of one programme, each with its picture tracks above those of the list before. The rate
/// is `options.rate`, else what a line of a list says, else 29.97 or 59.94 where one is drop-frame; lists that
/// tell nothing of it are refused without `options.rate`. Warnings read "reel1.edl: line 12: why".
ReadResult read_edl(const std::vector<std::string>& paths, const ReadOptions& options = {});
ReadResult read_edl(const std::string& path, const ReadOptions& options = {});
ReadResult read_edl_texts(const std::vector<EdlText>& texts, const ReadOptions& options = {});

/// Whether the text holds a line that only an edit list has: an event, or a title with a frame code mode.
bool looks_like_edl(std::string_view bytes);

} // namespace formats
