// How lines are read, and what is said of those that can't be.

#include "formats/edl/edl_list.h"
#include "tests/edl/listed_edit.h"

#include <gmock/gmock.h>

using namespace edl_tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

namespace {

constexpr const char* first = "001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n";
constexpr const char* third = "003  C V C 03:00:00:00 03:00:01:00 10:00:02:00 10:00:03:00\n";

std::vector<int> numbers(std::string_view bytes) {
    std::vector<int> result;
    for (const formats::edl::Line& line : formats::edl::split_lines(bytes))
        if (!line.text.empty()) result.push_back(line.number);
    return result;
}

TEST(Lines, AllLineEndsMayMix) {
    EXPECT_THAT(numbers("a\nb\r\nc\rd\n\ne"), ElementsAre(1, 2, 3, 4, 6));
    EXPECT_THAT(numbers("\xEF\xBB\xBF"
                        "a\n\x1A\x1A"),
                ElementsAre(1));
    EXPECT_THAT(numbers(""), IsEmpty());
    const formats::ReadResult result = read("TITLE: X\r001 A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\r\n"
                                            "\t002\tB V  C\t\t02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n\x1A");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 B@02:00:00:00");
    EXPECT_THAT(result.warnings, IsEmpty());
}

TEST(Lines, BadLinesAreReportedAndMoveNothing) {
    const std::pair<const char*, const char*> bad[] = {
        {"002  B V C 02:00:00:00 02:00:01:00", "too few fields"},
        {"002  B V C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:61:00", "\"10:00:61:00\" is no timecode"},
        {"002  B Q C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00", "\"Q\" is no channel"},
        {"002  B V X 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00", "\"X\" is no edit type"},
        {"002  B V D 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00", "the D has no length"},
        {"002  B V C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:01:24", "frame 24 doesn't exist at 24"},
        {"002  B V C 02:00:00:00 02:00:01:00 10:00:02:00 10:00:01:00", "record out lies before the record in"},
        {"GPI 1 2 3", "not understood: \"GPI 1 2 3\""},
        {"FCM: SOMETIMES", "not understood"},
        {"SPLIT: SOUND LATER", "not understood"},
        {"M2 A fast 01:00:00:00", "not understood"},
        {"M2 Z 048.0 01:00:00:00", "which the event doesn't use"},
        {"AUD  x", "\"x\" is no sound channel"},
    };
    for (const auto& [line, reason] : bad) {
        const formats::ReadResult result = read(std::string(first) + line + "\n* FROM CLIP NAME:\n" + third);
        EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 black | 48-72 C@03:00:00:00") << line;
        ASSERT_EQ(result.warnings.size(), 1U) << line;
        EXPECT_THAT(result.warnings[0], HasSubstr("a.edl: line 2: ")) << line;
        EXPECT_THAT(result.warnings[0], HasSubstr(reason)) << line;
    }
}

TEST(Lines, CommentsBelowABadLineAreNotTheClipsAbove) {
    const formats::ReadResult result = read(std::string(first) + "002  B V Q C\n* FROM CLIP NAME: Wrong\n" + third);
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 black | 48-72 C@03:00:00:00");
}

TEST(Lines, EventNumbersHaveThreeToSixDigits) {
    for (const char* number : {"001", "0001", "00001", "000001"})
        EXPECT_EQ(read(std::string(number) + " A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00").warnings.size(),
                  0U)
            << number;
}

TEST(Lines, ReelsMayBeLongTruncatedOrHoldBlanks) {
    for (const char* reel : {"A001C004_130917_R1XYZ_LONG_NAME", "ABC0100.", "TAPE 12"}) {
        const formats::ReadResult result =
            read(std::string("001 ") + reel + " V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00");
        EXPECT_EQ(reel_at(result.edit, 0, 0), reel);
    }
}

TEST(Lines, TruncatedReelIsReplacedByTheOneInFull) {
    const formats::ReadResult result =
        read(std::string("001 A001C004 V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n") +
             "FINAL CUT PRO REEL: A001C004_130917 REPLACED BY: A001C004\n");
    EXPECT_EQ(reel_at(result.edit, 0, 0), "A001C004_130917");
}

TEST(Lines, MissingTitleLeavesTheFilesName) { EXPECT_STREQ(toUTF8(read(first).edit->getName()).c_str(), "a"); }

TEST(Lines, SecondTitleIsReported) {
    const formats::ReadResult result = read(std::string("TITLE: One\n") + first + "TITLE: Two\n");
    EXPECT_STREQ(toUTF8(result.edit->getName()).c_str(), "One");
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 3: a second title")));
}

TEST(Lines, EventWithoutLengthNeedsATransition) {
    const formats::ReadResult result =
        read(std::string(first) + "002 B V C 02:00:00:00 02:00:00:00 10:00:01:00 10:00:01:00\n" + third);
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 black | 48-72 C@03:00:00:00");
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 2: an event without length")));
}

TEST(Lines, SourceAndRecordOfOtherLengthsAreReported) {
    const formats::ReadResult result = read("001 A V C 01:00:00:00 01:00:00:20 10:00:00:00 10:00:01:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00");
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 1: the source is 20 frames long and the record 24")));
}

TEST(Lines, FilesWithoutEventsAreRefusedWithTheirFirstLine) {
    EXPECT_EQ(read("hello\nworld\n").error,
              "a.edl: holds no event that can be read; line 1: not understood: \"hello\"");
    EXPECT_EQ(read("").error, "a.edl: holds no event that can be read");
    EXPECT_THAT(read("\xFF\xFEx").error, HasSubstr("a.edl: line 1: UTF-16"));
    EXPECT_THAT(read("001 A V C 01:00:00:24 01:00:01:00 10:00:00:00 10:00:01:00\n").error,
                HasSubstr("a.edl: line 1: frame 24 doesn't exist at 24 a second"));
}

TEST(Lines, ChannelsInAllSpellings) {
    using formats::edl::NumberSet;
    using formats::edl::parse_channels;
    const auto sound = [](const char* text) { return parse_channels(text)->sound; };
    EXPECT_EQ(sound("A"), NumberSet({1}));
    EXPECT_EQ(sound("A2"), NumberSet({2}));
    EXPECT_EQ(sound("A12"), NumberSet({12}));
    EXPECT_EQ(sound("A34"), NumberSet({3, 4}));
    EXPECT_EQ(sound("AA/V"), NumberSet({1, 2}));
    EXPECT_EQ(sound("A1234V"), NumberSet({1, 2, 3, 4}));
    EXPECT_EQ(sound("B"), NumberSet({1}));
    EXPECT_EQ(parse_channels("A1234V")->picture, NumberSet({1}));
    EXPECT_EQ(parse_channels("V2")->picture, NumberSet({2}));
    EXPECT_TRUE(parse_channels("NONE")->picture.empty());
    for (const char* text : {"X", "V0", "A0", "V99", "C"})
        EXPECT_FALSE(parse_channels(text)) << text;
}

TEST(Rate, IsAskedForWhereNothingTellsIt) {
    const formats::ReadResult result = read(first, 0);
    EXPECT_FALSE(result.edit);
    EXPECT_TRUE(result.rate_missing);
    EXPECT_THAT(result.error, HasSubstr("a.edl: an edit list doesn't tell its frames a second"));
}

TEST(Rate, DropFrameTellsIt) {
    EXPECT_EQ(read(std::string("FCM: DROP FRAME\n") + first, 0).edit->getFrameRate(), 5);
    EXPECT_EQ(read("001 A V C 01:00:00;00 01:00:01;31 10:00:00;00 10:00:01;31\n", 0).edit->getFrameRate(), 10);
}

TEST(Rate, ALineMayTellIt) {
    EXPECT_EQ(read(std::string("* FRAME RATE: 25\n") + first, 0).edit->getFrameRate(), 3);
    EXPECT_EQ(read(std::string("* FRAME RATE: 25\n") + first, 24).edit->getFrameRate(), 2);
}

TEST(Rate, DropFrameWhereThereIsNoneIsReported) {
    const formats::ReadResult result = read(std::string("FCM: DROP FRAME\n") + first, 25);
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("a.edl: line 1: there is no drop-frame at 25")));
}

