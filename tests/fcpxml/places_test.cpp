// Where items stand: offsets, lanes, holes, and which project is read.

#include "tests/fcpxml/fcpxml_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace fcpxml_texts;
using embedded::WarningKind;
using testing::ElementsAre;

namespace {

std::string name_of(const formats::ReadResult& result) {
    return result.edit ? toUTF8(result.edit->getName()).c_str() : result.error;
}

TEST(FcpxmlPlaces, ItemsFollowEachOtherFromTheTimecodeOfTheSequence) {
    for (const char* start : {"0s", "3600s", "86399s"}) {
        const std::string zero = start;
        const std::string spine = clip("A", "offset=\"" + zero + "\" start=\"10s\" duration=\"2s\"") +
                                  clip("B", "start=\"20s\" duration=\"24/24s\"");
        const auto result = read(with_spine(spine, "format=\"r24\" tcStart=\"" + zero + "\""));
        EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:10:00 | 48-72 B@00:00:20:00") << start;
        EXPECT_TRUE(result.warnings.empty()) << start;
    }
}

TEST(FcpxmlPlaces, TheTimecodeOfTheSequenceIsThatOfTheEdit) {
    const std::string spine = clip("A", "duration=\"2s\"");
    const auto start = [&](const std::string& sequence) {
        const auto result = read(with_spine(spine, sequence));
        return std::string(result.edit->getLabel(user_label_timecode, {medium_edit, 1})->get_string(0));
    };
    EXPECT_EQ(start(R"(format="r24" tcStart="3600s")"), "01:00:00:00");
    EXPECT_EQ(start(R"(format="r24" tcStart="86399s")"), "23:59:59:00");
    EXPECT_EQ(start(R"(format="r29" tcStart="107999892/30000s" tcFormat="DF")"), "01:00:00;00");
    EXPECT_EQ(start(R"(format="r29" tcStart="108108000/30000s" tcFormat="NDF")"), "01:00:00:00");
}

TEST(FcpxmlPlaces, OffsetsThatLieBeforeTheTimecodeCountFromThere) {
    const std::string spine = clip("A", R"(offset="0s" duration="2s")") + clip("B", R"(offset="2s" duration="1s")");
    const auto result = read(with_spine(spine, R"(format="r24" tcStart="3600s")"));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-72 B@00:00:00:00");
    EXPECT_TRUE(warns(result, "its items lie before its \"tcStart\""));
}

TEST(FcpxmlPlaces, AGapAndAHoleAreBlackAtTheBottom) {
    EXPECT_EQ(drawn_spine(clip("A", R"(offset="1s" duration="1s")") +
                          R"(<gap name="Gap" offset="2s" start="3600s" duration="1s"/>)" +
                          clip("B", R"(offset="4s" duration="1s")")),
              "0-24 black | 24-48 A@00:00:00:00 | 48-72 black | 72-96 black | 96-120 B@00:00:00:00");
}

TEST(FcpxmlPlaces, LessThanHalfAFrameBetweenItemsIsARoundedTime) {
    const std::string spine = clip("A", R"(offset="0s" duration="2.04s")") +
                              clip("B", R"(offset="2s" duration="0.99s")") + clip("C", R"(offset="3s" duration="1s")");
    const auto result = read(with_spine(spine));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-72 B@00:00:00:00 | 72-96 C@00:00:00:00");
    EXPECT_FALSE(warns(result, "B"));
}

TEST(FcpxmlPlaces, AnItemThatReachesIntoTheNextIsCut) {
    const auto result = read(with_spine(clip("A", R"(duration="3s")") + clip("B", R"(offset="2s" duration="1s")")));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-72 B@00:00:00:00");
    EXPECT_TRUE(warns(result, "\"A\": reaches into the item behind it", WarningKind::dropped));
}

TEST(FcpxmlPlaces, AStorylineOverAGapShowsOnATrackOfItsOwn) {
    const std::string storyline = "<spine lane=\"1\" offset=\"3601s\">" + clip("B", R"(offset="0s" duration="1s")") +
                                  clip("C", R"(offset="1s" duration="1s")") + "</spine>";
    const auto result =
        read(with_spine(clip("A", R"(duration="1s")") + R"(<gap start="3600s" duration="5s">)" + storyline + "</gap>"));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@00:00:00:00 | 24-144 black");
    EXPECT_EQ(drawn(result.edit, 1), "48-72 B@00:00:00:00 | 72-96 C@00:00:00:00");
}

TEST(FcpxmlPlaces, LanesAreTracksInTheirOrderWhateverNumbersAreMissing) {
    const std::string spine =
        clip("A", R"(duration="4s")",
             clip("C", R"(lane="2" offset="1s" duration="1s")") + clip("U", R"(lane="-1" offset="1s" duration="1s")"));
    const auto result = read(with_spine(spine));
    EXPECT_EQ(result.edit->getNumChans(), 3);
    EXPECT_EQ(drawn(result.edit, 0), "0-24 black | 24-48 U@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "0-96 A@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "24-48 C@00:00:00:00");
    EXPECT_TRUE(warns(result, "pictures lie below its main storyline", WarningKind::note));
}

TEST(FcpxmlPlaces, AConnectedClipReachesBeyondItsParentAndTheSequence) {
    const auto result =
        read(with_spine(clip("A", R"(duration="1s")", clip("B", R"(lane="1" offset="1/2s" duration="4s")")),
                        R"(format="r24" duration="1s")"));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "12-108 B@00:00:00:00");
}

