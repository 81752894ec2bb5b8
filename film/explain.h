#pragma once
// How the film of one place of an edit is found, in words.

#include "film/find.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace film {

/// A line a step; empty where the channel has nothing there.
using Explanation = std::vector<std::string>;

/// From the edit's frame to the printed number, for each layer that is seen or covered there.
Explanation explain_frame(const EditPtr& edit, const CheckOptions& options, const LogRows* log, std::int64_t frame);
/// The same for the first frame of an event that the assembly numbers so.
Explanation explain_event(const EditPtr& edit, const CheckOptions& options, const LogRows* log, int event);

/// The film frame of the edit at which its timecode shows a text; empty where the text is no timecode of it.
std::optional<std::int64_t> frame_of_timecode(const EditPtr& edit, const std::string& text);

} // namespace film
