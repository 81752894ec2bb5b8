#pragma once
// Lays out a channel's items and transitions as events in time.

#include "embedded/edit_builder.h"
#include "embedded/warning.h"

#include <string>
#include <vector>

namespace embedded {

/// One item of a channel as it was added.
struct ChannelItem {
    enum class Kind { event, black, gap };

    Kind kind = Kind::gap;
    EventDescription event; ///< of black and gaps only duration and effects count
};

/// A transition and the cut at which it stands: before the item of that index.
struct ChannelCut {
    std::size_t before_item = 0;
    TransitionDescription transition;
};

/// One event laid out. All times are seconds.
struct LaidEvent {
    enum class Kind { item, transition, edge_black };

    Kind kind = Kind::item;
    /// Index among the items, or among the cuts for a transition.
    std::size_t index = 0;
    Fraction edit_in, edit_out;
    Fraction source_in, source_out;
    /// The same as if nothing overlapped it.
    Fraction whole_edit_in, whole_edit_out;
    Fraction whole_source_in, whole_source_out;
};

/// A picture or sound channel: events, black and the transitions between them, in edit order.
/// `frame` is the length of one frame. What is dropped or cut is told in `warnings`.
std::vector<LaidEvent> lay_out_cuts(const std::vector<ChannelItem>& items, const std::vector<ChannelCut>& cuts,
                                    const Fraction& frame, Warnings& warnings);

/// An FX channel: its items with effects; transitions are dropped.
std::vector<LaidEvent> lay_out_effects(const std::vector<ChannelItem>& items, const std::vector<ChannelCut>& cuts,
                                       const Fraction& frame, Warnings& warnings);

} // namespace embedded
