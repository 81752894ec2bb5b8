#pragma once
// Edits of logged material and the tables that log it.

#include "cutlist/cutlist_options.h"
#include "cutlist/generator_labels.h"
#include "embedded/edit_builder.h"
#include "logging/log_shot_list.h"
#include "tests/logging/film_tables.h"
#include "tests/support/recording_logger.h"

#include <memory>
#include <string>
#include <vector>

namespace logged {

using embedded::EditBuilder;
using embedded::EditDescription;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::SourceDescription;
using embedded::SourceId;
using embedded::TransitionDescription;

inline EditDescription edit_24() {
    EditDescription description;
    description.name = "Logged";
    description.rate = embedded::nearest_rate(24.0);
    return description;
}

/// A transfer on a video reel, with timecode from one o'clock and key numbers that a logged run must not use.
inline SourceDescription transfer(const std::string& reel) {
    SourceDescription source;
    source.identity = "transfer/" + reel;
    source.name = "Slate " + reel;
    source.rate = embedded::nearest_rate(24.0);
    if (!reel.empty()) source.reels[{1, 2}] = reel;
    source.video_timecode = LabelDescription{label_tc_24, "01:00:00:00", {}, Fraction(24)};
    source.key = LabelDescription{label_key_35mm_4p, "XX9999990000+00", {}, {}};
    source.scene = "12A";
    source.take = "3";
    source.description = "A pan";
    return source;
}

/// Frames at 24.
inline Fraction frames(int count) { return Fraction(count, 24); }

inline EventDescription event_of(SourceId source, int first, int length, const Fraction& speed = 1) {
    EventDescription event;
    event.source = source;
    event.source_in = frames(first);
    event.duration = frames(length);
    event.speed = speed;
    return event;
}

inline const Columns& log_columns() {
    static const Columns columns = {"name",          "reel",      "start time",    "end time",
                                    "cam reel",      "snd reel",  "24p reel",      "start keycode",
                                    "start inkcode", "snd start", "snd label_std", "start 24p code"};
    return columns;
}

inline Params log_params() {
    return {{"FILMDB", "Rev 16"}, {"label_std", "24fps"}, {"snd label_std", "30fps"}, {"film label_std", "35mm-4p"}};
}

/// The whole of reel VT1 from one o'clock.
inline std::vector<std::string> shot_on_vt1() {
    return {"1-1",         "vt1", "01:00:00:00", "01:01:00:00", "A001", "S01", "P01", "KJ1234560100+00", "AB120010+00",
            "05:00:00:00", "",    "07:00:00:00"};
}

inline std::string text_of(LabelPoint point) { return point.get_string(); }

} // namespace logged
