// Times as they are written, and the arithmetic of speeds.

#include "formats/fcpxml/fcpxml_document.h"
#include "formats/fcpxml/fcpxml_project.h"
#include "formats/fcpxml/fcpxml_speed.h"
#include "formats/fcpxml/fcpxml_time.h"
#include "tests/fcpxml/fcpxml_texts.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace formats::fcpxml;
using namespace fcpxml_texts;

namespace {

TEST(FcpxmlTimes, AreFractionsOfSeconds) {
    EXPECT_EQ(parse_time("1001/30000s"), Fraction(1001, 30000));
    EXPECT_EQ(parse_time("22800/2400s"), Fraction(19, 2));
    EXPECT_EQ(parse_time("5s"), Fraction(5));
    EXPECT_EQ(parse_time("0s"), Fraction(0));
    EXPECT_EQ(parse_time("-5s"), Fraction(-5));
    EXPECT_EQ(parse_time("-1/24s"), Fraction(-1, 24));
    EXPECT_EQ(parse_time("10040000000/1000000000s"), Fraction(251, 25));
    EXPECT_EQ(parse_time("0.04s"), Fraction(1, 25));
}

TEST(FcpxmlTimes, OtherTextsAreNone) {
    for (const char* text : {"", "s", "5", "1/0s", "1e3s", "/2s", "1/s", "1/2", "--5s", "+5s", " 5s", "5 s", "1/-2s",
                             "1.s", ".5s", "1.2/3s", "nans", "0x10s"})
        EXPECT_EQ(parse_time(text), std::nullopt) << text;
}

TEST(FcpxmlTimes, NumeratorsOf19DigitsAreReadAndLongerOnesNot) {
    EXPECT_EQ(parse_time("9223372036854775807/9223372036854775807s"), Fraction(1));
    EXPECT_EQ(parse_time("1000000000000000000/1000000000000000s"), Fraction(1000));
    EXPECT_EQ(parse_time("9223372036854775808/9223372036854775808s"), std::nullopt);
    EXPECT_EQ(parse_time("9223372036854775807s"), std::nullopt) << "beyond ten years";
}

TEST(FcpxmlTimes, DenominatorsWhoseProductPasses64BitsAddUpExactly) {
    const Fraction a = *parse_time("1/4294967291s"), b = *parse_time("1/4294967279s");
    const Fraction c = *parse_time("1/4294967231s");
    EXPECT_EQ((a + b + c) - b - c, a);
}

TEST(FcpxmlTimes, RatesThatAreWrittenRoundedAreExact) {
    EXPECT_EQ(parse_rate("23.98"), Fraction(24000, 1001));
    EXPECT_EQ(parse_rate("29.97"), Fraction(30000, 1001));
    EXPECT_EQ(parse_rate("47.95"), Fraction(48000, 1001));
    EXPECT_EQ(parse_rate("119.88"), Fraction(120000, 1001));
    EXPECT_EQ(parse_rate("25"), Fraction(25));
    EXPECT_EQ(parse_rate("90"), Fraction(90));
    for (const char* text : {"", "0", "-25", "fast", "25s"})
        EXPECT_EQ(parse_rate(text), std::nullopt) << text;
}

TEST(FcpxmlTimes, ATimeThatCantBeReadRefusesTheFileWithItsLine) {
    for (const char* bad : {"1/0s", "5", "1e3s", "99999999999999999999s"}) {
        const auto result = read(with_spine("\n" + clip("A", "duration=\"" + std::string(bad) + "\"")));
        EXPECT_EQ(result.error, "a.fcpxml: line 4: asset-clip \"A\": its \"duration\" of \"" + std::string(bad) +
                                    "\" isn't a time as \"1001/24000s\", or is beyond ten years");
    }
    EXPECT_EQ(read(with_spine(clip("A", "duration=\"-5s\""))).error,
              "a.fcpxml: line 3: asset-clip \"A\": its \"duration\" is below 0");
}

TEST(FcpxmlTimes, DatesOfProjectsAreSecondsSinceTheEpoch) {
    EXPECT_EQ(parse_date("1970-01-01 00:00:00 +0000"), 0);
    EXPECT_EQ(parse_date("2023-11-22 03:29:21 -0800"), 1700652561);
    EXPECT_EQ(parse_date("2000-02-29 12:00:00 +0130"), 951820200);
    EXPECT_EQ(parse_date("yesterday"), 0);
    EXPECT_EQ(parse_date("2023-13-22 03:29:21 -0800"), 0);
}

/// "0-4: 10+2" for each span: from, to, value and slope.
std::string spans(const SpeedMap& map, const Fraction& from, const Fraction& to, const Fraction& least_hold = 0) {
    std::string text;
    const auto number = [](const Fraction& value) {
        return std::to_string(static_cast<long>(value.num())) +
               (value.den() == 1 ? "" : "/" + std::to_string(static_cast<long>(value.den())));
    };
    for (const Span& span : map.spans(from, to, least_hold))
        text += (text.empty() ? "" : ", ") + number(span.from) + "-" + number(span.to) + ": " + number(span.value) +
                "+" + number(span.slope) + (span.curved ? "~" : "");
    return text;
}

TEST(FcpxmlSpeed, WithoutPointsContentRunsAsTimeDoes) { EXPECT_EQ(spans({}, 3, 7), "3-7: 3+1"); }

TEST(FcpxmlSpeed, TwoPointsAreOneSpeedAndBeyondThemItStandsStill) {
    const SpeedMap half({{0, 0}, {20, 10}});
    EXPECT_EQ(spans(half, 2, 8), "2-8: 1+1/2");
    EXPECT_EQ(spans(half, 18, 24), "18-20: 9+1/2, 20-24: 10+0");
    const SpeedMap late({{4, 8}, {6, 12}});
    EXPECT_EQ(spans(late, 2, 5), "2-4: 8+0, 4-5: 8+2");
}

TEST(FcpxmlSpeed, PointsThatFallAreReverseAndEqualValuesAFreeze) {
    EXPECT_EQ(spans(SpeedMap({{2, 14}, {14, 2}}), 3, 5), "3-5: 13+-1");
    EXPECT_EQ(spans(SpeedMap({{0, 5}, {9, 5}}), 3, 5), "3-5: 5+0");
}

TEST(FcpxmlSpeed, MorePointsAreAPieceEachUnlessTheyEase) {
    EXPECT_EQ(spans(SpeedMap({{0, 0}, {4, 4}, {6, 8}}), 2, 6), "2-4: 2+1, 4-6: 4+2");
    EXPECT_EQ(spans(SpeedMap({{0, 0}, {4, 4, true}, {6, 8}}), 2, 6), "2-4: 2+1~, 4-6: 4+2~");
}

TEST(FcpxmlSpeed, PointsAtOneTimeJumpAndDivideNothingByNothing) {
    EXPECT_EQ(spans(SpeedMap({{0, 0}, {4, 4}, {4, 10}, {6, 12}}), 2, 6), "2-4: 2+1, 4-6: 10+1");
    EXPECT_EQ(spans(SpeedMap({{4, 4}, {4, 10}}), 2, 6), "2-4: 4+0, 4-6: 10+0");
}

TEST(FcpxmlSpeed, NothingIsShownWithinNoTime) {
    const SpeedMap map({{0, 4}, {1, 0}});
    for (const Fraction& time : {Fraction(-1), Fraction(0), Fraction(1, 2), Fraction(9)})
        EXPECT_EQ(spans(map, time, time, Fraction(1, 48)), "");
}

TEST(FcpxmlSpeed, AHoldShorterThanIsAskedForIsNone) {
    const SpeedMap map({{2, 2}, {6, 10}});
    EXPECT_EQ(spans(map, Fraction(7, 4), Fraction(25, 4), Fraction(1, 2)), "7/4-25/4: 3/2+2");
    EXPECT_EQ(spans(map, Fraction(1), Fraction(7), Fraction(1, 2)), "1-2: 2+0, 2-6: 2+2, 6-7: 10+0");
}

RC_GTEST_PROP(FcpxmlSpeed, SpansFollowEachOtherAndMeetThePoints, ()) {
    const auto steps = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 50)));
    std::vector<SpeedPoint> points{{0, *rc::gen::inRange(-50, 50)}};
    for (const int step : steps)
        points.push_back({points.back().time + Fraction(step, 7), *rc::gen::inRange(-50, 50)});
    const SpeedMap map(points);
    const Fraction end = points.back().time;
    Fraction now;
    for (const Span& span : map.spans(0, end)) {
        RC_ASSERT(span.from == now);
        for (const SpeedPoint& point : points)
            if (span.from <= point.time && point.time <= span.to) RC_ASSERT(span.value_at(point.time) == point.value);
        now = span.to;
    }
    RC_ASSERT(now == end);
}

} // namespace
