// Compositions within tracks: spliced in, rendered, trimmed, and what of their transitions stays.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

const Extra sound = "\"kind\": \"Audio\"";
const Extra off = "\"enabled\": false";

std::string around(const std::string& nest) { return timeline({track({clip("A", 0, 2), nest, clip("Z", 0, 2)})}); }

std::string effect_name(const formats::ReadResult& result, int chan, int number) {
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(chan);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        if (!at.is_in_point() || !at.get_channel_event().cookie.isEffect() || number-- > 0) continue;
        const Qb::Ptr<FXGraphNodeBase> node = result.edit->getVideoNode(at.getEffectGraph());
        return node ? toUTF8(node->getName()).c_str() : "";
    }
    return "none";
}

//     | A | [ B C ] | Z |   ->   | A | B | C | Z |
TEST(OtioNest, OfOneTrackIsSplicedIn) {
    const std::string inner = track({clip("B", 0, 1), clip("C", 0, 3)});
    EXPECT_EQ(drawn(around(inner)), "A 0-2 | B 2-3 | C 3-6 | Z 6-8");
    EXPECT_EQ(drawn(around(stack({inner}))), "A 0-2 | B 2-3 | C 3-6 | Z 6-8");
    EXPECT_EQ(drawn(around(stack({clip("B", 0, 3)}))), "A 0-2 | B 2-5 | Z 5-7");
    EXPECT_EQ(drawn(around(track({stack({inner})}))), "A 0-2 | B 2-3 | C 3-6 | Z 6-8");
}

TEST(OtioNest, ItsRangeTrimsItAndWhatLacksIsGap) {
    const auto ranged = [](double start, double length) {
        return drawn(around(stack({track({clip("B", 5, 2), clip("C", 0, 2)})}, source_range(start, length))));
    };
    EXPECT_EQ(ranged(1, 2), "A 0-2 | B 2-3 | C 3-4 | Z 4-6");
    EXPECT_EQ(ranged(3, 3), "A 0-2 | C 2-3 | b 3-5 | Z 5-7");
    EXPECT_EQ(ranged(-1, 2), "A 0-2 | b 2-3 | B 3-4 | Z 4-6");
    EXPECT_EQ(ranged(0, 0), "A 0-2 | Z 2-4");
}

TEST(OtioNest, TheSplicedPartKeepsItsMedia) {
    const auto result = read(around(stack({track({clip("B", 5, 2)})}, source_range(0.5, 1))));
    EXPECT_EQ(points(result).at(2).source_time, 5.5);
    EXPECT_EQ(points(result).at(3).source_time, 6.5);
}

TEST(OtioNest, AsLongAsItsLongestTrackEvenOfTheOtherKind) {
    const std::string nest = stack({track({clip("B", 0, 1)}), track({clip("S", 0, 3)}, sound)});
    EXPECT_EQ(drawn(around(nest)), "A 0-2 | B 2-3 | b 3-5 | Z 5-7");
}

// Of a track of two seconds the range from 1 to 5 leaves one, and one that meets nothing leaves both.
TEST(OtioNest, AsLongAsWhatTheRangeOfItsTrackLeaves) {
    const auto ranged = [](double start, double length) {
        return drawn(around(stack({track({clip("B", 0, 2)}, source_range(start, length))})));
    };
    EXPECT_EQ(ranged(1, 4), "A 0-2 | B 2-3 | Z 3-5");
    EXPECT_EQ(ranged(-1, 2), "A 0-2 | B 2-3 | Z 3-5");
    EXPECT_EQ(ranged(0, 9), "A 0-2 | B 2-4 | Z 4-6");
    EXPECT_EQ(ranged(5, 1), "A 0-2 | B 2-4 | Z 4-6");
}

TEST(OtioNest, WithoutATrackOfTheChannelsKindIsAGap) {
    EXPECT_EQ(drawn(around(stack({track({clip("S", 0, 3)}, sound)}))), "A 0-2 | b 2-5 | Z 5-7");
    EXPECT_EQ(drawn(timeline({track({stack({track({clip("B", 0, 3)})}), clip("S", 0, 1)}, sound)})), "S 3-4");
}

TEST(OtioNest, OfSeveralTracksIsOneRenderedEventWithTheNameAndNoLabels) {
    const std::string nest =
        stack({track({clip("B", 0, 4)}), track({clip("C", 0, 1)})}, "\"name\": \"N\", " + source_range(1, 2));
    const auto result = read(around(nest));
    EXPECT_EQ(channel(result), "A 0-2 | N 2-4 | Z 4-6");
    EXPECT_EQ(points(result).at(2).source_time, 1.0);
    EXPECT_TRUE(RenderHistory::isRendered(points(result).at(2).cookie));
    EXPECT_EQ(label(source_of(result, 1), user_label_timecode, medium_source_picture, 2), "");
    EXPECT_TRUE(RenderHistory::editContainsRenderedMaterial(result.edit));
}

TEST(OtioNest, WithEffectsIsRenderedUnlessTheyAreDisabled) {
    const auto nest = [](const std::string& fx) {
        return around(track({clip("B", 0, 2)}, "\"name\": \"N\", " + effects({fx})));
    };
    EXPECT_EQ(drawn(nest(effect(""))), "A 0-2 | N 2-4 | Z 4-6");
    EXPECT_EQ(drawn(nest(effect(off))), "A 0-2 | B 2-4 | Z 4-6");
    EXPECT_EQ(points(read(nest(warp(2)))).at(2).speed, 2.0F);
}

