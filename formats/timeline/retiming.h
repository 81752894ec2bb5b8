#pragma once
// What speeds do to items.

#include "formats/timeline/items.h"

#include <string_view>

namespace formats::timeline {

/// Moves the stretch of an item that is going to play the other way round: the frame that came last comes first. At
/// another speed than `normal` that isn't the one at the stretch's end. `frame` is what one lasts in the item's time.
///
///     stretch of 6 at twice the speed      |0 . 2 . 4 .|
///     turned                             |. 0 . 2 . 4|      a frame sooner, to end with what it showed last
void turn(Item& item, const Fraction& frame, const Fraction& normal = 1);
/// Items whose content runs `speed` times as fast, which isn't 0: as long as they are divided by its magnitude. Below 0
/// they come in turned order, each of them turned before. A mark stands where its frame begins, which backward is
/// where that ended; `frame` is what one lasts in the items' time.
///
///     forward    |0|1|m|3|4|5|      backward    |5|4|3|m|1|0|
Items at_speed(Items items, const Fraction& speed, const Fraction& frame);
/// What `items`, which are one frame long, begin with, held; its marks stand at its start.
Items held(Items items, const Fraction& duration);
/// Whether a speed over another shows other frames than one speed of both, as it holds or leaves out frames that the
/// inner one chose. Both are frames for one frame of what shows them, but for rounding.
///
///     inner 2       0   2   4   6   8   10
///     outer 1/2     0 0 2 2 4 4 6 6 8 8 10 10      not 0 1 2 3 4 5 6 ...
bool plays_unevenly(const Fraction& inner, const Fraction& outer);
/// What a doubt says of such.
inline constexpr std::string_view plays_unevenly_text =
    "plays what has a speed already, and one speed that stands for both shows single frames beside those that were "
    "seen";
/// With each cut that a speed put between two frames moved to where the next one begins, which is the first to show
/// what is behind:
///
///     frame    8     9     10        the cut comes to 10, and what is behind it begins half a frame later
///     items    . . . . . | . . .
///
/// `from` is where the items start, in frames, of which `rate` pass in a second. A cut less than `rounding` behind the
/// start of a frame is meant to lie there.
Items on_whole_frames(Items items, const Fraction& from, const Fraction& rate, const Fraction& rounding = 0);

} // namespace formats::timeline
