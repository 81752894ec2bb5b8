// Event lists that don't begin with an event: made without the builder, as it always puts black before a
// transition.

#include "cutlist/convert_labels.h"
#include "cutlist/generator_labels.h"
#include "tests/generator/generator_fixture.h"
#include "tests/support/event_lists.h"

using namespace generator_test;

namespace {

class EffectFirst : public GeneratorTest {
protected:
    ~EffectFirst() override { clear_generator_labels(); }

    static EditPtr edit_with(const SourceDescription& source) {
        EditBuilder builder(plain_edit());
        builder.add_channel(picture);
        const SourceId one = builder.add_source(source);
        builder.add_event(0, event_of(one, 48, 24));
        builder.add_transition(0, dissolve(12, 12));
        builder.add_event(0, event_of(one, 48, 100));
        return builder.finish();
    }
};

TEST_F(EffectFirst, TheConverterTellsWhyATrackEnds) {
    EditPtr edit = edit_with(shot("one"));
    make_generator_labels(*edit, label_key_35mm_4p, -1);
    const Qb::Ptr<Cel> flat = flatten(edit->get_edit_cel_p(0), 3, 1);
    const auto converted = [&](int point) {
        ce_handle handle(flat.get(), point);
        std::unique_ptr<cut_s> record;
        const convert_result result = convert_event_from_labels(edit, 0, nullptr, handle, record, 1);
        EXPECT_EQ(record != nullptr, result == convert_done);
        return result;
    };
    EXPECT_EQ(converted(0), convert_done);
    EXPECT_EQ(converted(1), 0x40000000U);
    EXPECT_EQ(converted(2), 0x20000000U);
    EXPECT_EQ(converted(4), convert_done);
    EXPECT_EQ(converted(6), 0x80000000U);
    EXPECT_EQ(converted(-1), 0x80000000U);
}

TEST_F(EffectFirst, TheHandleEndsOnTheNextCut) {
    EditPtr edit = edit_with(shot("one"));
    make_generator_labels(*edit, label_key_35mm_4p, -1);
    const Qb::Ptr<Cel> flat = flatten(edit->get_edit_cel_p(0), 3, 1);
    ce_handle handle = flat->get_start_ceh();
    std::unique_ptr<cut_s> record;
    ASSERT_EQ(convert_event_from_labels(edit, 0, nullptr, handle, record, 1), convert_done);
    EXPECT_STREQ(record->fx_op_out, "DO");
    EXPECT_EQ(handle.index, 4);
}

// A list that begins with its transition; the tracks behind it are listed all the same.
TEST_F(EffectFirst, ATrackThatBeginsWithAnEffectHasNoRecords) {
    EditBuilder builder(plain_edit());
    const SourceId one = builder.add_source(shot("one"));
    for (int track = 0; track < 2; ++track) {
        builder.add_channel(picture);
        builder.add_event(track, event_of(one, 48, 24));
        builder.add_transition(track, dissolve(12, 12));
        builder.add_event(track, event_of(one, 48, 100));
    }
    const EditPtr edit = builder.finish();
    change_events(edit, 0, [](embedded::CelEvents& events) { events.erase(events.begin()); });
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(column(cf_track), "2 2");
}

} // namespace
