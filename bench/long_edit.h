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

/// What an edit's cost may depend on.
struct EditShape {
    int clips = 0;
    int tracks = 1;          ///< the clips are dealt out to these
    int uses = 1;            ///< of each take
    int effect_every = 0;    ///< one event in so many has the lab's effect; 0: none has
    int dissolve_every = 10; ///< one cut in so many is a dissolve
};

std::string shaped_edit(const EditShape& shape);

} // namespace bench
