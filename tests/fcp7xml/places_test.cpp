// Where items stand: cuts, gaps, transitions with their true cuts, and what can't stand as it is written.

#include "tests/fcp7xml/fcp7_texts.h"

#include <gmock/gmock.h>

using namespace fcp7_texts;
using testing::HasSubstr;

namespace {

const Item plain{"A", 0, 10, 100, 110};

TEST(Fcp7Places, CutsGapsAndTheirSourceTimecodes) {
    const auto result = read(clip(plain) + clip({"B", 14, 20, 5, 11}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:04:04 | 10-14 black | 14-20 B@01:00:00:05");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Places, GapsShowNothingAboveTheLowestTrackAndInSound) {
    const std::string item = clip({"A", 4, 10, 0, 6});
    const auto result = read_document(document(sequence(track(item) + track(item), rate(24), track("") + track(item))));
    EXPECT_EQ(shown(result, 0), "0-4 black | 4-10 A@01:00:00:00");
    EXPECT_EQ(shown(result, 1), "4-10 A@01:00:00:00");
    EXPECT_EQ(shown(result, 2), "");
    EXPECT_EQ(shown(result, 3), "4-10 A@01:00:00:00");
    EXPECT_EQ(result.edit->getNumChans(), 4);
}

TEST(Fcp7Places, ATransitionThatIsCentredCutsInTheMiddle) {
    const auto result = read(clip({"A", 0, -1, 74, 227}) + transition(123, 153) + clip({"B", -1, 243, 36, 156}));
    EXPECT_EQ(shown(result), "0-123 A@01:00:03:02 | 123-153 diss | 153-243 B@01:00:02:18");
    EXPECT_EQ(source_frames(result.edit, 0, 0), "74-197");
    EXPECT_EQ(source_frames(result.edit, 0, 2), "66-156");
    EXPECT_EQ(told(result), "");
}

/// How a dissolve from A, 0 to 20, to B lies about its cut: frames of A before it, by its start and end.
std::string dissolve(int start, int end, const std::string& alignment, const std::string& more = "") {
    const auto result =
        read(clip({"A", 0, -1, 0, end}) + "<transitionitem>" + tag("start", std::to_string(start)) +
             tag("end", std::to_string(end)) + tag("alignment", alignment) + more +
             tag("effect", tag("name", "Cross Dissolve")) + "</transitionitem>" + clip({"B", -1, 60, 0, 60 - start}));
    const embedded::CelEvent event = model(result).channels[0].cel->impl()->events->at(0);
    return shown(result) + " cut " + std::to_string(std::lround(event.whole_out.edit_time * 24));
}

TEST(Fcp7Places, OtherTransitionsCutAtTheirStartOrEndOrWhereTheTicksSay) {
    const std::string drawn = "0-20 A@01:00:00:00 | 20-29 diss | 29-60 B@01:00:00:09 cut ";
    EXPECT_EQ(dissolve(20, 29, "center"), drawn + "24");
    EXPECT_EQ(dissolve(20, 29, "start"), drawn + "20");
    EXPECT_EQ(dissolve(20, 29, "end"), drawn + "29");
    EXPECT_EQ(dissolve(20, 29, "end-black"), drawn + "29");
    // A tick is the 254,016,000,000th of a second.
    EXPECT_EQ(dissolve(20, 29, "center", tag("cutPointTicks", "21168000000")), drawn + "22");
    EXPECT_EQ(dissolve(20, 29, "center", tag("cutPointTicks", "999999999999")), drawn + "24");
}

TEST(Fcp7Places, FadesAtBothEndsOfOneItemAreToldByTheMissingNeighbour) {
    for (const char* alignment : {"start", "center", "start-black"}) {
        const auto result =
            read(transition(0, 8, alignment) + clip({"A", -1, -1, 10, 40}) + transition(20, 30, "end-black"));
        EXPECT_EQ(shown(result), "0-0 black | 0-8 diss | 8-20 A@01:00:00:18 | 20-30 diss | 30-30 black") << alignment;
        EXPECT_EQ(source_frames(result.edit, 0, 2), "18-30");
        EXPECT_EQ(told(result), "");
    }
}

TEST(Fcp7Places, AFadeOutThatIsCentredOnTheEndOfATrackLastsToItsEnd) {
    const auto result = read(clip({"A", 0, -1, 0, 30}) + transition(20, 30, "center"));
    EXPECT_EQ(shown(result), "0-20 A@01:00:00:00 | 20-30 diss | 30-30 black");
}

TEST(Fcp7Places, AFadeMayBeginWhereItsItemSaysItDoes) {
    const auto result = read(clip({"X", 0, 5, 0, 5}) + transition(11, 19, "start") + clip({"A", 11, 30, 0, 19}));
    EXPECT_EQ(shown(result), "0-5 X@01:00:00:00 | 5-11 black | 11-19 diss | 19-30 A@01:00:00:08");
}

TEST(Fcp7Places, OneItemMayHaveATransitionOnBothSides) {
    const auto result = read(clip({"A", 0, -1, 0, 12}) + transition(8, 12) + clip({"B", -1, -1, 50, 66}) +
                             transition(20, 24) + clip({"C", -1, 40, 0, 20}));
    EXPECT_EQ(shown(result), "0-8 A@01:00:00:00 | 8-12 diss | 12-20 B@01:00:02:06 | 20-24 diss | 24-40 C@01:00:00:04");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Places, MinusOneWithoutATransitionTakesTheLengthOfTheMedia) {
    const auto result = read(clip({"A", 0, -1, 5, 15}) + clip({"B", -1, 30, 0, 20}) + clip({"C", -1, -1, 0, 4}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:05 | 10-30 B@01:00:00:00 | 30-34 C@01:00:00:00");
    EXPECT_THAT(told(result), HasSubstr("line 4: clip item \"A\": has no start or no end, and no transition there; its "
                                        "length is that of its media\nline 4: clip item \"B\": has"));
}

TEST(Fcp7Places, AnItemThatTransitionsShowAllOfStaysBetweenThem) {
    const std::string a = clip({"A", 0, 30, 0, 30}), c = clip({"C", -1, 80, 0, 50});
    const auto into = read(a + clip({"B", 30, -1, 10, 30}) + transition(30, 50, "start") + c);
    EXPECT_EQ(shown(into), "0-30 A@01:00:00:00 | 30-30 B@01:00:00:10 | 30-50 diss | 50-80 C@01:00:00:20");
    const auto out = read(clip({"A", 0, -1, 0, 50}) + transition(30, 50, "end") + clip({"B", -1, 50, 10, 30}) +
                          clip({"C", 50, 80, 0, 30}));
    EXPECT_EQ(shown(out), "0-30 A@01:00:00:00 | 30-50 diss | 50-50 B@01:00:01:06 | 50-80 C@01:00:00:00");
    const auto both = read(clip({"A", 0, -1, 0, 40}) + transition(30, 40, "end") + clip({"B", -1, -1, 5, 25}) +
                           transition(40, 50, "start") + clip({"C", -1, 80, 0, 40}));
    EXPECT_EQ(shown(both), "0-30 A@01:00:00:00 | 30-40 diss | 40-40 B@01:00:00:15 | 40-50 diss | 50-80 C@01:00:00:10");
    EXPECT_EQ(told(into) + told(out) + told(both), "");
}

TEST(Fcp7Places, ANestThatTransitionsShowAllOfIsRenderedMaterial) {
    const std::string nest = sequence(track(clip({"X", 0, 40, 0, 40})), rate(24), "", "N");
    const auto result = read(clip({"A", 0, 30, 0, 30}) + clip({"B", 30, -1, 10, 30, nest}) +
                             transition(30, 50, "start") + clip({"C", -1, 80, 0, 50}));
    EXPECT_EQ(shown(result), "0-30 A@01:00:00:00 | 30-30 N@ | 30-50 diss | 50-80 C@01:00:00:20");
    EXPECT_THAT(told(result), HasSubstr("is a sequence that transitions show all of; it is rendered material"));
}

TEST(Fcp7Places, AFadeOutAndAFadeInAtOneCutAreNoDissolve) {
    const auto result = read(clip({"A", 0, 30, 0, 30}) + transition(20, 30, "end-black") +
                             transition(30, 40, "start-black") + clip({"B", 30, 60, 0, 30}));
    EXPECT_EQ(shown(result), "0-20 A@01:00:00:00 | 20-30 diss | 30-30 black | 30-40 diss | 40-60 B@01:00:00:10");
    EXPECT_EQ(told(result), "");
}

TEST(Fcp7Places, ATransitionGoesWithTheItemThatItCameFrom) {
    const auto result = read(clip({"A", 0, -1, 0, 30}) + transition(10, 50) + clip({"B", -1, -1, 0, 20}) +
                             transition(12, 20) + clip({"C", -1, 80, 0, 68}));
    EXPECT_EQ(shown(result), "0-16 A@01:00:00:00 | 16-80 C@01:00:00:04");
    EXPECT_THAT(told(result), HasSubstr("line 4: clip item \"B\": has no length and is left out\nline 4 \"Cross "
                                        "Dissolve\": left out with an item that it belongs to"));
}

TEST(Fcp7Places, AFadeOfAnItemThatIsCutUnderTheNextIsTold) {
    const auto result =
        read(clip({"A", 0, -1, 0, 50}) + transition(30, 50) + transition(40, 60) + clip({"B", -1, 80, 0, 40}));
    EXPECT_EQ(shown(result), "0-40 A@01:00:00:00 | 40-40 black | 40-60 diss | 60-80 B@01:00:00:20");
    EXPECT_THAT(told(result), HasSubstr("it is cut there\nline 4 \"Cross Dissolve\": left out with an item"));
}

TEST(Fcp7Places, ATransitionBeyondItsItemsOwnFramesIsDoubted) {
    const std::string beyond = "what it shows of them lies beyond their own frames";
    const auto apart = read(clip({"A", 0, 30, 0, 30}) + transition(30, 50) + clip({"B", 50, 80, 10, 40}));
    EXPECT_EQ(shown(apart), "0-30 A@01:00:00:00 | 30-50 diss | 50-80 B@01:00:00:10");
    EXPECT_THAT(told(apart), HasSubstr(beyond));
    EXPECT_THAT(told(read(clip({"A", 0, 35, 0, 35}) + transition(30, 50) + clip({"B", -1, 80, 10, 60}))),
                HasSubstr(beyond));
    EXPECT_EQ(told(read(clip({"A", 0, 40, 0, 40}) + transition(30, 50) + clip({"B", 40, 80, 10, 50}))), "");
    const auto fade = read(clip({"A", 0, 40, 0, 40}) + transition(30, 50));
    EXPECT_EQ(shown(fade), "0-30 A@01:00:00:00 | 30-40 diss | 40-40 black");
    EXPECT_EQ(told(fade), "line 4: transition: is longer than what its one item has under it; it is cut to that");
}

TEST(Fcp7Places, AnAlignmentThatIsNotKnownIsDoubted) {
    const auto told_of = [](const std::string& alignment) {
        return told(read(clip({"A", 0, -1, 0, 50}) + transition(30, 50, alignment) + clip({"B", -1, 80, 0, 50})));
    };
    EXPECT_EQ(told_of("weird"),
              "line 4: transition: is aligned to \"weird\", which isn't known; it cuts in the middle");
    EXPECT_EQ(told_of(""), "line 4: transition: doesn't say where it cuts; the middle counts");
    EXPECT_EQ(told_of("center"), "");
}

TEST(Fcp7Places, ATransitionThatTouchesNothingIsLeftOutWithAWord) {
    const auto result = read(clip(plain) + transition(20, 30) + clip({"B", 40, 50, 0, 10}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:04:04 | 10-40 black | 40-50 B@01:00:00:00");
    EXPECT_EQ(told(result), "line 4: transition: touches no item and is left out");
    const auto empty = read(clip(plain) + transition(10, 10));
    EXPECT_EQ(told(empty), "line 4: transition: has no length and is left out");
}

TEST(Fcp7Places, ATransitionLongerThanItsClipIsCutToIt) {
    const auto result = read(clip({"A", 0, -1, 100, 130}) + transition(10, 30) + clip({"B", -1, 25, 0, 15}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:04:04 | 10-25 diss | 25-25 B@01:00:00:15");
    EXPECT_THAT(told(result), HasSubstr("line 4 \"Cross Dissolve\": out_offset cut to the length of the item behind"));
}

TEST(Fcp7Places, ItemsAreReadInOrderOfTimeAndCutWhereTheyOverlap) {
    const auto result = read(clip({"B", 20, 30, 0, 10}) + clip({"A", 0, 25, 0, 25}));
    EXPECT_EQ(shown(result), "0-20 A@01:00:00:00 | 20-30 B@01:00:00:00");
    EXPECT_EQ(told(result), "line 4: clip item \"A\": lies under the item behind it, on the same track, from frame 20 "
                            "on; it is cut there");
}

TEST(Fcp7Places, OneWithoutLengthCutsNothing) {
    const auto result = read(clip({"A", 0, 30, 0, 30}) + clip({"B", 10, 10, 0, 0}) + clip({"C", 20, 15, 0, 0}));
    EXPECT_EQ(shown(result), "0-30 A@01:00:00:00");
    EXPECT_EQ(told(result), "line 4: clip item \"B\": has no length and is left out\n"
                            "line 4: clip item \"C\": has no length and is left out");
}

TEST(Fcp7Places, OfTwoThatBeginTogetherTheLaterStays) {
    const auto result = read(clip({"A", 5, 25, 0, 20}) + clip({"B", 5, 10, 0, 5}) + clip({"C", 10, 12, 0, 2}));
    EXPECT_EQ(shown(result), "0-5 black | 5-10 B@01:00:00:00 | 10-12 C@01:00:00:00");
    EXPECT_EQ(result.warnings.size(), 1U);
}

TEST(Fcp7Places, WhatLiesAheadOfTheSequenceOrHasNoLengthIsLeftOut) {
    const auto result = read(clip({"A", -20, 10, 100, 130}) + clip({"B", 30, 10, 0, 20}) + clip({"C", 40, 50, 0, 10}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:05:00 | 10-40 black | 40-50 C@01:00:00:00");
    EXPECT_EQ(shown(read(clip({"A", -1, 10, 100, 111}))), "0-10 A@01:00:04:05");
    EXPECT_EQ(told(result),
              "line 4: clip item \"A\": begins 20 frames ahead of the sequence; what lies there is left out\n"
              "line 4: clip item \"B\": has no length and is left out");
}

TEST(Fcp7Places, AnInOfMinusOneIsTakenFromTheOut) {
    EXPECT_EQ(shown(read(clip({"A", 0, 10, -1, 34}))), "0-10 A@01:00:01:00");
    EXPECT_EQ(shown(read(clip({"A", 0, 10, -1, -1}))), "0-10 A@01:00:00:00");
}

TEST(Fcp7Places, AnInPastTheEndOfTheMediaStaysAndTheLengthIsKnown) {
    const auto result = read(clip({"A", 0, 10, 1200, 1210}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:50:00");
    EXPECT_EQ(embedded::length_of_source(source_at(result.edit, 0, 0)), embedded::Fraction(1000, 24));
}

TEST(Fcp7Places, InAndOutThatDisagreeWithStartAndEndAreDoubted) {
    const auto result = read(clip({"A", 0, 10, 0, 12}));
    EXPECT_EQ(shown(result), "0-10 A@01:00:00:00");
    EXPECT_EQ(told(result),
              "line 4: clip item \"A\": is 10 frames long in the sequence but 12 of its media; the sequence "
              "counts");
}

TEST(Fcp7Places, NumbersMayHaveADecimalPoint) {
    const std::string item = "<clipitem>" + tag("name", "A") + tag("start", "0.0") + tag("end", "10.000001") +
                             tag("in", "24.0") + tag("out", " 34.0 ") + file() + "</clipitem>";
    EXPECT_EQ(shown(read(item)), "0-10 A@01:00:01:00");
    EXPECT_EQ(told(read(item)), "");
    const auto bad = read("<clipitem>" + tag("name", "A") + tag("start", "soon") + tag("end", "10") + tag("in", "0") +
                          tag("out", "10") + file() + "</clipitem>");
    EXPECT_THAT(told(bad), HasSubstr("line 4: clip item \"A\": \"soon\" of its \"start\" isn't a number of frames"));
}

TEST(Fcp7Places, WhatIsSwitchedOffIsAGap) {
    const std::string off = tag("enabled", "FALSE");
    const std::string b = clip({"B", 10, 20, 0, 10, file(), off});
    const auto result =
        read_document(document(sequence(track(clip(plain) + b) + track(clip(plain) + off) + track(b) + track(""))));
    EXPECT_EQ(shown(result, 0), "0-10 A@01:00:04:04 | 10-20 black");
    EXPECT_EQ(shown(result, 1), "");
    EXPECT_EQ(shown(result, 2), "");
    EXPECT_EQ(result.edit->getNumChans(), 4);
    EXPECT_EQ(told(result), "line 4: sequence \"Reel 1\": what is switched off counts as gaps: tracks 1, items 2");
    EXPECT_EQ(result.warnings[0].kind, embedded::WarningKind::note);
}

TEST(Fcp7Places, UnknownThingsOnATrackAreToldAndOthersSkipped) {
    const auto result =
        read(clip(plain) + tag("locked", "FALSE") + tag("wonder", tag("start", "10") + tag("end", "20")));
    EXPECT_EQ(told(result), "line 4: wonder: isn't known as an item of a track, and is left out");
}

} // namespace