TEST(FcpxmlPlaces, AConnectedClipWithoutAnOffsetBeginsWithItsParent) {
    const std::string spine = clip("A", R"(duration="1s")") +
                              clip("B", R"(start="5s" duration="2s")", clip("C", R"(lane="1" duration="1s")"));
    EXPECT_EQ(drawn(read(with_spine(spine)).edit, 1), "24-48 C@00:00:00:00");
}

TEST(FcpxmlPlaces, WhatAConnectedClipHasBeforeTheEditIsCutOff) {
    const auto result = read(with_spine(
        clip("A", R"(start="5s" duration="1s")", clip("B", R"(lane="1" offset="4s" start="10s" duration="3s")"))));
    EXPECT_EQ(drawn(result.edit, 1), "0-48 B@00:00:11:00");
    EXPECT_TRUE(warns(result, "\"B\": what begins before the edit is cut off", WarningKind::dropped));
}

TEST(FcpxmlPlaces, WhatIsCutOffIsNamedWhereItsClipBeginsWithAGap) {
    const auto cut_at = [](const std::string& offset) {
        return read(with_spine(clip("A", R"(start="5s" duration="9s")",
                                    "<ref-clip ref=\"c\" lane=\"1\" offset=\"" + offset + "\" duration=\"8s\"/>"),
                               R"(format="r24")",
                               compound("c", R"(<gap duration="1s"/>)" + clip("B", R"(start="1s" duration="7s")"))));
    };
    EXPECT_TRUE(
        warns(cut_at("3s"), "line 3: asset-clip \"B\": what begins before the edit is cut off", WarningKind::dropped));
    EXPECT_TRUE(cut_at("4s").warnings.empty()) << "only of the gap";
}

TEST(FcpxmlPlaces, AConnectedClipInAnotherLiesOnTheClockOfThat) {
    const std::string inner = clip("C", R"(lane="1" offset="21s" duration="1s")");
    const std::string outer = clip("B", R"(lane="1" offset="11s" start="20s" duration="3s")", inner);
    const auto result = read(with_spine(clip("A", R"(start="10s" duration="5s")", outer)));
    EXPECT_EQ(drawn(result.edit, 1), "24-96 B@00:00:20:00");
    EXPECT_EQ(drawn(result.edit, 2), "48-72 C@00:00:00:00");
}

TEST(FcpxmlPlaces, AClipInLaneOneOfLaneOneLiesBelowLaneTwo) {
    const std::string spine = clip(
        "A", R"(duration="9s")",
        clip("D", R"(lane="2" offset="0s" duration="1s")") +
            clip("B", R"(lane="1" offset="0s" duration="1s")", clip("C", R"(lane="1" offset="0s" duration="1s")")));
    const auto result = read(with_spine(spine));
    EXPECT_EQ(drawn(result.edit, 1), "0-24 B@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "0-24 C@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 3), "0-24 D@00:00:00:00");
}

