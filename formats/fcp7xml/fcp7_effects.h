#pragma once
// Filters and transitions.

#include "formats/fcp7xml/fcp7_source.h"

#include <vector>

namespace formats::fcp7 {

/// The filters of an item that do something to its picture, but for its speed.
std::vector<embedded::EffectDescription> effects_of(const Element& item, const Context& context);

/// A transition without its offsets.
embedded::TransitionDescription describe_transition(const Element& transition, int kind, const Context& context);

/// Where a transition that joins two items cuts, between its start and end: frames of the sequence.
Fraction cut_of(const Element& transition, const Fraction& start, const Fraction& end, const Rate& rate,
                Teller& teller);

} // namespace formats::fcp7
