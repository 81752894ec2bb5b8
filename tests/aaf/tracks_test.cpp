// What the segments of a track become.

#include "tests/aaf/aaf_edits.h"

#include <gmock/gmock.h>

using namespace aaf_edits;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

TEST(AafTracks, ClipsStandInARowFromTheirStartTimes) {
    EXPECT_EQ(drawn(track(sequence({clip(1, 48, 24), filler(12), clip(2, 0, 30)}))),
              "A 0-24 @48 | b 24-36 | B 36-66 @0");
}

TEST(AafTracks, BothSectorSizesAndByteOrdersGiveTheSameEdit) {
    Made made = track(sequence({clip(1, 48, 24), transition(8, 4), clip(2, 10, 30)}));
    made.operations.push_back(defined(dissolve, "Video Dissolve"));
    const std::string expected = drawn(made);
    EXPECT_EQ(expected, "A 0-16 @48 | x 16-24 | B 24-46 @18");
    for (const bool big : {false, true})
        for (const std::size_t size : {512u, 4096u}) {
            made.big_endian = big;
            made.sector_size = size;
            EXPECT_EQ(drawn(made), expected) << big << " " << size;
        }
}

TEST(AafTracks, ATransitionOverlapsAndItsCutPointIsTheCut) {
    const auto result = read(track(sequence({clip(1, 0, 40), transition(12, 3), clip(2, 100, 40)})));
    EXPECT_EQ(drawn(result), "A 0-28 @0 | x 28-40 | B 40-68 @112");
    // Whole events meet at the cut: 3 frames behind the transition's start.
    const ChannelEvent whole = material(result)[1];
    EXPECT_EQ(number(whole.source_time * 24), "112");
}

TEST(AafTracks, AFadeInComesFromFillerThatTheTransitionCovers) {
    EXPECT_EQ(drawn(track(sequence({filler(12), transition(12, 0), clip(1, 0, 40)}))), "b 0-0 | x 0-12 | A 12-40 @12");
    EXPECT_EQ(drawn(track(sequence({clip(1, 0, 40), transition(12, 12), filler(12)}))),
              "A 0-28 @0 | x 28-40 | b 40-40");
}

TEST(AafTracks, ATransitionAtHeadOrTailHasNothingToOverlap) {
    EXPECT_EQ(drawn(track(sequence({transition(12, 6), clip(1, 0, 40)}, 40))), "b 0-0 | x 0-12 | A 12-40 @12");
    EXPECT_EQ(drawn(track(sequence({clip(1, 0, 40), transition(12, 6)}, 40))), "A 0-28 @0 | x 28-40 | b 40-40");
}

TEST(AafTracks, ATransitionLongerThanANeighbourIsToldOf) {
    const auto result = read(track(sequence({clip(1, 0, 40), transition(12, 12), clip(2, 0, 8), clip(3, 0, 10)})));
    EXPECT_TRUE(warns_of(result, "component 2: it is longer than a neighbour"));
    EXPECT_EQ(drawn(result), "A 0-28 @0 | x 28-40 | B 40-40 @8 | C 40-50 @0");
}

TEST(AafTracks, BehindATransitionLongerThanANeighbourTheTrackBelowShowsFromThere) {
    const auto upper = sequence({clip(2, 0, 40), transition(12, 12), clip(3, 0, 8), below(10)});
    EXPECT_EQ(drawn(track(sequence({clip(4, 0, 10), scope(50, {clip(1, 0, 50), upper})}))),
              "D 0-10 @0 | B 10-38 @0 | x 38-50 | C 50-50 @8 | A 50-60 @40");
}

TEST(AafTracks, OfTwoTransitionsInARowTheFirstCounts) {
    const auto result = read(track(sequence({clip(1, 0, 40), transition(8, 4), transition(6, 3), clip(2, 0, 40)}, 72)));
    EXPECT_TRUE(warns_of(result, "component 3: dropped, as it follows another transition"));
    EXPECT_EQ(drawn(result), "A 0-32 @0 | x 32-40 | B 40-72 @8");
}

