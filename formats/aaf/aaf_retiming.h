#pragma once
// Items at other speeds.

#include "formats/timeline/items.h"

namespace formats::aaf {

/// `items` at another speed: as long as they are divided by its magnitude, backward in turned order. A marker stands
/// where its frame begins, which backward is where that ended; `frame` is that long.
timeline::Items at_speed(timeline::Items items, const timeline::Fraction& speed, const timeline::Fraction& frame);
/// What `items`, which are one frame long, begin with, held; its markers stand at its start.
timeline::Items frozen(timeline::Items items, const timeline::Fraction& duration);

} // namespace formats::aaf
