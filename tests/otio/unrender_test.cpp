// Copies in which rendered clips are what they were rendered from.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace otio_texts;

namespace {

/// A clip of the seconds from 12 to 15 of a medium that starts at 10.
std::string rendered(const std::string& from, const Extra& extra = {}) {
    return clip("R", 12, 3, with(quillbrook("\"rendered\": true, \"rendered_from\": " + from), extra),
                reference("\"available_range\": " + range(10, 20)));
}

/// What is told of the copy, each line without the file's name.
embedded::Warnings told_of_copy(const std::string& text) {
    embedded::take_warnings_of_copy();
    const auto result = read(text);
    RenderHistory::makeCopyAndUnrenderAll(result.edit);
    return embedded::take_warnings_of_copy();
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

// The range from 2 to 5 of what lasts from 0 to 4, to 2, and nothing behind.
TEST(OtioUnrender, SoundBehindTheEndOfItsOriginIsNoneAndPictureIsBlack) {
    const Extra sound = "\"kind\": \"Audio\"";
    EXPECT_EQ(unrendered(rendered(track({clip("S", 0, 4)}, sound)), sound), "A 0-1 | S 1-3");
    EXPECT_EQ(unrendered(rendered(track({clip("S", 0, 2)}, sound)), sound), "A 0-1");
    EXPECT_EQ(unrendered(rendered(track({clip("D", 0, 4)}))), "A 0-1 | D 1-3 | b 3-4");
    EXPECT_EQ(unrendered(rendered(track({clip("D", 0, 2)}))), "A 0-1 | b 1-4");
}

TEST(OtioUnrender, AnOriginThatIsTooShortIsTold) {
    const auto short_ones = [](const std::string& from) {
        const auto told = told_of_copy(timeline({track({rendered(from)})}));
        return std::count_if(told.begin(), told.end(), [](const embedded::Warning& warning) {
            return warning.text.rfind("dir/reel one.otio: tracks/children[0]/children[0] \"R\": what it was", 0) == 0;
        });
    };
    EXPECT_EQ(short_ones(track({clip("D", 0, 5)})), 0);
    EXPECT_EQ(short_ones(track({clip("D", 0, 4.9)})), 1);
    EXPECT_EQ(short_ones(track({clip("D", 0, 9)}, source_range(4, 5))), 0);
    EXPECT_EQ(short_ones(track({clip("D", 0, 9)}, source_range(5, 5))), 1);
    EXPECT_EQ(short_ones(stack({track({clip("D", 0, 4)}), track({clip("S", 0, 9)}, "\"kind\": \"Audio\"")})), 1);
    EXPECT_EQ(short_ones(stack({track({clip("D", 0, 9)}, source_range(3, 9))})), 0);
    EXPECT_EQ(short_ones(stack({track({clip("D", 0, 9)}, source_range(5, 9))})), 1);
    EXPECT_EQ(short_ones(stack({clip("D", 0, 4)})), 1);
}

TEST(OtioUnrender, WhatIsToldOfTheCopyWasntToldOfTheEdit) {
    const auto nowhere = [](const Extra& name) { return markers({object("Marker.2", name)}); };
    const std::string made = rendered(track({clip("D", 0, 9, nowhere("\"name\": \"inner\""))}));
    const std::string text = timeline({track({clip("A", 0, 1, nowhere("\"name\": \"outer\"")), made})});
    EXPECT_TRUE(warns_of(read(text), "\"outer\": the marker stands nowhere"));
    const auto told = told_of_copy(text);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told[0].text.find("\"inner\": the marker stands nowhere"), std::string::npos);
    EXPECT_TRUE(embedded::take_warnings_of_copy().empty());
}

TEST(OtioUnrender, AClipWithAnEffectOfTheLabStaysWithIt) {
    const Extra lab = effects({effect(with("\"name\": \"Flop\"", quillbrook("\"optical\": true")))});
    const Extra grade = effects({effect("\"name\": \"Grade\"")});
    EXPECT_EQ(unrendered(rendered(origin, lab)), "A 0-1 | R 1-4");
    EXPECT_EQ(unrendered(rendered(origin, grade)), "A 0-1 | D 1-1.5 | E 1.5-4");
    const auto told = told_of_copy(timeline({track({rendered(origin, lab)})}));
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told[0].text.find("stays rendered"), std::string::npos);
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
