#pragma once
// A small list into a directory of its own, whatever services stand behind it.

#include "tests/generator/generator_fixture.h"

namespace host_seam {

using namespace generator_test;

class SmallRun : public GeneratorTest {
protected:
    SmallRun() {
        for (const char* text : {"proj_name", "pgm_id"})
            block.set(text, "small");
        // A pull list may leave out a roll that the one before it in the process named last.
        block.set("some_lists", "1");
        block.set("pull_list", "0");
    }

    /// One event on one track.
    static EditPtr smallest_edit() {
        EditBuilder builder(plain_edit());
        builder.add_channel(picture);
        builder.add_event(0, event_of(builder.add_source(shot("one")), 48, 24));
        return builder.finish();
    }

    /// Two events with a dissolve between them, an effect, black, a cue, speeds with a fraction.
    static EditPtr small_edit() {
        EditBuilder builder(plain_edit());
        const SourceId one = builder.add_source(shot("one"));
        const SourceId two = builder.add_source(shot("two", "KJ1234560300+00"));
        builder.add_channel(picture);
        builder.add_channel(picture);
        builder.add_channel(picture, chan_fx);
        builder.add_event(0, event_of(one, 48, 24));
        builder.add_transition(0, dissolve(8, 8));
        builder.add_event(0, event_of(two, 49, 24, {3, 2}));
        builder.add_black(0, frames(12));
        builder.add_event(1, event_of(one, 20, 200));
        builder.add_gap(2, frames(24), {lab_effect("Blur", {0, 1})});
        builder.add_stack_cue(cue(3, "look here"));
        return builder.finish();
    }

    bool make_small(const EditPtr& edit) { return make(edit, EditBuilder::cues_of(edit)); }

    std::string bytes_of(const char* name) const {
        std::string bytes;
        EXPECT_TRUE(embedded::read_file(scratch.file(name), &bytes, nullptr)) << name;
        return bytes;
    }
};

} // namespace host_seam
