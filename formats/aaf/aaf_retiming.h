#pragma once
// Items at other speeds.

#include "formats/timeline/items.h"

namespace formats::aaf {

/// `items` at another speed: as long as they are divided by its magnitude, backward in turned order. A marker stands
/// where its frame begins, which backward is where that ended; `frame` is that long.
timeline::Items at_speed(timeline::Items items, const timeline::Fraction& speed, const timeline::Fraction& frame);
/// What `items`, which are one frame long, begin with, held; its markers stand at its start.
timeline::Items frozen(timeline::Items items, const timeline::Fraction& duration);
/// With each cut that a speed put between two frames moved to where the next one begins, which is the first to show
/// what is behind:
///
///     frame    8     9     10        the cut comes to 10, and what is behind it begins half a frame later
///     items    . . . . . | . . .
timeline::Items on_whole_frames(timeline::Items items, const timeline::Fraction& from, const timeline::Fraction& step);

} // namespace formats::aaf
