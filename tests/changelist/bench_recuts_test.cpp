// The bench list holds for any recut.

#include "changelist/proof/proof.h"
#include "tests/changelist/random_runs.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using frame_by_frame::carry_out;
using frame_by_frame::Result;
using random_runs::any_run;
using random_runs::number;

Result result_of(const change_proof& proof) { return {proof.proved, proof.step, proof.reel, proof.position}; }

TEST(BenchRecuts, AlwaysProve) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        plan_bench_steps(run);
        const change_proof proof = prove_steps(run, run.bench);
        RC_LOG() << proof.reason << '\n';
        RC_ASSERT(proof.proved);
        RC_ASSERT(proof.steps == static_cast<int>(run.bench.size()));
        RC_ASSERT(carry_out(run.old_cut, run.new_cut, run.bench).proved);
    }));
}

TEST(BenchRecuts, ProveFromAnyMatchesAtAll) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        for (int wrong = number(1, 6); wrong > 0; --wrong)
            run.matched.push_back({number(0, 4), number(-3, 60), number(0, 4), number(-3, 60), number(-1, 9)});
        plan_bench_steps(run);
        RC_ASSERT(prove_steps(run, run.bench).proved);
        RC_ASSERT(carry_out(run.old_cut, run.new_cut, run.bench).proved);
    }));
}

TEST(BenchRecuts, DeleteNeighboursInOneLift) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        plan_bench_steps(run);
        for (std::size_t i = 1; i < run.bench.size(); ++i) {
            const change_step& step = run.bench[i];
            const change_step& before = run.bench[i - 1];
            const bool neighbours = step.action == change_remove && before.action == change_remove &&
                                    step.reel == before.reel && step.position == before.position;
            RC_ASSERT(!neighbours);
        }
    }));
}

TEST(BenchRecuts, PairPickUpsWithPutDowns) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        plan_bench_steps(run);
        for (const change_step& step : run.bench) {
            const bool moves = step.action == change_pick_up || step.action == change_put_down;
            RC_ASSERT(moves == (step.other_step != 0));
            if (!moves) continue;
            const change_step& other = run.bench[static_cast<std::size_t>(step.other_step - 1)];
            RC_ASSERT(other.other_step == step.step);
            RC_ASSERT(other.length == step.length);
            RC_ASSERT((step.action == change_pick_up) == (step.step < other.step));
        }
    }));
}

TEST(BenchRecuts, NeverChangeFilmThatIsAsItWas) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        run.new_cut = run.old_cut;
        run.matched.clear();
        for (const CutEvent& event : run.old_cut)
            run.matched.push_back({event.reel, event.frame, event.reel, event.frame, event.length});
        plan_bench_steps(run);
        RC_ASSERT(run.bench.empty());
        RC_ASSERT(prove_steps(run, run.bench).proved);
    }));
}

int any_int() {
    return *rc::gen::oneOf(rc::gen::inRange(-5, 50),
                           rc::gen::element(INT32_MAX, INT32_MIN, INT32_MAX - 1, 0, 1000, -1000, 1 << 30));
}

CutEvent any_event() {
    CutEvent event = bench_kit::event_of(random_runs::any_film());
    if (number(0, 2) == 0) event.key_in = *rc::gen::element(LabelPoint(), LabelPoint(any_int(), label_none));
    if (number(0, 2) == 0) event.key_in.set_sample(any_int());
    if (number(0, 2) == 0) event.ink_in = LabelPoint(any_int(), label_t_to_ink_label_t(label_key_35mm_4p));
    event.speed = *rc::gen::element(1.0, -1.0, 0.0, 1e300, -1e300, 1e-300, std::nan(""), HUGE_VAL, 1.005);
    event.reel = *rc::gen::element(0, 1, 2, 49, 1000, -7, INT32_MAX);
    event.frame = any_int();
    event.length = any_int();
    return event;
}

TEST(BenchRecuts, TakeAnyNumbersAtAll) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run;
        for (int events = number(0, 8); events > 0; --events)
            run.old_cut.push_back(any_event());
        run.new_cut = run.old_cut;
        for (int events = number(0, 4); events > 0; --events)
            run.new_cut.push_back(any_event());
        for (const CutEvent& event : run.old_cut)
            run.matched.push_back({event.reel, event.frame, event.reel, event.frame, event.length});
        for (int pieces = number(0, 4); pieces > 0; --pieces)
            run.matched.push_back({number(0, 2), any_int(), number(0, 2), any_int(), any_int()});
        plan_bench_steps(run);
        const change_proof proof = prove_steps(run, run.bench);
        RC_ASSERT(proof.proved == (proof.reason[0] == '\0'));
        for (const change_step& step : run.bench)
            RC_ASSERT(step.length > 0);
    }));
}

change_step any_step() {
    change_step step;
    step.step = any_int();
    step.action = static_cast<change_action>(number(0, 3));
    step.reel = any_int();
    step.position = any_int();
    step.length = any_int();
    step.other_step = any_int();
    step.reel_length = any_int();
    step.first_key = any_event().key_in;
    step.old_frame = any_int();
    return step;
}

TEST(BenchRecuts, AProofTakesAnyStepsAtAll) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        Vector<change_step> steps;
        for (int count = number(1, 6); count > 0; --count)
            steps.push_back(any_step());
        const change_proof proof = prove_steps(run, steps);
        RC_ASSERT(proof.proved == (proof.reason[0] == '\0'));
        RC_ASSERT(proof.steps <= static_cast<int>(steps.size()));
    }));
}

/// Spoils one thing about one step.
void spoil(Vector<change_step>& steps) {
    const auto any = [&] { return static_cast<std::size_t>(number(0, static_cast<int>(steps.size()) - 1)); };
    change_step& step = steps[any()];
    const int by = *rc::gen::element(-3, -2, -1, 1, 2, 3);
    switch (number(0, 7)) {
    case 0:
        step.position += by;
        break;
    case 1:
        step.length += by;
        break;
    case 2:
        step.reel_length += by;
        break;
    case 3:
        step.old_frame += by;
        break;
    case 4:
        step.reel += by;
        break;
    case 5:
        step.other_step += by;
        break;
    case 6:
        step.last_key += by;
        break;
    default:
        std::swap(step, steps[any()]);
    }
}

TEST(BenchRecuts, AProofAgreesWithWorkFrameByFrameOnSpoiltSteps) {
    int tried = 0;
    int failed = 0;
    EXPECT_TRUE(rc::check([&] {
        KeptRun run = any_run();
        plan_bench_steps(run);
        RC_PRE(!run.bench.empty());
        Vector<change_step> steps = run.bench;
        for (int times = number(1, 2); times > 0; --times)
            spoil(steps);
        if (number(0, 1)) {
            for (change_step& step : steps)
                step.reel_length = -1;
        }
        const change_proof proof = prove_steps(run, steps);
        RC_LOG() << proof.reason << '\n';
        RC_ASSERT(result_of(proof) == carry_out(run.old_cut, run.new_cut, steps));
        ++tried;
        failed += proof.proved ? 0 : 1;
    }));
    EXPECT_GT(4 * failed + 4, tried); // nine of ten, as a rule, however many are tried
}

} // namespace
