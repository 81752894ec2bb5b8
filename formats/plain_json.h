#pragma once
// The quick way into a JSON document, for what nearly every file holds.

#include "formats/json_document.h"

#include <string_view>

namespace formats {

/// Hands the values of a text to `tree`, in which strings without escapes lie where they lie in the text. False for
/// what isn't sound, and for what is rare: numbers that aren't finite or past 64 bits, characters beyond the basic
/// plane as escapes, objects more than `json_depth_limit` deep. Then `tree` holds a part, and another parser has to
/// tell what it is.
bool read_plain_json(std::string_view text, JsonTree& tree);

} // namespace formats
