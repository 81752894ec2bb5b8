// Event lists that the builder never makes: what ends with a transition, sources of another length than their event,
// speeds that differ between the two points of an event, events that run backward on the edit.

#include "cutlist/convert_labels.h"
#include "cutlist/fx_opticals.h"
#include "cutlist/generator_labels.h"
#include "tests/generator/generator_fixture.h"
#include "tests/support/event_lists.h"

using namespace generator_test;

namespace {

class EventLists : public GeneratorTest {
protected:
    ~EventLists() override { clear_generator_labels(); }

    /// Another stretch of the source than the event's length.
    static void take_from_source(embedded::CelEvent& event, int in, int out) {
        event.in.source_time = event.whole_in.source_time = frames(in).to_double();
        event.out.source_time = event.whole_out.source_time = frames(out).to_double();
    }
    void dissolve_then(int channel) {
        builder.add_channel(picture);
        builder.add_event(channel, event_of(one, 48, 24));
        builder.add_transition(channel, dissolve(12, 12));
    }

    EditBuilder builder{plain_edit()};
    const SourceId one = builder.add_source(shot("one"));
};

TEST_F(EventLists, ATransitionThatEndsATrackIsOfNoConcernToTheNextOne) {
    dissolve_then(0);
    builder.add_event(0, event_of(one, 48, 100));
    builder.add_channel(picture);
    builder.add_event(1, event_of(one, 30, 200));
    const EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { events.pop_back(); });
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(column(cf_track), "1 2 0");
    EXPECT_EQ(column(cf_fx_op_out), "DO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- - -");
    EXPECT_EQ(column(cf_fx_len_in), "0 0 0");
}

TEST_F(EventLists, BehindATransitionThatEndsItATrackIsAtItsEnd) {
    dissolve_then(0);
    builder.add_event(0, event_of(one, 48, 100));
    EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { events.pop_back(); });
    make_generator_labels(*edit, label_key_35mm_4p, -1);
    const Qb::Ptr<Cel> flat = flatten(edit->get_edit_cel_p(0), 3, 1);
    ce_handle handle = flat->get_start_ceh();
    std::unique_ptr<cut_s> record;
    ASSERT_EQ(convert_event_from_labels(edit, 0, nullptr, handle, record, 1), 0U);
    EXPECT_STREQ(record->fx_op_out, "DO");
    EXPECT_EQ(record->fx_len_out, 24);
    EXPECT_EQ(convert_event_from_labels(edit, 0, nullptr, handle, record, 1), 0x80000000U);
    EXPECT_EQ(record, nullptr);
}

TEST_F(EventLists, BlackIsAsLongAsItsEventWhateverItsSourceHas) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 24, 10));
    builder.add_black(0, frames(36));
    const EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { take_from_source(events.at(1), 7, 17); });
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(field(1, cf_keycode_in), "__BLACK_0000+00");
    EXPECT_EQ(field(1, cf_keycode_out), "__BLACK_0002+04");
}

// The transition takes 12 of 36 frames.
TEST_F(EventLists, BlackBehindATransitionIsAsLongAsWhatTheTransitionLeaves) {
    dissolve_then(0);
    builder.add_black(0, frames(36));
    const EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { take_from_source(events.at(2), 12, 92); });
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(column(cf_edit_in), "0 60 0");
    EXPECT_EQ(column(cf_edit_out), "36 84 84");
    EXPECT_EQ(field(1, cf_keycode_in), "__BLACK_0000+00");
    EXPECT_EQ(field(1, cf_keycode_out), "__BLACK_0001+08");
}

TEST_F(EventLists, TheSpeedIsTheOutPoints) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 24, 10, 2));
    const EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { events.at(0).in.speed = 0.5F; });
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(field(0, cf_speed), "2");
}

// The graph at its time is that of the forward one.
TEST_F(EventLists, AnOpticalThatRunsBackwardKeepsItsEndsAsTheyAre) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 48));
    builder.add_channel(picture, chan_fx);
    builder.add_gap(1, frames(10));
    builder.add_gap(1, frames(20), {lab_effect("Blur", {0})});
    EditPtr edit = builder.finish();
    change_events(edit, 1, [](embedded::CelEvents& events) {
        embedded::CelEvent backward = events.back();
        std::swap(backward.in.edit_time, backward.out.edit_time);
        std::swap(backward.whole_in.edit_time, backward.whole_out.edit_time);
        events.push_back(backward);
    });
    make_generator_labels(*edit, label_key_35mm_4p, -1);
    event_array found;
    analyse_fx_opticals(edit, 1, nullptr, found);
    ASSERT_EQ(found.records().size(), 2U);
    const int places[][2] = {{10, 30}, {30, 10}};
    for (std::size_t i = 0; i < 2; ++i) {
        const cut_s& optical = *found.records()[i];
        EXPECT_EQ(optical.edit_in, places[i][0]) << i;
        EXPECT_EQ(optical.edit_out, places[i][1]) << i;
        EXPECT_EQ(optical.optical_in, places[i][0]) << i;
        EXPECT_EQ(optical.optical_out, places[i][1]) << i;
    }
}

} // namespace
