#pragma once
// Short ways to make the edits that lists are made of. Times are film frames at 24 a second.

#include "embedded/edit_builder.h"

#include <string>
#include <utility>

namespace generator_test {

using embedded::EditBuilder;
using embedded::EditDescription;
using embedded::EffectDescription;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::SourceDescription;
using embedded::SourceId;
using embedded::TransitionDescription;

constexpr int sound = 2;
constexpr int picture = 1;

inline Fraction frames(std::int64_t count) { return {count, 24}; }

inline EditDescription plain_edit(const std::string& name = "Reel 1") {
    EditDescription edit;
    edit.name = name;
    edit.modification_time = 1000000;
    return edit;
}

inline LabelDescription label(int type, const std::string& text) {
    LabelDescription made;
    made.type = static_cast<label_t>(type);
    made.text = text;
    return made;
}

/// 35mm material with key numbers from 0100+00 and its own reels.
inline SourceDescription shot(const std::string& name, const std::string& key = "KJ1234560100+00", int kind = 10) {
    SourceDescription source;
    source.identity = "name:" + name;
    source.name = name;
    source.key = label(kind, key);
    source.video_timecode = label(label_tc_24, "01:00:00:00");
    source.reels[{1, 2}] = "T" + name;
    source.reels[{2, 1}] = "A001";
    return source;
}

inline SourceDescription bare_source(const std::string& name) {
    SourceDescription source;
    source.identity = "name:" + name;
    source.name = name;
    return source;
}

inline EventDescription event_of(SourceId source, int length, int source_in = 0, const Fraction& speed = 1) {
    EventDescription event;
    event.source = source;
    event.duration = frames(length);
    event.source_in = frames(source_in);
    event.speed = speed;
    return event;
}

inline EffectDescription lab_effect(const std::string& name, std::vector<int> tracks = {}) {
    EffectDescription effect;
    effect.name = name;
    effect.for_the_lab = true;
    effect.tracks = std::move(tracks);
    return effect;
}

inline EventDescription with_effect(EventDescription event, EffectDescription effect) {
    event.effects.push_back(std::move(effect));
    return event;
}

inline TransitionDescription dissolve(int before, int behind, const std::string& name = "Cross") {
    TransitionDescription transition;
    transition.name = name;
    transition.in_offset = frames(before);
    transition.out_offset = frames(behind);
    return transition;
}

inline TransitionDescription wipe(int before, int behind, int pattern, bool reversed) {
    TransitionDescription transition = dissolve(before, behind, "Wipe");
    transition.kind = TransitionDescription::Kind::wipe;
    transition.pattern = pattern;
    transition.reversed = reversed;
    return transition;
}

inline embedded::CueDescription cue(int frame, const std::string& text, int flags = 4) {
    return {frames(frame), text, flags};
}

} // namespace generator_test
