#pragma once
// Long cuts as cutlist files, for measuring.

#include "tests/support/made_cut.h"

namespace bench {

/// `events` shots of `rolls` camera rolls, each with film of its own.
made_cut::Cut long_cut(int events, int rolls);

/// `events` shots out of takes of 340 frames, each take used 35 times: most film lies in a dozen places.
made_cut::Cut reused_cut(int events);

/// One event in ten trimmed, one in ten changed places with another, one in twenty of other film. The same for the
/// same cut.
made_cut::Cut recut_of(made_cut::Cut cut);

} // namespace bench
