// Where a proof parts from a list, and what it says there.

#include "changelist/proof/proof.h"

#include "tests/changelist/change_rows.h"
#include "tests/changelist/frame_by_frame.h"

#include <gmock/gmock.h>

namespace {

using bench_kit::cut_of;
using bench_kit::Film;
using bench_kit::words_of;
using change_rows::steps_of;
using testing::ElementsAre;

/// Film of its own for each letter.
Film shot(int reel, char letter, int length) {
    Film film;
    film.reel = reel;
    film.length = length;
    film.film = 160 * (letter - 'A');
    return film;
}

class Proof : public testing::Test {
protected:
    void make(const std::vector<Film>& old_films, const std::vector<Film>& new_films) {
        run.old_cut = cut_of(old_films);
        run.new_cut = cut_of(new_films);
        run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
        plan_bench_steps(run);
    }
    change_proof prove() { return prove_steps(run, run.bench); }

    void expect_parts(const change_proof& proof, int step, int reel, int position, const char* reason) {
        EXPECT_FALSE(proof.proved);
        EXPECT_EQ(proof.step, step);
        EXPECT_EQ(proof.reel, reel);
        EXPECT_EQ(proof.position, position);
        EXPECT_STREQ(proof.reason, reason);
    }

    KeptRun run;
};

TEST_F(Proof, OfNoStepsHoldsForTheSameCut) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10)});
    const change_proof proof = prove();
    EXPECT_TRUE(proof.proved);
    EXPECT_EQ(proof.steps, 0);
    EXPECT_STREQ(proof.reason, "");
}

TEST_F(Proof, NamesTheFirstFrameThatNoStepMadeRight) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 6), shot(1, 'B', 4)});
    expect_parts(prove_steps(run, {}), 0, 1, 6,
                 "the cutting copy has KJ1234560000+06 of KJ12 where the new cut has KJ1234560010+00 of KJ12");
}

TEST_F(Proof, NamesTheStepThatPutTheWrongFilmIn) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10), shot(1, 'B', 4)});
    run.bench[0].first_key += 4;
    expect_parts(prove(), 1, 1, 10,
                 "the cutting copy has KJ1234560010+01 of KJ12 where the new cut has KJ1234560010+00 of KJ12");
}

TEST_F(Proof, TellsWhatLiesBehindTheNewCutsEnd) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 8)});
    expect_parts(prove_steps(run, {}), 0, 1, 8,
                 "the cutting copy has KJ1234560000+08 of KJ12 behind the new cut's end");
}

TEST_F(Proof, TellsWhatTheReelLacks) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10), shot(2, 'B', 4)});
    expect_parts(prove_steps(run, {}), 0, 2, 0, "the reel ends where the new cut has KJ1234560010+00 of KJ12");
}

TEST_F(Proof, TellsSpeedsAndFiller) {
    Film black = shot(1, 'A', 4);
    black.roll = "__BLACK_";
    Film slow = shot(1, 'B', 4);
    slow.speed = -0.5;
    make({black}, {slow});
    expect_parts(prove_steps(run, {}), 0, 1, 0,
                 "the cutting copy has __BLACK where the new cut has KJ1234560010+00 of KJ12 at speed -0.50");
}

TEST_F(Proof, TellsSpeedsInHundredths) {
    for (const auto& [speed, text] : {std::pair(2.0, "2.00"), std::pair(1.337, "1.34"), std::pair(-0.25, "-0.25")}) {
        Film moved = shot(1, 'B', 4);
        moved.speed = speed;
        make({shot(1, 'A', 4)}, {moved});
        EXPECT_THAT(prove_steps(run, {}).reason, testing::HasSubstr(std::string(" at speed ") + text));
    }
}

