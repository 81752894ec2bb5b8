#pragma once
// Where writers take film numbers from that the edit itself doesn't hold.

#include "embedded/fraction.h"
#include "host/labels.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace formats {

/// What a log says of one frame of tape. Frames are those of its timecode since midnight.
struct LoggedFrame {
    LabelPoint key;          ///< of the frame
    embedded::Fraction into; ///< how far into that frame of film it looks, of one
    std::size_t row = 0;     ///< tells the log's rows apart
    std::int64_t start = 0;  ///< of the row, which the frame may lie beyond by a little
    std::int64_t end = 0;    ///< behind its last
    std::int64_t cycle = 0;  ///< the last frame up to this with which the row begins a cycle of pulldown
    LabelPoint cycle_key;    ///< of that frame
    bool ambiguous = false;  ///< another row names other film for the frame
};

/// Of a frame of a reel, where each is `share` frames of film. Nothing where the log holds no number for it.
using LogLookup = std::function<std::optional<LoggedFrame>(const std::string& reel, std::int64_t frame,
                                                           const embedded::Fraction& share)>;

} // namespace formats
