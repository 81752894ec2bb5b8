#pragma once
// Walks over an edit's channels, in whole film frames.

#include "embedded/edit_facts.h"
#include "film/opticals.h"
#include "host/edit.h"

#include <cstdint>
#include <vector>

namespace film {

/// Absolute numbers of all channels of a kind, in order.
std::vector<int> channels_of(const EditPtr& edit, int kind);
/// Those of the picture that lists walk, from the lowest: no FX tracks and none that aren't listed.
std::vector<int> picture_tracks_of(const EditPtr& edit);

/// Film frames a second of an edit or source.
embedded::Fraction film_rate(const EditPtr& edit);
/// The whole film frame in which a time of an edit lies that has so many a second.
std::int64_t film_frame_of(const embedded::Fraction& time, const embedded::Fraction& rate);

/// The events of the lowest picture track, not numbered yet.
std::vector<MainEvent> main_events_of(const EditPtr& edit);

} // namespace film
