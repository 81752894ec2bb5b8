#include "cutlist/fx_opticals.h"
#include "tests/generator/generator_fixture.h"

using namespace generator_test;

namespace {

class Opticals : public GeneratorTest {
protected:
    EditBuilder builder{plain_edit()};
    const SourceId one = builder.add_source(shot("one"));

    /// V1 with one event of 96 frames, and an FX channel.
    void add_v1_and_fx() {
        builder.add_channel(picture);
        builder.add_channel(picture, chan_fx);
        builder.add_event(0, event_of(one, 96));
        builder.add_gap(1, frames(24));
    }
    void add_effects(std::vector<EffectDescription> effects, int length = 24) {
        builder.add_gap(1, frames(length), std::move(effects));
    }
};

TEST_F(Opticals, AnEffectOnAnFxChannelMakesARecord) {
    add_v1_and_fx();
    add_effects({lab_effect("Blur", {0, 1})});
    EXPECT_TRUE(make(builder));
    ASSERT_EQ(rows(), 2U);
    EXPECT_EQ(field(1, cf_optical_record), "1");
    EXPECT_EQ(field(1, cf_track), "0");
    EXPECT_EQ(field(1, cf_optical_tracks), "3");
    EXPECT_EQ(field(1, cf_optical_layer_count), "2");
    EXPECT_EQ(field(1, cf_edit_in), "24");
    EXPECT_EQ(field(1, cf_edit_out), "48");
    EXPECT_EQ(field(1, cf_optical_name), "Blur");
    EXPECT_EQ(field(1, cf_optical_in), "0");
    EXPECT_EQ(field(1, cf_optical_out), "96");
    EXPECT_EQ(column(cf_optical_ref), "1 1");
}

TEST_F(Opticals, AnEffectWithoutDurationMakesNone) {
    add_v1_and_fx();
    add_effects({lab_effect("Blur", {0})}, 0);
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(rows(), 1U);
}

TEST_F(Opticals, AnEffectShorterThanTheClockCanTellMakesNone) {
    builder.add_channel(picture);
    builder.add_channel(picture, chan_fx);
    builder.add_event(0, event_of(one, 96));
    builder.add_gap(1, Fraction(1, 2000000000), {lab_effect("Blur", {0})});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(rows(), 1U);
}

TEST_F(Opticals, TwoComponentsHaveNoName) {
    add_v1_and_fx();
    add_effects({lab_effect("Blur", {0}), lab_effect("Flop")});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(1, cf_optical_name), "*unknown-effect-type*");
}

TEST_F(Opticals, ANameIsCutToItsColumn) {
    add_v1_and_fx();
    add_effects({lab_effect(std::string(50, 'n'), {0})});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(1, cf_optical_name), std::string(30, 'n'));
}

TEST_F(Opticals, ATrackOutsideTheListIsNoLayer) {
    add_v1_and_fx();
    builder.add_channel(sound);
    add_effects({lab_effect("Blur", {0, 2, 99})});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(1, cf_optical_tracks), "1");
    EXPECT_EQ(field(1, cf_optical_layer_count), "1");
}

TEST_F(Opticals, AnEffectOnTracksOutsideTheListAloneMakesNone) {
    add_v1_and_fx();
    add_effects({lab_effect("Blur", {2, 99})});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(rows(), 1U);
}

TEST_F(Opticals, TheMaskWrapsAtThirtyTwoChannels) {
    for (int i = 0; i < 34; ++i)
        builder.add_channel(picture);
    builder.add_channel(picture, chan_fx);
    builder.add_event(0, event_of(one, 96));
    builder.add_gap(34, frames(24), {lab_effect("Blur", {1, 33, 31})});
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(1, cf_optical_layer_count), "3");
    EXPECT_EQ(field(1, cf_optical_tracks), std::to_string(INT32_MIN + 2));
}

TEST_F(Opticals, AnEffectOfV1CountsWhenItIsTheLabs) {
    builder.add_channel(picture);
    EffectDescription grade = lab_effect("Grade");
    grade.for_the_lab = false;
    builder.add_event(0, with_effect(event_of(one, 24), grade));
    builder.add_event(0, with_effect(event_of(one, 24, 100), lab_effect("Flop")));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_optical_name), "- - Flop");
    EXPECT_EQ(field(2, cf_edit_in), "24");
    EXPECT_EQ(field(2, cf_optical_tracks), "1");
}

TEST_F(Opticals, ATransitionIsNoOptical) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 48, 24));
    builder.add_transition(0, dissolve(12, 12));
    builder.add_event(0, event_of(one, 48, 100));
    const EditPtr edit = builder.finish();
    EditPtr listed = edit;
    event_array events;
    analyse_fx_opticals(listed, 0, nullptr, events);
    EXPECT_TRUE(events.records().empty());
}

TEST_F(Opticals, TheFirstCueCountsWhetherPrintedOrNot) {
    add_v1_and_fx();
    add_effects({lab_effect("Blur", {0})});
    builder.add_cue(1, EditBuilder::CueLevel::track, cue(40, "later"));
    builder.add_cue(1, EditBuilder::CueLevel::track, cue(25, "first", 0));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_clip_cue), "0 1");
    EXPECT_EQ(field(1, cf_cue_description), "first");
}

TEST_F(Opticals, ObjectsAreTakenForEffectsByTheirStampAndTheirGraph) {
    builder.add_channel(picture);
    builder.add_channel(picture, chan_fx);
    builder.add_channel(picture, 1);
    EffectDescription grade = lab_effect("Grade");
    grade.for_the_lab = false;
    builder.add_event(0, event_of(one, 24));
    builder.add_event(0, with_effect(event_of(one, 24), grade));
    builder.add_event(0, with_effect(event_of(one, 24), lab_effect("Flop")));
    builder.add_transition(0, dissolve(4, 4));
    builder.add_event(0, event_of(one, 24));
    builder.add_gap(1, frames(24), {grade});
    builder.add_event(2, with_effect(event_of(one, 24), lab_effect("Flop")));
    const EditPtr edit = builder.finish();
    const auto classes = [&](int chan) {
        std::string all;
        for (CelIterator it(edit, chan); it.valid(); ++it)
            all += std::to_string(classify_event_object(it));
        return all;
    };
    EXPECT_EQ(classes(0), "03140");
    EXPECT_EQ(classes(1), "2");
    EXPECT_EQ(classes(2), "2");
}

TEST_F(Opticals, AnEffectOverAnUpperTrackIsNamedOnItsCutWhenItIsAlone) {
    builder.add_channel(picture);
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 96));
    builder.add_event(1, with_effect(event_of(one, 24), lab_effect("Ghost")));
    builder.add_event(1, with_effect(event_of(one, 24), lab_effect("Two tracks", {0, 1})));
    builder.add_event(1, event_of(one, 24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_utr_fx_present), "0 1 1 0");
    EXPECT_EQ(field(1, cf_utr_fx_name), "Ghost");
    EXPECT_EQ(field(2, cf_utr_fx_name), "Unknown Effect");
}

} // namespace
