#pragma once
// What the maker of an edit said of its events and media, in exact numbers: what the event lists hold in doubles, and
// what no list asks for.

#include "embedded/fraction.h"
#include "host/edit.h"

#include <optional>
#include <string>
#include <vector>

namespace embedded {

/// One event of a channel, in the order of its event list. Times are seconds: of the edit from its start, of the source
/// from its first frame.
///
///     | A . . . . |--X--| . . B . |     edit_in and edit_out: an event without what its transitions take
///     | A . . . . . . | . . . . B |     whole_in and whole_out: with it
struct EventFacts {
    enum class Kind { material, black, transition };

    Kind kind = Kind::material;
    Cookie cookie; ///< of the source, of black or of the effect
    Fraction edit_in, edit_out;
    Fraction whole_in, whole_out;
    Fraction source_in; ///< at `whole_in`
    Fraction speed = 1; ///< of the source, as it was given: it is never rounded
    bool only_beside_transition = false;
    std::string label; ///< how messages name it, as "FILE: line 12"
    /// Of an event with effects that the lab makes: the channels that they draw on, and their name.
    std::vector<int> lab_tracks;
    std::string lab_effect;
};

/// The events of a channel; none where there is no such channel. They are the edit's.
const std::vector<EventFacts>& facts_of_channel(const EditPtr& edit, int chan);

/// Seconds of the source's material from its first frame, where that is known.
std::optional<Fraction> length_of_source(const EditPtr& source);

} // namespace embedded
