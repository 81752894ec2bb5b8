#include "tests/changelist/moves_fixture.h"

namespace {

class ClassifyMovesTest : public MovesTest {
protected:
    Lines classified() {
        EXPECT_EQ(classify_moves(changes, logger), nullptr);
        return kinds();
    }
};

TEST_F(ClassifyMovesTest, ShotsInTheSameOrderStay) {
    add(matched({1, 0}, {1, 10}, 100));
    add(matched({1, 100}, {1, 150}, 50));
    add(matched({1, 150}, {1, 220}, 70));
    EXPECT_EQ(classified(), (Lines{"MO 1:0>1:10", "MO 1:100>1:150", "MO 1:150>1:220"}));
}

TEST_F(ClassifyMovesTest, TheShorterOfTwoSwappedShotsMovesBackFromBehind) {
    add(matched({1, 0}, {1, 50}, 100));
    add(matched({1, 100}, {1, 0}, 50));
    EXPECT_EQ(classified(), (Lines{"MO 1:0>1:50", "MB 1:100>1:0"}));
}

TEST_F(ClassifyMovesTest, TheShorterOfTwoSwappedShotsMovesForwardFromAhead) {
    add(matched({1, 0}, {1, 100}, 50));
    add(matched({1, 50}, {1, 0}, 100));
    EXPECT_EQ(classified(), (Lines{"MF 1:0>1:100", "MO 1:50>1:0"}));
}

TEST_F(ClassifyMovesTest, OfSwappedShotsOfOneLengthTheEarlierMoves) {
    add(matched({1, 0}, {1, 50}, 50));
    add(matched({1, 50}, {1, 0}, 50));
    EXPECT_EQ(classified(), (Lines{"MF 1:0>1:50", "MO 1:50>1:0"}));
}

TEST_F(ClassifyMovesTest, ShotsThatChangeReelsMoveWhateverTheOrderAroundThem) {
    add(matched({1, 0}, {1, 100}, 100));
    add(matched({1, 100}, {2, 500}, 10));
    add(matched({1, 110}, {1, 200}, 100));
    add(matched({2, 0}, {1, 0}, 10));
    add(matched({2, 10}, {2, 10}, 10));
    EXPECT_EQ(classified(), (Lines{"MO 1:0>1:100", "MF 1:100>2:500", "MO 1:110>1:200", "MB 2:0>1:0", "MO 2:10>2:10"}));
}

TEST_F(ClassifyMovesTest, EachReelIsJudgedForItself) {
    add(matched({1, 0}, {1, 500}, 100));
    add(matched({2, 0}, {2, 10}, 100));
    EXPECT_EQ(classified(), (Lines{"MO 1:0>1:500", "MO 2:0>2:10"}));
}

// The two shots at the tail jump over one that is longer than each, and shorter than both.
TEST_F(ClassifyMovesTest, ARunIsMeasuredWhole) {
    add(matched({1, 0}, {1, 80}, 60));
    add(matched({1, 60}, {1, 0}, 40));
    add(matched({1, 100}, {1, 40}, 40));
    EXPECT_EQ(classified(), (Lines{"MF 1:0>1:80", "MO 1:60>1:0", "MO 1:100>1:40"}));
}

// What stands behind the jumped block ends the run, and order holds again from there.
TEST_F(ClassifyMovesTest, OrderHoldsAgainBehindTheBlock) {
    add(matched({1, 0}, {1, 20}, 100));
    add(matched({1, 100}, {1, 1}, 19));
    add(matched({1, 119}, {1, 120}, 10));
    add(matched({1, 129}, {1, 130}, 10));
    EXPECT_EQ(classified(), (Lines{"MO 1:0>1:20", "MB 1:100>1:1", "MO 1:119>1:120", "MO 1:129>1:130"}));
}

TEST_F(ClassifyMovesTest, ABlockReachesOverShotsThatLeaveTheReel) {
    add(matched({1, 0}, {1, 300}, 10));
    add(matched({1, 10}, {2, 400}, 10));
    add(matched({1, 20}, {1, 310}, 10));
    add(matched({1, 30}, {1, 100}, 40));
    EXPECT_EQ(classified(), (Lines{"MF 1:0>1:300", "MF 1:10>2:400", "MF 1:20>1:310", "MO 1:30>1:100"}));
}

TEST_F(ClassifyMovesTest, OnlyFilmInBothCutsIsLookedAt) {
    add(inserted({1, 0}, 10));
    add(gone({1, 0}, 10));
    ChangeRecord transition = matched({1, 5}, {1, 900}, 10);
    put_text(transition.record_type, "FX");
    add(transition);
    add(matched({1, 10}, {1, 10}, 10));
    EXPECT_EQ(classified(), Lines{"MO 1:10>1:10"});
    show_all(changes);
    EXPECT_EQ(kinds(), (Lines{"I 0:0>1:0", "DU 1:0>1:0", "FX 1:5>1:900", "MO 1:10>1:10"}));
}

TEST_F(ClassifyMovesTest, AnEmptyTableIsClassifiedToo) {
    EXPECT_EQ(classified(), Lines());
    EXPECT_TRUE(logger.said(toUTF8(resourceStrW(10267)).c_str(), 0));
}

} // namespace
