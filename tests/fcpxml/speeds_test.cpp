// Speeds of items, and media of another rate than the sequence.

#include "tests/fcpxml/fcpxml_texts.h"

#include "embedded/edit_facts.h"
#include "film/source_facts.h"

#include <gtest/gtest.h>

using namespace fcpxml_texts;
using embedded::Fraction;
using embedded::WarningKind;

namespace {

TEST(FcpxmlSpeeds, HalfSpeedOfTenSecondsPlaysOneSecondAfterTwo) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="2s" duration="18s")", speed("0s 0s, 20s 10s"))),
              "0-432 A@00:00:01:00*0.5");
}

TEST(FcpxmlSpeeds, DoubleSpeedUsesTwiceTheMedia) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="1s" duration="2s")", speed("0s 0s, 10s 20s"))), "0-48 A@00:00:02:00*2");
}

TEST(FcpxmlSpeeds, AreExactFractions) {
    const auto result = read(with_spine(clip("A", R"(duration="2s")", speed("0s 0s, 3s 10s"))));
    EXPECT_EQ(embedded::facts_of_channel(result.edit, 0).at(0).speed, Fraction(10, 3));
}

TEST(FcpxmlSpeeds, ReverseShowsTheSameStretchFromItsLastFrame) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="3s" duration="2s")", speed("2s 14s, 14s 2s"))), "0-48 A@00:00:12:23*-1");
}

TEST(FcpxmlSpeeds, AFreezeUsesNoMedia) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="1s" duration="2s")", speed("0s 5s, 10s 5s"))), "0-48 A@00:00:05:00*0");
}

TEST(FcpxmlSpeeds, ThreeStraightPointsAreAnEventEach) {
    const auto result = read(with_spine(clip("A", R"(duration="4s")", speed("0s 0s, 2s 2s, 4s 6s"))));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-96 A@00:00:02:00*2");
    EXPECT_TRUE(warns(result, "each of its 2 speeds is an event of its own", WarningKind::note));
}

TEST(FcpxmlSpeeds, OnlyTheSpeedsThatShowCount) {
    const auto result = read(with_spine(clip("A", R"(start="2s" duration="2s")", speed("0s 0s, 2s 2s, 4s 6s"))));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:02:00*2");
    EXPECT_TRUE(result.warnings.empty());
}

TEST(FcpxmlSpeeds, AGradualChangeIsOneEventWithAnEffectForTheLab) {
    const std::string ramp = R"(<timeMap><timept time="0s" value="0s" interp="smooth2"/>)"
                             R"(<timept time="2s" value="2s" interp="smooth2" inTime="1/2s" outTime="1/2s"/>)"
                             R"(<timept time="4s" value="6s" interp="smooth2"/></timeMap>)";
    const auto result = read(with_spine(clip("A", R"(duration="4s")", ramp)));
    EXPECT_EQ(drawn(result.edit, 0), "0-96 A@00:00:00:00*1.5");
    EXPECT_EQ(embedded::facts_of_channel(result.edit, 0).at(0).lab_effect, "Variable speed");
    EXPECT_TRUE(warns(result, "changes its speed gradually", WarningKind::replaced));
}

TEST(FcpxmlSpeeds, BeyondItsPointsAClipStandsStillWithAWarning) {
    const auto result = read(with_spine(clip("A", R"(start="2s" duration="4s")", speed("4s 8s, 6s 12s"))));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:08:00*0 | 48-96 A@00:00:08:00*2");
    EXPECT_TRUE(warns(result, "its speed map doesn't reach as far as it does"));
}

TEST(FcpxmlSpeeds, EqualTimesAndOtherBadMapsAreNoSpeed) {
    EXPECT_EQ(drawn_spine(clip("A", R"(duration="2s")", speed("1s 1s, 1s 3s"))),
              "0-24 A@00:00:01:00*0 | 24-48 A@00:00:03:00*0");
    for (const char* bad : {"0s 0s", "4s 4s, 0s 0s", "0s 0s, 1/0s 2s"}) {
        const auto result = read(with_spine(clip("A", R"(start="7s" duration="2s")", speed(bad))));
        EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:07:00") << bad;
        EXPECT_TRUE(warns(result, "its speed map can't be used", WarningKind::replaced)) << bad;
    }
}

