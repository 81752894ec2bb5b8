#pragma once
// What hangs on items: transitions, markers and effects.

#include "embedded/edit_builder.h"
#include "formats/fcpxml/fcpxml_document.h"
#include "formats/timeline/items.h"

#include <vector>

namespace formats::fcpxml {

/// A transition without its place. `sound` asks for what it does to the sound; nothing where it does nothing to that.
std::optional<embedded::TransitionDescription> read_transition(const Element& transition, bool sound,
                                                               const Context& context);

/// The markers of an element, at their times on its own clock. One whose time can't be read is left out with a warning.
std::vector<timeline::Mark> read_markers(const Element& element, const Context& context);

/// What is done to the picture, in the order in which it stands, but for the time of it.
std::vector<embedded::EffectDescription> read_effects(const Element& element, const Context& context);

} // namespace formats::fcpxml
