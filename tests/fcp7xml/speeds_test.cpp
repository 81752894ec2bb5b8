// Speeds, nests and multiclips.

#include "tests/fcp7xml/fcp7_texts.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace fcp7_texts;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Ten frames of an item from its own frame 20 on.
formats::ReadResult retimed(const std::string& filter, const std::string& more = "") {
    return read(clip({"A", 0, 10, 20, 30, file(), filter + more}));
}

std::string played(const std::string& filter) {
    const auto result = retimed(filter);
    return shown(result) + " " + source_frames(result.edit, 0, 0);
}

TEST(Fcp7Speeds, ConstantOnesCountFromTheStartOfTheMedia) {
    EXPECT_EQ(played(time_remap("100")), "0-10 A@01:00:00:20 20-30");
    EXPECT_EQ(played(time_remap("200")), "0-10 A@01:00:01:16*2 40-60");
    EXPECT_EQ(played(time_remap("50")), "0-10 A@01:00:00:10*0.5 10-15");
    EXPECT_EQ(played(time_remap("0")), "0-10 A@01:00:00:00*0 0-0");
    EXPECT_EQ(told(retimed(time_remap("200"))), "");
}

TEST(Fcp7Speeds, ReverseCountsFromTheEndOfTheMedia) {
    // Of 1000 frames the last is 999; 20 frames on it is 979, and the tenth frame from there 970.
    EXPECT_EQ(played(time_remap("100", true)), "0-10 A@01:00:40:19*-1 979-969");
    EXPECT_EQ(played(time_remap("-100")), "0-10 A@01:00:40:19*-1 979-969");
    EXPECT_EQ(played(time_remap("-200", true)), "0-10 A@01:00:39:23*-2 959-939");
    const auto unknown = read(clip({"A", 0, 10, 20, 30, "", time_remap("-100")}));
    EXPECT_THAT(told(unknown), HasSubstr("plays in reverse, but how long its file is isn't said"));
}

TEST(Fcp7Speeds, ReverseOfASubclipCountsFromTheEndOfThat) {
    const auto subclip = [](const std::string& end, const std::string& more = "") {
        const auto result =
            retimed(time_remap("-100"), tag("subclipinfo", tag("startoffset", "100") + tag("endoffset", end)) + more);
        return source_frames(result.edit, 0, 0) + (told(result).empty() ? "" : " !");
    };
    // Of the frames 100 to 499 the 20th from the end is 479, whatever the end counts from.
    EXPECT_EQ(subclip("500"), "479-469");
    EXPECT_EQ(subclip("0"), "979-969");
    EXPECT_EQ(subclip("9"), "970-960");
    EXPECT_EQ(subclip("950"), "929-919");
    EXPECT_EQ(subclip("300"), "679-669 !");
    EXPECT_EQ(subclip("300", tag("duration", "200")), "279-269");
    EXPECT_EQ(subclip("300", tag("duration", "600")), "679-669");
    const auto keys = retimed(time_remap("-100", false, false, graph({{"0", "950"}, {"950", "0"}})),
                              tag("subclipinfo", tag("startoffset", "100") + tag("endoffset", "0")));
    EXPECT_THAT(told(keys), HasSubstr("plays in reverse, from frame 950 of a file of 1000"));
}

TEST(Fcp7Speeds, PercentsThatAreRoundedGiveWayToTheKeyFrames) {
    const auto third = [](const std::string& percent, const char* end) {
        const auto result = read(
            clip({"A", 0, 10, 96, 106, file(), time_remap(percent, false, false, graph({{"0", "0"}, {"3000", end}}))}));
        return start_timecode(result.edit) + told(result);
    };
    EXPECT_EQ(third("33.3333", "1000"), "01:00:01:08");
    EXPECT_EQ(third("33.33", "1000"), "01:00:01:08");
    EXPECT_EQ(third("33.3333", "999.9"), "01:00:01:07");
    EXPECT_EQ(third("-33.3333", "-1000").substr(0, 11), "00:59:58:16");
    // A frozen one stays so.
    EXPECT_EQ(played(time_remap("0.00", false, false, graph({{"0", "7"}, {"100000", "8"}}))),
              "0-10 A@01:00:00:07*0 7-7");
}