TEST_F(Proof, PartsWhereTheReelIsTooShort) {
    make({shot(1, 'A', 10), shot(1, 'B', 5)}, {shot(1, 'A', 10)});
    run.bench[0].length = 6;
    expect_parts(prove(), 1, 1, 10, "the reel ends at frame 15");
    run.bench[0].position = -1;
    expect_parts(prove(), 1, 1, -1, "the reel starts behind that");
    run.bench[0].length = 0;
    expect_parts(prove(), 1, 1, -1, "it is about 0 frames of film");
}

TEST_F(Proof, PartsWherePutDownFilmLiesBehindTheReelsEnd) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10), shot(1, 'B', 4)});
    run.bench[0].position = 11;
    expect_parts(prove(), 1, 1, 11, "the reel ends at frame 10");
}

TEST_F(Proof, PartsWhereOtherFilmLies) {
    make({shot(1, 'A', 10), shot(1, 'B', 5), shot(1, 'C', 10)}, {shot(1, 'A', 10), shot(1, 'C', 10)});
    run.bench[0].position = 9;
    expect_parts(prove(), 1, 1, 9, "there lies frame 9 of reel 1, not frame 10 of reel 1");
}

TEST_F(Proof, PartsWhereALiftTakesFilmThatWasPutIn) {
    make({shot(1, 'A', 10), shot(1, 'B', 5)}, {shot(1, 'C', 7), shot(1, 'B', 5)});
    ASSERT_THAT(words_of(run.bench), ElementsAre("lift 10 at 0 of 1", "insert 7 at 0 of 1"));
    std::swap(run.bench[0], run.bench[1]);
    run.bench[0].reel_length = -1;
    expect_parts(prove(), 1, 1, 0, "the film there was put in by step 2");
}

TEST_F(Proof, PartsWhereALengthTakesInTooMuch) {
    make({shot(1, 'A', 10), shot(1, 'B', 5), shot(1, 'C', 10)}, {shot(1, 'A', 10), shot(1, 'C', 10)});
    run.bench[0].length = 6;
    expect_parts(prove(), 1, 1, 15, "it ends with KJ1234560020+00 of KJ12, not KJ1234560010+04");
}

TEST_F(Proof, PartsWhereTheKeyNumberIsAnother) {
    make({shot(1, 'A', 10), shot(1, 'B', 5)}, {shot(1, 'A', 10)});
    run.bench[0].first_key += 4;
    expect_parts(prove(), 1, 1, 10, "there lies KJ1234560010+00 of KJ12, not KJ1234560010+01");
}

TEST_F(Proof, TakesKeyNumbersThatNobodyKnows) {
    make({shot(1, 'A', 10), shot(1, 'B', 5)}, {shot(1, 'A', 10)});
    run.bench[0].last_key.set_prefix("????????");
    run.bench[0].last_key.set_sample(0);
    EXPECT_TRUE(prove().proved);
}

TEST_F(Proof, PartsWhereTheReelIsOfAnotherLength) {
    make({shot(1, 'A', 10), shot(1, 'B', 5)}, {shot(1, 'A', 10)});
    run.bench[0].reel_length = 11;
    expect_parts(prove(), 1, 1, 10, "the reel is 10 frames long then, not 11");
}

TEST_F(Proof, PartsWhereNothingWasPickedUp) {
    make({shot(1, 'A', 5), shot(1, 'B', 10)}, {shot(1, 'B', 10), shot(1, 'A', 5)});
    run.bench[1].other_step = 7;
    expect_parts(prove(), 2, 1, 10, "step 7 has no film picked up");
}

TEST_F(Proof, PartsWhereOtherFilmWasPickedUp) {
    make({shot(1, 'A', 5), shot(1, 'B', 10)}, {shot(1, 'B', 10), shot(1, 'A', 5)});
    run.bench[1].length = 4;
    expect_parts(prove(), 2, 1, 10, "step 1 picked up 5 frames, not 4");
    run.bench[1].length = 5;
    run.bench[1].old_frame = 3;
    expect_parts(prove(), 2, 1, 10, "step 1 picked up frame 0 of reel 1, not frame 3 of reel 1");
}