TEST(AafTracks, TheComponentsOfASequenceCountNotItsLength) {
    const auto result = read(track(sequence({clip(1, 0, 10), clip(2, 0, 10)}, 25)));
    EXPECT_EQ(drawn(result), "A 0-10 @0 | B 10-20 @0");
    EXPECT_TRUE(warns_of(result, "its length is given as 25, but what it holds is 20 long"));
}

TEST(AafTracks, AScopeOfAllTracksIsAChannelForEachAndReferencesAreHoles) {
    const auto result = read(track(scope(
        30, {sequence({filler(5), clip(1, 0, 25)}), sequence({below(10), clip(2, 0, 10), below(10)}), below(30)})));
    EXPECT_EQ(drawn(result, 0), "b 0-5 | A 5-30 @0");
    EXPECT_EQ(drawn(result, 1), "B 10-20 @0");
    EXPECT_EQ(result.edit->getNumChans(), 2);
}

TEST(AafTracks, AScopeWithinATrackShowsItsLastTrackAndThroughItThoseBelow) {
    EXPECT_EQ(drawn(track(sequence(
                  {clip(1, 0, 10), scope(20, {clip(2, 0, 20), sequence({below(5), clip(3, 7, 5), below(10)})})}))),
              "A 0-10 @0 | B 10-15 @0 | C 15-20 @7 | B 20-30 @10");
}

TEST(AafTracks, AScopeInAScopeReachesTheOuterOneByItsRelativeScope) {
    const Object inner = scope(10, {clip(3, 0, 10), sequence({below(4), below(6, 1, 1)})});
    EXPECT_EQ(drawn(track(sequence({clip(1, 0, 10), scope(20, {clip(2, 0, 20), sequence({below(10), inner})})}))),
              "A 0-10 @0 | B 10-20 @0 | C 20-24 @0 | B 24-30 @14");
}

TEST(AafTracks, SelectorsShowWhatIsSelected) {
    EXPECT_EQ(drawn(track(sequence({selector(10, clip(2, 5, 10)), selector(10, below(10))}))), "B 0-10 @5 | b 10-20");
}

TEST(AafTracks, ASelectorInAnEffectIsReadThrough) {
    const Auid colour = auid("f1db0f31-8d64-11d3-80df-006008143e6f");
    EXPECT_EQ(drawn(track(effect(colour, 10, {selector(10, clip(2, 5, 10))}))), "B 0-10 @5");
}

TEST(AafTracks, GroupsOfChoicesShowTheFirstAndWithoutAnyAGap) {
    EXPECT_EQ(drawn(track(choices(10, {clip(1, 5, 10), clip(2, 0, 10)}))), "A 0-10 @5");
    const auto result = read(track(choices(10, {})));
    EXPECT_EQ(drawn(result), "b 0-10");
    EXPECT_TRUE(warns_of(result, "slot 1: nothing of it is chosen"));
}

TEST(AafTracks, AnEffectWithoutInputIsAnEventOfItsName) {
    Made made = track(effect(auid("2d6c555b-b259-11d3-a064-006094eb75cb"), 10, {}));
    made.operations.push_back(defined(auid("2d6c555b-b259-11d3-a064-006094eb75cb"), "Title"));
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "Title 0-10 @0");
    EXPECT_EQ(label_at(result, user_label_key), "-");
}

TEST(AafTracks, OfACompositeThePictureOnTopIsReadAndOthersAreToldOf) {
    const Auid key = auid("f1db0f4b-8d64-11d3-80df-006008143e6f");
    const auto alone = read(track(effect(key, 10, {sequence({below(10, 1, 1)}), clip(2, 5, 10)})));
    EXPECT_EQ(drawn(alone), "B 0-10 @5");
    EXPECT_FALSE(warns_of(alone, "only the first"));
    const auto two = read(track(effect(key, 10, {clip(1, 0, 10), clip(2, 5, 10)})));
    EXPECT_EQ(drawn(two), "A 0-10 @0");
    EXPECT_TRUE(warns_of(two, "only the first is read"));
    const auto matte = read(track(effect(key, 10, {below(10), clip(2, 5, 10), clip(2, 5, 10)})));
    EXPECT_FALSE(warns_of(matte, "only the first"));
}

