#pragma once
// Random edits for checks of the lists against each other.

#include "tests/generator/made_edit.h"

#include <rapidcheck.h>

#include <string>

namespace cross_checks {

using namespace generator_test;

/// What may stand in an edit.
struct EditKind {
    bool upper_track = true;
    bool opticals = true;
    bool transitions = true;
};

/// Makes one edit. Every event has a source of its own called "shot1", "shot2" and so on, so that its name tells
/// it apart in any list; rolls are shared.
class RandomEdit {
public:
    explicit RandomEdit(const EditKind& kind) : kind_(kind) {
        fill_main_track(builder.add_channel(picture));
        if (kind_.upper_track) fill_upper_track(builder.add_channel(picture));
        if (kind_.opticals) fill_effect_track(builder.add_channel(picture, chan_fx));
    }

    EditBuilder builder{plain_edit()};

private:
    static int between(int low, int high) { return *rc::gen::inRange(low, high + 1); }

    SourceId next_source() {
        const std::string name = "shot" + std::to_string(++shots_);
        SourceDescription source = shot(name, "KJ12345" + std::to_string(between(0, 9)) + "0100+00");
        source.reels[{2, 1}] = "A00" + std::to_string(between(1, 4));
        if (between(0, 9) == 0) source.key.reset();
        return builder.add_source(source);
    }

    EventDescription next_event() {
        const Fraction speeds[] = {1, 1, 1, 2, -1, Fraction{1, 2}};
        return event_of(next_source(), between(12, 40), between(0, 200), speeds[between(0, 5)]);
    }

    void fill_main_track(int channel) {
        const int items = between(1, 8);
        for (int item = 0; item < items; ++item) {
            if (item > 0 && kind_.transitions && between(0, 3) == 0)
                builder.add_transition(channel, dissolve(between(1, 5), between(1, 5)));
            if (item > 0 && between(0, 5) == 0) {
                builder.add_black(channel, frames(between(12, 20)));
            } else {
                builder.add_event(channel, next_event());
            }
        }
    }

    void fill_upper_track(int channel) {
        const int items = between(0, 4);
        for (int item = 0; item < items; ++item) {
            builder.add_gap(channel, frames(between(1, 30)));
            builder.add_event(channel, next_event());
        }
    }

    void fill_effect_track(int channel) {
        const int items = between(0, 3);
        for (int item = 0; item < items; ++item) {
            builder.add_gap(channel, frames(between(1, 60)));
            builder.add_gap(channel, frames(between(4, 30)), {lab_effect("Blur", {0, 1})});
        }
    }

    EditKind kind_;
    int shots_ = 0;
};

} // namespace cross_checks