TEST(Fcp7Speeds, ASpeedThatIsNotThatOfTheKeyFramesIsDoubted) {
    const std::string line = graph({{"0", "0"}, {"1000", "1000"}});
    const auto frozen = retimed(time_remap("0", false, false, line));
    EXPECT_EQ(shown(frozen) + " " + source_frames(frozen.edit, 0, 0), "0-10 A@01:00:00:20*0 20-20");
    EXPECT_THAT(told(frozen), HasSubstr("is frozen, but the key frames of its speed move"));
    const auto unknown = read(clip({"A", 0, 10, -1, 30, file(), time_remap("0", false, false, line)}));
    EXPECT_EQ(shown(unknown), "0-10 A@01:00:00:00*0");
    const auto slow = retimed(time_remap("50", false, false, line));
    EXPECT_EQ(shown(slow), "0-10 A@01:00:00:20");
    EXPECT_THAT(told(slow), HasSubstr("plays at 50 percent, but the key frames of its speed say otherwise"));
    EXPECT_THAT(told(retimed(time_remap("100", false, false, graph({{"0", "900"}, {"900", "0"}})))),
                HasSubstr("plays at 100 percent"));
    EXPECT_EQ(told(retimed(time_remap("50", false, true, line))), "");
}

TEST(Fcp7Speeds, TwoKeyFramesAtOnePlaceAreAJump) {
    const std::string jump = graph({{"0", "0"}, {"24", "24"}, {"24", "60"}, {"24", "100"}, {"40", "116"}});
    EXPECT_EQ(shown(retimed(time_remap("100", false, true, jump))), "0-4 A@01:00:00:20 | 4-10 A@01:00:04:04");
    EXPECT_EQ(shown(retimed(time_remap("100", false, true, graph({{"0", "0"}, {"29", "29"}, {"29", "90"}})))),
              "0-9 A@01:00:00:20 | 9-10 A@01:00:03:18*0");
}

TEST(Fcp7Speeds, OfTwoFiltersForItTheFirstCounts) {
    const auto result = retimed(time_remap("50") + time_remap("200"));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:10*0.5");
    EXPECT_THAT(told(result), HasSubstr("has several filters for its speed; the first counts"));
}

TEST(Fcp7Speeds, AGraphSaysWhichFramesAreShown) {
    EXPECT_EQ(
        played(time_remap("200", false, false, graph({{"0", "0"}, {"20", "240"}, {"30", "260"}, {"500", "1200"}}))),
        "0-10 A@01:00:10:00*2 240-260");
    EXPECT_EQ(played(time_remap("100", true, false, graph({{"0", "420"}, {"420", "0"}}))),
              "0-10 A@01:00:16:16*-1 400-390");
    EXPECT_EQ(
        played(time_remap("0", false, false, graph({{"0", "300"}, {"20", "300"}, {"30", "300"}, {"500", "301"}}))),
        "0-10 A@01:00:12:12*0 300-300");
}

TEST(Fcp7Speeds, KeyFramesThatAreRoundedLieOnTheLineOfTheSpeed) {
    EXPECT_EQ(played(time_remap("50", false, false, graph({{"0", "0"}, {"21", "10"}, {"29", "14"}, {"101", "50"}}))),
              "0-10 A@01:00:00:10*0.5 10-15");
}

TEST(Fcp7Speeds, AReverseFromAFrameThatTheFileDoesNotHaveIsDoubted) {
    EXPECT_EQ(
        told(retimed(time_remap("100", true, false, graph({{"0", "1000"}, {"1000", "0"}})))),
        "line 4: clip item \"A\": plays in reverse, from frame 1000 of a file of 1000: the frames that it shows may "
        "be one lower than they are read");
    EXPECT_EQ(told(retimed(time_remap("100", true, false, graph({{"0", "999"}, {"999", "0"}})))), "");
}

