#pragma once
// Short ways to make edits for the tests of the edit model.

#include "embedded/edit_builder.h"

#include <string>
#include <vector>

namespace edit_model {

using embedded::EditBuilder;
using embedded::EditDescription;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::SourceDescription;
using embedded::SourceId;
using embedded::TransitionDescription;

inline EditDescription edit_named(const std::string& name) {
    EditDescription description;
    description.name = name;
    return description;
}

inline SourceDescription source_named(const std::string& name) {
    SourceDescription source;
    source.identity = "name:" + name;
    source.name = name;
    return source;
}

inline EventDescription event_of(SourceId source, const Fraction& duration, const Fraction& source_in = 0,
                                 const Fraction& speed = 1) {
    EventDescription event;
    event.source = source;
    event.duration = duration;
    event.source_in = source_in;
    event.speed = speed;
    return event;
}

inline TransitionDescription dissolve(const Fraction& in_offset, const Fraction& out_offset) {
    TransitionDescription transition;
    transition.name = "Cross";
    transition.in_offset = in_offset;
    transition.out_offset = out_offset;
    return transition;
}

/// An event list in letters with its times: "A 0-4 | x 4-6 | b 6-6", "x" being a transition, "b" black.
inline std::string drawn(const Cel& list) {
    std::string text;
    Cel& cel = const_cast<Cel&>(list);
    const auto number = [](double value) {
        std::string digits = std::to_string(value);
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
        return digits;
    };
    for (ce_handle at = cel.get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent event = at.get_channel_event();
        if (!at.is_in_point()) {
            text += number(event.edit_time);
            continue;
        }
        EditPtr source;
        source.i_open(event.cookie, edit_open_default);
        const std::string letter = event.cookie.isEffect()  ? "x"
                                   : event.cookie.isBlack() ? "b"
                                   : source                 ? toUTF8(source->getName()).c_str()
                                                            : "?";
        text += (text.empty() ? "" : " | ") + letter + " " + number(event.edit_time) + "-";
    }
    return text;
}

} // namespace edit_model