TEST(AafTracks, AnEffectOnWhatLiesBelowIsLeftOutWithAWord) {
    const auto result = read(track(effect(auid("f1db0f31-8d64-11d3-80df-006008143e6f"), 10, {below(10)})));
    EXPECT_EQ(drawn(result), "b 0-10");
    EXPECT_TRUE(warns_of(result, "on what lies below is left out"));
}

TEST(AafTracks, AnOperationThatTheDictionaryLacksHasTheNameOfItsId) {
    const Auid unknown = auid("01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(drawn(track(effect(unknown, 10, {}))), "effect 01234567-89ab-cdef-0123-456789abcdef 0-10 @0");
}

TEST(AafTracks, AClassThatIsNotKnownIsBlackAndToldOf) {
    Object strange = Object(auid("01234567-89ab-cdef-0123-456789abcdef")).number(pid::length, 10, 8);
    const auto result = read(track(sequence({clip(1, 0, 10), strange, clip(2, 0, 10)})));
    EXPECT_EQ(drawn(result), "A 0-10 @0 | b 10-20 | B 20-30 @0");
    EXPECT_TRUE(warns_of(result, "component 2: class 01234567-89ab-cdef-0123-456789abcdef isn't known"));
}

TEST(AafTracks, AComponentThatTheIndexNamesAndTheFileLacksStopsTheReading) {
    const auto result = read(track(sequence({clip(1, 0, 10)}).lacks_an_element(pid::components)));
    EXPECT_EQ(result.error,
              "reel.aaf: composition \"Reel\", slot 1, component 2: isn't in the file, and all behind it would move");
}

TEST(AafTracks, SegmentsTooDeepInEachOtherAreRefused) {
    Object deep = clip(1, 0, 10);
    for (int i = 0; i < 60; ++i)
        deep = sequence({selector(10, std::move(deep))}, 10);
    EXPECT_THAT(read(track(std::move(deep))).error, HasSubstr("segments lie too deep in each other"));
}

TEST(AafTracks, ATransitionHasTheNameOfItsEffectAndItsKind) {
    const Auid fade_up = auid("a3479fae-4715-38b8-b020-907ae09e8769");
    Made made = track(sequence({filler(12), transition(12, 0, fade_up), clip(1, 0, 40)}));
    made.operations.push_back(defined(fade_up, "FadeUp_2"));
    EXPECT_EQ(drawn(made), "b 0-0 | x 0-12 | A 12-40 @12");
}

TEST(AafTracks, ASubClipIsReadThroughToItsMasterFromItsOwnStart) {
    Made made = track(sequence({clip(50, 5, 20)}));
    made.mobs.push_back(sub_clip(50, "A.sub", {slot(1, {24}, clip(1, 100, 60))}));
    EXPECT_EQ(drawn(made), "A 0-20 @105");
}

TEST(AafTracks, ANestedCompositionIsSplicedInTrimmed) {
    Made made = track(sequence({clip(1, 0, 10), clip(50, 5, 20), clip(2, 0, 10)}));
    made.mobs.push_back(
        composition(50, "Nest", {slot(1, {24}, sequence({clip(3, 0, 12), transition(4, 2), clip(4, 50, 30)}))}, false));
    EXPECT_EQ(drawn(made), "A 0-10 @0 | C 10-13 @5 | x 13-17 | D 17-30 @54 | B 30-40 @0");
}

// 30 frames in 24: D begins at 8.8 frames of the edit, and frame 9 is the first to show it.
TEST(AafTracks, ACutOfANestBetweenTwoFramesLiesWhereTheNextBegins) {
    Made made = track(sequence({clip(1, 0, 10), clip(50, 0, 16)}));
    made.mobs.push_back(composition(50, "Nest", {slot(1, {30}, sequence({clip(3, 0, 11), clip(4, 100, 30)}))}, false));
    EXPECT_THAT(drawn(made), MatchesRegex("A 0-10 @0 . C 10-19 @[^|]* . D 19-26 @.*"));
}

// C ends and D begins at frame 10 of the nest, under a transition from 8 to 12.
TEST(AafTracks, ATransitionThatANestIsCutInIsTold) {
    const auto told = [](std::int64_t start, std::int64_t length) {
        Made made = track(sequence({clip(50, start, length)}));
        made.mobs.push_back(composition(
            50, "Nest", {slot(1, {24}, sequence({clip(3, 0, 12), transition(4, 2), clip(4, 50, 30)}))}, false));
        return warns_of(read(made),
                        "component 1, composition \"Nest\", slot 1, component 2: left out, as what is taken "
                        "of its track begins or ends inside it");
    };
    EXPECT_TRUE(told(10, 20));
    EXPECT_TRUE(told(11, 20));
    EXPECT_TRUE(told(0, 10));
    EXPECT_TRUE(told(0, 9));
    EXPECT_FALSE(told(9, 20)) << "it stays";
    EXPECT_FALSE(told(12, 20)) << "nothing of it is seen";
    EXPECT_FALSE(told(0, 8));
}

TEST(AafTracks, WhatIsTakenBeyondANestIsToldOf) {
    const auto result_of = [](std::int64_t start, std::int64_t length) {
        Made made = track(sequence({clip(1, 0, 5), clip(50, start, length), clip(2, 0, 5)}));
        made.mobs.push_back(sub_clip(50, "S", {slot(1, {24}, sequence({clip(3, 0, 15), clip(4, 0, 30)}))}));
        return read(made);
    };
    const auto partly = result_of(40, 20);
    EXPECT_EQ(drawn(partly), "A 0-5 @0 | D 5-10 @25 | b 10-25 | B 25-30 @0");
    EXPECT_TRUE(warns_of(partly, "component 2, composition \"S\", slot 1: it runs 15 frames past the end of what it "
                                 "holds"));
    EXPECT_TRUE(warns_of(result_of(60, 20), "it runs 20 frames past the end of what it holds"));
    EXPECT_TRUE(warns_of(result_of(-3, 20), "it begins 3 frames ahead of what it holds"));
    EXPECT_TRUE(result_of(0, 45).warnings.empty());
}

TEST(AafTracks, AClipOfANestThatOnlyATransitionShowsIsToldOf) {
    constexpr Auid submaster = auid("f1db0f3d-8d64-11d3-80df-006008143e6f");
    const Object nest = effect(submaster, 26, {sequence({clip(1, 100, 20), clip(2, 200, 6)})});
    EXPECT_TRUE(warns_of(read(track(sequence({nest, transition(8, 2), clip(3, 10, 20)}))),
                         "component 1: at its tail it changes within what the transition shows of it"));
    EXPECT_FALSE(warns_of(read(track(sequence({nest, transition(4, 2), clip(3, 10, 20)}))), "it changes"));
}

TEST(AafTracks, ANestInANestIsReadToo) {
    Made made = track(clip(50, 2, 10));
    made.mobs.push_back(composition(50, "Outer", {slot(1, {24}, sequence({clip(51, 10, 20)}))}, false));
    made.mobs.push_back(composition(51, "Inner", {slot(1, {24}, sequence({clip(1, 100, 40)}))}, false));
    EXPECT_EQ(drawn(made), "A 0-10 @112");
}

TEST(AafTracks, ACompositionThatHoldsItselfIsRefused) {
    Made made = track(clip(50, 0, 10));
    made.mobs.push_back(composition(50, "Loop", {slot(1, {24}, sequence({clip(50, 0, 20)}))}, false));
    EXPECT_THAT(read(made).error, HasSubstr("composition \"Loop\" holds itself"));
}

/// A nest of `levels`, each of which holds the next as often as `parts` says, for `length` frames each time.
Made nests(int levels, int parts, std::int64_t length) {
    Made made = track(clip(50, 0, length * parts));
    for (int level = 0; level < levels; ++level) {
        const int next = level + 1 == levels ? 1 : 51 + level;
        Objects all;
        for (int i = 0; i < parts; ++i)
            all.push_back(clip(next, 0, length));
        made.mobs.push_back(composition(50 + level, "Nest", {slot(1, {24}, sequence(std::move(all)))}, false));
        if (parts == 2) length /= 2;
    }
    return made;
}

TEST(AafTracks, WhatNestsDoNotShowCostsNothing) {
    EXPECT_EQ(drawn(nests(7, 10, 1)), "A 0-1 @0 | A 1-2 @0 | A 2-3 @0 | A 3-4 @0 | A 4-5 @0 | A 5-6 @0 | A 6-7 @0 | "
                                      "A 7-8 @0 | A 8-9 @0 | A 9-10 @0");
}

TEST(AafTracks, NestsThatMultiplyAreRefusedBeforeMemoryIsFull) {
    EXPECT_THAT(read(nests(19, 2, 1 << 18)).error, HasSubstr("it has too many items"));
}

TEST(AafTracks, ASlotOfANestThatIsNotThereIsAGap) {
    Made made = track(sequence({clip(50, 0, 10, 7), clip(1, 0, 10)}));
    made.mobs.push_back(composition(50, "Nest", {slot(1, {24}, clip(2, 0, 10))}, false));
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "b 0-10 | A 10-20 @0");
    EXPECT_TRUE(warns_of(result, "slot 7 of composition \"Nest\" isn't there"));
}