TEST(FcpxmlPlaces, ConnectionsToARetimedClipAreOnItsNewTime) {
    const std::string inside = speed("0s 0s, 20s 10s") + clip("B", R"(lane="1" offset="4s" duration="1s")");
    const auto result = read(with_spine(clip("A", R"(start="2s" duration="10s")", inside)));
    EXPECT_EQ(drawn(result.edit, 0), "0-240 A@00:00:01:00*0.5");
    EXPECT_EQ(drawn(result.edit, 1), "48-72 B@00:00:00:00");
}

TEST(FcpxmlPlaces, ConnectionsToAConformedClipAreOnItsMediasTime) {
    const std::string scaled = R"(<conform-rate srcFrameRate="23.98"/>)";
    const std::string real = R"(<conform-rate scaleEnabled="0" srcFrameRate="29.97"/>)";
    const auto frame_for_frame =
        read(with_spine(clip("A", R"(start="480480/24000s" duration="20s")",
                             scaled + clip("B", R"(lane="1" offset="600600/24000s" duration="1s")"), "m23")));
    EXPECT_EQ(drawn(frame_for_frame.edit, 0), "0-480 A@00:00:20:00");
    EXPECT_EQ(drawn(frame_for_frame.edit, 1), "120-144 B@00:00:00:00");
    const auto real_time = read(with_spine(
        clip("A", R"(start="10s" duration="20s")", real + clip("B", R"(lane="1" offset="15s" duration="1s")"), "m29")));
    EXPECT_EQ(drawn(real_time.edit, 1), "120-144 B@00:00:00:00");
}

TEST(FcpxmlPlaces, OfTwoItemsInOneLaneAtOneTimeTheLaterLiesAbove) {
    const std::string spine =
        clip("A", R"(duration="9s")",
             clip("B", R"(lane="1" offset="0s" duration="2s")") + clip("C", R"(lane="1" offset="1s" duration="2s")") +
                 clip("D", R"(lane="1" offset="2s" duration="1s")"));
    const auto result = read(with_spine(spine));
    EXPECT_EQ(drawn(result.edit, 1), "0-48 B@00:00:00:00 | 48-72 D@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "24-72 C@00:00:00:00");
}

TEST(FcpxmlPlaces, ADisabledItemIsAGapWhoseConnectedClipsStay) {
    const std::string spine =
        clip("A", R"(duration="2s")") +
        clip("B", R"(enabled="0" duration="2s")", clip("C", R"(lane="1" offset="0s" duration="1s")")) +
        clip("D", R"(duration="1s")");
    const auto result = read(with_spine(spine));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-96 black | 96-120 D@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "48-72 C@00:00:00:00");
}

TEST(FcpxmlPlaces, CaptionsAreLeftOutWithOneWarning) {
    const std::string captions =
        R"(<caption lane="1" offset="0s" duration="1s"/><caption lane="1" offset="1s" duration="1s"/>)";
    const auto result = read(with_spine(clip("A", R"(duration="2s")", captions)));
    EXPECT_EQ(result.edit->getNumChans(), 1);
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_TRUE(
        warns(result, "caption: left out, as nothing of it comes into a list; so with 1 more", WarningKind::dropped));
}

TEST(FcpxmlPlaces, AnItemOfALaterVersionIsAGapOfItsLength) {
    const auto result = read(with_spine(R"(<hologram duration="1s"/>)" + clip("A", R"(duration="1s")")));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 black | 24-48 A@00:00:00:00");
    EXPECT_TRUE(warns(result, "hologram: isn't known here", WarningKind::dropped));
}

TEST(FcpxmlPlaces, MarkersBecomeCuesAtTheirPlace) {
    const std::string marks = R"(<marker start="11s" value="in"/><chapter-marker start="12s" value="chapter"/>)"
                              R"(<marker start="13s" value="to do" completed="0"/><marker start="14s" note="said"/>)"
                              R"(<marker start="9s" value="before"/><marker start="15s" value="behind"/>)";
    const auto result =
        read(with_spine(clip("A", R"(duration="1s")") + clip("B", R"(start="10s" duration="5s")", marks)));
    EXPECT_EQ(cues_of(result.edit, 0), "48 in, 72 chapter, 96 to do, 120 said");
    EXPECT_TRUE(warns(result, "\"B\": a marker lies outside what is used of it; so with 1 more", WarningKind::note));
}

