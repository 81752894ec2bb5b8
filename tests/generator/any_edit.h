#pragma once
// Edits of every shape, with sane and with absurd numbers.

#include "tests/generator/made_edit.h"

#include <rapidcheck.h>

namespace generator_test {

inline int number(int least, int above) { return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(least, above)); }

inline bool one_in(int count) { return number(0, count) == 0; }

inline std::int64_t length() {
    return one_in(40) ? *rc::gen::element<std::int64_t>(1LL << 40, 1LL << 62) : number(0, 60);
}

inline Fraction speed() {
    return *rc::gen::element(Fraction(1), Fraction(0), Fraction(-1), Fraction(3, 2), Fraction(1, 300));
}

inline std::vector<EffectDescription> effects() {
    std::vector<EffectDescription> made(static_cast<std::size_t>(std::max(0, number(-4, 3))));
    for (EffectDescription& effect : made) {
        effect = lab_effect("Fx");
        effect.for_the_lab = !one_in(3);
        if (one_in(2)) effect.tracks = {number(-1, 6), number(0, 3)};
    }
    return made;
}

inline SourceDescription random_source(int serial) {
    SourceDescription source = bare_source("source " + std::to_string(serial));
    source.opens = !one_in(5);
    source.rendered = one_in(8);
    source.start_strip = frames(number(-5, 30));
    source.reels[{1, 2}] = *rc::gen::element<std::string>("", "T1", "ALONGREELNAME");
    if (one_in(2)) source.key = label(*rc::gen::element(10, 11, 12, 22, 36, 8), "KJ1234560100+00");
    if (source.key && one_in(4)) source.key->sample = *rc::gen::element(INT32_MAX, INT32_MIN, -1);
    if (one_in(2)) source.ink = label(*rc::gen::element(43, 44), "AB120100+00");
    if (one_in(2)) source.video_timecode = label(label_tc_24, "23:59:59:00");
    return source;
}

inline void add_item(EditBuilder& builder, int channel, int sources) {
    if (one_in(3)) {
        TransitionDescription transition = one_in(3) ? wipe(0, 0, number(-2000, 2000), true) : dissolve(0, 0);
        transition.in_offset = frames(number(-2, 20));
        transition.out_offset = frames(number(-2, 20));
        builder.add_transition(channel, transition);
    } else if (one_in(5)) {
        builder.add_black(channel, frames(length()));
    } else if (one_in(4)) {
        builder.add_gap(channel, frames(length()), effects());
    } else {
        EventDescription event = event_of(number(0, sources), 0, number(-20, 200), speed());
        event.duration = frames(length());
        event.effects = effects();
        builder.add_event(channel, event);
    }
}

/// An edit of any shape, with sane and with absurd numbers.
inline EditPtr any_edit() {
    EditBuilder builder(plain_edit());
    const int sources = number(1, 4), channels = number(1, 6);
    for (int i = 0; i < sources; ++i)
        builder.add_source(random_source(i));
    for (int channel = 0; channel < channels; ++channel) {
        builder.add_channel(one_in(5) ? sound : picture, *rc::gen::element(0, 0, 0, 4, 8));
        builder.add_event(channel, event_of(number(0, sources), number(1, 40)));
        for (int left = number(0, 9); left > 0; --left)
            add_item(builder, channel, sources);
    }
    for (int left = number(0, 4); left > 0; --left)
        builder.add_stack_cue(cue(number(-5, 100), "cue", number(0, 8)));
    return builder.finish();
}

} // namespace generator_test
