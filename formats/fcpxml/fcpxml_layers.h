#pragma once
// Rows of items that stand in time beside and above each other, and how they become one row, or channels.
//
//     lane 2                  | F |                 a run is a storyline, or a single connected item
//     lane 1          | D . . | E |
//     spine   | A . . . . | B . . . | C . |

#include "formats/timeline/items.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace formats::fcpxml {

using timeline::Fraction;
using timeline::Item;
using timeline::Items;

/// The lanes on the way from the spine to an item: {} is the spine, {1} above it, {1, -1} below an item in lane 1 but
/// above the spine.
using Lane = std::vector<int>;

/// From the lowest to the topmost: below 0, 0 or above 0. Lanes that aren't there count as 0.
int compare_lanes(const Lane& a, const Lane& b);

struct Run {
    Lane lane;
    Fraction start; ///< on the clock of what it stands in
    Items items;

    Fraction end() const { return start + timeline::length_of(items); }
};

using Runs = std::vector<Run>;

Item copy_of(const Item& item);
bool has_picture(const Items& items);
Item gap_of(const Fraction& length, const std::string& label = {});

/// A time in the frame that ends there: before it by more than times are rounded, but by less than any frame.
Fraction in_last_frame(const Fraction& end);

/// One item of a length that holds what is shown at a time of the items, counted from their start; at their very end
/// the last frame, not the one behind it: of what has no frames of its own, of `frame` seconds, that of the medium.
/// Items that play backward are to be turned.
Item frozen(const Items& items, const Fraction& at, const Fraction& length, const Fraction& frame, bool has_frames);
/// Puts a mark on the item on which a time lies, counted from the start of the items; false if it lies on none.
bool add_mark(Items& items, timeline::Mark mark);

/// Two sources that are one for the purpose, as the channels of one sound.
using SameSource = std::function<bool(embedded::SourceId, embedded::SourceId)>;
/// What the runs show from one time to another, as one row with gaps where they show nothing; no row where two of them
/// show something at once, unless it is the same. `work` grows with the items that were copied and looked at.
std::optional<Items> merged(const Runs& runs, const timeline::Stretch& stretch, const SameSource& same,
                            std::size_t& work);

/// The runs without their gaps: each becomes as many as there are pieces that show something without a break.
Runs without_gaps(Runs runs);

/// A row that takes the runs at their places, from `zero` on. They must not overlap, and what begins before `zero` must
/// be cut.
Items row_of(std::vector<Run*> runs, const Fraction& zero);
/// Which runs go onto one channel each, the lowest channel first. Of runs in one lane that overlap the later lies
/// above.
std::vector<std::vector<Run*>> channels_of(Runs& runs);

} // namespace formats::fcpxml