TEST(FcpxmlPlaces, OneMarkerOutsideIsToldToo) {
    const std::string mark = R"(<marker start="9s" value="before"/>)";
    const auto result = read(with_spine(clip("B", R"(start="10s" duration="5s")", mark)));
    EXPECT_TRUE(warns(result, "\"B\": a marker lies outside what is used of it", WarningKind::note));
}

TEST(FcpxmlPlaces, MarkersOfGapsAndTransitionsAreCuesToo) {
    const std::string fade =
        R"(<transition offset="7/2s" duration="1s"><filter-video ref="dissolve"/>)"
        R"(<marker start="3600s" value="fade"/><marker start="7201/2s" value="half"/></transition>)";
    const auto result =
        read(with_spine(R"(<gap start="3600s" duration="2s"><marker start="3601s" value="black"/></gap>)" +
                        clip("A", R"(duration="2s")") + fade + clip("B", R"(duration="2s")")));
    EXPECT_EQ(cues_of(result.edit, 0), "24 black, 84 fade, 96 half");
}

TEST(FcpxmlPlaces, MarkersOfWhatIsSwitchedOffAreTold) {
    const auto result =
        read(with_spine(clip("A", R"(enabled="0" duration="2s")", R"(<marker start="0s" value="x"/>)")));
    EXPECT_EQ(cues_of(result.edit, 0), "");
    EXPECT_TRUE(warns(result, "\"A\": a marker lies outside what is used of it", WarningKind::note));
}

TEST(FcpxmlPlaces, AMarkerWithoutATimeIsLeftOut) {
    const auto result = read(with_spine(clip("A", R"(duration="2s")", R"(<marker start="soon" value="x"/>)")));
    EXPECT_EQ(cues_of(result.edit, 0), "");
    EXPECT_TRUE(warns(result, "the marker stands nowhere", WarningKind::dropped));
}

TEST(FcpxmlProjects, TheOnlyProjectIsReadWithItsNameAndLibrary) {
    const auto result = read(with_spine(clip("A", R"(duration="1s")")));
    EXPECT_EQ(name_of(result), "Reel 1");
    EXPECT_EQ(embedded::EditBuilder::project_of(result.edit), "Film 1");
}

std::string two_projects() {
    return file_of("<resources>" + usual_resources() + "</resources><event name=\"e\">" +
                   project(clip("A", R"(duration="1s")"), R"(format="r24")", "First") + "\n" +
                   project(clip("B", R"(duration="1s")"), R"(format="r25")", "Second") +
                   project("", R"(format="r25")", "Empty") + "</event>");
}

TEST(FcpxmlProjects, OfSeveralOneIsNamed) {
    const auto none = read(two_projects());
    EXPECT_FALSE(none.edit);
    EXPECT_TRUE(none.sequence_missing);
    EXPECT_EQ(none.error, "a.fcpxml: holds 2 sequences: \"First\" (line 3), \"Second\" (line 4)");
    formats::ReadOptions options;
    options.sequence = "Second";
    EXPECT_EQ(drawn(read(two_projects(), options).edit, 0, 25), "0-25 B@00:00:00:00");
}

TEST(FcpxmlProjects, AreListedWithTheirRates) {
    formats::ReadOptions options;
    options.list_only = true;
    const auto result = read(two_projects(), options);
    ASSERT_EQ(result.sequences.size(), 2U);
    EXPECT_EQ(result.sequences[1].name, "Second");
    EXPECT_EQ(result.sequences[1].place, "line 4");
    EXPECT_EQ(result.sequences[1].rate, embedded::nearest_rate(25));
    EXPECT_FALSE(result.edit);
}

