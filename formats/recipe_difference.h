#pragma once
// Whether two edits are of the same making, as one that was written and read again.

#include "embedded/edit_recipe.h"

#include <string>
#include <vector>

namespace formats {

/// What of `wanted` is otherwise in `got`, one line each, as "source \"A012\": its sound timecode" or "V1, item 12: its
/// length". What makes no difference to a list isn't told: how events are named in messages, and what the layout drops.
std::vector<std::string> differences_of(const embedded::EditRecipe& wanted, const embedded::EditRecipe& got);

} // namespace formats
