#include "tests/changelist/moves_fixture.h"

namespace {

class NumberStepsTest : public MovesTest {
protected:
    Lines numbered() {
        EXPECT_EQ(number_steps(changes, logger), nullptr);
        return steps();
    }
    Lines numbered_in_full() {
        run_all();
        return steps();
    }
};

//     old | A 100 | B 50 | C 100 |
//     new | A 100 | C 100 | N 30 |
TEST_F(NumberStepsTest, ADeletionAndAnInsertionBehindIt) {
    add(matched({1, 0}, {1, 0}, 100));
    add(gone({1, 100}, 50));
    add(matched({1, 150}, {1, 100}, 100));
    add(inserted({1, 200}, 30));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 2.0@250", "DU 1.1@100 0.0@0", "DC 1.1@100 0.0@0"}));
}

TEST_F(NumberStepsTest, AnInsertionAheadOfADeletionComesFirst) {
    add(inserted({1, 40}, 30));
    add(gone({1, 100}, 50));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 1.0@40", "DU 2.1@130 0.0@0", "DC 2.1@130 0.0@0"}));
}

TEST_F(NumberStepsTest, AtOnePlaceTheOldFilmIsTakenOutFirst) {
    add(inserted({1, 100}, 30));
    add(gone({1, 100}, 50));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 2.0@150", "DU 1.1@100 0.0@0", "DC 1.1@100 0.0@0"}));
}

TEST_F(NumberStepsTest, ShotsInTheSameOrderHaveNoStep) {
    add(matched({1, 0}, {1, 0}, 100));
    add(matched({1, 100}, {1, 120}, 100, "KJ1234560200+00"));
    EXPECT_EQ(numbered_in_full(), Lines());
    show_all(changes);
    EXPECT_EQ(steps(), (Lines{"MO 0.0@0 0.0@0", "MO 0.0@0 0.0@0"}));
}

TEST_F(NumberStepsTest, AdjacentGonePiecesAreThePartsOfOneStep) {
    add(gone({1, 100}, 10));
    add(gone({1, 110}, 20));
    add(gone({1, 130}, 30));
    add(inserted({1, 500}, 10));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 2.0@560", "DU 1.1@100 0.0@0", "DC 1.0@100 0.0@0", "DU 1.2@110 0.0@0",
                                         "DU 1.3@130 0.0@0"}));
}

TEST_F(NumberStepsTest, ALoneGonePieceAndItsStepAreBothPartOne) {
    add(gone({1, 100}, 10));
    EXPECT_EQ(numbered_in_full(), (Lines{"DU 1.1@100 0.0@0", "DC 1.1@100 0.0@0"}));
}

TEST_F(NumberStepsTest, NewMaterialHasItsStepAtItsNewPlaceOnly) {
    add(inserted({1, 7}, 10));
    EXPECT_EQ(numbered_in_full(), Lines{"I 0.0@0 1.0@7"});
}

//     old | A 50 | B 100 |
//     new | B 100 | A 50 |
TEST_F(NumberStepsTest, AShotMovedForwardIsPickedUpAndThenPutDown) {
    add(matched({1, 0}, {1, 100}, 50));
    add(matched({1, 50}, {1, 0}, 100));
    EXPECT_EQ(numbered_in_full(), Lines{"MF 1.0@0 2.0@150"});
}

//     old | A 100 | B 50 |
//     new | B 50 | A 100 |
TEST_F(NumberStepsTest, AShotMovedBackIsPutDownInTheWalkFromTheTail) {
    add(matched({1, 0}, {1, 50}, 100));
    add(matched({1, 100}, {1, 0}, 50));
    EXPECT_EQ(numbered_in_full(), Lines{"MB 1.0@100 2.0@50"});
}

TEST_F(NumberStepsTest, ShotsMovedBackArePutDownTailFirst) {
    add(moved("MB", {1, 200}, {1, 0}, 10));
    add(moved("MB", {1, 300}, {1, 50}, 20));
    EXPECT_EQ(numbered(), (Lines{"MB 1.0@200 4.0@30", "MB 2.0@300 3.0@70"}));
}