TEST(FcpxmlSpeeds, InAClipTheValuesAreOnTheClockOfItsMedia) {
    EXPECT_EQ(drawn_spine(R"(<clip name="C" start="10s" duration="2s">)" + speed("0s 100s, 50s 200s") +
                          R"(<video ref="m24" offset="100s" start="100s" duration="100s"/></clip>)"),
              "0-48 C@00:02:00:00*2");
}

// Of each pair the media's rate comes first.

TEST(FcpxmlRates, TwentyThreeIn24AndTheOtherWayRoundGoFrameForFrame) {
    const std::string scaled = R"(<conform-rate srcFrameRate="23.98"/>)";
    EXPECT_EQ(drawn_spine(clip("A", R"(start="79079/1600s" duration="901/24s")", scaled, "m23")),
              "0-901 A@00:00:49:09");
    EXPECT_EQ(drawn_spine(clip("A", R"(start="20s" duration="48048/24000s")", R"(<conform-rate srcFrameRate="24"/>)"),
                          R"(format="r23")", {}, 24000.0 / 1001),
              "0-48 A@00:00:20:00");
}

TEST(FcpxmlRates, FilmAt25In24GoesFrameForFrame) {
    const auto result =
        read(with_spine(clip("A", R"(start="177/25s" duration="2s")", R"(<conform-rate srcFrameRate="25"/>)", "m25")));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:07:02");
    const EditPtr source = source_at(result.edit, 0, 0);
    EXPECT_EQ(edl_tests::timecode_at(source, 25.0 / 24), "00:00:01:00") << "25 frames later";
    EXPECT_DOUBLE_EQ(mPosn_Xlate(2.0, medium_edit, medium_film, source), 48) << "a frame of film for each of the edit";
    film::SourceStore store(0);
    EXPECT_EQ(store.of(source->cookie).timecode_rate, Fraction(24)) << "exactly, though it counts 25";
}

TEST(FcpxmlRates, MediaAt2997In25RunsInRealTime) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="178.510s" duration="4s")",
                               R"(<conform-rate scaleEnabled="0" srcFrameRate="29.97"/>)", "m29"),
                          R"(format="r25")", {}, 25),
              "0-100 A@00:02:58:09");
}

TEST(FcpxmlRates, SixtyIn24PlaysAsItsConformingSays) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="10s" duration="2s")",
                               R"(<conform-rate scaleEnabled="0" srcFrameRate="60"/>)", "m60")),
              "0-48 A@00:00:10:00");
    const auto slow =
        read(with_spine(clip("A", R"(start="10s" duration="2s")", R"(<conform-rate srcFrameRate="60"/>)", "m60")));
    EXPECT_EQ(drawn(slow.edit, 0), "0-48 A@00:00:10:00");
    EXPECT_EQ(edl_tests::timecode_at(source_at(slow.edit, 0, 0), 2.0), "00:00:00:48") << "each frame shows";
}

TEST(FcpxmlRates, RatesThatCountAlikeGoFrameForFrameUnlessRealTimeIsAskedFor) {
    const auto plain = read(with_spine(clip("A", R"(start="480480/24000s" duration="1000s")", {}, "m23")));
    EXPECT_EQ(drawn(plain.edit, 0), "0-24000 A@00:00:20:00");
    EXPECT_EQ(edl_tests::timecode_at(source_at(plain.edit, 0, 0), 1000.0), "00:16:40:00");
    const auto real = read(with_spine(clip("A", R"(start="480480/24000s" duration="1000s")",
                                           R"(<conform-rate scaleEnabled="0" srcFrameRate="23.98"/>)", "m23")));
    EXPECT_EQ(drawn(real.edit, 0), "0-24000 A@00:00:20:00");
    EXPECT_EQ(edl_tests::timecode_at(source_at(real.edit, 0, 0), 1000.0), "00:16:39:00") << "24 frames less";
}

TEST(FcpxmlRates, ASpeedOfMediaThatCountsAlikeIsInFrames) {
    const auto result = read(with_spine(clip("A", R"(duration="10s")", speed("0s 0s, 100s 200s"), "m23")));
    EXPECT_EQ(embedded::facts_of_channel(result.edit, 0).at(0).speed, Fraction(2000, 1001));
}

