// Rates, times, lengths and the header of an edit.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

#include <rapidcheck.h>

using namespace otio_texts;

namespace {

std::string clip_at(double rate, double start, double duration) {
    return bare_clip("\"name\": \"A\", \"media_reference\": " + reference() + ", " +
                     source_range(start, duration, rate));
}

int code(const formats::ReadResult& result) { return result.edit ? result.edit->getFrameRate() : -1; }

TEST(OtioRate, ComesFromTheStartElseFromTheFirstClipOfThePictureElseFromSound) {
    const std::string sound = track({clip_at(25, 0, 5)}, "\"kind\": \"Audio\"");
    const std::string picture = track({gap(1), clip_at(30, 0, 5), clip_at(48, 0, 5)});
    EXPECT_EQ(code(read(timeline({sound, picture}, "\"global_start_time\": " + moment(0, 50)))), 8);
    EXPECT_EQ(code(read(timeline({sound, picture}))), 4);
    EXPECT_EQ(code(read(timeline({sound, track({gap(1)})}))), 3);
    EXPECT_EQ(code(read(timeline({track({gap(1)})}))), 2);
}

TEST(OtioRate, TheToolsRateWinsOverAll) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25);
    EXPECT_EQ(code(read(timeline({track({clip_at(24, 0, 5)})}, "\"global_start_time\": " + moment(0, 50)), options)),
              3);
}

TEST(OtioRate, IsTheNearestOfTheListWithinAHundredth) {
    EXPECT_EQ(code(read(timeline({track({clip_at(23.98, 0, 24)})}))), 1);
    EXPECT_EQ(code(read(timeline({track({clip_at(29.97, 0, 24)})}))), 5);
    EXPECT_EQ(code(read(timeline({track({clip_at(59.94, 0, 24)})}))), 10);
}

TEST(OtioRate, BelowOrAtZeroOrNotFiniteIsAnErrorThatNamesTheObject) {
    for (const std::string rate : {"0", "-24", "NaN", "Infinity", "-Inf", "\"24\"", "null"}) {
        const std::string bad = "{\"OTIO_SCHEMA\": \"RationalTime.1\", \"value\": 1, \"rate\": " + rate + "}";
        const std::string range = object("TimeRange.1", "\"start_time\": " + moment(0) + ", \"duration\": " + bad);
        const std::string text = timeline({track({bare_clip("\"name\": \"A\", \"source_range\": " + range)})});
        EXPECT_EQ(error_of(text).find("tracks/children[0]/children[0]/source_range/duration"), 0u) << error_of(text);
    }
}

TEST(OtioTime, OfTheEditsCountIsFrameForFrameAndAnyOtherBySeconds) {
    const std::string start = "\"global_start_time\": " + moment(0, 23.976);
    const auto result = read(timeline({track({clip_at(24, 24000, 24000), clip_at(48000, 0, 48000)})}, start));
    ASSERT_EQ(points(result).size(), 4u);
    EXPECT_DOUBLE_EQ(points(result)[0].source_time, 1001.0);
    EXPECT_DOUBLE_EQ(points(result)[1].edit_time, 1001.0);
    EXPECT_DOUBLE_EQ(points(result)[3].edit_time, 1002.0);
}

TEST(OtioTime, NearAWholeNumberIsThatNumber) {
    const auto near = read(timeline({track({clip_at(24, 0, 47.99995)})}));
    const auto far = read(timeline({track({clip_at(24, 0, 47.999)})}));
    EXPECT_EQ(points(near).at(1).edit_time, 2.0);
    EXPECT_NE(points(far).at(1).edit_time, 2.0);
}

TEST(OtioTime, ARateThatIsNotAboveZeroIsRefused) {
    for (const double rate : {0.0, -0.5, -24.0})
        EXPECT_NE(error_of(timeline({track({clip_at(rate, 0, 5)})})).find("the rate isn't a number above 0"),
                  std::string::npos);
}

TEST(OtioTime, BeyondTenYearsIsRefused) {
    EXPECT_NE(error_of(timeline({track({clip_at(24, 1e300, 5)})})).find("ten years"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({clip_at(24, 0, 1e10)})})).find("ten years"), std::string::npos);
}

