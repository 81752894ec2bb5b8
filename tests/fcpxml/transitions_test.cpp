// Transitions: where they cut, and what they leave of their neighbours.

#include "tests/fcpxml/fcpxml_texts.h"

#include <gtest/gtest.h>

using namespace fcpxml_texts;
using embedded::WarningKind;

namespace {

/// In frames of 24.
std::string at(int frame) { return std::to_string(frame) + "/24s"; }
std::string fade(int from, int length) {
    return dissolve("offset=\"" + at(from) + "\" duration=\"" + at(length) + "\"");
}
std::string shot(const std::string& name, int offset, int start, int length) {
    return clip(name, "offset=\"" + at(offset) + "\" start=\"" + at(start) + "\" duration=\"" + at(length) + "\"");
}

TEST(FcpxmlTransitions, ItemsEndAtTheCutAndOverlapInTheirHandles) {
    EXPECT_EQ(drawn_spine(shot("L", 0, 0, 228) + fade(216, 24) + shot("R", 228, 12, 204)),
              "0-216 L@00:00:00:00 | 216-240 diss | 240-432 R@00:00:01:00");
}

TEST(FcpxmlTransitions, TheCutIsWhereTheNextItemBeginsAndNotTheMiddle) {
    const auto result = read(with_spine(shot("A", 0, 0, 760) + fade(556, 407) + shot("B", 760, 1000, 901)));
    EXPECT_EQ(drawn(result.edit, 0), "0-556 A@00:00:00:00 | 556-963 diss | 963-1661 B@00:00:50:03");
}

TEST(FcpxmlTransitions, AtTheHeadItFadesInAndAtTheTailOut) {
    EXPECT_EQ(drawn_spine(fade(0, 24) + shot("A", 0, 0, 100) + fade(88, 12)),
              "0-0 black | 0-24 diss | 24-88 A@00:00:01:00 | 88-100 diss | 100-100 black");
}

TEST(FcpxmlTransitions, BesideAGapHalfOfItLiesInTheBlack) {
    EXPECT_EQ(drawn_spine(shot("A", 0, 0, 100) + fade(90, 20) + R"(<gap duration="2s" offset="100/24s"/>)"),
              "0-90 A@00:00:00:00 | 90-110 diss | 110-148 black");
}

TEST(FcpxmlTransitions, BesideAHoleItStaysWithWhatItCovers) {
    EXPECT_EQ(drawn_spine(shot("A", 0, 0, 48) + fade(36, 12) + shot("B", 96, 0, 48)),
              "0-36 A@00:00:00:00 | 36-48 diss | 48-96 black | 96-144 B@00:00:00:00");
    EXPECT_EQ(drawn_spine(shot("A", 0, 0, 48) + fade(96, 12) + shot("B", 96, 0, 48)),
              "0-48 A@00:00:00:00 | 48-96 black | 96-108 diss | 108-144 B@00:00:00:12");
}

TEST(FcpxmlTransitions, InAStorylineTheyFadeOverWhatLiesBelow) {
    const std::string storyline = "<spine lane=\"1\" offset=\"1s\">" + fade(0, 12) + shot("B", 0, 0, 48) +
                                  fade(42, 12) + shot("C", 48, 10, 48) + fade(86, 10) + "</spine>";
    const auto result = read(with_spine(clip("A", R"(duration="9s")", storyline)));
    EXPECT_EQ(drawn(result.edit, 1), "24-24 black | 24-36 diss | 36-66 B@00:00:00:12 | 66-78 diss | "
                                     "78-110 C@00:00:00:16 | 110-120 diss | 120-120 black");
}

TEST(FcpxmlTransitions, AFadeOfAConnectedStorylineIsNoDissolveIntoWhatLiesBesideIt) {
    const std::string spine =
        clip("A", R"(duration="9s")",
             clip("B", R"(lane="1" offset="0s" duration="1s")") + "<spine lane=\"1\" offset=\"1s\">" + fade(0, 12) +
                 shot("C", 0, 0, 48) + "</spine>");
    EXPECT_EQ(drawn(read(with_spine(spine)).edit, 1),
              "0-24 B@00:00:00:00 | 24-24 black | 24-36 diss | 36-72 C@00:00:00:12");
}

TEST(FcpxmlTransitions, LongerThanItsNeighboursItIsCut) {
    const auto result = read(with_spine(shot("A", 0, 0, 10) + fade(0, 40) + shot("B", 10, 0, 10)));
    EXPECT_EQ(drawn(result.edit, 0), "0-0 A@00:00:00:00 | 0-20 diss | 20-20 B@00:00:00:10");
    EXPECT_TRUE(warns(result, "out_offset cut", WarningKind::dropped));
}

TEST(FcpxmlTransitions, TwoOnOneItemTakeTheirSharesOfIt) {
    EXPECT_EQ(
        drawn_spine(shot("A", 0, 0, 48) + fade(42, 12) + shot("B", 48, 20, 24) + fade(66, 12) + shot("C", 72, 30, 48)),
        "0-42 A@00:00:00:00 | 42-54 diss | 54-66 B@00:00:01:02 | 66-78 diss | 78-120 C@00:00:01:12");
}

TEST(FcpxmlTransitions, OneThatJoinsNothingSeenIsLeftOut) {
    const auto result = read(with_spine(R"(<asset-clip ref="m24" enabled="0" duration="1s"/>)" + fade(12, 24) +
                                        R"(<gap offset="1s" duration="1s"/>)" + shot("A", 48, 0, 24)));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 black | 24-48 black | 48-72 A@00:00:00:00");
    EXPECT_TRUE(warns(result, "transition \"X\": left out, as it joins nothing that is seen", WarningKind::dropped));
    EXPECT_TRUE(warns(read(with_spine(fade(0, 5))), "stands between no items", WarningKind::dropped));
}

TEST(FcpxmlTransitions, OneThatDoesntTouchItsCutIsLeftOut) {
    for (const auto& [from, what] : {std::pair{10, "before"}, std::pair{60, "behind"}}) {
        const auto result = read(with_spine(shot("A", 0, 0, 48) + fade(from, 12) + shot("B", 48, 48, 48)));
        EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-96 B@00:00:02:00") << what;
        EXPECT_TRUE(warns(result, "transition \"X\": doesn't touch its cut and is left out", WarningKind::dropped));
        EXPECT_EQ(result.warnings.size(), 1U) << what;
    }
    const auto touching = read(with_spine(shot("A", 0, 0, 48) + fade(36, 12) + shot("B", 48, 48, 48)));
    EXPECT_EQ(drawn(touching.edit, 0), "0-36 A@00:00:00:00 | 36-48 diss | 48-96 B@00:00:02:00");
}

TEST(FcpxmlTransitions, WhatLiesInOneIsToldToBeLeftOut) {
    const std::string inside = clip("C", R"(lane="1" offset="1s" duration="1s")");
    const auto result = read(with_spine(
        shot("A", 0, 0, 48) + R"(<transition offset="42/24s" duration="12/24s"><filter-video ref="dissolve"/>)" +
        inside + "</transition>" + shot("B", 48, 48, 48)));
    EXPECT_EQ(channels_of_kind(result.edit, 1), 1);
    EXPECT_TRUE(warns(result, "asset-clip \"C\": lies in a transition, where nothing is shown; it is left out",
                      WarningKind::dropped));
    EXPECT_EQ(result.warnings.size(), 1U);
}

TEST(FcpxmlTransitions, ADissolveIsKnownByItsNumberOrItsName) {
    const auto kind = [](const std::string& transition, const std::string& more = {}) {
        const std::string text =
            drawn_spine(shot("A", 0, 0, 48) + transition + shot("B", 48, 48, 48), R"(format="r24")", more);
        const std::size_t from = text.find("42-54 ") + 6;
        return text.substr(from, text.find(' ', from) - from);
    };
    const std::string times = R"( offset="42/24s" duration="12/24s")";
    EXPECT_EQ(kind("<transition name=\"Kreuzblende\"" + times + "><filter-video ref=\"dissolve\"/></transition>"),
              "diss");
    EXPECT_EQ(kind("<transition name=\"Cross Dissolve\"" + times + "/>"), "diss");
    EXPECT_EQ(kind("<transition name=\"Film Dissolve\"" + times + "/>"), "film");
    EXPECT_EQ(kind("<transition name=\"Wipe\"" + times + "/>"), "wipe1");
    EXPECT_EQ(kind("<transition name=\"Any\"" + times + "><filter-video ref=\"f\"/></transition>",
                   R"(<effect id="f" name="Flash"/>)"),
              "other");
}

TEST(FcpxmlTransitions, ACrossfadeOfTheSoundAloneIsNoneOfThePicture) {
    EXPECT_EQ(drawn_spine(shot("A", 0, 0, 48) +
                          R"(<transition offset="42/24s" duration="12/24s"><filter-audio name="Fade"/></transition>)" +
                          shot("B", 48, 48, 48)),
              "0-48 A@00:00:00:00 | 48-96 B@00:00:02:00");
}

} // namespace