TEST(FcpxmlRates, TheSpeedOfConformedMediaIsInFrames) {
    const std::string rate = R"(<conform-rate srcFrameRate="25"/>)", twice = speed("0s 60s, 100s 260s");
    const std::string nest = compound("c", clip("A", R"(duration="900s")", {}, "m25"), R"(format="r25")");
    const auto facts = [&](const std::string& item) {
        return embedded::facts_of_channel(read(with_spine(item, R"(format="r24")", nest)).edit, 0).at(0);
    };
    for (const std::string& item :
         {clip("A", R"(start="0s" duration="10s")", rate + twice, "m25"),
          R"(<clip start="0s" duration="10s">)" + rate + twice + R"(<video ref="m25" duration="900s"/></clip>)",
          R"(<ref-clip ref="c" start="0s" duration="10s">)" + rate + twice + "</ref-clip>"}) {
        const auto double_speed = facts(item);
        EXPECT_EQ(double_speed.speed, Fraction(2)) << item;
        EXPECT_EQ(double_speed.source_in * 24, Fraction(1500)) << "60 s of 25 frames";
    }
    EXPECT_EQ(facts(clip("A", R"(start="0s" duration="10s")",
                         R"(<conform-rate srcFrameRate="25" scaleEnabled="0"/>)" + twice, "m25"))
                  .speed,
              Fraction(2))
        << "of time";
    EXPECT_EQ(facts(clip("A", R"(start="0s" duration="10s")", R"(<conform-rate srcFrameRate="30"/>)", "m25")).speed,
              Fraction(4, 5))
        << "of time, where it isn't the medium's rate that is conformed";
}

TEST(FcpxmlRates, ConformedMediaAtDoubleSpeedInReverseBeginsWithItsLastFrame) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="0s" duration="2s")",
                               R"(<conform-rate srcFrameRate="25"/>)" + speed("0s 20s, 10s 0s"), "m25")),
              "0-48 A@00:00:19:24*-2");
}

TEST(FcpxmlRates, AMediumThatTellsNoRateIsToldOnce) {
    const std::string more = R"(<asset id="no" name="No" duration="900s" hasVideo="1" hasAudio="1" format="nope"/>)"
                             R"(<format id="odd" name="FFVideoFormatOdd"/>)"
                             R"(<asset id="named" name="Named" duration="900s" hasVideo="1" format="odd"/>)"
                             R"(<asset id="bare" name="Bare" duration="900s" hasVideo="1"/>)"
                             R"(<asset id="heard" name="Heard" duration="900s" hasAudio="1"/>)";
    for (const char* id : {"no", "named", "bare"}) {
        const std::string one = clip("A", R"(duration="1s")", {}, id);
        const auto result = read(with_spine(one + one, R"(format="r24")", more));
        EXPECT_TRUE(
            warns(result, "doesn't tell its frames a second, so they are counted as the edit's", WarningKind::rate))
            << id;
        EXPECT_EQ(result.warnings.size(), 1U) << id;
    }
    EXPECT_TRUE(read(with_spine(clip("A", R"(duration="1s")", {}, "heard"), R"(format="r24")", more)).warnings.empty())
        << "sound has no frames";
    const auto nested = read(with_spine(R"(<ref-clip ref="c" duration="1s"/>)", R"(format="r24")",
                                        compound("c", clip("A", R"(duration="1s")"), R"(tcStart="0s")")));
    EXPECT_TRUE(warns(nested, "sequence: doesn't tell its frames a second", WarningKind::rate));
    EXPECT_EQ(nested.warnings.size(), 1U);
}

TEST(FcpxmlRates, AMediumThatTellsNoRateHasThatOfItsConforming) {
    const std::string more = R"(<asset id="no" name="No" start="100s" duration="900s" hasVideo="1"/>)";
    const std::string rate = R"(<conform-rate srcFrameRate="25"/>)";
    for (const std::string& item : {clip("A", R"(start="102s" duration="10s")", rate, "no"),
                                    R"(<clip name="A" start="102s" duration="10s">)" + rate +
                                        R"(<video ref="no" offset="100s" duration="900s"/></clip>)"}) {
        const auto result = read(with_spine(item, R"(format="r24")", more));
        EXPECT_EQ(drawn(result.edit, 0), "0-240 A@00:01:42:00") << "25 frames a second from 00:01:40:00";
        const auto facts = embedded::facts_of_channel(result.edit, 0).at(0);
        EXPECT_EQ(facts.source_in * 24, Fraction(50));
        EXPECT_EQ(facts.speed, Fraction(1));
        EXPECT_TRUE(result.warnings.empty()) << result.warnings[0].text;
    }
}

