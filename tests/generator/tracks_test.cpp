#include "tests/generator/generator_fixture.h"

using namespace generator_test;

namespace {

class Tracks : public GeneratorTest {
protected:
    EditBuilder builder{plain_edit()};
    const SourceId one = builder.add_source(shot("one"));
    const SourceId two = builder.add_source(shot("two", "KJ1234560300+00"));

    void one_transition_to(const TransitionDescription& transition) {
        builder.add_channel(picture);
        builder.add_event(0, event_of(one, 48, 24));
        builder.add_transition(0, transition);
        builder.add_event(0, event_of(two, 48, 24));
    }
};

TEST_F(Tracks, ATransitionBelongsToBothCutsThatItJoins) {
    one_transition_to(dissolve(8, 16));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_edit_in), "0 64 0");
    EXPECT_EQ(column(cf_edit_out), "40 96 96");
    EXPECT_EQ(column(cf_fx_op_out), "DO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- DI -");
    EXPECT_EQ(column(cf_fx_len_out), "24 0 0");
    EXPECT_EQ(column(cf_fx_len_in), "0 24 0");
    EXPECT_EQ(field(0, cf_fx_name_out), "Cross");
    EXPECT_EQ(field(2, cf_optical_name), "single-layer transition");
}

TEST_F(Tracks, AWipeTellsItsDirectionAndPattern) {
    one_transition_to(wipe(12, 12, 7, true));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_fx_op_out), "WO");
    EXPECT_EQ(field(0, cf_fx_mod_out), "2.007");
    EXPECT_EQ(field(1, cf_fx_op_in), "WI");
    EXPECT_EQ(field(1, cf_fx_mod_in), "2.007");
}

TEST_F(Tracks, ALongPatternIsCutToItsColumn) {
    one_transition_to(wipe(12, 12, 12345, false));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_fx_mod_out), "1.123");
    EXPECT_EQ(field(1, cf_fx_mod_in), "1.123");
}

TEST_F(Tracks, ATransitionWithoutANameIsAnUnknownEffect) {
    one_transition_to(dissolve(12, 12, ""));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_fx_name_out), "Unknown Effect");
}

TEST_F(Tracks, ATransitionsNameIsCutToThirtyBytes) {
    one_transition_to(dissolve(12, 12, std::string(40, 'n')));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_fx_name_out), std::string(30, 'n'));
}

TEST_F(Tracks, ADissolveFromBlackIsAFadeIn) {
    builder.add_channel(picture);
    builder.add_black(0, frames(24));
    builder.add_transition(0, dissolve(12, 12));
    builder.add_event(0, event_of(two, 48, 24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_fx_op_out), "DO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- FI -");
}

TEST_F(Tracks, ADissolveToBlackIsAFadeOut) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(two, 48, 24));
    builder.add_transition(0, dissolve(12, 12));
    builder.add_black(0, frames(24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_fx_op_out), "FO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- DI -");
}

TEST_F(Tracks, AWipeAgainstBlackStaysAWipe) {
    builder.add_channel(picture);
    builder.add_black(0, frames(24));
    builder.add_transition(0, wipe(12, 12, 1, false));
    builder.add_event(0, event_of(two, 96, 24));
    builder.add_transition(0, wipe(12, 12, 1, false));
    builder.add_black(0, frames(24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_fx_op_out), "WO WO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- WI WI -");
}

TEST_F(Tracks, BlackBetweenTwoBlacksIsAFadeOnTheLaterSide) {
    builder.add_channel(picture);
    builder.add_black(0, frames(24));
    builder.add_transition(0, dissolve(4, 4));
    builder.add_black(0, frames(24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_fx_op_out), "DO - -");
    EXPECT_EQ(column(cf_fx_op_in), "- FI -");
}

TEST_F(Tracks, ATransitionAtATracksEndDoesNotReachTheNextTrack) {
    builder.add_channel(picture);
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 48, 24));
    builder.add_transition(0, dissolve(12, 0));
    builder.add_event(1, event_of(two, 48, 24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_track), "1 1 2 0");
    EXPECT_EQ(column(cf_fx_op_out), "FO - - -");
    EXPECT_EQ(column(cf_fx_op_in), "- DI - -");
}

TEST_F(Tracks, OpticalsOfFxAndOfTheFirstPlainTrackAreFoundInChannelOrder) {
    builder.add_channel(picture);
    builder.add_channel(picture, chan_fx);
    builder.add_channel(picture);
    builder.add_event(0, with_effect(event_of(one, 48), lab_effect("Flop")));
    builder.add_gap(1, frames(24), {lab_effect("Blur", {0})});
    builder.add_event(2, with_effect(event_of(two, 48), lab_effect("Ghost")));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(logger.lines.at(0), (LoggedLine{"Analysing opticals on V1", 0}));
    EXPECT_EQ(logger.lines.at(1), (LoggedLine{"Analysing opticals on FX track", 0}));
    EXPECT_EQ(logger.lines.at(2), (LoggedLine{"Analysing track V1", 0}));
    EXPECT_EQ(logger.lines.at(3), (LoggedLine{"Analysing track V2", 0}));
    EXPECT_EQ(column(cf_optical_name), "- - Flop Blur");
    EXPECT_EQ(column(cf_track), "1 2 0 0");
    EXPECT_EQ(column(cf_utr_fx_name), "- Ghost - -");
}

TEST_F(Tracks, AnUnlistedTrackCountsForOpticalsButNotForCuts) {
    builder.add_channel(picture, chan_unlisted);
    builder.add_channel(picture);
    builder.add_event(0, with_effect(event_of(one, 24), lab_effect("Blur")));
    builder.add_event(1, with_effect(event_of(two, 48), lab_effect("Flop")));
    block.set("chan_num", "1");
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_optical_name), "- Blur");
    EXPECT_EQ(column(cf_track), "1 0");
    EXPECT_EQ(field(0, cf_src_reelid), "Ttwo");
}

TEST_F(Tracks, AGapMakesNoRecord) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 24));
    builder.add_gap(0, frames(24));
    builder.add_event(0, event_of(two, 24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_edit_in), "0 48");
}

TEST_F(Tracks, ASoundListHasNoTransitionsWhereCrossfadesCanGo) {
    block.set("chan_type", "2");
    builder.add_channel(sound);
    builder.add_event(0, event_of(one, 48, 24));
    builder.add_transition(0, dissolve(12, 12));
    builder.add_event(0, event_of(two, 48, 24));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(logger.lines.at(0), (LoggedLine{"Analysing sound track", 0}));
    EXPECT_EQ(column(cf_edit_in), "0 48");
    EXPECT_EQ(column(cf_edit_out), "48 96");
    EXPECT_EQ(column(cf_fx_op_out), "- -");
    EXPECT_EQ(column(cf_fx_op_in), "- -");
    EXPECT_EQ(column(cf_track), "0 0");
    EXPECT_EQ(column(cf_event), "1 2");
    EXPECT_EQ(param("channel"), "A00");
}

TEST_F(Tracks, SoundIsNotSearchedForEffects) {
    block.set("chan_type", "2");
    builder.add_channel(sound);
    builder.add_event(0, with_effect(event_of(one, 48), lab_effect("Echo")));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_utr_fx_present), "0");
    EXPECT_EQ(column(cf_utr_fx_name), "-");
}

TEST_F(Tracks, AChannelTypeOfNeitherKindListsNothing) {
    block.set("chan_type", "3");
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 48, 24));
    EXPECT_FALSE(make(builder));
    EXPECT_EQ(scratch.count_files(), 0U);
}

} // namespace
