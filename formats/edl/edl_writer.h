#pragma once
// Writes one channel of an edit as a CMX 3600 edit list.

#include "embedded/fraction.h"
#include "formats/edit_writing.h"
#include "host/edit.h"
#include "host/labels.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace formats {

/// Where film numbers come from that the edit itself doesn't hold: the key number of a frame of a reel, by its
/// timecode's frames since midnight, each of which is `share` frames of film. Nothing where it isn't known.
using KeyOfFrame = std::function<std::optional<LabelPoint>(const std::string& reel, std::int64_t frame,
                                                           const embedded::Fraction& share)>;

struct EdlWriting {
    int channel = 0; ///< absolute
    /// Unset: the edit's own key numbers.
    KeyOfFrame key_of_frame = {};
};

/// Reels, timecodes, clip and file names, speeds as `M2`, black as `BL`, dissolves and wipes in two lines, key numbers
/// and cues in comments that our own reader takes again.
Written write_edl(const EditPtr& edit, const EdlWriting& writing);

} // namespace formats
