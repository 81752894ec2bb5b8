// Which steps the bench list plans.

#include "tests/changelist/bench_kit.h"
#include "tests/changelist/frame_by_frame.h"

#include <gmock/gmock.h>

namespace {

using bench_kit::cut_of;
using bench_kit::Film;
using bench_kit::words_of;
using testing::ElementsAre;
using testing::IsEmpty;

Film film(int reel, int from, int length) {
    Film stretch;
    stretch.reel = reel;
    stretch.film = from;
    stretch.length = length;
    return stretch;
}

KeptRun run_of(const std::vector<Film>& old_films, const std::vector<Film>& new_films) {
    KeptRun run;
    run.old_cut = cut_of(old_films);
    run.new_cut = cut_of(new_films);
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    plan_bench_steps(run);
    return run;
}

std::vector<std::string> planned(const std::vector<Film>& old_films, const std::vector<Film>& new_films) {
    return words_of(run_of(old_films, new_films).bench);
}

TEST(BenchPlan, OfTheSameCutIsEmpty) {
    EXPECT_THAT(planned({film(1, 0, 10), film(2, 50, 10)}, {film(1, 0, 10), film(2, 50, 10)}), IsEmpty());
}

TEST(BenchPlan, OfNothingIsEmpty) { EXPECT_THAT(planned({}, {}), IsEmpty()); }

TEST(BenchPlan, LiftsNeighboursInOneStep) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 5), film(1, 200, 6), film(1, 300, 10)},
                        {film(1, 0, 10), film(1, 300, 10)}),
                ElementsAre("lift 11 at 10 of 1"));
}

TEST(BenchPlan, LiftsOnBothSidesOfWhatStays) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 20), film(1, 200, 10)}, {film(1, 100, 20)}),
                ElementsAre("lift 10 at 0 of 1", "lift 10 at 20 of 1"));
}

TEST(BenchPlan, WhatWasPickedUpEarlyNoLongerPartsALift) {
    EXPECT_THAT(
        planned({film(1, 0, 50), film(1, 100, 5), film(1, 200, 6), film(1, 300, 7)}, {film(1, 200, 6), film(1, 0, 50)}),
        ElementsAre("pick up 6 at 55 of 1 to 2", "put down 6 at 0 of 1 from 1", "lift 12 at 56 of 1"));
}

TEST(BenchPlan, InsertsEachNewEventByItself) {
    EXPECT_THAT(planned({film(1, 0, 10)}, {film(1, 500, 3), film(1, 0, 10), film(1, 600, 4), film(1, 700, 5)}),
                ElementsAre("insert 3 at 0 of 1", "insert 4 at 13 of 1", "insert 5 at 17 of 1"));
}

TEST(BenchPlan, TakesOutBeforeItPutsIn) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 5), film(1, 200, 10)},
                        {film(1, 0, 10), film(1, 500, 8), film(1, 200, 10)}),
                ElementsAre("lift 5 at 10 of 1", "insert 8 at 10 of 1"));
}

TEST(BenchPlan, MovesTheLighterOfTwo) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 30)}, {film(1, 100, 30), film(1, 0, 10)}),
                ElementsAre("pick up 10 at 0 of 1 to 2", "put down 10 at 30 of 1 from 1"));
    EXPECT_THAT(planned({film(1, 0, 30), film(1, 100, 10)}, {film(1, 100, 10), film(1, 0, 30)}),
                ElementsAre("pick up 10 at 30 of 1 to 2", "put down 10 at 0 of 1 from 1"));
}

TEST(BenchPlan, OfTwoThatWeighTheSameTheEarlierMoves) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 10)}, {film(1, 100, 10), film(1, 0, 10)}),
                ElementsAre("pick up 10 at 0 of 1 to 2", "put down 10 at 10 of 1 from 1"));
}

TEST(BenchPlan, PicksUpInTheWalkWhatGoesToALaterReel) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 5), film(2, 200, 10)},
                        {film(1, 0, 10), film(2, 200, 10), film(2, 100, 5)}),
                ElementsAre("pick up 5 at 10 of 1 to 2", "put down 5 at 10 of 2 from 1"));
}

TEST(BenchPlan, PicksUpAheadOfTheWalkWhatComesFromALaterReel) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 50, 4), film(2, 200, 10), film(2, 100, 5)},
                        {film(1, 0, 10), film(1, 100, 5), film(2, 200, 10)}),
                ElementsAre("pick up 5 at 10 of 2 to 3", "lift 4 at 10 of 1", "put down 5 at 10 of 1 from 1"));
}

