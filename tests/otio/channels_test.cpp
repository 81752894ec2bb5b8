// Tracks as channels: kinds, sub-types, what is black, and what trims.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

const Extra sound = "\"kind\": \"Audio\"";

TEST(OtioChannel, VideoAndAudioAreKindsOneAndTwoInTheOrderOfTheStack) {
    const auto result = read(timeline(
        {track({clip("S", 0, 1)}, sound), track({clip("A", 0, 1)}, "\"kind\": \"Video\""), track({clip("B", 0, 1)})}));
    EXPECT_EQ(result.edit->getFirstChan(1, 0), 1);
    EXPECT_EQ(result.edit->getFirstChan(2, 0), 0);
    EXPECT_EQ(channel(result, 2), "B 0-1");
}

TEST(OtioChannel, OtherKindsAreLeftOutWithAWarningAndTakeNoNumber) {
    const auto result = read(timeline({track({clip("S", 0, 1)}, "\"kind\": \"Subtitle\""), track({clip("A", 0, 1)})}));
    EXPECT_EQ(result.edit->getNumChans(), 1);
    EXPECT_EQ(channel(result), "A 0-1");
    EXPECT_TRUE(warns_of(result, "dir/reel one.otio: tracks/children[0]: "));
}

TEST(OtioChannel, SubTypesAreThoseOfTheTable) {
    const auto subtype = [](const std::string& value) {
        return read(timeline({track({}, quillbrook("\"subtype\": " + value))})).edit->getChanSubtype(0);
    };
    EXPECT_EQ(subtype("8"), chan_fx);
    EXPECT_EQ(subtype("4"), chan_unlisted);
    EXPECT_EQ(subtype("0"), chan_plain);
    EXPECT_EQ(subtype("7"), chan_plain);
}

TEST(OtioChannel, GapsAreBlackOnTheLowestListedPictureTrackAlone) {
    const std::string items = track({gap(1), clip("A", 0, 1), gap(1), gap(2)});
    const auto result = read(timeline({track({gap(1), clip("S", 0, 1)}, sound),
                                       track({gap(1), clip("N", 0, 1)}, quillbrook("\"subtype\": 4")), items, items}));
    EXPECT_EQ(channel(result, 0), "S 1-2");
    EXPECT_EQ(channel(result, 1), "N 1-2");
    EXPECT_EQ(channel(result, 2), "b 0-1 | A 1-2 | b 2-3 | b 3-5");
    EXPECT_EQ(channel(result, 3), "A 1-2");
}

TEST(OtioChannel, AChildThatIsNoTrackIsAPictureChannelOfItsOwn) {
    const auto result = read(timeline({clip("A", 0, 2), track({clip("B", 0, 1)}), stack({clip("C", 0, 3)})}));
    EXPECT_EQ(channel(result, 0), "A 0-2");
    EXPECT_EQ(channel(result, 1), "B 0-1");
    EXPECT_EQ(channel(result, 2), "C 0-3");
    EXPECT_EQ(result.edit->getNumChans(), 3);
}

TEST(OtioChannel, ADisabledTrackKeepsItsNumberAndIsOneGap) {
    const Extra off = "\"enabled\": false";
    const auto result = read(timeline({track({clip("A", 0, 1), clip("B", 0, 2)}, off), track({clip("C", 0, 1)}, off)}));
    EXPECT_EQ(channel(result, 0), "b 0-3");
    EXPECT_EQ(channel(result, 1), "");
    EXPECT_EQ(result.edit->getNumChans(), 2);
}

TEST(OtioChannel, ADisabledClipIsAGap) {
    const Extra off = "\"enabled\": false";
    const std::string items = track({clip("A", 0, 1), clip("B", 0, 2, off), clip("C", 0, 1)});
    EXPECT_EQ(drawn(timeline({items})), "A 0-1 | b 1-3 | C 3-4");
    EXPECT_EQ(drawn(timeline({items, items}), 1), "A 0-1 | C 3-4");
}

TEST(OtioChannel, GeneratorsNamedBlackOrSlugAreBlackInAnyCase) {
    const auto kind = [](const std::string& fields, const char* schema = "GeneratorReference.1") {
        return drawn(timeline({track({}), track({clip("A", 0, 1, {}, object(schema, fields))})}), 1);
    };
    EXPECT_EQ(kind("\"generator_kind\": \"Black\""), "b 0-1");
    EXPECT_EQ(kind("\"generator_kind\": \"SLUG\", \"name\": \"x\""), "b 0-1");
    EXPECT_EQ(kind("\"generator_kind\": \"\", \"name\": \"bLACK\""), "b 0-1");
    EXPECT_EQ(kind("\"generator_kind\": \"bars\", \"name\": \"black\""), "black 0-1");
    EXPECT_EQ(kind("\"target_url\": \"Slug.mov\", \"name\": \"Slug\"", "ExternalReference.1"), "Slug 0-1")
        << "a file of that name is film";
}

//     | A A A A | B B B B |
//         [ - - - - ]
TEST(OtioChannel, ATracksRangeTrimsWhatItMeets) {
    const auto ranged = [](double start, double length) {
        return drawn(timeline({track({clip("A", 10, 4), clip("B", 0, 4)}, source_range(start, length))}));
    };
    EXPECT_EQ(ranged(2, 4), "A 0-2 | B 2-4");
    EXPECT_EQ(ranged(-2, 4), "A 0-2");
    EXPECT_EQ(ranged(6, 40), "B 0-2");
    const auto result = read(timeline({track({clip("A", 10, 4)}, source_range(1, 2))}));
    EXPECT_EQ(points(result).at(0).source_time, 11.0);
    EXPECT_EQ(points(result).at(1).source_time, 13.0);
}

TEST(OtioChannel, ATracksRangeThatMeetsNothingIsLeftOutWithAWarning) {
    const auto result = read(timeline({track({clip("A", 0, 4)}, source_range(3600, 4))}));
    EXPECT_EQ(channel(result), "A 0-4");
    EXPECT_TRUE(warns_of(result, "source_range"));
}

TEST(OtioChannel, TheStacksRangeTrimsEveryChannel) {
    const auto result =
        read(timeline({track({clip("A", 0, 4), clip("B", 0, 4)}), track({clip("C", 0, 3)})}, {}, source_range(2, 3)));
    EXPECT_EQ(channel(result, 0), "A 0-2 | B 2-3");
    EXPECT_EQ(channel(result, 1), "C 0-1");
}

TEST(OtioChannel, TrimmingABackwardClipAtItsHeadTakesTheEndOfItsMedia) {
    // 4 s at -2 play the 8 s from 10 to 18 backward; from the second second on those from 16 to 10.
    const auto whole = read(timeline({track({clip("A", 10, 4, effects({warp(-2)}))})}));
    const auto late = read(timeline({track({clip("A", 10, 4, effects({warp(-2)}))}, source_range(1, 3))}));
    EXPECT_DOUBLE_EQ(points(late).at(0).source_time, points(whole).at(0).source_time - 2);
    EXPECT_EQ(points(late).at(1).source_time, points(whole).at(1).source_time);
}

} // namespace
