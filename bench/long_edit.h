#pragma once
// Long edits as .otio text, for measuring.

#include <string>

namespace bench {

/// One picture track of `events` clips from 40 camera rolls, each with key number, timecode and reel, with a
/// dissolve at every tenth cut. The text is the same for the same number.
std::string long_edit(int events);

} // namespace bench