TEST(Fcp7Speeds, ACurveIsAnEventForEachOfItsParts) {
    const auto result =
        retimed(time_remap("150", false, true, graph({{"0", "0"}, {"1", "1"}, {"24", "24"}, {"40", "56"}})));
    EXPECT_EQ(shown(result), "0-4 A@01:00:00:20 | 4-10 A@01:00:01:00*2");
    EXPECT_EQ(source_frames(result.edit, 0, 1), "24-36");
    EXPECT_EQ(told(result), "line 4: clip item \"A\": plays at a variable speed; each of its 2 parts is an event");
    EXPECT_EQ(result.warnings[0].kind, embedded::WarningKind::replaced);
}

TEST(Fcp7Speeds, ACurveOutsideTheItemIsNoMatter) {
    const auto result = retimed(time_remap("150", false, true, graph({{"0", "0"}, {"10", "100"}, {"40", "130"}})));
    EXPECT_EQ(shown(result), "0-10 A@01:00:04:14");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Speeds, ACurveThatEndsAFrameEarlyGoesOnAndOneThatEndsMuchEarlierHolds) {
    EXPECT_EQ(shown(retimed(time_remap("100", false, true, graph({{"0", "0"}, {"24", "24"}, {"29", "34"}})))),
              "0-4 A@01:00:00:20 | 4-10 A@01:00:01:00*2");
    EXPECT_EQ(shown(retimed(time_remap("100", false, true, graph({{"0", "0"}, {"24", "24"}})))),
              "0-4 A@01:00:00:20 | 4-10 A@01:00:01:00*0");
    EXPECT_EQ(shown(retimed(time_remap("100", false, true, graph({{"25", "50"}, {"45", "90"}})))),
              "0-5 A@01:00:02:02*0 | 5-10 A@01:00:02:02*2");
}

std::string bent_often() {
    std::string text;
    for (int i = 0; i <= 20; ++i)
        text += tag("keyframe", tag("when", std::to_string(20 + i)) + tag("value", std::to_string(20 + i * i)));
    return parameter("graphdict", text);
}

TEST(Fcp7Speeds, ACurveOfManyPartsIsAnEffectForTheLab) {
    const auto result = read(clip({"A", 0, 20, 20, 40, file(), time_remap("100", false, true, bent_often())}));
    EXPECT_EQ(shown(result), "0-20 A@01:00:00:20*20");
    EXPECT_EQ(source_frames(result.edit, 0, 0), "20-420");
    ASSERT_EQ(model(result).graphs.size(), 1U);
    EXPECT_STREQ(toUTF8(model(result).graphs[0].components.at(0)->getName()).c_str(), "Variable Speed");
    EXPECT_EQ(told(result), "line 4: clip item \"A\": plays at a variable speed; it is an effect for the lab");
}

TEST(Fcp7Speeds, PartsThatATransitionWouldReachBeyondAreAnEffectToo) {
    const std::string curve = time_remap("150", false, true, graph({{"0", "0"}, {"18", "18"}, {"40", "62"}}));
    const auto result =
        read(clip({"A", 0, -1, 0, 20, file(), curve}) + transition(12, 20, "end") + clip({"B", -1, 40, 0, 28}));
    EXPECT_THAT(told(result), HasSubstr("it is an effect for the lab"));
    const auto fits =
        read(clip({"A", 0, -1, 0, 20, file(), curve}) + transition(18, 20, "start") + clip({"B", -1, 40, 0, 22}));
    EXPECT_EQ(shown(fits), "0-18 A@01:00:00:00 | 18-20 diss | 20-40 B@01:00:00:02");
}

TEST(Fcp7Speeds, AGraphWithoutKeysOrOutOfOrder) {
    EXPECT_EQ(played(time_remap("200", false, false, graph({}))), "0-10 A@01:00:01:16*2 40-60");
    const auto lost = retimed(time_remap("200", false, true, graph({})));
    EXPECT_THAT(told(lost),
                HasSubstr("its speed is variable, but its curve isn't there; it plays at its average speed"));
    const auto mixed = retimed(time_remap("100", false, true, graph({{"30", "36"}, {"24", "24"}, {"0", "0"}})));
    EXPECT_EQ(shown(mixed), "0-4 A@01:00:00:20 | 4-10 A@01:00:01:00*2");
    EXPECT_THAT(told(mixed), HasSubstr("the key frames of its speed are out of order; put in order"));
    EXPECT_EQ(
        shown(retimed(time_remap("100", false, true, graph({{"0", "0"}, {"24", "24"}, {"24", "100"}, {"40", "116"}}))))
            .substr(0, 4),
        "0-4 ");
}