TEST_F(Proof, PartsWhereFilmIsNeverPutDown) {
    make({shot(1, 'A', 5), shot(1, 'B', 10)}, {shot(1, 'B', 10)});
    run.bench[0].action = change_pick_up;
    expect_parts(prove(), 1, 1, 0, "what it picks up is never put down");
}

TEST_F(Proof, PartsWherePickedUpFilmDoesNotRunThrough) {
    make({shot(1, 'A', 5), shot(1, 'B', 5), shot(1, 'C', 5), shot(1, 'D', 90)}, {shot(1, 'D', 90)});
    Vector<change_step> steps(2, run.bench[0]);
    steps[0] = steps[1] = run.bench[0];
    steps[0].position = steps[0].old_frame = 5;
    steps[0].length = 5;
    steps[0].first_key = bench_kit::key_at("KJ123456", 160);
    steps[0].last_key = bench_kit::key_at("KJ123456", 164);
    steps[0].reel_length = -1;
    steps[1].length = 10;
    EXPECT_TRUE(prove_steps(run, steps).proved) << "a lift passes over what is gone";
    steps[1].step = 2;
    steps[1].action = change_pick_up;
    expect_parts(prove_steps(run, steps), 2, 1, 5, "the film doesn't run through: there lies frame 10 of reel 1");
}

TEST_F(Proof, TellsFilmAtASpeedOfItsOwnByOneFrameOfTheCut) {
    Film fast = shot(1, 'A', 10);
    fast.speed = 2.0;
    Film near = fast;
    near.film += 2;
    Film far = fast;
    far.film += 3;
    make({fast}, {near});
    EXPECT_TRUE(prove_steps(run, {}).proved);
    make({fast}, {far});
    EXPECT_FALSE(prove_steps(run, {}).proved);
}

TEST_F(Proof, TellsSpeedsThatDifferByMoreThanAHundredth) {
    Film fast = shot(1, 'A', 2);
    fast.speed = 2.0;
    Film nearly = fast;
    nearly.speed = 2.009;
    Film faster = fast;
    faster.speed = 2.02;
    make({fast}, {nearly});
    EXPECT_TRUE(prove_steps(run, {}).proved);
    make({fast}, {faster});
    EXPECT_FALSE(prove_steps(run, {}).proved);
}

TEST_F(Proof, TellsPlainFilmToThePerforation) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10)});
    run.new_cut[0].key_in += 1;
    EXPECT_FALSE(prove_steps(run, {}).proved);
}

TEST_F(Proof, TellsRollsWithoutRegardToCase) {
    make({shot(1, 'A', 10)}, {shot(1, 'A', 10)});
    put_text(run.new_cut[0].cam_reel, "kj12");
    EXPECT_TRUE(prove_steps(run, {}).proved);
    put_text(run.new_cut[0].cam_reel, "kj13");
    EXPECT_FALSE(prove_steps(run, {}).proved);
}

TEST_F(Proof, IsOfTheLastRun) {
    make({shot(1, 'A', 10)}, {shot(1, 'B', 10)});
    kept_run() = run;
    EXPECT_TRUE(prove_change_steps(bench_changes).proved);
    EXPECT_FALSE(prove_change_steps(detailed_changes).proved);
    kept_run() = KeptRun();
}

TEST_F(Proof, HasNothingToSayWithoutARun) {
    kept_run() = KeptRun();
    expect_parts(prove_change_steps(bench_changes), 0, 0, 0, "there is no film of a run");
}

// The detailed list numbers its steps by rules of its own. These are the smallest cuts whose steps can't be carried
// out; the bench list of each can.

/// A step with the position that its row has for it.
struct NumberedAt {
    int step;
    int relpos;
};

struct PlaceOnReel {
    int reel;
    int frame;
};

