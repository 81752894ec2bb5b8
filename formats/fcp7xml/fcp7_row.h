#pragma once
// A track as it stands in the file: items at their places, and where transitions really cut.
//
//     | A . . . . . . . . . . |             A ends at -1: where the transition behind it ends,
//                   |- - X - -|             153; B starts at -1: where that before it starts, 123;
//                   | B . . . . . . . |     with "center" the cut between them lies at 138
//     | A . . . . . . . .|B . . . . . |

#include "formats/fcp7xml/fcp7_effects.h"

#include <memory>
#include <vector>

namespace formats::fcp7 {

/// An item at its place. Places are frames of the sequence, from its start.
struct Placed {
    Element element;
    Fraction start, end;                                   ///< with what transitions show of it
    Fraction from, to;                                     ///< between the cuts
    std::optional<Fraction> in, out;                       ///< of its own frames, at start and end
    Rate rate;                                             ///< in which those count
    std::unique_ptr<embedded::TransitionDescription> head; ///< into it
    std::unique_ptr<embedded::TransitionDescription> tail; ///< out of it, where nothing follows
    Fraction head_taken, tail_taken;                       ///< frames between the cuts that transitions show too
    Element joined;                                        ///< what `head` comes from; none where it fades in
    bool in_transition = false;                            ///< it stays, though transitions may show all of it

    Fraction own_frames; ///< of its own frames, how many go into one of the sequence

    Fraction length() const { return to - from; }
};

/// The items of a track, in order, none over another. What can't stand where it is written is told.
std::vector<Placed> place_items(const Element& track, const Rate& sequence, int kind, const Context& context);

} // namespace formats::fcp7
