// The lists of opticals, types 1 and 2.

#include "tests/single_layer/layer_fixture.h"

#include <gtest/gtest.h>

namespace {

using OpticalLayers = LayerTest;

TEST_F(OpticalLayers, WithoutAnOpticalNoListIsMade) {
    add(with_cue(clip(1, 0, 48, "1A"), "A cue"));
    EXPECT_EQ(sl1(), "");
    EXPECT_EQ(sl2(), "");
    EXPECT_FALSE(stands("sl1"));
    EXPECT_FALSE(stands("sl2"));
}

TEST_F(OpticalLayers, EachListIsToldOf) {
    sl1();
    sl2();
    EXPECT_TRUE(logger.said("Creating sl1 file " + scratch.file("reel.sl1"), 0));
    EXPECT_TRUE(logger.said("Creating sl2 file " + scratch.file("reel.sl2"), 0));
    EXPECT_EQ(logger.lines.size(), 2U);
}

TEST_F(OpticalLayers, MaterialWithinAnOpticalIsCutToItsSpan) {
    add(clip(1, 0, 30, "1A"));
    add(clip(1, 30, 60, "1B", 100));
    add(clip(1, 60, 90, "1C", 200));
    add(optical(20, 70, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|20|||||10|A001|KJ1234560101+04|KJ1234560101+13|1||1A|\n"
                     "1|Blur|1|30|||||30|A001|KJ1234560106+04|KJ1234560108+01|1||1B|\n"
                     "1|Blur|1|60|||||10|A001|KJ1234560112+08|KJ1234560113+01|1||1C|\n");
}

TEST_F(OpticalLayers, OpticalsWithoutACueLeaveGapsInTheNumbersOfTheCuedList) {
    add(clip(1, 0, 100, "1A"));
    add(optical(0, 10, "Blur"));
    add(with_cue(optical(20, 30, "Matte"), "Sky"));
    EXPECT_EQ(sl1(), "1|Blur|1|0|||||10|A001|KJ1234560100+00|KJ1234560100+09|1||1A|\n"
                     "2|Matte|1|20|||||10|A001|KJ1234560101+04|KJ1234560101+13|1||1A|Sky\n");
    EXPECT_EQ(sl2(), "2|Matte|1|20|||||10|A001|KJ1234560101+04|KJ1234560101+13|1||1A|Sky\n");
}

TEST_F(OpticalLayers, RollsTakeTurnsAndStartAgainOnEachTrack) {
    add(with_out(with_in(clip(1, 4, 28, "1A"), "DI", 4), "DO", 4));
    add(with_out(with_in(clip(1, 28, 40, "1B", 100), "DI", 4), "WO", 2));
    add(clip(1, 46, 60, "1C", 200));
    add(with_in(clip(2, 10, 50, "2A"), "WI", 6));
    add(optical(0, 60, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1(A)|0|DISSOLVE|4|DISSOLVE|4|32|A001|KJ1234560099+12|KJ1234560101+11|1||1A|\n"
                     "1|Blur|1(B)|28|DISSOLVE|4|WIPE|2|14|A001|KJ1234560106+04|KJ1234560107+01|1||1B|\n"
                     "1|Blur|1|40|||||20|A001|KJ1234560112+02|KJ1234560113+05|1||1C|\n"
                     "1|Blur|2(A)|0|WIPE|6|||50|A001|KJ1234560099+06|KJ1234560102+07|1||2A|\n");
}

TEST_F(OpticalLayers, RollsStartAgainBehindAnOddCountToo) {
    add(with_in(clip(1, 4, 60, "1A"), "DI", 4));
    add(with_in(clip(2, 4, 60, "2A"), "DI", 4));
    add(optical(0, 40, "Blur"));
    add(optical(2, 50, "Glow"));
    EXPECT_EQ(sl1(), "1|Blur|1(A)|0|DISSOLVE|4|||40|A001|KJ1234560099+12|KJ1234560102+03|1||1A|\n"
                     "1|Blur|2(A)|0|DISSOLVE|4|||40|A001|KJ1234560099+12|KJ1234560102+03|1||2A|\n"
                     "2|Glow|1(A)|2|DISSOLVE|2|||48|A001|KJ1234560099+14|KJ1234560102+13|1||1A|\n"
                     "2|Glow|2(A)|2|DISSOLVE|2|||48|A001|KJ1234560099+14|KJ1234560102+13|1||2A|\n");
}

// Track 1 goes on behind the optical, track 2 ends within it.
TEST_F(OpticalLayers, EachTrackIsLaidFromTheOpticalsFirstFrame) {
    add(clip(1, 0, 20, "1A"));
    add(clip(1, 20, 40, "1B"));
    add(clip(1, 40, 60, "1C"));
    add(clip(2, 0, 20, "2A"));
    add(clip(3, 0, 60, "3A"));
    add(optical(10, 30, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|10|||||10|A001|KJ1234560100+10|KJ1234560101+03|1||1A|\n"
                     "1|Blur|1|20|||||10|A001|KJ1234560100+00|KJ1234560100+09|1||1B|\n"
                     "1|Blur|2|10|||||10|A001|KJ1234560100+10|KJ1234560101+03|1||2A|\n"
                     "1|Blur|3|10|||||20|A001|KJ1234560100+10|KJ1234560101+13|1||3A|\n");
}

TEST_F(OpticalLayers, RenderedMaterialHasNoFilmCodes) {
    add(rendered(1, 0, 24));
    add(optical(0, 24, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|0|||||24|RENDERED|||1|||\n");
}

TEST_F(OpticalLayers, ClipWithoutTransitionsDoesNotStartTheRollsAgain) {
    add(with_out(clip(1, 0, 10, "1A"), "DO", 2));
    add(clip(1, 10, 20, "1B"));
    add(with_in(clip(1, 22, 30, "1C"), "DI", 2));
    add(optical(0, 30, "Blur"));
    const std::string list = sl1();
    EXPECT_NE(list.find("1|Blur|1(A)|0|"), std::string::npos) << list;
    EXPECT_NE(list.find("1|Blur|1|10|"), std::string::npos) << list;
    EXPECT_NE(list.find("1|Blur|1(B)|20|"), std::string::npos) << list;
}

TEST_F(OpticalLayers, TransitionAheadOfTheOpticalIsShortenedOrGone) {
    add(with_in(clip(1, 10, 40, "1A"), "DI", 6));
    add(optical(8, 20, "Blur"));
    add(optical(10, 20, "Glow"));
    add(optical(15, 20, "Matte"));
    EXPECT_EQ(sl1(), "1|Blur|1(A)|8|DISSOLVE|2|||12|A001|KJ1234560099+14|KJ1234560100+09|1||1A|\n"
                     "2|Glow|1|10|||||10|A001|KJ1234560100+00|KJ1234560100+09|1||1A|\n"
                     "3|Matte|1|15|||||5|A001|KJ1234560100+05|KJ1234560100+09|1||1A|\n");
}

TEST_F(OpticalLayers, BlackHasALengthAndNoFilmCodes) {
    add(black(0, 24));
    add(optical(0, 24, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|0|||||24|__BLACK|||1|||\n");
}

TEST_F(OpticalLayers, MissingKeyNumbersAreMarked) {
    cut_s cut = clip(1, 0, 24, "1A");
    cut.keycode_missing = 1;
    put_text(cut.cam_reel, "__NOLOG");
    add(cut);
    add(optical(0, 24, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|0|||||24|__NOLOG|????????0100+00|????????0101+07|1||1A|\n");
}

TEST_F(OpticalLayers, SpeedMovesTheFilmCodes) {
    cut_s cut = clip(1, 0, 20, "1A");
    cut.speed = -2;
    cut.keycode_out = key("KJ1234560097+08");
    put_text(cut.utr_fx_name, "Flop");
    add(cut);
    add(optical(5, 15, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|5|||||10|A001|KJ1234560099+06|KJ1234560098+04|-2|Flop|1A|\n");
}

TEST_F(OpticalLayers, PiecesAreLaidEndToEndOnTheTrackWhateverTheGaps) {
    add(clip(1, 5, 10, "1A"));
    add(clip(1, 15, 20, "1B"));
    add(optical(0, 30, "Blur"));
    EXPECT_EQ(sl1(), "1|Blur|1|0|||||10|A001|KJ1234560099+11|KJ1234560100+04|1||1A|\n"
                     "1|Blur|1|10|||||10|A001|KJ1234560099+11|KJ1234560100+04|1||1B|\n");
}

TEST_F(OpticalLayers, WhatAnEventLacksIsNotTakenFromTheOneBefore) {
    cut_s first = clip(1, 0, 10, "1A");
    put_text(first.utr_fx_name, "Flop");
    add(first);
    add(clip(1, 10, 20, ""));
    add(clip(2, 0, 20, ""));
    add(with_cue(optical(-5, -4, "Glow"), "Sky"));
    add(optical(12, 20, "Blur"));
    EXPECT_EQ(sl1(), "2|Blur|1|12|||||8|A001|KJ1234560100+02|KJ1234560100+09|1|||\n"
                     "2|Blur|2|12|||||8|A001|KJ1234560100+12|KJ1234560101+03|1|||\n");
}

TEST_F(OpticalLayers, ExtremeNumbersAreListed) {
    constexpr int highest = 2147483647;
    cut_s cut = clip(1, 0, 24, "1A");
    cut.edit_in = -highest;
    cut.edit_out = highest;
    cut.fx_len_in = cut.fx_len_out = highest;
    cut.speed = 1e300;
    add(cut);
    add(optical(-highest, highest, "Blur"));
    add(optical(highest, -highest, "Glow"));
    sl1();
    EXPECT_TRUE(logger.said("Creating sl1 file " + scratch.file("reel.sl1"), 0));
}

} // namespace