/// What the first effect of a channel is: "wipe43r".
std::string first_effect(const formats::ReadResult& result) {
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(0);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        if (!at.get_channel_event().cookie.isEffect()) continue;
        const Cookie kind = result.edit->getED2CookieForED5Effect(at);
        if (!kind.isWipe()) return "no wipe";
        return "wipe" + std::to_string(kind.wipeType()) + (kind.wipeDirection() == wipe_reversed ? "r" : "");
    }
    return "no effect";
}

TEST(AafTracks, AWipeHasTheNumberAndDirectionOfItsParameters) {
    constexpr Auid smpte_wipe = auid("0c3bea44-fc05-11d2-8a29-0050040ef7d2");
    constexpr Auid number = auid("e4962323-2267-11d3-8a4c-0050040ef7d2");
    constexpr Auid own_number = auid("01234567-89ab-cdef-0123-000000000001");
    constexpr Auid reverse = auid("01234567-89ab-cdef-0123-000000000002");
    const auto wipe_with = [&](Objects parameters) {
        Object wipe = transition(8, 4, smpte_wipe);
        wipe.child(pid::transition_operation, effect(smpte_wipe, 8, {}, std::move(parameters)));
        Made made = track(sequence({clip(1, 0, 24), wipe, clip(2, 0, 24)}));
        made.operations = {defined(smpte_wipe, "SMPTE Video Wipe")};
        made.parameters = {defined(own_number, "WipeNumber"), defined(reverse, "Reverse")};
        return first_effect(read(made));
    };
    EXPECT_EQ(wipe_with({}), "wipe1");
    EXPECT_EQ(wipe_with({constant(number, 43)}), "wipe43");
    EXPECT_EQ(wipe_with({constant(own_number, 19), constant(reverse, 1)}), "wipe19r");
    EXPECT_EQ(wipe_with({constant(number, 70000), constant(reverse, 0)}), "wipe65535");
    EXPECT_EQ(wipe_with({constant(number, -5)}), "wipe0");
}

TEST(AafTracks, AScopeWithoutTracksIsAGap) {
    const auto result = read(track(sequence({clip(1, 0, 10), scope(12, {}), clip(2, 0, 10)})));
    EXPECT_TRUE(warns_of(result, "it holds no tracks, so it is a gap"));
    EXPECT_EQ(drawn(result), "A 0-10 @0 | b 10-22 | B 22-32 @0");
}

} // namespace
