#pragma once
// Where writers take film numbers from that the edit itself doesn't hold.

#include "embedded/fraction.h"
#include "host/labels.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace formats {

/// The key number of a frame of a reel, by its timecode's frames since midnight, each of which is `share` frames of
/// film. Nothing where it isn't known.
using KeyOfFrame = std::function<std::optional<LabelPoint>(const std::string& reel, std::int64_t frame,
                                                           const embedded::Fraction& share)>;

} // namespace formats