TEST(Fcp7Speeds, AFilterThatIsSwitchedOffIsNone) {
    EXPECT_EQ(shown(retimed(
                  tag("filter", tag("enabled", "FALSE") + time_remap("200").substr(8, time_remap("200").size() - 17)))),
              "0-10 A@01:00:00:20");
}

std::string nest(const std::string& video, const std::string& name = "N", const std::string& more = rate(24)) {
    return sequence(video, more, "", name);
}

const std::string two = track(clip({"X", 0, 10, 0, 10}) + clip({"Y", 10, 30, 100, 120}));

TEST(Fcp7Nests, OneTrackIsSplicedInAndTrimmed) {
    const auto result = read(
        clip({"N", 5, 20, 4, 19, nest(two + track("") + track(tag("enabled", "FALSE") + clip({"Z", 0, 9, 0, 9})))}) +
        clip({"B", 20, 30, 0, 10}));
    EXPECT_EQ(shown(result), "0-5 black | 5-11 X@01:00:00:04 | 11-20 Y@01:00:04:04 | 20-30 B@01:00:00:00");
}

TEST(Fcp7Nests, WhatLacksIsAGap) {
    EXPECT_EQ(shown(read(clip({"N", 0, 20, 20, 40, nest(two)}))), "0-10 Y@01:00:04:14 | 10-20 black");
    EXPECT_EQ(shown(read(clip({"N", 0, 20, 20, 40, nest(track(""))}))), "0-20 black");
}

// At 30 in 24: X ends at 8.8 frames, and frame 9 is the first to show Y; frame 8 is frame 10 of the nest.
TEST(Fcp7Nests, ACutBetweenTwoFramesLiesWhereTheNextBegins) {
    const std::string thirty = track(clip({"X", 0, 11, 0, 11}) + clip({"Y", 11, 30, 100, 119}));
    const auto result = read(clip({"N", 0, 16, 0, 20, rate(30) + nest(thirty, "N", rate(30))}));
    EXPECT_THAT(shown(result), AllOf(StartsWith("0-9 X@"), HasSubstr(" | 9-16 Y@")));
}

TEST(Fcp7Nests, MarkersAreLeftOutWithAWarning) {
    const auto told = [](const std::string& more) {
        const auto result = read(clip({"N", 0, 20, 5, 25, nest(two, "N", rate(24) + more)}));
        return std::count_if(result.warnings.begin(), result.warnings.end(), [](const embedded::Warning& warning) {
            return warning.kind == embedded::WarningKind::dropped &&
                   warning.text.find("is a sequence whose markers are left out") != std::string::npos;
        });
    };
    EXPECT_EQ(told(""), 0);
    EXPECT_EQ(told("<marker><name>look</name><in>3</in><out>-1</out></marker>"), 1);
}

TEST(Fcp7Nests, MarkersOfTheirClipsStay) {
    const std::string marked =
        track(clip({"X", 0, 30, 0, 30, file(), tag("marker", tag("name", "look") + tag("in", "12"))}));
    EXPECT_EQ(cues(read(clip({"N", 0, 20, 5, 25, nest(marked)})).edit), "7 look");
}

TEST(Fcp7Nests, ATransitionThatANestIsCutInIsToldWhereItWouldBeSeen) {
    const std::string inner = nest(track(clip({"X", 0, -1, 0, 25}) + transition(15, 25) + clip({"Y", -1, 50, 0, 35})));
    const auto told_from = [&](int in) { return told(read(clip({"N", 0, 20, in, in + 20, inner}))); };
    const std::string left_out =
        "line 4 \"Cross Dissolve\": left out, as what is taken of its track begins or ends inside it";
    EXPECT_EQ(told_from(22), left_out);
    EXPECT_EQ(told_from(20), left_out);
    EXPECT_EQ(told_from(25), "");
    EXPECT_EQ(told(read(clip({"N", 0, 18, 0, 18, inner}))), left_out);
    EXPECT_EQ(told(read(clip({"N", 0, 15, 0, 15, inner}))), "");
}

