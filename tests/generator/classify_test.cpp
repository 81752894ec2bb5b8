#include "tests/generator/classify_fixture.h"

#include <gtest/gtest.h>

using namespace generator_test;

namespace {

std::string classified(bool neg_cut, const std::vector<cut_s>& records, int chan_type = 1) {
    const ListKind kind(neg_cut, chan_type);
    MadeTable made;
    made.add(records);
    classify_opticals(made.table, made.logger);
    EXPECT_TRUE(made.logger.lines.empty());
    return made.drawn();
}
std::string cutting_copy(const std::vector<cut_s>& records) { return classified(false, records); }
std::string neg_cut(const std::vector<cut_s>& records) { return classified(true, records); }

TEST(Classification, WithoutOpticalsAndTransitionsEveryCutIsNumbered) {
    for (const bool neg : {false, true})
        EXPECT_EQ(classified(neg, {v1(0, 10), v1(10, 30), v1(30, 31)}), "V1 0-10 #1\nV1 10-30 #2\nV1 30-31 #3");
}

TEST(Classification, AnEmptyTableStaysEmpty) { EXPECT_EQ(cutting_copy({}), ""); }

TEST(Classification, RowsAreSortedByKindTrackAndPosition) {
    EXPECT_EQ(cutting_copy({optical(5, 8), cut(2, 100, 110), v1(20, 30), cut(2, 9, 20), v1(0, 20)}),
              "V1 0-20 #1 in 1\nV1 20-30 #2\nV2 9-20\nV2 100-110\nFX 5-8 of 0-20 ref 1");
}

TEST(Classification, AnOpticalBeforeTheFirstCutIsAnErrorAndUsesNoCut) {
    EXPECT_EQ(cutting_copy({v1(10, 20), optical(5, 15), optical(12, 15)}),
              "V1 10-20 #1 in 2\nFX 5-15 of 5-15 ref 1 error\nFX 12-15 of 10-20 ref 2");
}

TEST(Classification, OpticalsBehindTheLastCutAreErrorsWithReferencesOfTheirOwn) {
    EXPECT_EQ(cutting_copy({v1(0, 10), optical(20, 30), optical(30, 40)}),
              "V1 0-10 #1\nFX 20-30 of 20-30 ref 1 error\nFX 30-40 of 30-40 ref 2 error");
}

TEST(Classification, OpticalsWithoutAnyCutAreErrors) {
    EXPECT_EQ(neg_cut({cut(2, 0, 40), optical(20, 30, 2), optical(30, 40, 2)}),
              "V2 0-40 in 2\nFX 20-30 of 20-30 ref 1 error\nFX 30-40 of 30-40 ref 2 error");
}

TEST(Classification, AChainBeforeAnOpticalIsASingleLayerEffect) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(10, 20, "WO"), v1(20, 30), v1(30, 50), optical(35, 40)}),
              "V1 0-10 #1 in 1\nV1 10-20 #2 in 1\nV1 20-30 #3 in 1\nV1 30-50 #4 in 2\n"
              "FX 35-40 of 30-50 ref 2\nFX 0-30 of 0-30 ref 1 single-layer effect");
}

TEST(Classification, AChainBehindTheLastOpticalIsASingleLayerTransition) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(10, 20, "WO"), v1(20, 30), v1(30, 40)}),
              "V1 0-10 #1 in 1\nV1 10-20 #2 in 1\nV1 20-30 #3 in 1\nV1 30-40 #4\n"
              "FX 0-30 of 0-30 ref 1 single-layer transition");
}

TEST(Classification, InANegCutListAChainIsOneEvent) {
    EXPECT_EQ(
        neg_cut({v1(0, 10, "DO"), v1(10, 20), v1(20, 40), optical(25, 30), v1(40, 50, "DO"), v1(50, 60), v1(60, 70)}),
        "V1 0-10 in 1\nV1 10-20 in 1\nV1 20-40 in 2\nV1 40-50 in 3\nV1 50-60 in 3\nV1 60-70 #4\n"
        "FX 25-30 of 20-40 #2 ref 2\nFX 0-20 of 0-20 #1 ref 1 single-layer effect\n"
        "FX 40-60 of 40-60 #3 ref 3 single-layer transition");
}

TEST(Classification, AChainThatTheTableCutsOffEndsThere) {
    EXPECT_EQ(neg_cut({v1(0, 10), v1(10, 20, "DO")}),
              "V1 0-10 #1\nV1 10-20 in 1\nFX 10-20 of 10-20 #2 ref 1 single-layer transition");
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), cut(2, 5, 9)}),
              "V1 0-10 #1 in 1\nV2 5-9\nFX 0-10 of 0-10 ref 1 single-layer transition");
}

TEST(Classification, TwoOpticalsInOneChainShareAReferenceAndASpan) {
    EXPECT_EQ(neg_cut({v1(0, 20, "DO"), v1(20, 40, "DO"), v1(40, 60), optical(5, 15), optical(25, 35)}),
              "V1 0-20 in 1\nV1 20-40 in 1\nV1 40-60 in 1\nFX 5-15 of 0-60 #1 ref 1\nFX 25-35 of 0-60 ref 1");
}