TEST(OtioTime, PositionsAreSumsOfExactFractions) {
    const bool holds = rc::check("two hundred odd lengths end where their exact sum lies", [] {
        const int frames = *rc::gen::inRange(1, 300);
        std::string clips;
        for (int i = 0; i < 200; ++i)
            clips += (i ? ", " : "") + clip_at(29.97, i, frames);
        const auto result = read(object("Track.1", "\"children\": [" + clips + "]"));
        RC_ASSERT(points(result).back().edit_time == 200.0 * frames * 1001 / 30000);
    });
    EXPECT_TRUE(holds);
}

TEST(OtioLength, IsThatOfTheSourceRangeElseOfTheMedia) {
    const std::string media = reference("\"available_range\": " + range(10, 7));
    EXPECT_EQ(drawn(timeline({track({bare_clip("\"name\": \"A\", \"media_reference\": " + media)})})), "A 0-7");
    EXPECT_EQ(drawn(timeline({track({clip("A", 11, 3, {}, media)})})), "A 0-3");
}

TEST(OtioLength, NegativeOnesAndClipsWithoutAnyAreErrors) {
    EXPECT_NE(error_of(timeline({track({clip("A", 0, -1)})})).find("children[0] \"A\": the length"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({gap(-1)})})).find("negative"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({bare_clip("\"name\": \"A\"")})})).find("\"A\": the clip has no length"),
              std::string::npos);
}

TEST(OtioLength, ItemsWithoutLengthMakeNoEvent) {
    EXPECT_EQ(
        drawn(timeline({track({clip("A", 0, 2), clip("B", 0, 0), gap(0), object("Gap.1", ""), clip("C", 0, 1)})})),
        "A 0-2 | C 2-3");
}

TEST(OtioHeader, TheNameIsTheTimelinesElseTheFilesWithoutFolderAndExtension) {
    EXPECT_EQ(name(read(timeline({}, "\"name\": \"Ünter\"")).edit), "Ünter");
    EXPECT_EQ(name(read(timeline({})).edit), "reel one");
    EXPECT_EQ(name(formats::read_otio_bytes(timeline({}), "a.b.otio", 0).edit), "a.b");
}

TEST(OtioHeader, TheTimecodeStartsAtTheGlobalStart) {
    const auto start = [](const std::string& text) {
        return std::string(read(text).edit->getLabel(user_label_timecode, {medium_edit, 1})->get_string(0));
    };
    EXPECT_EQ(start(timeline({}, "\"global_start_time\": " + moment(86400, 24))), "01:00:00:00");
    EXPECT_EQ(start(timeline({})), "00:00:00:00");
    EXPECT_EQ(start(timeline({}, "\"global_start_time\": " + moment(107892, 29.97) + ", " +
                                     quillbrook("\"drop_frame\": true"))),
              "01:00:00;00");
    EXPECT_EQ(
        start(timeline({}, "\"global_start_time\": " + moment(86400, 24) + ", " + quillbrook("\"drop_frame\": true"))),
        "01:00:00:00");
}

TEST(OtioHeader, The24FrameTimecodeIsThereOnlyWhenGiven) {
    const auto label = [](const Extra& extra) {
        return std::string(
            read(timeline({}, extra)).edit->getLabel(user_label_timecode, {medium_edit_24p, 1})->get_string(0));
    };
    EXPECT_EQ(label(quillbrook("\"timecode_24p\": \"02:00:00:00\"")), "02:00:00:00");
    EXPECT_EQ(label({}), "");
    EXPECT_TRUE(warns_of(read(timeline({}, quillbrook("\"timecode_24p\": \"what\""))), "can't be read"));
}

TEST(OtioHeader, TheTimeOfTheLastChangeIsTheTimelinesElseTheFiles) {
    const auto time_of = [](const Extra& extra) {
        int value = 0;
        read_edit_field(read(timeline({}, extra)).edit.get(), "modification_time", value);
        return value;
    };
    EXPECT_EQ(time_of({}), 1000);
    EXPECT_EQ(time_of(quillbrook("\"modification_time\": 77")), 77);
    EXPECT_EQ(time_of(quillbrook("\"modification_time\": 77.0")), 77);
    EXPECT_EQ(time_of(quillbrook("\"modification_time\": \"soon\"")), 1000);
}

TEST(OtioHeader, TheProjectIsKeptWhole) {
    const auto result = read(timeline({}, quillbrook("\"project\": \"The Film\"")));
    EXPECT_EQ(embedded::EditBuilder::project_of(result.edit), "The Film");
}

} // namespace
