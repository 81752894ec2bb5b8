#pragma once
// Puts what rendered clips were rendered from in their place.
//
//     | A . . |R . . . . . . . | B . |      R was rendered from D and E: the copy has the stretch
//     | A . . | D . . | E . . .| B . |      of them that R used

#include "formats/otio/otio_timeline.h"

namespace formats::otio {

/// Replaces, in a document that `Root` accepts, each rendered clip of normal speed that was rendered from one track.
/// The composition's time 0 is the first frame of the clip's medium.
void unrender(JsonTree& document, const Context& context);

} // namespace formats::otio