TEST(Fcp7Nests, SeveralTracksOrAnotherSpeedAreRenderedMaterial) {
    const auto several = read(clip({"item", 0, 20, 5, 25, nest(two + two)}));
    EXPECT_EQ(shown(several), "0-20 N@");
    EXPECT_EQ(source_frames(several.edit, 0, 0), "5-25");
    EXPECT_THAT(told(several), HasSubstr("is a sequence of 2 tracks that show something; it is rendered material"));
    const auto fast = read(clip({"item", 0, 20, 5, 25, nest(two), time_remap("200")}));
    EXPECT_EQ(shown(fast), "0-20 N@*2");
    EXPECT_THAT(told(fast), HasSubstr("is a sequence at another speed; it is rendered material"));
}

TEST(Fcp7Nests, ACopyWithoutRenderedMaterialIsTheSameEditUnderAnotherName) {
    const auto result = read(clip({"item", 0, 20, 5, 25, nest(two + two)}));
    EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(result.edit);
    ASSERT_TRUE(copy.edit);
    EXPECT_EQ(drawn(copy.operator->(), 0), "0-20 N@");
    EXPECT_FALSE(copy.edit->cookie == result.edit->cookie);
}

TEST(Fcp7Nests, OfTheSoundOfANestAnItemTakesTheTrackThatItNames) {
    const std::string inner =
        sequence("", rate(24), track(clip({"X", 0, 10, 0, 10})) + track(clip({"Y", 0, 10, 0, 10})), "N");
    const auto heard = [&](const std::string& index) {
        const std::string item =
            clip({"N", 0, 10, 0, 10, inner, tag("sourcetrack", tag("mediatype", "audio") + tag("trackindex", index))});
        return shown(read_document(document(sequence("", rate(24), track(item)))));
    };
    EXPECT_EQ(heard("1"), "0-10 X@01:00:00:00");
    EXPECT_EQ(heard("2"), "0-10 Y@01:00:00:00");
    EXPECT_EQ(heard("3"), "0-10 N@");
}

TEST(Fcp7Nests, ASequenceStandsOnceInFullAndThenByItsId) {
    const std::string repeated = "<sequence id=\"N\"/>";
    const auto result = read(clip({"N", 0, 5, 0, 5, repeated}) + clip({"N", 5, 10, 0, 5, nest(two)}) +
                             clip({"N", 10, 15, 5, 10, repeated}));
    EXPECT_EQ(shown(result), "0-5 X@01:00:00:00 | 5-10 X@01:00:00:00 | 10-15 X@01:00:00:05");
    const auto lost = read(clip({"item", 0, 5, 0, 5, "<sequence id=\"lost\"/>"}));
    EXPECT_EQ(shown(lost), "0-5 item@");
    EXPECT_THAT(told(lost), HasSubstr("its sequence isn't in the document; it is rendered material"));
}

TEST(Fcp7Nests, OneThatHoldsItselfIsAGap) {
    const auto result =
        read(clip({"N", 0, 20, 0, 20,
                   nest(track(clip({"X", 0, 10, 0, 10}) + clip({"N", 10, 20, 0, 10, "<sequence id=\"N\"/>"})))}));
    EXPECT_EQ(shown(result), "0-10 X@01:00:00:00 | 10-20 black");
    EXPECT_THAT(told(result), HasSubstr("is a sequence that holds itself; a gap stands for it"));
    const auto outer = read(clip({"N", 0, 20, 0, 20, "<sequence id=\"Reel 1\"/>"}));
    EXPECT_EQ(shown(outer), "0-20 black");
}

