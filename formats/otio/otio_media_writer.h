#pragma once
// The media references of .otio documents: what a source is, in the words that are read of one.

#include "embedded/edit_builder.h"
#include "formats/key_spelling.h"
#include "formats/otio/otio_values.h"

namespace formats::otio {

/// The reference of a source's clips. Labels are written as their texts, but for a video timecode that
/// `available_range` tells.
JsonValue media_reference(const Values& values, const embedded::SourceDescription& source, const RateInfo& edit_rate,
                          const KeySpelling& keys);
/// The reference of black.
JsonValue black_reference(const Values& values);
/// Seconds at which the available range begins; 0 where none is written.
Fraction start_of_media(const embedded::SourceDescription& source, const RateInfo& edit_rate);

} // namespace formats::otio
