// Copies in which rendered clips are what they were rendered from.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

/// A clip of the seconds from 12 to 15 of a medium that starts at 10.
std::string rendered(const std::string& from, const Extra& extra = {}) {
    return clip("R", 12, 3, with(quillbrook("\"rendered\": true, \"rendered_from\": " + from), extra),
                reference("\"available_range\": " + range(10, 20)));
}

std::string unrendered(const std::string& made, const Extra& of_track = {}) {
    const auto result = read(timeline({track({clip("A", 0, 1), made}, of_track)}, "\"name\": \"E\""));
    EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(result.edit);
    return copy.edit ? edit_model::drawn(*copy.edit->get_edit_cel_p(0)) : "no copy: " + result.error;
}

const std::string origin = track({clip("D", 5, 2.5), clip("E", 5, 9)});

//     | A |R . .|        R is the stretch from 2 to 5 of | D . . | E . . . . |
//     | A |D|E .|
TEST(OtioUnrender, TheStretchThatTheClipUsedTakesItsPlace) {
    EXPECT_EQ(unrendered(rendered(origin)), "A 0-1 | D 1-1.5 | E 1.5-4");
    EXPECT_EQ(unrendered(rendered(stack({origin}))), "A 0-1 | D 1-1.5 | E 1.5-4");
    EXPECT_EQ(unrendered(rendered(track({clip("D", 5, 4)}))), "A 0-1 | D 1-3 | b 3-4");
}

TEST(OtioUnrender, TimesAreExactInTheCopyWhateverTheRates) {
    const std::string film =
        bare_clip("\"name\": \"F\", \"media_reference\": " + reference() + ", " + source_range(24, 240, 24));
    const auto result = read(
        timeline({track({rendered(track({film}))}, "\"name\": \"V\"")}, "\"global_start_time\": " + moment(0, 23.976)));
    EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(result.edit);
    ASSERT_TRUE(copy.edit);
    EXPECT_EQ(copy.edit->getFrameRate(), result.edit->getFrameRate());
    const Qb::Ptr<Cel> cel = copy.edit->get_edit_cel_p(0);
    EXPECT_DOUBLE_EQ(cel->get_start_ceh().get_channel_event().source_time, 2 + 1.001);
}

TEST(OtioUnrender, WhatCantBeReplacedStays) {
    const std::string stays = "A 0-1 | R 1-4";
    EXPECT_EQ(unrendered(rendered(origin, effects({warp(2)}))), stays);
    EXPECT_EQ(unrendered(rendered(stack({origin, origin}))), stays);
    EXPECT_EQ(unrendered(rendered(track({clip("S", 0, 9)}, "\"kind\": \"Audio\""))), stays);
    EXPECT_EQ(unrendered(rendered("3")), stays);
}

TEST(OtioUnrender, SoundIsReplacedBySound) {
    const Extra sound = "\"kind\": \"Audio\"";
    EXPECT_EQ(unrendered(rendered(track({clip("S", 0, 9)}, sound)), sound), "A 0-1 | S 1-4");
}

TEST(OtioUnrender, RenderedMaterialWithinTheOriginIsReplacedToo) {
    EXPECT_EQ(unrendered(rendered(track({rendered(origin), clip("F", 0, 9)}))), "A 0-1 | E 1-2 | F 2-4");
}

TEST(OtioUnrender, TheCopyKeepsTheNameAndHasACookieOfItsOwn) {
    const auto result = read(timeline({track({rendered(origin)})}, "\"name\": \"E\""));
    EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(result.edit);
    ASSERT_TRUE(copy.edit);
    EXPECT_EQ(std::string(toUTF8(copy.edit->getName()).c_str()), "E");
    char hash[9];
    std::snprintf(hash, sizeof hash, "%08X", static_cast<unsigned>(embedded::fnv1a("copy:E")));
    EXPECT_STREQ(copy.edit->cookie.asString(false).c_str(), hash);
}

TEST(OtioUnrender, ReadingCanDoItAtOnce) {
    formats::ReadOptions options;
    options.unrender = true;
    EXPECT_EQ(channel(read(timeline({track({rendered(origin)})}), options)), "D 0-0.5 | E 0.5-3");
    EXPECT_EQ(channel(read(rendered(origin), options)), "D 0-0.5 | E 0.5-3");
}

} // namespace
