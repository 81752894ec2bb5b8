#pragma once
// Long edits as .otio text, for measuring.

#include <string>

namespace bench {

/// One picture track of `events` clips from 40 camera rolls, each with key number, timecode and reel, with a
/// dissolve at every tenth cut. The text is the same for the same number.
std::string long_edit(int events);

/// The same as one of the reels of a film, of its own clips; `reel` and `version` are from 1. With each version one
/// clip in twenty slips by ten frames.
std::string long_reel(int events, int reel, int version);

/// The same with opticals: `records` rows of a table in all, of which one goes to the effect on an FX track that lies
/// over every 20th event. Every fifth event repeats a stretch of film that was used before.
std::string long_optical_edit(int records);

} // namespace bench