TEST(FcpxmlProjects, AFileOfClipsOnlyOffersTheClips) {
    const std::string file =
        file_of("<resources>" + usual_resources() + compound("c", clip("In", R"(duration="1s")")) + "</resources>" +
                    clip("A", R"(start="5s" duration="2s")") + R"(<ref-clip ref="c" name="C" duration="1s"/>)",
                "1.6");
    formats::ReadOptions options;
    options.sequence = "A";
    EXPECT_EQ(drawn(read(file, options).edit, 0), "0-48 A@00:00:05:00");
    options.sequence = "C";
    EXPECT_EQ(drawn(read(file, options).edit, 0), "0-24 In@00:00:00:00");
    EXPECT_EQ(read(file).error, "a.fcpxml: holds 2 sequences: \"A\" (line 3), \"C\" (line 3)");
}

TEST(FcpxmlProjects, ACompoundClipIsReadByItselfWhereItIsNamed) {
    formats::ReadOptions options;
    options.sequence = "c";
    const std::string file = with_spine(R"(<ref-clip ref="c" duration="1s"/>)", R"(format="r24")",
                                        compound("c", clip("In", R"(duration="2s")")));
    EXPECT_EQ(drawn(read(file, options).edit, 0), "0-48 In@00:00:00:00");
    EXPECT_EQ(drawn(read(file).edit, 0), "0-24 In@00:00:00:00");
}

TEST(FcpxmlProjects, OldFilesHoldTheirResourcesInTheProject) {
    for (const char* version : {"1.2", "1.3"}) {
        const std::string file = file_of("<project name=\"Old\"><resources>" + usual_resources() +
                                             "</resources><sequence format=\"r24\"><spine>" +
                                             clip("A", R"(duration="1s")") + "</spine></sequence></project>",
                                         version);
        EXPECT_EQ(drawn(read(file).edit, 0), "0-24 A@00:00:00:00") << version;
    }
}

TEST(FcpxmlProjects, AnEventWithoutAProjectOffersItsClips) {
    const std::string file = file_of("<resources>" + usual_resources() + "</resources><library><event>" +
                                         clip("Only", R"(duration="1s")") + "</event></library>",
                                     "1.5");
    EXPECT_EQ(name_of(read(file)), "Only");
}

TEST(FcpxmlProjects, ResourcesMayStandBehindTheLibrary) {
    const std::string file = file_of("<library><event>" + project(clip("A", R"(duration="1s")")) +
                                     "</event></library><resources>" + usual_resources() + "</resources>");
    EXPECT_EQ(drawn(read(file).edit, 0), "0-24 A@00:00:00:00");
}

TEST(FcpxmlProjects, NothingToReadIsSaid) {
    EXPECT_EQ(read(file_of("")).error, "a.fcpxml: holds no sequence");
    EXPECT_EQ(read("<xmeml version=\"5\"/>").error, "a.fcpxml: line 1: isn't FCPXML, but \"xmeml\"");
    EXPECT_EQ(read("<fcpxml").error, "a.fcpxml: line 1: the text breaks off");
}

TEST(FcpxmlProjects, EntitiesAreRefused) {
    const std::string text = "<!DOCTYPE fcpxml [<!ENTITY a \"b\">]>\n<fcpxml>&a;</fcpxml>";
    EXPECT_EQ(read(text).error, "a.fcpxml: line 1: defines the entity \"a\", which isn't taken");
}

