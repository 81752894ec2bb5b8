#pragma once
// What the library sees of the events of one channel, as text.

#include "host/edit.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// A whole number of frames of the edit, rounded down as positions are.
std::int64_t frames_of(double seconds, double frame_length);
std::string narrow(const LightweightString<wchar_t>& text);

/// The events, transitions and effects of a channel in aligned columns, and the cues that each event meets.
std::string describe_events(const EditPtr& edit, int chan, CueList* cues);

} // namespace tool