/// A shot of one frame that lies elsewhere in the new cut.
change_rows::Row moved(const char* kind, char letter, NumberedAt picked_up, NumberedAt put_down, PlaceOnReel from,
                       PlaceOnReel to) {
    change_rows::Row row;
    row.kind = kind;
    row.event1 = picked_up.step;
    row.relpos1 = picked_up.relpos;
    row.event2 = put_down.step;
    row.relpos2 = put_down.relpos;
    row.length = 1;
    row.film = shot(0, letter, 1).film;
    row.old_reel = from.reel;
    row.old_frame = from.frame;
    row.new_reel = to.reel;
    row.new_frame = to.frame;
    return row;
}

class DetailedSteps : public Proof {
protected:
    void expect_bench_list_holds() { EXPECT_TRUE(prove().proved); }
};

TEST_F(DetailedSteps, HoldForAPlainSwap) {
    make({shot(1, 'A', 2), shot(1, 'B', 1)}, {shot(1, 'B', 1), shot(1, 'A', 2)});
    EXPECT_TRUE(prove_steps(run, steps_of({moved("MB", 'B', {1, 2}, {2, 1}, {1, 2}, {1, 0})})).proved);
}

// D is kept behind A, and belongs ahead of it.
TEST_F(DetailedSteps, CanKeepAShotOutOfOrder) {
    make({shot(1, 'A', 2), shot(1, 'B', 1), shot(1, 'C', 1), shot(1, 'D', 1)},
         {shot(1, 'B', 1), shot(1, 'D', 1), shot(1, 'A', 2), shot(1, 'C', 1)});
    const Vector<change_step> steps =
        steps_of({moved("MB", 'B', {1, 2}, {4, 2}, {1, 2}, {1, 0}), moved("MF", 'C', {2, 3}, {3, 5}, {1, 3}, {1, 4})});
    expect_parts(prove_steps(run, steps), 0, 1, 1,
                 "the cutting copy has KJ1234560000+00 of KJ12 where the new cut has KJ1234560030+00 of KJ12");
    expect_bench_list_holds();
}

// Step 4 counts from the head of reel 1 as it will be, and steps count what step 1 took as if it still lay there.
TEST_F(DetailedSteps, CanPutAnArrivalFromALaterReelAheadOfTheReel) {
    make({shot(1, 'A', 1), shot(2, 'B', 1)}, {shot(1, 'B', 1), shot(2, 'A', 1)});
    const Vector<change_step> steps =
        steps_of({moved("MF", 'A', {1, 0}, {3, 1}, {1, 0}, {2, 0}), moved("MB", 'B', {2, 0}, {4, 0}, {2, 0}, {1, 0})});
    EXPECT_THAT(words_of(steps), ElementsAre("pick up 1 at 0 of 1 to 3", "pick up 1 at 0 of 2 to 4",
                                             "put down 1 at 0 of 2 from 1", "put down 1 at -1 of 1 from 2"));
    expect_parts(prove_steps(run, steps), 4, 1, -1, "the reel starts behind that");
    expect_bench_list_holds();
}

// On its way back along reel 1 the walk comes to D, which lies on reel 2, and steps back for it too.
TEST_F(DetailedSteps, CanBeLedAstrayByWhatMovesBackOnALaterReel) {
    make({shot(1, 'A', 2), shot(1, 'B', 1), shot(2, 'C', 2), shot(2, 'D', 1)},
         {shot(1, 'B', 1), shot(1, 'A', 2), shot(2, 'D', 1), shot(2, 'C', 2)});
    const Vector<change_step> steps =
        steps_of({moved("MB", 'B', {1, 2}, {2, 2}, {1, 2}, {1, 0}), moved("MB", 'D', {3, 2}, {4, 1}, {2, 2}, {2, 0})});
    expect_parts(prove_steps(run, steps), 0, 1, 0,
                 "the cutting copy has KJ1234560000+00 of KJ12 where the new cut has KJ1234560010+00 of KJ12");
    expect_bench_list_holds();
}

} // namespace
