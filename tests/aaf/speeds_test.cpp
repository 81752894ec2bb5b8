// Speeds: constant, backward, still and in curves.

#include "tests/aaf/aaf_edits.h"

#include <gmock/gmock.h>

using namespace aaf_edits;

namespace {

Object motion(std::int64_t length, Object input, Object parameter) {
    return effect(speed_control, length, {std::move(input)}, {std::move(parameter)});
}

TEST(AafSpeeds, AMapOfOffsetsIsExact) {
    EXPECT_EQ(drawn(track(motion(8, clip(1, 100, 16), varying(speed_offset_map, {{0, 0}, {8, 16}})))), "A 0-8 @100*2");
    EXPECT_EQ(drawn(track(motion(9, clip(1, 100, 3), varying(speed_offset_map, {{0, 0}, {9, 3}})))),
              "A 0-9 @100*0.333");
}

TEST(AafSpeeds, BackwardTheFirstPointIsTheFrameShownFirst) {
    EXPECT_EQ(drawn(track(motion(8, clip(1, 100, 8), varying(speed_offset_map, {{0, 7}, {8, -1}})))), "A 0-8 @107*-1");
}

TEST(AafSpeeds, TheMapOfOffsetsWinsOverSpeedAndRatio) {
    Object group =
        effect(speed_control, 8, {clip(1, 0, 16)},
               {constant(speed_ratio, 1), varying(speed_map, {{0, 3}}), varying(speed_offset_map, {{0, 0}, {8, 16}})});
    EXPECT_EQ(drawn(track(std::move(group))), "A 0-8 @0*2");
}

TEST(AafSpeeds, ASpeedMapOfOnePointIsConstant) {
    EXPECT_EQ(drawn(track(motion(12, clip(1, 100, 4), varying(speed_map, {{0, 333333333, 1000000000}})))),
              "A 0-12 @100*0.333");
    EXPECT_EQ(drawn(track(motion(12, clip(1, 100, 12), varying(speed_map, {{0, -1}})))), "A 0-12 @111*-1");
}

TEST(AafSpeeds, TheRatioIsOutputByInput) {
    EXPECT_EQ(drawn(track(motion(48, clip(1, 0, 96), constant(speed_ratio, 1, 2)))), "A 0-48 @0*2");
    EXPECT_EQ(drawn(track(motion(50, clip(1, 150, 50), constant(speed_ratio, -1)))), "A 0-50 @199*-1");
    EXPECT_EQ(drawn(track(motion(90, clip(1, 0, 100), constant(speed_ratio, 1111111, 1000000)))), "A 0-90 @0*0.9");
}

TEST(AafSpeeds, StillsHoldOneFrame) {
    EXPECT_EQ(drawn(track(effect(repeat_control, 20, {clip(1, 30, 1)}))), "A 0-20 @30*0");
    EXPECT_EQ(drawn(track(motion(20, clip(1, 30, 1), varying(speed_map, {{0, 0}})))), "A 0-20 @30*0");
    EXPECT_EQ(drawn(track(motion(20, clip(1, 30, 1), varying(speed_offset_map, {{0, 4}})))), "A 0-20 @34*0");
}

TEST(AafSpeeds, ARatioOfNothingHoldsOneFrameWithADoubt) {
    const auto result = read(track(motion(20, clip(1, 30, 20), constant(speed_ratio, 0))));
    EXPECT_EQ(drawn(result), "A 0-20 @30*0");
    EXPECT_TRUE(warns_of(result, "its ratio of lengths is 0, which counts as a held frame"));
}

TEST(AafSpeeds, AStillMayBeToldByTheNameOfItsDefinition) {
    const Auid own = auid("01234567-89ab-cdef-0123-456789abcdef");
    Made made = track(effect(own, 20, {clip(1, 30, 1)}));
    made.operations.push_back(defined(own, "Repeat Control"));
    EXPECT_EQ(drawn(made), "A 0-20 @30*0");
    EXPECT_FALSE(warns_of(read(made), "nothing tells the speed"));
}

TEST(AafSpeeds, OffsetsThatStayUntilTheNextPointAreHeldFrames) {
    constexpr Auid stays = auid("5b6c85a5-0ede-11d3-80a9-006008143e6f");
    EXPECT_EQ(drawn(track(motion(10, clip(1, 100, 30), varying(speed_offset_map, {{0, 1}, {10, 21}}, stays)))),
              "A 0-10 @101*0");
    EXPECT_EQ(drawn(track(motion(10, clip(1, 100, 30), varying(speed_offset_map, {{2, 1}, {6, 21}}, stays)))),
              "A 0-6 @101*0 | A 6-10 @121*0");
}

TEST(AafSpeeds, SpeedWithoutParametersIsToldFromTheLengthsWithADoubt) {
    const auto result = read(track(effect(speed_control, 10, {clip(1, 0, 20)})));
    EXPECT_EQ(drawn(result), "A 0-10 @0*2");
    EXPECT_TRUE(warns_of(result, "nothing tells the speed"));
}

TEST(AafSpeeds, StraightLinesFromPointToPointAreExactPieces) {
    EXPECT_EQ(drawn(track(motion(20, clip(1, 100, 30), varying(speed_offset_map, {{0, 0}, {10, 20}, {20, 25}})))),
              "A 0-10 @100*2 | A 10-20 @120*0.5");
    EXPECT_EQ(drawn(track(motion(20, clip(1, 100, 30), varying(speed_offset_map, {{0, 5}, {10, 5}, {20, -5}})))),
              "A 0-10 @105*0 | A 10-20 @105*-1");
}

TEST(AafSpeeds, ACurveIsItsMeanAndAnEffectForTheLab) {
    const auto result =
        read(track(motion(20, clip(1, 100, 30), varying(speed_offset_map, {{0, 0}, {10, 20}, {20, 30}}, cubic))));
    EXPECT_EQ(drawn(result), "A 0-20 @100*1.5");
    EXPECT_TRUE(warns_of(result, "has no exact speed"));
    const auto ramp = read(track(motion(20, clip(1, 100, 30), varying(speed_map, {{0, 1}, {20, 2}}))));
    EXPECT_EQ(drawn(ramp), "A 0-20 @100*1.5");
    EXPECT_TRUE(warns_of(ramp, "has no exact speed"));
}

TEST(AafSpeeds, ACurveThroughPointsOnOneLineIsALine) {
    const auto result =
        read(track(motion(20, clip(1, 0, 40), varying(speed_offset_map, {{0, 0}, {10, 20}, {20, 40}}, cubic))));
    EXPECT_EQ(drawn(result), "A 0-20 @0*2");
    EXPECT_FALSE(warns_of(result, "has no exact speed"));
}

TEST(AafSpeeds, ANestPlaysAtTheSpeedOfItsEffect) {
    EXPECT_EQ(drawn(track(motion(15, sequence({clip(1, 0, 10), clip(2, 50, 20)}),
                                 varying(speed_offset_map, {{0, 0}, {15, 30}})))),
              "A 0-5 @0*2 | B 5-15 @50*2");
    EXPECT_EQ(drawn(track(motion(30, sequence({clip(1, 0, 10), clip(2, 50, 20)}),
                                 varying(speed_offset_map, {{0, 29}, {30, -1}})))),
              "B 0-20 @69*-1 | A 20-30 @9*-1");
}

TEST(AafSpeeds, OverATransitionTheMaterialMovesByTheSpeed) {
    EXPECT_EQ(drawn(track(sequence({clip(1, 0, 40), transition(8, 4),
                                    motion(20, clip(2, 100, 40), varying(speed_offset_map, {{0, 0}, {20, 40}}))}))),
              "A 0-32 @0 | x 32-40 | B 40-52 @116*2");
}

TEST(AafSpeeds, ARetimeMayStandInACompositionOfItsOwn) {
    Made made = track(clip(50, 5, 10));
    made.mobs.push_back(
        composition(50, "A retimed",
                    {slot(1, {24}, motion(40, clip(1, 0, 80), varying(speed_offset_map, {{0, 0}, {40, 80}})))}, false));
    EXPECT_EQ(drawn(made), "A 0-10 @10*2");
}

TEST(AafSpeeds, OperationsByTheNameOfTheirDefinitionAreSpeedsToo) {
    const Auid own = auid("01234567-89ab-cdef-0123-456789abcdef");
    Made made = track(effect(own, 10, {clip(1, 0, 20)}, {constant(speed_ratio, 1, 2)}));
    EXPECT_EQ(drawn(made), "A 0-10 @0") << "an effect that nothing is known of changes no time";
    made.operations.push_back(defined(own, "Motion Control"));
    EXPECT_EQ(drawn(made), "A 0-10 @0*2");
    made.operations[0] = defined(own, "Fluid", true);
    EXPECT_EQ(drawn(made), "A 0-10 @0*2");
}

TEST(AafSpeeds, FloatingNumbersOfAnOwnTypeAreRead) {
    Object map = varying(speed_map, {{0, 1}});
    Objects points;
    points.push_back(Object(auid("0d010101-0101-1900-060e-2b3402060101"))
                         .rational(pid::point_time, 0, 1)
                         .indirect_double(pid::point_value, 1.5));
    map.vector(pid::point_list, std::move(points));
    EXPECT_EQ(drawn(track(motion(10, clip(1, 0, 15), std::move(map)))), "A 0-10 @0*1.5");
}

TEST(AafSpeeds, FloatingAndWholeNumbersOfAnySizeAreRead) {
    Object ratio(Class::constant_value);
    ratio.id(pid::parameter_definition, speed_ratio).indirect_float(pid::constant_value, 0.5F);
    EXPECT_EQ(drawn(track(motion(10, clip(1, 0, 40), ratio))), "A 0-10 @0*2");
    ratio.indirect_whole(pid::constant_value, -1);
    EXPECT_EQ(drawn(track(motion(10, clip(1, 0, 10), ratio))), "A 0-10 @9*-1");
    ratio.indirect_natural(pid::constant_value, 2);
    EXPECT_EQ(drawn(track(motion(20, clip(1, 0, 40), ratio))), "A 0-20 @0*0.5");
    ratio.indirect_text(pid::constant_value, "2");
    EXPECT_EQ(drawn(track(motion(20, clip(1, 0, 10), ratio))), drawn(track(motion(20, clip(1, 0, 10), clip(1, 0, 1)))));
}

TEST(AafSpeeds, ACutBetweenTwoFramesLiesWhereTheNextBegins) {
    // Frames 0 to 3 of the output show 0, 3, 6 and 9 of the nest, frame 4 its 12, the third of B.
    EXPECT_EQ(drawn(track(motion(7, sequence({clip(1, 100, 10), clip(2, 200, 11)}), constant(speed_ratio, 1, 3)))),
              "A 0-4 @100*3 | B 4-7 @202*3");
    // Backward from 20, the last of B: frame 4 shows 8, the second last of A.
    EXPECT_EQ(drawn(track(motion(7, sequence({clip(1, 100, 10), clip(2, 200, 11)}), constant(speed_ratio, -1, 3)))),
              "B 0-4 @210*-3 | A 4-7 @108*-3");
    EXPECT_EQ(drawn(track(
                  motion(3, sequence({clip(1, 100, 7), clip(2, 200, 1), clip(3, 0, 4)}), constant(speed_ratio, 1, 4)))),
              "A 0-2 @100*4 | C 2-3 @0*4")
        << "what no frame shows is no event";
}

TEST(AafSpeeds, WhatARetimedNestLacksIsToldOf) {
    const auto result = read(track(motion(10, sequence({clip(1, 0, 10)}), constant(speed_ratio, 1, 2))));
    EXPECT_TRUE(warns_of(result, "slot 1: it runs 10 frames past the end of what it holds"));
}

// A 0-20 and B 12-32 with the transition over 12-20 and the cut at 14, at twice the speed, then backward.
TEST(AafSpeeds, ATransitionInANestPlaysAtTheSpeedOfItsEffect) {
    const Object nest = sequence({clip(1, 0, 20), transition(8, 2), clip(2, 50, 20)});
    EXPECT_EQ(drawn(track(motion(16, nest, varying(speed_offset_map, {{0, 0}, {16, 32}})))),
              "A 0-6 @0*2 | x 6-10 | B 10-16 @58*2");
    const auto backward = read(track(motion(16, nest, varying(speed_offset_map, {{0, 31}, {16, -1}}))));
    EXPECT_EQ(drawn(backward), "B 0-6 @69*-2 | x 6-10 | A 10-16 @11*-2");
}

// The same nest: its transition stays with the piece of a speed that has its cut, or is left out.
TEST(AafSpeeds, ATransitionInANestThatNoPieceOfASpeedHasTheCutOfIsToldOnce) {
    const Object nest = sequence({clip(1, 0, 20), transition(8, 2), clip(2, 50, 20)});
    const auto told = [&](std::int64_t length, const std::vector<ControlPoint>& map) {
        const auto result = read(track(motion(length, nest, varying(speed_offset_map, map))));
        return std::count_if(result.warnings.begin(), result.warnings.end(), [](const embedded::Warning& warning) {
            return warning.text.find("left out, as what is taken of its track begins or ends inside it") !=
                   std::string::npos;
        });
    };
    EXPECT_EQ(told(16, {{0, 0}, {16, 32}}), 0);
    EXPECT_EQ(told(24, {{0, 0}, {8, 16}, {24, 32}}), 0) << "the cut lies in the first piece";
    EXPECT_EQ(told(20, {{0, 0}, {7, 14}, {20, 27}}), 1) << "the speed changes at the cut";
    EXPECT_EQ(told(10, {{0, 16}, {10, 16}}), 1) << "a frame of it is held";
    EXPECT_EQ(told(8, {{0, 16}, {4, 20}, {8, 28}}), 1) << "it begins behind the cut";
}

/// What each frame shows, as "A100 A102".
std::string shown_frames(const formats::ReadResult& result, int frames) {
    const std::vector<ChannelEvent> events = material(result);
    std::string text;
    for (int frame = 0; frame < frames; ++frame) {
        std::size_t at = events.size() - 1;
        while (at > 0 && frame < std::lround(events[at].edit_time * 24))
            --at;
        const double since = frame / 24.0 - events[at].edit_time;
        const double time = events[at].source_time + since * static_cast<double>(events[at].speed);
        text += toUTF8(source_of(result, at)->getName()).c_str() + std::to_string(std::lround(time * 24)) + " ";
    }
    return text;
}

// Frames that the inner speed leaves out are never shown, whichever way the other one plays what is left.
TEST(AafSpeeds, ASpeedInASpeedShowsFramesOfTheInnerOne) {
    for (const int inner : {1, 2, 3, -1, -3})
        for (const int outer : {1, 2, -1, -2}) {
            const int of_inner = 60 / std::abs(inner), frames = of_inner / std::abs(outer);
            const Object nest = sequence({clip(1, 100, 29), clip(2, 200, 31)});
            std::string expected;
            for (int frame = 0; frame < frames; ++frame) {
                const int place = frame_played(inner, 60, frame_played(outer, of_inner, frame));
                expected += place < 29 ? "A" + std::to_string(100 + place) : "B" + std::to_string(171 + place);
                expected += " ";
            }
            EXPECT_EQ(shown_frames(read(track(played(outer, of_inner, played(inner, 60, nest)))), frames), expected)
                << inner << " " << outer;
        }
}

// Half of twice the speed holds frames that the inner speed chose; half of half is a quarter.
TEST(AafSpeeds, ASpeedInASpeedThatNoneOfBothShowsIsToldOf) {
    const auto told = [](int inner_out, int inner_in, int outer_out, int outer_in) {
        const Object inner = effect(speed_control, 24 * inner_out / inner_in, {clip(1, 100, 24)},
                                    {constant(speed_ratio, inner_out, inner_in)});
        const int length = 24 * inner_out * outer_out / inner_in / outer_in;
        return warns_of(read(track(effect(speed_control, length, {sequence({inner})},
                                          {constant(speed_ratio, outer_out, outer_in)}))),
                        "it plays what has a speed already");
    };
    EXPECT_TRUE(told(1, 2, 2, 1));
    EXPECT_TRUE(told(1, 2, 2, 3));
    EXPECT_TRUE(told(2, 3, 2, 1));
    EXPECT_FALSE(told(2, 1, 2, 1));
    EXPECT_FALSE(told(2, 1, 1, 3));
    EXPECT_FALSE(told(1, 2, 1, 3));
    EXPECT_FALSE(told(1, 1, 2, 3));
    EXPECT_FALSE(told(1, 2, 1, 1));
}

TEST(AafSpeeds, AFreezeOfASpeedHoldsAFrameOfIt) {
    for (const int inner : {1, 2, 3, -1, -3}) {
        const Object nest = played(inner, 60, sequence({clip(1, 100, 60)}));
        const auto result = read(track(motion(10, nest, varying(speed_offset_map, {{0, 5}, {10, 5}}))));
        EXPECT_EQ(drawn(result), "A 0-10 @" + std::to_string(100 + frame_played(inner, 60, 5)) + "*0") << inner;
    }
}

} // namespace