TEST(DropFrame, MinutesLeaveOutTwoNumbers) {
    const formats::ReadResult result = read("FCM: DROP FRAME\n"
                                            "001 A V C 01:00:59;00 01:01:00;02 10:00:59:00 10:01:00:02\n",
                                            29.97);
    EXPECT_EQ(drawn(result.edit, 0, 30 / 1.001), "0-30 A@01:00:59;00");
    EXPECT_THAT(result.warnings, IsEmpty());
}

TEST(DropFrame, SwitchInTheMiddleChangesTheSourcesAndNotTheRecord) {
    const formats::ReadResult result = read("FCM: NON-DROP FRAME\n"
                                            "001 A V C 01:00:59:00 01:01:00:00 10:00:59:00 10:01:00:00\n"
                                            "FCM: DROP FRAME\n"
                                            "002 B V C 02:00:59:00 02:01:00:02 10:01:00:00 10:01:01:00\n"
                                            "FCM: NON-DROP FRAME\n"
                                            "003 C V C 03:00:59:00 03:01:00:00 10:01:01:00 10:01:02:00\n",
                                            29.97);
    EXPECT_EQ(drawn(result.edit, 0, 30 / 1.001), "0-30 A@01:00:59:00 | 30-60 B@02:00:59;00 | 60-90 C@03:00:59:00");
    EXPECT_THAT(result.warnings, IsEmpty());
    EXPECT_STREQ(result.edit->getLabel(user_label_timecode, {medium_video, 1})->get_string(0), "10:00:59:00");
}

TEST(DropFrame, SwitchBetweenTheLinesOfAnEvent) {
    const formats::ReadResult result = read("FCM: NON-DROP FRAME\n"
                                            "001 A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "002 A V C     01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                                            "FCM: DROP FRAME\n"
                                            "002 B V D 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n",
                                            29.97);
    EXPECT_EQ(drawn(result.edit, 0, 30 / 1.001), "0-30 A@01:00:00:00 | 30-40 diss | 40-60 B@02:00:00;10");
}

TEST(DropFrame, NumbersThatAreLeftOutAreReported) {
    const formats::ReadResult result = read("FCM: DROP FRAME\n"
                                            "001 A V C 01:01:00;00 01:01:01;00 10:00:00:00 10:00:00:28\n",
                                            29.97);
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 2: a timecode that drop-frame leaves out")));
    EXPECT_EQ(drawn(result.edit, 0, 30 / 1.001), "0-28 A@01:01:00;02");
}

} // namespace
