#pragma once
// Random recuts: a cut of one or more reels and what an editor might have made of it. The same for the same seed.

#include "tests/support/made_cut.h"

#include <cstdint>

namespace recuts {

using made_cut::Cut;
using made_cut::Shot;

/// What may stand in the cuts beside plain shots.
struct Kinds {
    bool transitions = false;
    bool black = false;
    bool varispeed = false;
    bool reuse = false;
};

constexpr Kinds plain = {};
constexpr Kinds everything = {true, true, true, true};

struct Recut {
    std::vector<Cut> old_reels;
    std::vector<Cut> new_reels;
};

/// At most `reels` reels of at most `events` events each, at least one of each. All keys lie on whole frames.
Recut make_recut(std::uint32_t seed, const Kinds& kinds, int reels, int events);

} // namespace recuts