TEST_F(NumberStepsTest, AForwardMoveWhoseDestinationComesUpFirstTurnsBack) {
    add(moved("MF", {1, 200}, {1, 50}, 20));
    EXPECT_EQ(numbered(), Lines{"MB 1.0@200 2.0@70"});
}

TEST_F(NumberStepsTest, AShotMovedToAnEarlierReelIsPutDownLast) {
    set_reels(2);
    add(matched({2, 0}, {1, 100}, 20));
    EXPECT_EQ(numbered_in_full(), Lines{"MB 1.0@0 2.0@100"});
}

TEST_F(NumberStepsTest, AShotMovedToALaterReelIsPutDownThere) {
    set_reels(2);
    add(matched({1, 10}, {2, 30}, 20));
    EXPECT_EQ(numbered_in_full(), Lines{"MF 1.0@10 2.0@30"});
}

TEST_F(NumberStepsTest, StepsCountOnFromReelToReelAndPositionsDont) {
    set_reels(2);
    add(inserted({1, 10}, 5));
    add(inserted({2, 10}, 5));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 1.0@10", "I 0.0@0 2.0@10"}));
}

// While new film still lies ahead on its reel, a step numbers parts of its own reel only.
TEST_F(NumberStepsTest, PartsOfOtherReelsStayOutWhileBothSidesHaveFilm) {
    set_reels(2);
    for (const int reel : {1, 2}) {
        add(gone({reel, 100}, 50));
        add(inserted({reel, 500}, 5));
    }
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 2.0@550", "I 0.0@0 4.0@550", "DU 1.1@100 0.0@0", "DC 1.1@100 0.0@0",
                                         "DU 3.1@100 0.0@0", "DC 3.1@100 0.0@0"}));
}

TEST_F(NumberStepsTest, PartsOfAllReelsAreNumberedOnceTheNewSideIsDone) {
    set_reels(2);
    add(gone({1, 100}, 50));
    add(gone({2, 100}, 50));
    EXPECT_EQ(numbered_in_full(),
              (Lines{"DU 2.1@100 0.0@0", "DC 1.0@100 0.0@0", "DU 2.2@150 0.0@0", "DC 2.0@100 0.0@0"}));
}

TEST_F(NumberStepsTest, TheWalkFromTheTailTakesInLaterReels) {
    set_reels(2);
    add(moved("MB", {1, 0}, {2, 0}, 20));
    EXPECT_EQ(numbered(), Lines{"MB 1.0@0 3.0@0"});
}

// What comes from the later reel isn't there yet, so its length counts for nothing on the way to the head.
TEST_F(NumberStepsTest, TheWalkFromTheTailLeavesOutWhatComesFromOtherReels) {
    set_reels(2);
    add(moved("MB", {1, 200}, {1, 0}, 10));
    add(moved("MB", {2, 0}, {1, 50}, 20));
    EXPECT_EQ(numbered(), (Lines{"MB 1.0@200 2.0@10", "MB 3.0@0 4.0@50"}));
}

TEST_F(NumberStepsTest, ReelsAboveTheLastHaveNoSteps) {
    add(inserted({2, 10}, 5));
    add(gone({3, 10}, 5));
    EXPECT_EQ(numbered_in_full(), (Lines{"I 0.0@0 0.0@0", "DU 0.0@0 0.0@0", "DC 0.0@0 0.0@0"}));
}

TEST_F(NumberStepsTest, TheTableStaysInTheOrderOfTheOldCutWithItsOwnPlaces) {
    add(gone({1, 300}, 5));
    add(matched({1, 0}, {1, 0}, 5));
    add(gone({1, 100}, 5));
    run_all();
    EXPECT_EQ(kinds(), (Lines{"DU 1:100>1:0", "DC 1:100>1:0", "DU 1:300>1:0", "DC 1:300>1:0"}));
    for (unsigned row = 0; row < 4; ++row)
        EXPECT_EQ(field(changes, row, hf_xref_recnum), std::to_string(row));
}

} // namespace