std::string deep(int levels) {
    std::string inner = track(clip({"X", 0, 100, 0, 100}));
    for (int i = 0; i < levels; ++i)
        inner = track(clip({"N", 0, 100, 0, 100, nest(inner, "N" + std::to_string(i))}));
    return inner;
}

TEST(Fcp7Nests, ThirtyLevelsAreReadAndTooManyRefused) {
    EXPECT_EQ(shown(read_document(document(sequence(deep(30)))), 0), "0-100 X@01:00:00:00");
    EXPECT_THAT(read_document(document(sequence(deep(120)))).error,
                HasSubstr("sequences lie more than 100 deep in each other"));
}

TEST(Fcp7Nests, NestsThatDoubleWithoutEndAreRefused) {
    std::string all = nest(two, "N0");
    for (int i = 1; i < 40; ++i) {
        const std::string inner = "<sequence id=\"N" + std::to_string(i - 1) + "\"/>";
        all +=
            nest(track(clip({"N", 0, 15, 0, 15, inner}) + clip({"N", 15, 30, 0, 15, inner})), "N" + std::to_string(i));
    }
    formats::ReadOptions options;
    options.sequence = "N39";
    EXPECT_THAT(read_document(document(all), options).error,
                HasSubstr("nests in nests come to more than 100000 items"));
}

TEST(Fcp7Nests, ATransitionAroundANestWinsOverOneInsideIt) {
    const std::string faded = track(transition(0, 4, "start") + clip({"X", -1, 20, 0, 20}));
    const auto result =
        read(clip({"A", 0, -1, 0, 12}) + transition(8, 12, "start") + clip({"N", -1, 20, 0, 12, nest(faded)}));
    EXPECT_EQ(shown(result), "0-8 A@01:00:00:00 | 8-12 diss | 12-20 X@01:00:00:04");
    EXPECT_THAT(told(result), HasSubstr("left out for the transition around its nest at the same cut"));
}

std::string angle(const std::string& name, bool active, const std::string& more = "") {
    return tag("angle", tag("activevideoangle", active ? "TRUE" : "FALSE") +
                            tag("activeaudioangle", active ? "FALSE" : "TRUE") + more + "<clip id=\"" + name + "\">" +
                            tag("name", name) + file(name + ".mov") + "</clip>");
}

TEST(Fcp7Multiclips, TheActiveAngleIsShownAndTheOtherHeard) {
    const std::string item = clip(
        {"multi", 0, 10, 24, 34, "<multiclip id=\"m\">" + angle("one", false) + angle("two", true) + "</multiclip>"});
    const auto result = read_document(document(sequence(track(item), rate(24), track(item))));
    EXPECT_EQ(shown(result, 0), "0-10 two@01:00:01:00");
    EXPECT_EQ(shown(result, 1), "0-10 one@01:00:01:00");
    EXPECT_EQ(reel_at(result.edit, 0, 0), "two");
    const auto again = read(item + clip({"multi", 10, 20, 0, 10, "<multiclip id=\"m\"/>"}));
    EXPECT_EQ(shown(again), "0-10 two@01:00:01:00 | 10-20 two@01:00:00:00");
}

TEST(Fcp7Multiclips, AnAngleThatStartedLaterIsBlackTillThen) {
    const auto with = [](int in) {
        return shown(
            read(clip({"multi", 0, 10, in, in + 10, tag("multiclip", angle("one", true, tag("mediadelay", "4")))})));
    };
    EXPECT_EQ(with(0), "0-4 black | 4-10 one@01:00:00:00");
    EXPECT_EQ(with(24), "0-10 one@01:00:00:20");
}

TEST(Fcp7Multiclips, WithoutAnActiveAngleTheFirstCounts) {
    const auto result =
        read(clip({"multi", 0, 10, 0, 10, tag("multiclip", angle("one", false) + angle("two", false))}));
    EXPECT_EQ(shown(result), "0-10 one@01:00:00:00");
    EXPECT_THAT(told(result), HasSubstr("none of its angles is the active one; the first counts"));
    EXPECT_THAT(told(read(clip({"multi", 0, 10, 0, 10, tag("multiclip", "")}))),
                HasSubstr("is a multiclip without angles"));
}

} // namespace
