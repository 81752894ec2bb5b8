#pragma once
// What hangs on items: effects, transitions and markers.

#include "formats/otio/otio_source.h"
#include "formats/timeline/items.h"

#include <string>
#include <vector>

namespace formats::otio {

/// The effects of an item that aren't disabled.
struct Effects {
    Fraction speed = 1; ///< the product of the time effects
    bool any = false;
    std::vector<embedded::EffectDescription> graph; ///< all but the time effects
};

Effects read_effects(const Place& item, const Context& context);
/// The channels under `tracks` of an object's own metadata, in order.
std::vector<int> read_tracks(const Place& object, const Context& context);
/// Tells that the effects of an object count for nothing.
void warn_of_effects(const Place& object, const Context& context);

embedded::TransitionDescription read_transition(const Place& transition, const Context& context);

using timeline::Mark;
std::vector<Mark> read_markers(const Place& object, const Context& context);

} // namespace formats::otio
