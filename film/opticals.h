#pragma once
// What of an edit an optical printer has to make, and how that numbers the events of the assembly.

#include "film/film_uses.h"

#include <cstdint>
#include <string>
#include <vector>

namespace film {

/// A run of edit frames that the lab makes as one: under an effect of an FX track or of the lowest track, or a chain of
/// events that transitions join.
struct Optical {
    int number = 0;                  ///< from 1
    std::int64_t start = 0, end = 0; ///< of the effect, or of the chain
    std::vector<int> channels;       ///< that an effect draws on; empty for a chain
    std::string name, where;
    bool error = false; ///< no event of the lowest track is left for it
};

/// An event of the lowest track, in order.
struct MainEvent {
    std::int64_t start = 0, end = 0; ///< without its transitions
    bool joined = false;             ///< a transition leads to the next
    int number = 0;                  ///< in the assembly
    int optical = 0;                 ///< 0 where it stands alone
};

/// Numbers the events and gathers the opticals: those with effects, in order of their starts, then the chains. With
/// `neg_cut` the events of an optical share a number.
std::vector<Optical> number_events(std::vector<MainEvent>& events, std::vector<Optical> effects, bool neg_cut);

/// The effects of an edit that the lab makes, by start.
std::vector<Optical> lab_effects_of(const EditPtr& edit);

} // namespace film