TEST(BenchPlan, WalksReelsThatOneSideLacks) {
    EXPECT_THAT(planned({film(1, 0, 10), film(3, 100, 5)}, {film(1, 0, 10), film(2, 200, 6)}),
                ElementsAre("insert 6 at 0 of 2", "lift 5 at 0 of 3"));
}

TEST(BenchPlan, TellsTheReelsLengthAfterEachStep) {
    const KeptRun run = run_of({film(1, 0, 10), film(1, 100, 5), film(2, 200, 7)}, {film(1, 0, 10), film(2, 300, 9)});
    ASSERT_EQ(run.bench.size(), 3U);
    EXPECT_EQ(run.bench[0].reel_length, 10);
    EXPECT_EQ(run.bench[1].reel_length, 0);
    EXPECT_EQ(run.bench[2].reel_length, 9);
}

TEST(BenchPlan, NamesTheFilmOfAStep) {
    Film old_film = film(1, 0, 20);
    old_film.ink = 1000;
    const KeptRun run = run_of({old_film, film(1, 100, 5)}, {film(1, 3, 10)});
    ASSERT_THAT(words_of(run.bench), ElementsAre("lift 3 at 0 of 1", "lift 12 at 10 of 1"));
    change_step lift = run.bench[1];
    EXPECT_STREQ(lift.first_key.get_string(), "KJ1234560000+13");
    EXPECT_STREQ(lift.last_key.get_string(), "KJ1234560006+08") << "of the last of the events that it takes";
    EXPECT_STREQ(lift.first_ink.get_string(), "AA120063+05");
    EXPECT_FALSE(lift.last_ink.is_valid());
    EXPECT_STREQ(lift.cam_reel, "KJ12");
    EXPECT_EQ(toUTF8(lift.shot_name), LightweightString<char>("shot"));
    EXPECT_STREQ(lift.scene, "12A");
    EXPECT_STREQ(lift.take, "3");
    EXPECT_EQ(lift.old_reel, 1);
    EXPECT_EQ(lift.old_frame, 13);
}

TEST(BenchPlan, NumbersFilmAtASpeedOfItsOwnFromItsEventsStart) {
    Film fast = film(1, 100, 10);
    fast.speed = 2.0;
    Film reversed = film(1, 300, 10);
    reversed.speed = -1.0;
    KeptRun run = run_of({}, {fast, reversed});
    ASSERT_EQ(run.bench.size(), 2U);
    EXPECT_EQ(run.bench[0].first_key.sample, 400);
    EXPECT_EQ(run.bench[0].last_key.sample, 480);
    EXPECT_EQ(run.bench[0].speed, 2.0);
    EXPECT_EQ(run.bench[1].last_key.sample, 1160);
}

TEST(BenchPlan, KeepsPartsOfFilmAtASpeedOfItsOwn) {
    Film whole = film(1, 100, 20);
    whole.speed = 1.5;
    Film part = whole;
    part.film = 104; // three frames of the cut are four and a half of the film
    part.length = 10;
    EXPECT_THAT(planned({whole}, {part}), ElementsAre("lift 3 at 0 of 1", "lift 7 at 10 of 1"));
}

TEST(BenchPlan, DoesNotTakeAMatchsWordForIt) {
    KeptRun run;
    run.old_cut = cut_of({film(1, 0, 10)});
    run.new_cut = cut_of({film(1, 50, 10)});
    run.matched.push_back({1, 0, 1, 0, 10});
    plan_bench_steps(run);
    EXPECT_THAT(words_of(run.bench), ElementsAre("lift 10 at 0 of 1", "insert 10 at 0 of 1"));
}

TEST(BenchPlan, KeepsFilmThatIsUsedTwiceOnce) {
    EXPECT_THAT(planned({film(1, 0, 10)}, {film(1, 0, 10), film(1, 0, 10)}), ElementsAre("insert 10 at 10 of 1"));
}

TEST(BenchPlan, LeavesOutEventsWithoutALength) {
    EXPECT_THAT(planned({film(1, 0, 10), film(1, 100, 0)}, {film(1, 0, 10), film(1, 200, -3)}), IsEmpty());
}

TEST(BenchPlan, JoinsPiecesThatAreNeighboursOnBothSides) {
    KeptRun run;
    run.old_cut = cut_of({film(1, 0, 10), film(1, 10, 10), film(1, 100, 30)});
    run.new_cut = cut_of({film(1, 100, 30), film(1, 0, 10), film(1, 10, 10)});
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    plan_bench_steps(run);
    EXPECT_THAT(words_of(run.bench), ElementsAre("pick up 20 at 0 of 1 to 2", "put down 20 at 30 of 1 from 1"));
}

} // namespace
