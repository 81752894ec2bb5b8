#pragma once
// What is in a cut's way, in words. Names stand as they came.

#include "film/conform_facts.h"

#include <string>

namespace film {

/// "12 to 47", or "12".
std::string range_text(const FrameRange& range);
/// "R1 event 4".
std::string name_of(const ConformToTell& told, const CutUse& use);
/// The same with its place in the reel, its name and its film.
std::string use_text(const ConformToTell& told, const CutUse& use);
/// "1 frame is gone, at its head: KJ1234560099+15".
std::string trouble_text(const ConformToTell& told, const Conflict& conflict);
/// "shorten R1 event 4 by 1 frame at its head (96 of reel 1)".
std::string mend_text(const ConformToTell& told, const Mend& mend);

} // namespace film
