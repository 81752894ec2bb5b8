#include "changelist/bench/choose_pieces.h"

#include "changelist/bench/plan_cost.h"
#include "changelist/bench/what_stays.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int most_rounds = 4;

Vector<std::size_t> moved_shortest_first(const KeptPieces& pieces) {
    Vector<std::size_t> moved;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (!pieces[i].stays) moved.push_back(i);
    std::sort(moved.begin(), moved.end(), [&](std::size_t a, std::size_t b) {
        return pieces[a].length != pieces[b].length ? pieces[a].length < pieces[b].length : a < b;
    });
    return moved;
}

/// Gives up moves that cost more than deleting and inserting, until `excess` is saved. What is given up makes others
/// cheaper or dearer, so it takes more than one round.
KeptPieces without_dear_moves(const BenchCuts& cuts, const KeptPieces& pieces, std::int64_t Saving::*saving,
                              std::int64_t excess) {
    PlanLedger ledger(cuts, pieces);
    const Vector<std::size_t> moved = moved_shortest_first(pieces);
    bool saved = true;
    for (int round = 0; round < most_rounds && saved; ++round) {
        saved = false;
        for (std::size_t i = 0; i < moved.size() && excess > 0; ++i) {
            const std::int64_t gain = ledger.is_kept(moved[i]) ? ledger.saved_without(moved[i]).*saving : 0;
            if (gain <= 0) continue;
            ledger.drop(moved[i]);
            excess -= gain;
            saved = true;
        }
    }
    return ledger.kept_pieces();
}

class Choice {
public:
    Choice(const BenchCuts& cuts, const Vector<MatchedPiece>& matched, bool any_part)
        : cuts_(cuts), film_(film_in_both(cuts, matched, any_part)) {}

    ChosenPieces usual() {
        keep_most_film(film_.all);
        const std::int64_t excess = cost_of(cuts_, film_.all).steps - film_.shots_that_differ;
        if (excess > 0) film_.all = without_dear_moves(cuts_, film_.all, &Saving::steps, excess);
        const bool few = cost_of(cuts_, film_.all).steps <= film_.shots_that_differ;
        return chosen(few ? film_.all : film_.whole_shots);
    }
    ChosenPieces with_fewest_moves() {
        keep_for_fewest_moves(cuts_, film_.all);
        film_.all = without_dear_moves(cuts_, film_.all, &Saving::moves, everything);
        return cheapest(&change_cost::moves);
    }
    ChosenPieces with_fewest_splices() {
        keep_for_fewest_splices(cuts_, film_.all);
        KeptPieces stays = film_.all;
        std::erase_if(stays, [](const KeptPiece& piece) { return !piece.stays; });
        film_.all = without_dear_moves(cuts_, film_.all, &Saving::splices, everything);
        if (cost_of(cuts_, stays).splices < cost_of(cuts_, film_.all).splices) film_.all = std::move(stays);
        return cheapest(&change_cost::splices);
    }
    ChosenPieces with_least_film() {
        keep_most_film(film_.all);
        return cheapest(&change_cost::frames);
    }

private:
    static constexpr std::int64_t everything = std::numeric_limits<std::int64_t>::max();

    ChosenPieces chosen(const KeptPieces& pieces) const {
        return {pieces, cost_of(cuts_, pieces), cost_of(cuts_, film_.in_order)};
    }
    /// Of those that cost the same the one that keeps more.
    ChosenPieces cheapest(std::int64_t change_cost::*cost) const {
        const KeptPieces* best = &film_.all;
        for (const KeptPieces* other : {&film_.whole_shots, &film_.in_order})
            if (cost_of(cuts_, *other).*cost < cost_of(cuts_, *best).*cost) best = other;
        return chosen(*best);
    }

    const BenchCuts& cuts_;
    FilmInBoth film_;
};

} // namespace

ChosenPieces choose_pieces(const BenchCuts& cuts, const Vector<MatchedPiece>& matched, bench_goal goal) {
    Choice choice(cuts, matched, goal == bench_least_film);
    switch (goal) {
    case bench_fewest_moves:
        return choice.with_fewest_moves();
    case bench_fewest_splices:
        return choice.with_fewest_splices();
    case bench_least_film:
        return choice.with_least_film();
    case bench_usual:
        break;
    }
    return choice.usual();
}
