#pragma once
// The chain from a clip of an edit to tape and film.
//
//     composition clip -> master -> file -> (pulldown) -> tape -> (pulldown) -> film
//
// At each arrow a position is brought to the rate of the slot that is referred to; the labels are read where it ends
// up.

#include "formats/aaf/aaf_file.h"

#include <optional>
#include <string>
#include <vector>

namespace formats::aaf {

/// A position within a segment, which counts frames of `rate`; `step` of them pass in a second of the edit. Behind a
/// pulldown the rate is 0: frames there are those of what comes next, whatever its rate.
struct Point {
    const Object* segment = nullptr;
    Fraction position, rate, step;
};

/// One mob on the way.
struct Link {
    const Mob* mob = nullptr;
    const Slot* slot = nullptr;
    Fraction position; ///< in the slot's segment, in frames of the slot
    Fraction step;     ///< frames of the slot in a second of the edit
};

/// Where a clip comes from, at one of its frames.
struct Chain {
    std::vector<Link> links; ///< from the nearest mob
    /// The pieces that the way led through; those that go on from each other count as one. Frames with the same way
    /// count on from each other.
    std::vector<const void*> way;
    std::vector<std::string> faults; ///< why it ends early, and what of it is doubtful

    const Link* first(Class what) const;
    /// The mob that stands for the material as a whole: the master, else the nearest.
    const Link* material() const;
};

/// Mobs of a chain; longer ones are cut off with a fault.
constexpr std::size_t chain_limit = 12;

/// The chain of a source clip, or of what stands in its place, at that position in it.
Chain chain_of(const File& file, Point point);

/// The labels of timecode and film.
struct Timecode {
    std::int64_t frame = 0;
    std::int64_t counting = 0; ///< frames a second
    bool drop = false;
    Fraction step; ///< of its frames in a second of the edit
    std::vector<const void*> way;
};
struct EdgeNumber {
    std::int64_t frame = 0; ///< frames from count 0
    std::string prefix;
    std::int64_t film_kind = 0;
    std::int64_t format = 0;
    Fraction step;
    std::vector<const void*> way;
};
/// What a slot of a mob on the way says at the link's position, and the pieces of it that this led through. What is
/// doubtful is added to the chain's faults.
std::optional<Timecode> timecode_at(const File& file, const Link& link, const Slot& slot, Chain& chain);
std::optional<EdgeNumber> edge_number_at(const File& file, const Link& link, const Slot& slot, Chain& chain);

/// Whether rates differ so little that one counts frame for frame as the other.
bool frame_for_frame(const Fraction& a, const Fraction& b);
/// The segment that counts of a selector, group of choices, scope or effect; null for others.
const Object* inner_segment(const Object& segment);
/// A track or segment through which the tracks below are seen, all along.
bool shows_what_is_below(const Object& segment);
/// Whether an input of an effect is neither empty nor what lies below.
bool is_picture_of_its_own(const Object& segment);
/// The first input of an effect that is; null where it has none.
const Object* foreground_of(const Object& group);

} // namespace formats::aaf
