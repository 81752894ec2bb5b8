#pragma once
// What an edit uses of each shot, put together over all its events.

#include "embedded/edit_recipe.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace formats {

/// A stretch of one medium. Sources that name the same numbers at the same timecode are one shot.
struct ShotUse {
    const embedded::SourceDescription* source = nullptr; ///< the first of them; it has a video timecode
    const embedded::RateInfo* rate = nullptr;            ///< of its timecode
    embedded::Fraction film_rate;
    /// Frames of its timecode since midnight: the first that is shown, and the one behind the last.
    std::int64_t from = 0, to = 0;

    /// What else must be one for stretches to be one shot.
    using Part = std::pair<int, std::int64_t>;

    /// Seconds from the source's first frame to a frame of its timecode.
    embedded::Fraction seconds_at(std::int64_t frame) const;
};

/// Of the channels, with what transitions show of both sides; by reel, then timecode. `left_out` takes sources that
/// have no timecode, and those of lost media. `part_of` is asked for each event's stretch.
std::vector<ShotUse> shot_uses(const embedded::EditRecipe& recipe, const std::vector<int>& channels,
                               std::vector<const embedded::SourceDescription*>& left_out,
                               const std::function<ShotUse::Part(const ShotUse&)>& part_of);

/// A label's point at so many seconds behind its start; of film kinds counted in whole frames of film.
LabelPoint point_at(const embedded::LabelDescription& label, const embedded::Fraction& seconds,
                    const embedded::Fraction& rate);

} // namespace formats
