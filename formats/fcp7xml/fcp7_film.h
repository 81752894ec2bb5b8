#pragma once
// What `filmdata` tells of the film of a clip.

#include "formats/fcp7xml/fcp7_source.h"

namespace formats::fcp7 {

/// Adds rolls, key and ink number and film rate to the source, whose rate is known.
void add_film(const Media& media, const Context& context, embedded::SourceDescription& source);
/// Adds scene, take and description.
void add_log(const Media& media, embedded::SourceDescription& source);

} // namespace formats::fcp7