TEST(FcpxmlProjects, TheRateIsThatOfTheFormatOrOfItsName) {
    const auto rate = [](const std::string& format) {
        const auto result = read(with_spine(clip("A", R"(duration="1s")"), R"(format="own")", format));
        return result.edit ? embedded::rate_info(result.edit->getSourceFrameRate())->name : result.error;
    };
    EXPECT_EQ(rate(R"(<format id="own" frameDuration="15015/360000s"/>)"), "23.976");
    EXPECT_EQ(rate(R"(<format id="own" name="FFVideoFormat1080p2398"/>)"), "23.976");
    EXPECT_EQ(rate(R"(<format id="own" name="FFVideoFormat1080i50"/>)"), "25");
    EXPECT_EQ(rate(R"(<format id="own" name="FFVideoFormatDV720x480i5994"/>)"), "29.97");
    for (const auto& [digits, name] : {std::pair("24", "24"),
                                       {"25", "25"},
                                       {"2997", "29.97"},
                                       {"30", "30"},
                                       {"4795", "47.952"},
                                       {"48", "48"},
                                       {"50", "50"},
                                       {"5994", "59.94"},
                                       {"60", "60"}})
        EXPECT_EQ(rate(R"(<format id="own" name="FFVideoFormat1080p)" + std::string(digits) + R"("/>)"), name);
    EXPECT_EQ(rate(R"(<format id="own" name="FFVideoFormatRateUndefined"/>)"),
              "a.fcpxml: line 3: project \"Reel 1\": doesn't tell its frames a second");
    EXPECT_EQ(rate(R"(<format id="own" frameDuration="1/120s"/>)"),
              "a.fcpxml: line 3: project \"Reel 1\": no edit can have its frames a second");
    EXPECT_TRUE(read(with_spine(clip("A", R"(duration="1s")"), R"(format="none")")).rate_missing);
}

TEST(FcpxmlProjects, ToldToRunAt24AnEditOf23976DoesSoFrameForFrame) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(24);
    const std::string spine = clip("A", R"(start="480480/24000s" duration="48048/24000s")", {}, "m23") +
                              clip("B", R"(duration="24024/24000s")", {}, "m29");
    const auto result = read(with_spine(spine, R"(format="r23" tcStart="86486400/24000s")"), options);
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:20:00 | 48-72 B@00:00:00:00");
    EXPECT_STREQ(result.edit->getLabel(user_label_timecode, {medium_edit, 1})->get_string(0), "01:00:00:00");
    EXPECT_EQ(edl_tests::timecode_at(source_at(result.edit, 0, 1), 1.0), "00:00:01:00");
}

TEST(FcpxmlProjects, ToldToRunAtAnotherRateItWarns) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25);
    EXPECT_TRUE(warns(read(with_spine(clip("A", R"(duration="1s")")), options), "is at 24 frames a second, not at 25",
                      WarningKind::rate));
}

TEST(FcpxmlPlaces, CaptionsInAStorylineTakeNoTime) {
    const auto result = read(with_spine(clip("A", R"(duration="1s")") + R"(<caption offset="1s" duration="5s"/>)" +
                                        clip("B", R"(duration="1s")")));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@00:00:00:00 | 24-48 B@00:00:00:00");
    EXPECT_TRUE(warns(result, "caption: left out", WarningKind::dropped));
}

TEST(FcpxmlPlaces, AnItemThatLiesBeforeTheOneItFollowsIsPutBehindThat) {
    const std::string above = clip("C", R"(lane="1" duration="1s")");
    const auto result =
        read(with_spine(clip("A", R"(offset="2s" duration="1s")") + clip("B", R"(offset="1s" duration="1s")", above)));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 black | 48-72 A@00:00:00:00 | 72-96 B@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "72-96 C@00:00:00:00");
    EXPECT_TRUE(warns(result, "\"B\": lies before the item that it follows; it is put behind that"));
    EXPECT_EQ(result.warnings.size(), 1U);
}

TEST(FcpxmlProjects, ClipsHaveTheRateOfWhatTheyHold) {
    const std::string angles =
        R"(<media id="mc" name="Multi"><multicam format="r25" tcStart="0s"><mc-angle angleID="a">)" +
        clip("Cam", R"(duration="9s")", {}, "m25") + "</mc-angle></multicam></media>";
    const std::string file =
        file_of("<resources>" + usual_resources() + angles + "</resources>" +
                    R"(<clip name="K" duration="2s"><video ref="m25" duration="2s"/></clip>)"
                    R"(<mc-clip ref="mc" name="M" duration="2s"><mc-source angleID="a"/></mc-clip>)",
                "1.6");
    formats::ReadOptions options;
    for (const char* name : {"K", "M"}) {
        options.sequence = name;
        const auto result = read(file, options);
        ASSERT_TRUE(result.edit) << result.error;
        EXPECT_EQ(embedded::rate_info(result.edit->getSourceFrameRate())->nominal, 25) << name;
    }
}

} // namespace