TEST(OtioNest, DisabledOnesAndDisabledInnerTracksAreGaps) {
    EXPECT_EQ(drawn(around(track({clip("B", 0, 2)}, off))), "A 0-2 | b 2-4 | Z 4-6");
    EXPECT_EQ(drawn(around(stack({track({clip("B", 0, 2)}, off)}))), "A 0-2 | b 2-4 | Z 4-6");
}

//     | B . . |X| C . . |     the cut at 2 lies inside, or doesn't
//         [ - - - ]
TEST(OtioNest, KeepsATransitionOnlyIfItsCutLiesInsideTheTrim) {
    const auto ranged = [](double start, double length) {
        return drawn(timeline({track(
            {stack({track({clip("B", 9, 2), transition(0.5, 0.5), clip("C", 9, 2)})}, source_range(start, length))})}));
    };
    EXPECT_EQ(ranged(1, 2), "B 0-0.5 | x 0.5-1.5 | C 1.5-2");
    EXPECT_EQ(ranged(2, 2), "C 0-2");
    EXPECT_EQ(ranged(0, 2), "B 0-2");
}

//     |B . .|x|x|. . C|     seen from 1.5 to 2.5; its cut at 2 lies in what is taken, or doesn't
TEST(OtioNest, ATransitionThatARangeCutsOffIsTold) {
    const auto part = [](const Extra& range) {
        return track({clip("B", 9, 2), transition(0.5, 0.5), clip("C", 9, 2)}, range);
    };
    const auto told = [&](double start, double length) {
        const Extra range = source_range(start, length);
        int count = 0;
        for (const std::string& file :
             {timeline({track({stack({part({})}, range)})}), timeline({track({stack({part(range)})})}),
              timeline({part(range)}), timeline({part({})}, {}, range)})
            count += warns_of(read(file), "left out, as what is taken of its track begins or ends inside it");
        return count;
    };
    EXPECT_EQ(told(2, 2), 4);
    EXPECT_EQ(told(2.25, 1), 4);
    EXPECT_EQ(told(0, 2), 4);
    EXPECT_EQ(told(1.75, 0.125), 4);
    EXPECT_EQ(told(1, 2), 0) << "it stays";
    EXPECT_EQ(told(0, 1.5), 0) << "nothing of it is seen";
    EXPECT_EQ(told(2.5, 1), 0);
}

//     |x B . . |x| C . . x|     fades at both ends stay where the range leaves their end alone
TEST(OtioNest, KeepsTheFadeOfAnEndThatTheRangeLeavesAlone) {
    const std::string inner =
        track({transition(0, 0.5), clip("B", 9, 2), transition(0.5, 0.5), clip("C", 9, 2), transition(0.5, 0)});
    const auto ranged = [&](double start, double length) {
        return drawn(timeline({track({stack({inner}, source_range(start, length))})}));
    };
    EXPECT_EQ(ranged(0, 4), "b 0-0 | x 0-0.5 | B 0.5-1.5 | x 1.5-2.5 | C 2.5-3.5 | x 3.5-4 | b 4-4");
    EXPECT_EQ(ranged(0, 3), "b 0-0 | x 0-0.5 | B 0.5-1.5 | x 1.5-2.5 | C 2.5-3");
    EXPECT_EQ(ranged(1, 3), "B 0-0.5 | x 0.5-1.5 | C 1.5-2.5 | x 2.5-3 | b 3-3");
    EXPECT_EQ(ranged(0, 2), "b 0-0 | x 0-0.5 | B 0.5-2");
    EXPECT_EQ(ranged(2, 2), "C 0-1.5 | x 1.5-2 | b 2-2");
    EXPECT_EQ(ranged(0, 0), "");
    EXPECT_EQ(ranged(4, 1), "b 0-1");
}

TEST(OtioNest, TheTransitionOfTheParentStaysAtTheSameCut) {
    const Extra inner = "\"name\": \"inner\"", outer = "\"name\": \"outer\"";
    const std::string nest = track({transition(0, 0.5, inner), clip("B", 9, 2)});
    const auto both = read(timeline({track({clip("A", 9, 2), transition(0.5, 0.5, outer), nest})}));
    EXPECT_EQ(effect_name(both, 0, 0), "outer");
    EXPECT_EQ(effect_name(both, 0, 1), "none");
    const auto one = read(timeline({track({clip("A", 9, 2), nest})}));
    EXPECT_EQ(channel(one), "A 0-2 | x 2-2.5 | B 2.5-4");
}

TEST(OtioNest, MarkersOfTheNestGoAndThoseOfItsClipsStay) {
    const std::string nest = track({clip("B", 0, 2, markers({marker(1, "clip")}))}, markers({marker(0, "nest")}));
    EXPECT_EQ(cues(read(around(nest))), std::vector<std::string>{"clip/4"});
}

TEST(OtioNest, ErrorsInItNameTheWay) {
    const std::string bad = object("Clip.1", "\"name\": \"B\"");
    EXPECT_EQ(error_of(timeline({track({gap(1), stack({track({bad}, "\"name\": \"in\"")})}, "\"name\": \"V1\"")}))
                  .find("tracks/V1/children[1]/in/children[0] \"B\": "),
              0u);
}

TEST(OtioNest, DeepOnesAreReadWithoutTrouble) {
    std::string text = clip("B", 0, 1);
    for (int i = 0; i < 450; ++i)
        text = stack({text});
    EXPECT_EQ(drawn(timeline({track({text})})), "B 0-1");
}

TEST(OtioNest, ATracksRangeThatMeetsNothingStartsAtItsHeadWithAWarning) {
    const auto result = read(around(track({clip("B", 5, 2), clip("C", 0, 2)}, source_range(9, 3))));
    EXPECT_TRUE(warns_of(result, "its source_range meets none of its content and starts at its head"));
    EXPECT_EQ(points(result).at(2).source_time, 5.0);
}

} // namespace
