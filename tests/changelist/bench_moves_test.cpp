// The least film moves.

#include "changelist/bench/heaviest_run.h"
#include "tests/changelist/random_runs.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using random_runs::number;

/// The heaviest of all choices whose places rise.
std::int64_t heaviest_of_all(const Vector<WeighedPlace>& row) {
    std::int64_t heaviest = 0;
    for (unsigned choice = 0; choice < 1U << row.size(); ++choice) {
        std::int64_t weight = 0;
        std::int64_t last = -1;
        bool rises = true;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if ((choice >> i & 1U) == 0) continue;
            rises = rises && row[i].place > last;
            last = row[i].place;
            weight += row[i].weight;
        }
        if (rises) heaviest = std::max(heaviest, weight);
    }
    return heaviest;
}

Vector<WeighedPlace> any_row() {
    std::vector<int> places(static_cast<std::size_t>(number(0, 11)));
    std::iota(places.begin(), places.end(), 0);
    Vector<WeighedPlace> row;
    while (!places.empty()) {
        const auto at = places.begin() + number(0, static_cast<int>(places.size()) - 1);
        row.push_back({*at, number(1, 6)});
        places.erase(at);
    }
    return row;
}

TEST(BenchMoves, TheHeaviestRunIsTheBestOfAllChoices) {
    EXPECT_TRUE(rc::check([] {
        const Vector<WeighedPlace> row = any_row();
        std::int64_t weight = 0;
        std::int64_t last = -1;
        std::size_t next = 0;
        for (const std::size_t item : heaviest_rising_run(row)) {
            RC_ASSERT(item >= next);
            RC_ASSERT(row[item].place > last);
            next = item + 1;
            last = row[item].place;
            weight += row[item].weight;
        }
        RC_ASSERT(weight == heaviest_of_all(row));
    }));
}

/// Events of unlike film on each reel, in another order.
KeptRun shuffled_reels() {
    std::vector<bench_kit::Film> films;
    const int reels = number(1, 3);
    for (int reel = 1; reel <= reels; ++reel) {
        for (int event = number(1, 6); event > 0; --event) {
            bench_kit::Film film;
            film.reel = reel;
            film.film = 1000 * static_cast<int>(films.size());
            film.length = number(1, 8);
            films.push_back(film);
        }
    }
    std::vector<bench_kit::Film> mixed;
    for (const bench_kit::Film& film : films)
        mixed.insert(mixed.begin() + number(0, static_cast<int>(mixed.size())), film);
    std::stable_sort(mixed.begin(), mixed.end(), [](const auto& a, const auto& b) { return a.reel < b.reel; });
    KeptRun run;
    run.old_cut = bench_kit::cut_of(films);
    run.new_cut = bench_kit::cut_of(mixed);
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    return run;
}

std::int64_t least_moved(const KeptRun& run, int reel) {
    Vector<WeighedPlace> row;
    std::int64_t all = 0;
    for (const MatchedPiece& piece : run.matched) {
        if (piece.old_reel != reel) continue;
        row.push_back({piece.new_frame, piece.length});
        all += piece.length;
    }
    return all - heaviest_of_all(row);
}

TEST(BenchMoves, NoOrderOfStepsMovesLessFilmOnAReelThanThePlanForIt) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = shuffled_reels();
        plan_bench_steps(run, bench_least_film);
        for (int reel = 1; reel <= 3; ++reel) {
            std::int64_t moved = 0;
            for (const change_step& step : run.bench) {
                RC_ASSERT(step.action == change_pick_up || step.action == change_put_down);
                if (step.reel == reel && step.action == change_pick_up) moved += step.length;
            }
            RC_ASSERT(moved == least_moved(run, reel));
        }
    }));
}

} // namespace
