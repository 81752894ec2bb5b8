#pragma once
// Pulldown between film and video within a chain of mobs, frame by frame.
//
//     film    A         B              C         D              2:3, kind 0
//     video   A1 A2 | B1 B2 | B3 C1 | C2 D1 | D2 D3
//     frame   0       1       2       3       4                 frame 2 mixes B and C, and counts as B

#include "formats/aaf/aaf_objects.h"

#include <optional>

namespace formats::aaf {

struct Cadence;

class Pulldown {
public:
    /// Of a Pulldown object; none for kinds that don't say which frame is which. `phases_count_video`: its phase is a
    /// frame of video in the cycle also where the pulldown leads to film.
    static std::optional<Pulldown> of(const Object& object, bool phases_count_video);

    /// Frames of the input for one of the slot that holds it.
    Fraction ratio() const;
    /// The frame of the input that the slot's frame is, both counted from where they begin. Parts of frames go.
    Fraction input_at(const Fraction& position) const;

private:
    const Cadence* cadence_ = nullptr;
    bool slot_is_film_ = false;
    std::int64_t phase_ = 0; ///< of the slot's first frame, in frames of the slot's own kind
};

} // namespace formats::aaf
