#pragma once
// Checks of what is never listed.

#include "formats/otio/otio_details.h"

namespace formats::otio {

/// Refuses a composition in which something can't be read, though nothing of it becomes an event: a file is
/// sound as a whole or not at all.
void check_composition(const Place& composition, const Context& context);

} // namespace formats::otio
