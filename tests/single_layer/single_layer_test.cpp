// The main track as one layer, type 3.

#include "tests/single_layer/layer_fixture.h"

#include <gtest/gtest.h>

namespace {

using SingleLayer = LayerTest;

TEST_F(SingleLayer, WithoutAnOpticalNoClipIsCut) {
    add(clip(1, 0, 24, "1A"));
    add(clip(2, 0, 24, "2A"));
    add(with_cue(clip(1, 24, 40, "1B", 100), "Rain"));
    EXPECT_EQ(sl3(), "1|clip|1|0|||||24|A001|KJ1234560100+00|KJ1234560101+07|1||1A|\n"
                     "2|clip|1|24|||||16|A001|KJ1234560106+04|KJ1234560107+03|1||1B|Rain\n");
    EXPECT_TRUE(logger.said("Creating sl3 file " + scratch.file("reel.sl3"), 0));
}

TEST_F(SingleLayer, ClipsAreCutAroundOpticals) {
    add(clip(1, 0, 40, "1A"));
    add(clip(1, 40, 80, "1B", 100));
    add(optical(10, 20, "Blur"));
    cut_s cued = with_cue(optical(30, 60, "Matte"), "Sky");
    cued.shot_name = fromUTF8("Comp", -1);
    add(cued);
    EXPECT_EQ(sl3(), "1|clip|1|0|||||10|A001|KJ1234560100+00|KJ1234560100+09|1||1A|\n"
                     "2|FX(1)||10|||||10||||1|||\n"
                     "3|clip|1|20|||||10|A001|KJ1234560101+04|KJ1234560101+13|1||1A|\n"
                     "4|FX(2)||30|||||30||||1||Comp|Sky\n"
                     "5|clip|1|60|||||20|A001|KJ1234560107+08|KJ1234560108+11|1||1B|\n");
}

TEST_F(SingleLayer, ClipWithoutTransitionsStartsTheRollsAgain) {
    add(with_out(clip(1, 0, 10, "1A"), "DO", 2));
    add(with_in(clip(1, 12, 20, "1B"), "DI", 2));
    add(clip(1, 20, 30, "1C"));
    add(with_out(clip(1, 30, 40, "1D"), "WO", 2));
    EXPECT_EQ(sl3(), "1|clip|1(A)|0|||DISSOLVE|2|12|A001|KJ1234560100+00|KJ1234560100+11|1||1A|\n"
                     "2|clip|1(B)|10|DISSOLVE|2|||10|A001|KJ1234560099+14|KJ1234560100+07|1||1B|\n"
                     "3|clip|1|20|||||10|A001|KJ1234560100+00|KJ1234560100+09|1||1C|\n"
                     "4|clip|1(A)|30|||WIPE|2|12|A001|KJ1234560100+00|KJ1234560100+11|1||1D|\n");
}

TEST_F(SingleLayer, ClipWithoutTransitionsStartsTheRollsAgainBehindAnOddCountToo) {
    add(with_out(clip(1, 0, 10, "1A"), "DO", 2));
    add(clip(1, 12, 20, "1B"));
    add(with_in(clip(1, 22, 30, "1C"), "DI", 2));
    EXPECT_EQ(sl3(), "1|clip|1(A)|0|||DISSOLVE|2|12|A001|KJ1234560100+00|KJ1234560100+11|1||1A|\n"
                     "2|clip|1|12|||||8|A001|KJ1234560100+00|KJ1234560100+07|1||1B|\n"
                     "3|clip|1(A)|20|DISSOLVE|2|||10|A001|KJ1234560099+14|KJ1234560100+07|1||1C|\n");
}

TEST_F(SingleLayer, RenderedMaterialHasNoFilmCodes) {
    add(rendered(1, 0, 24));
    EXPECT_EQ(sl3(), "1|clip|1|0|||||24|RENDERED|||1|||\n");
}

TEST_F(SingleLayer, TransitionsAreShortenedByTheOptical) {
    add(with_out(with_in(clip(1, 10, 40, "1A"), "DI", 6), "DO", 8));
    add(optical(0, 7, "Blur"));
    add(optical(44, 60, "Glow"));
    EXPECT_EQ(sl3(), "1|FX(1)||0|||||7||||1|||\n");
}

TEST_F(SingleLayer, WhatRemainsOfAClipThatBeginsWithItsOpticalIsLeftOut) {
    add(clip(1, 0, 40, "1A"));
    add(clip(1, 40, 60, "1B"));
    add(optical(0, 10, "Blur"));
    EXPECT_EQ(sl3(), "1|FX(1)||0|||||10||||1|||\n"
                     "2|clip|1|40|||||20|A001|KJ1234560100+00|KJ1234560101+03|1||1B|\n");
}

TEST_F(SingleLayer, TransitionOutIsShortenedByTheOptical) {
    add(with_out(with_in(clip(1, 10, 40, "1A"), "DI", 6), "DO", 8));
    add(optical(44, 60, "Glow"));
    EXPECT_EQ(sl3(), "1|clip|1(A)|4|DISSOLVE|6|DISSOLVE|4|40|A001|KJ1234560099+10|KJ1234560102+01|1||1A|\n"
                     "2|FX(1)||44|||||16||||1|||\n");
}

TEST_F(SingleLayer, TransitionsOfOneFrameAreListed) {
    add(with_out(with_in(clip(1, 10, 40, "1A"), "DI", 1), "WO", 1));
    add(optical(60, 70, "Glow"));
    EXPECT_EQ(sl3().substr(0, sl3().find('\n') + 1),
              "1|clip|1(A)|9|DISSOLVE|1|WIPE|1|32|A001|KJ1234560099+15|KJ1234560101+14|1||1A|\n");
}

TEST_F(SingleLayer, OpticalsBehindTheLastEventHaveNoRow) {
    add(clip(1, 0, 20, "1A"));
    add(optical(20, 30, "Blur"));
    EXPECT_EQ(sl3(), "1|clip|1|0|||||20|A001|KJ1234560100+00|KJ1234560101+03|1||1A|\n");
}

TEST_F(SingleLayer, BlackHasNoFilmCodes) {
    add(black(0, 24));
    EXPECT_EQ(sl3(), "1|clip|1|0|||||24|__BLACK|||1|||\n");
}

TEST_F(SingleLayer, MissingKeyNumbersAreMarked) {
    cut_s cut = clip(1, 0, 24, "1A");
    cut.keycode_missing = 1;
    add(cut);
    EXPECT_EQ(sl3(), "1|clip|1|0|||||24|A001|????????0100+00|????????0101+07|1||1A|\n");
}

TEST_F(SingleLayer, EmptyTableLeavesAnOldFile) {
    put_bytes(scratch.file("reel.sl3"), "old\n");
    EXPECT_EQ(sl3(), "old\n");
}

TEST_F(SingleLayer, OldFileIsReplaced) {
    put_bytes(scratch.file("reel.sl3"), "old\n");
    add(black(0, 24));
    EXPECT_EQ(sl3(), "1|clip|1|0|||||24|__BLACK|||1|||\n");
}

} // namespace