TEST(Classification, InANegCutListAnOpticalTakesTheNumberOfTheCutsBelowIt) {
    EXPECT_EQ(neg_cut({v1(0, 10), v1(10, 20), v1(20, 30), v1(30, 40), optical(2, 28)}),
              "V1 0-10 in 1\nV1 10-20 in 1\nV1 20-30 in 1\nV1 30-40 #2\nFX 2-28 of 0-30 #1 ref 1");
}

TEST(Classification, AnOpticalThatBeginsWhereACutEndsLiesOverTheNext) {
    EXPECT_EQ(cutting_copy({v1(0, 10), v1(10, 20), optical(10, 20)}),
              "V1 0-10 #1\nV1 10-20 #2 in 1\nFX 10-20 of 10-20 ref 1");
}

TEST(Classification, ASecondOpticalOverTheSameCutIsAnError) {
    EXPECT_EQ(cutting_copy({v1(0, 20), v1(20, 30), optical(2, 5), optical(8, 12)}),
              "V1 0-20 #1 in 1\nV1 20-30 #2\nFX 2-5 of 0-20 ref 1\nFX 8-12 of 8-12 ref 2 error");
}

// The chain moves on to the next optical before it runs out of cuts, and takes that one along unplaced.
TEST(Classification, AnOpticalThatAChainReachesBehindTheLastCutIsPassedOver) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(10, 20), optical(5, 10), optical(25, 30), optical(30, 35)}),
              "V1 0-10 #1 in 1\nV1 10-20 #2 in 1\nFX 5-10 of 0-20 ref 1\nFX 25-30 of 25-30\n"
              "FX 30-35 of 30-35 ref 2 error");
}

//     FX          |-1-|              |-2-|
//     V1   | cut |DO     DI| cut |
TEST(Classification, AnOpticalInsideATransitionIsPassedOverWhenAnotherFollows) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(20, 30), v1(30, 60), optical(12, 18), optical(40, 45)}),
              "V1 0-10 #1 in 1\nV1 20-30 #2 in 1\nV1 30-60 #3 in 2\nFX 12-18 of 12-18\nFX 40-45 of 30-60 ref 2\n"
              "FX 0-30 of 0-30 ref 1 single-layer effect");
}

TEST(Classification, TheLastOpticalInsideATransitionLiesOverItsChain) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(20, 30), optical(12, 18)}),
              "V1 0-10 #1 in 1\nV1 20-30 #2 in 1\nFX 12-18 of 0-30 ref 1");
}

TEST(Classification, UpperCutsTakeTheReferenceOfTheOpticalThatDrawsOnTheirTrack) {
    EXPECT_EQ(cutting_copy({v1(0, 100), optical(20, 60, 1 + 2), cut(2, 0, 20), cut(2, 20, 30), cut(2, 59, 80),
                            cut(2, 60, 90), cut(3, 25, 35)}),
              "V1 0-100 #1 in 1\nV2 0-20\nV2 20-30 in 1\nV2 59-80 in 1\nV2 60-90\nV3 25-35\n"
              "FX 20-60 of 0-100 ref 1");
}

TEST(Classification, OnlyTheFirst32TracksCanBeDrawnOn) {
    EXPECT_EQ(cutting_copy({v1(0, 100), optical(20, 60, -1), cut(32, 20, 30), cut(33, 20, 30), cut(34, 20, 30)}),
              "V1 0-100 #1 in 1\nV32 20-30 in 1\nV33 20-30\nV34 20-30\nFX 20-60 of 0-100 ref 1");
}

TEST(Classification, OfTwoOpticalsOverAnUpperCutTheLastCounts) {
    EXPECT_EQ(cutting_copy({v1(0, 50), v1(50, 100), optical(10, 40, 2), optical(60, 80, 2), cut(2, 30, 70)}),
              "V1 0-50 #1 in 1\nV1 50-100 #2 in 2\nV2 30-70 in 2\nFX 10-40 of 0-50 ref 1\nFX 60-80 of 50-100 ref 2");
}

TEST(Classification, UpperCutsDontTakePartInChains) {
    EXPECT_EQ(cutting_copy({v1(0, 10, "DO"), v1(10, 20), cut(2, 0, 20)}),
              "V1 0-10 #1 in 1\nV1 10-20 #2 in 1\nV2 0-20\nFX 0-20 of 0-20 ref 1 single-layer transition");
}

TEST(Classification, ASoundListIsNumberedInItsOrder) {
    cut_s numbered = cut(0, 0, 10, "DO");
    numbered.optical_ref = 5;
    EXPECT_EQ(classified(true, {cut(0, 20, 30), numbered, cut(0, 10, 20)}, 2), "V0 0-10 #1\nV0 10-20 #2\nV0 20-30 #3");
}

} // namespace
