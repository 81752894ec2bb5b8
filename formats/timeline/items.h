#pragma once
// The items of a channel, whatever file they come from: events, black and gaps in a row, with transitions between them.
//
//     | A . . | [ nest: | B . . | C . . | ] | D . . |      a nest of one track is spliced in, trimmed;
//     | A . . |   B . |   C . .           | | D . . |      one of several is a single event, rendered

#include "embedded/edit_builder.h"
#include "embedded/warning.h"
#include "host/channel_kinds.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace formats::timeline {

using embedded::Fraction;

struct Mark {
    Fraction time; ///< seconds, as it stands in the object's own time, or from where its item starts
    std::string text;
    int flags = 4;
    /// From where its item starts, where a file says that more exactly than the time.
    std::optional<Fraction> offset = {};
};

struct Item {
    enum class Kind { event, black, gap, transition };

    Kind kind = Kind::gap;
    int depth = 0;                    ///< nests around it
    bool never_black = false;         ///< a gap that is none where others are
    embedded::EventDescription event; ///< of black and gaps only length, effects and label count
    std::vector<Mark> marks;          ///< seconds from the item's start, all inside it
    std::unique_ptr<embedded::TransitionDescription> transition;

    const Fraction& length() const { return event.duration; }
    bool is_transition() const { return kind == Kind::transition; }
};

using Items = std::vector<Item>;

struct Stretch {
    Fraction from, to;
};

Fraction length_of(const Items& items);
/// Whether a transition stays, whose cut lies there in items `total` seconds long: inside of what is taken of them, or
/// at an end of theirs that isn't trimmed.
///
///     |x A . . |x| B . . x|      the one in the middle stays, and so does that at the tail;
///          [ - - - - - - - ]     that at the head has lost its place
bool keeps_cut(const Stretch& taken, const Fraction& cut, const Fraction& total);
bool is_seen(const embedded::TransitionDescription& transition, const Fraction& cut, const Stretch& taken);
/// That a transition is seen in what is taken, but its cut isn't.
embedded::Warning cut_off(const embedded::TransitionDescription& transition);
/// Takes `head` seconds off the start and `tail` off the end, or adds them where they are below 0. The medium moves by
/// as much times the speed; played backward, what comes off the head is the end of the medium's stretch.
void cut(Item& item, const Fraction& head, const Fraction& tail);
/// The items between two times, cut at both. A transition stays where its cut lies inside, or at an end of the items
/// that is left alone; one of which something would still be seen is told, if anybody listens.
Items trimmed(Items items, const Stretch& stretch, embedded::Warnings* warnings = nullptr);
/// What a nest shows of its content: exactly as long as it is taken, with gaps like `gap` where the content lacks.
Items spliced(Items content, const Stretch& taken, const embedded::EventDescription& gap, int depth,
              embedded::Warnings* warnings = nullptr);
/// Of transitions at one cut those of the outermost composition stay; the others are told of.
void drop_inner_transitions(Items& items, embedded::Warnings& warnings);

/// Where items go.
struct Channel {
    int number = 0; ///< the builder's
    bool fx = false;
    bool gaps_are_black = false; ///< as on the lowest picture channel that is listed
};
void hand_over(Items items, const Channel& channel, embedded::EditBuilder& builder);

} // namespace formats::timeline
