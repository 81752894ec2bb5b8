// The small texts of the lists.

#include "base/code_text.h"
#include "tests/reports/list_fixture.h"

#include <rapidcheck.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

class ListTexts : public ListTest {};

TEST_F(ListTexts, FormatsHaveTheirNames) {
    const std::pair<int, const char*> names[] = {{10, "35mm 4perf"},
                                                 {23, "35mm 4perf"},
                                                 {11, "16mm 1perf"},
                                                 {25, "16mm 1perf"},
                                                 {12, "35mm 3perf"},
                                                 {28, "35mm 3perf"},
                                                 {34, "35mm 2perf"},
                                                 {35, "35mm 8perf"},
                                                 {36, "65mm 5perf (80 perf/key)"},
                                                 {38, "65mm 10perf (80 perf/key)"},
                                                 {39, "65mm 5perf (120 perf/key)"},
                                                 {42, "65mm 15perf (120 perf/key)"}};
    for (const auto& [kind, name] : names)
        EXPECT_STREQ(edgecode_name(kind), name);
    for (const int kind : {0, 8, 9, 13, 20, 30, 33, 43, -1})
        EXPECT_STREQ(edgecode_name(kind), "Invalid Edgecode");
}

TEST_F(ListTexts, ALengthLosesItsLeadingZeros) {
    EXPECT_STREQ(footage_text("0012+05"), "  12+05  ");
    EXPECT_STREQ(footage_text("0000+07"), "   0+07  ");
    EXPECT_STREQ(footage_text("1234+15"), "1234+15  ");
    EXPECT_STREQ(footage_text("0102+03"), " 102+03  ");
    EXPECT_STREQ(footage_text("7+03"), "   7+03  ");
}

TEST_F(ListTexts, ALengthWithoutSeparatorIsNought) {
    EXPECT_STREQ(footage_text(""), "   0+00  ");
    EXPECT_STREQ(footage_text("0012-05"), "   0+00  ");
    EXPECT_STREQ(footage_text(nullptr), "   0+00  ");
}

TEST_F(ListTexts, ALengthShowsAtMostFiveCharactersFromItsSeparator) {
    EXPECT_STREQ(footage_text("0012+05.2"), "  12+05.2");
    EXPECT_STREQ(footage_text("0012+05.23"), "  12+05.2");
    EXPECT_STREQ(footage_text("0012.5"), "  12.50  ") << "the rest of the field stays";
    EXPECT_STREQ(footage_text("+"), "   0+00  ");
}

TEST_F(ListTexts, ALengthKeepsTheFourCharactersAheadOfItsSeparator) {
    EXPECT_STREQ(footage_text("12345+06"), "2345+06  ");
}

TEST_F(ListTexts, AnyLengthFillsNineCharacters) {
    EXPECT_TRUE(
        rc::check([](const std::string& text) { RC_ASSERT(std::string(footage_text(text.c_str())).size() == 9U); }));
}

TEST_F(ListTexts, ACodeWithoutPrefixStandsUnderItsCount) {
    char text[20];
    LabelPoint point = key("KJ1234560123+05");
    EXPECT_STREQ(code_text(text, point, 1), "KJ1234560123+05");
    EXPECT_STREQ(code_text(text, point, 0), "        0123+05");
    LabelPoint ink = key("ABCD0012+01", 43);
    EXPECT_STREQ(code_text(text, ink, 0), "    0012+01");
}

TEST_F(ListTexts, TheCodeOfAnInvalidPointIsEmpty) {
    char text[20] = "before";
    LabelPoint point;
    EXPECT_STREQ(code_text(text, point, 1), "");
    EXPECT_STREQ(code_text(text, point, 0), "");
}

TEST_F(ListTexts, ALongCodeIsCut) {
    char text[20];
    LabelPoint point(INT_MAX, static_cast<label_t>(23));
    point.set_prefix("KJ123456");
    EXPECT_LE(std::string(code_text(text, point, 1)).size(), 19U);
    EXPECT_LE(std::string(code_text(text, point, 0)).size(), 19U);
}

TEST_F(ListTexts, PositionsAreFeetAndFramesOfTheFilm) {
    EXPECT_STREQ(position_text(37).text, "0002+05");
    EXPECT_STREQ(length_text(37).text, "   2+05  ");
    set_film(static_cast<label_t>(11));
    EXPECT_STREQ(position_text(85).text, "0002+05");
}

TEST_F(ListTexts, PositionsInFramesHaveSixDigits) {
    options().edit_units = 1;
    EXPECT_STREQ(position_text(37).text, " 000037");
    EXPECT_STREQ(position_text(-37).text, " -000037");
    EXPECT_STREQ(length_text(37).text, "     37");
    EXPECT_STREQ(length_text(0).text, "      0");
}

TEST_F(ListTexts, TheLastFrameLiesASpeedsLengthAheadOfTheEnd) {
    const LabelPoint end = key("KJ1234560010+00");
    EXPECT_STREQ(last_frame_text(end, 1.0).text, "        0009+15");
    EXPECT_STREQ(last_frame_text(end, 0.0).text, "        0010+00");
    EXPECT_STREQ(last_frame_text(end, 2.0).text, "        0009+14");
}

TEST_F(ListTexts, ASpeedHasTwoDigits) {
    EXPECT_STREQ(speed_text(0.5).text, "0.5");
    EXPECT_STREQ(speed_text(1.26).text, "1.3");
    EXPECT_STREQ(speed_text(-2.0).text, "-2");
    EXPECT_STREQ(speed_text(100.0).text, "1e+02");
    EXPECT_STREQ(speed_text(0.00001).text, "1e-05");
    EXPECT_STREQ(speed_text(std::nan("")).text, "nan");
    EXPECT_STREQ(speed_text(HUGE_VAL).text, "inf");
}

TEST_F(ListTexts, ASpeedReadsLikePrintf) {
    EXPECT_TRUE(rc::check([](double speed) {
        char expected[48];
        std::snprintf(expected, sizeof expected, "%.2g", speed);
        RC_ASSERT(std::string(speed_text(speed).text) == expected);
    }));
}

} // namespace