TEST(FcpxmlRates, ACompoundThatCountsAlikeGoesFrameForFrameToo) {
    const std::string nest =
        compound("c", clip("A", R"(duration="500s")") + clip("B", R"(duration="500s")"), R"(format="r24")");
    EXPECT_EQ(drawn_spine(R"(<ref-clip ref="c" duration="1001s"/>)", R"(format="r23")", nest, 24000.0 / 1001),
              "0-12000 A@00:00:00:00 | 12000-24000 B@00:00:00:00");
    const std::string angles = R"(<media id="mc"><multicam format="r24"><mc-angle angleID="x">)" +
                               clip("A", R"(duration="500s")") + clip("B", R"(duration="500s")") +
                               "</mc-angle></multicam></media>";
    EXPECT_EQ(drawn_spine(R"(<mc-clip ref="mc" duration="1001s"><mc-source angleID="x"/></mc-clip>)", R"(format="r23")",
                          angles, 24000.0 / 1001),
              "0-12000 A@00:00:00:00 | 12000-24000 B@00:00:00:00");
}

TEST(FcpxmlRates, MediaAtARateWithoutTimecodeIsCountedAsTheEdit) {
    const std::string more = R"(<format id="r120" frameDuration="1/120s"/>)"
                             R"(<asset id="m120" name="High" start="5s" duration="9s" hasVideo="1" format="r120"/>)";
    const auto result = read(with_spine(clip("A", R"(start="6s" duration="1s")", {}, "m120"), R"(format="r24")", more));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@00:00:06:00");
    EXPECT_TRUE(warns(result, "asset \"High\": no timecode counts at its rate", WarningKind::rate));
}

TEST(FcpxmlRates, DropFrameIsThatOfTheClip) {
    const std::string spine = clip("A", R"(start="12012/100s" duration="1s" tcFormat="DF")", {}, "m29") +
                              clip("B", R"(start="12012/100s" duration="1s" tcFormat="NDF")", {}, "m29");
    EXPECT_EQ(drawn_spine(spine, R"(format="r29" tcFormat="DF")", {}, 30000.0 / 1001),
              "0-30 A@00:02:00;04 | 30-60 B@00:02:00:00");
}

TEST(FcpxmlRates, ACompoundOfAnotherRateKeepsItsOwnTimes) {
    const std::string inside = compound("c", clip("In", R"(start="452452/30000s" duration="174174/30000s")", {}, "m29"),
                                        R"(format="r29" duration="174174/30000s" tcStart="0s")");
    EXPECT_EQ(drawn_spine(R"(<ref-clip ref="c" duration="86/24s"><conform-rate scaleEnabled="0" srcFrameRate="29.97"/>)"
                          R"(</ref-clip>)",
                          R"(format="r24")", inside),
              "0-86 In@00:00:15:02");
}

TEST(FcpxmlRates, ACompoundThatIsConformedFrameForFrameKeepsItsFrames) {
    const std::string inside = compound("c",
                                        clip("In", R"(start="2s" duration="4s")", {}, "m25") +
                                            clip("Next", R"(start="1s" duration="4s")", {}, "m25"),
                                        R"(format="r25" duration="8s" tcStart="0s")");
    EXPECT_EQ(drawn_spine(R"(<ref-clip ref="c" duration="8s"><conform-rate srcFrameRate="25"/></ref-clip>)",
                          R"(format="r24")", inside),
              "0-100 In@00:00:02:00 | 100-192 Next@00:00:01:00");
}

TEST(FcpxmlRates, AConformingThatTellsNoRateIsToldOf) {
    const auto result = read(with_spine(R"(<title ref="text" name="T" duration="2s"><conform-rate/></title>)"));
    ASSERT_TRUE(result.edit) << result.error;
    EXPECT_TRUE(warns(result, "doesn't tell the rate that it is for; taken as the sequence's"));
}

// The media of a thousand seconds at 24 has the frames 0 to 23,999.
TEST(FcpxmlSpeeds, AHoldAtTheEndOfTheMediumIsItsLastFrame) {
    EXPECT_EQ(drawn_spine(clip("A", R"(duration="4s")", speed("0s 998s, 2s 1000s"))),
              "0-48 A@00:16:38:00 | 48-96 A@00:16:39:23*0");
    EXPECT_EQ(drawn_spine(clip("A", R"(duration="4s")", speed("0s 997s, 2s 999s"))),
              "0-48 A@00:16:37:00 | 48-96 A@00:16:39:00*0");
}

} // namespace
