#include "changelist/bench/plan_cost.h"

#include "base/row_numbers.h"

#include <algorithm>

namespace {

/// Goes over the reels of one side: `gap(reel, from, to)` for each stretch between two pieces, empty ones too, and
/// `piece(index)` for each piece.
template <class Gap, class Piece> void go_over(const FilmOnReels& film, std::size_t reels, const KeptPieces& pieces,
                                               const Vector<std::size_t>& order, FilmPlace KeptPiece::*place,
                                               std::size_t KeptPiece::*reel_of, Gap gap, Piece piece) {
    std::size_t next = 0;
    for (std::size_t reel = 0; reel < reels; ++reel) {
        FilmPlace from = film.reel_start(reel);
        for (; next < order.size() && pieces[order[next]].*reel_of == reel; ++next) {
            const KeptPiece& kept = pieces[order[next]];
            gap(reel, from, kept.*place);
            piece(order[next]);
            from = kept.*place + kept.length;
        }
        gap(reel, from, film.reel_end(reel));
    }
}

Vector<std::size_t> in_old_order(const KeptPieces& pieces) { return row_numbers(0, pieces.size()); }

/// What one reel falls into.
struct ReelCount {
    std::int64_t runs = 0;
    std::int64_t lifted = 0; ///< frames since the last piece that stays

    std::int64_t joins() const { return std::max<std::int64_t>(runs - 1, 0); }
};

class Count {
public:
    Count(const BenchCuts& cuts, const KeptPieces& pieces) : cuts_(cuts), pieces_(pieces) {}

    change_cost make() {
        count_old_side();
        count_new_side();
        cost_.moves = lifts_ + inserts_ + moved_;
        cost_.steps = cost_.moves + moved_;
        return cost_;
    }

private:
    void count_old_side() {
        Vector<ReelCount> reels(cuts_.reels.size());
        go_over(
            cuts_.old_film, reels.size(), pieces_, in_old_order(pieces_), &KeptPiece::old_at, &KeptPiece::old_reel,
            [&](std::size_t reel, FilmPlace from, FilmPlace to) {
                reels[reel].runs += from < to;
                reels[reel].lifted += to - from;
                cost_.frames += to - from;
            },
            [&](std::size_t index) {
                ReelCount& reel = reels[pieces_[index].old_reel];
                ++reel.runs;
                if (!pieces_[index].stays) return void(++moved_), void(cost_.frames += pieces_[index].length);
                lifts_ += reel.lifted > 0;
                reel.lifted = 0;
            });
        for (const ReelCount& reel : reels) {
            lifts_ += reel.lifted > 0;
            cost_.splices += reel.joins();
        }
    }

    void count_new_side() {
        Vector<ReelCount> reels(cuts_.reels.size());
        go_over(
            cuts_.new_film, reels.size(), pieces_, in_new_order(pieces_), &KeptPiece::new_at, &KeptPiece::new_reel,
            [&](std::size_t reel, FilmPlace from, FilmPlace to) {
                const std::int64_t events = insertions(cuts_.new_film, from, to);
                reels[reel].runs += events;
                inserts_ += events;
                cost_.frames += to - from;
            },
            [&](std::size_t index) { ++reels[pieces_[index].new_reel].runs; });
        for (const ReelCount& reel : reels)
            cost_.splices += reel.joins();
    }

    const BenchCuts& cuts_;
    const KeptPieces& pieces_;
    change_cost cost_;
    std::int64_t lifts_ = 0;
    std::int64_t inserts_ = 0;
    std::int64_t moved_ = 0;
};

} // namespace

change_cost cost_of(const BenchCuts& cuts, const KeptPieces& pieces) { return Count(cuts, pieces).make(); }

std::int64_t insertions(const FilmOnReels& film, FilmPlace from, FilmPlace to) {
    return from < to ? static_cast<std::int64_t>(film.events_ahead(to) - film.index_at(from)) : 0;
}

PlanLedger::PlanLedger(const BenchCuts& cuts, const KeptPieces& pieces)
    : cuts_(cuts), pieces_(pieces), kept_(pieces.size(), 1) {
    link(old_side_, in_old_order(pieces));
    link(new_side_, in_new_order(pieces));
    measure_gaps();
}

void PlanLedger::link(Vector<Neighbours>& side, const Vector<std::size_t>& order) {
    side.resize(order.size());
    for (std::size_t i = 1; i < order.size(); ++i) {
        side[order[i]].ahead = order[i - 1];
        side[order[i - 1]].behind = order[i];
    }
}

void PlanLedger::unlink(Vector<Neighbours>& side, std::size_t piece) {
    const Neighbours between = side[piece];
    if (between.ahead != nobody) side[between.ahead].behind = between.behind;
    if (between.behind != nobody) side[between.behind].ahead = between.ahead;
}

void PlanLedger::measure_gaps() {
    gap_.resize(pieces_.size());
    gap_lifts_.push_back(0);
    std::size_t last_reel = 0;
    go_over(
        cuts_.old_film, cuts_.reels.size(), pieces_, in_old_order(pieces_), &KeptPiece::old_at, &KeptPiece::old_reel,
        [&](std::size_t reel, FilmPlace from, FilmPlace to) {
            if (reel != last_reel) gap_lifts_.push_back(0);
            last_reel = reel;
            gap_lifts_.back() += to - from;
        },
        [&](std::size_t index) {
            gap_[index] = gap_lifts_.size() - 1;
            if (pieces_[index].stays) gap_lifts_.push_back(0);
        });
}

PlanLedger::FreeFilm PlanLedger::free_of_old(std::size_t piece) const {
    const KeptPiece& kept = pieces_[piece];
    const Neighbours& next = old_side_[piece];
    FilmPlace from = cuts_.old_film.reel_start(kept.old_reel), to = cuts_.old_film.reel_end(kept.old_reel);
    if (next.ahead != nobody) from = std::max(from, pieces_[next.ahead].old_end());
    if (next.behind != nobody) to = std::min(to, pieces_[next.behind].old_at);
    return {from < kept.old_at, kept.old_end() < to};
}

/// On the side of the new cut, only where the film is of one event with the piece's own.
PlanLedger::FreeFilm PlanLedger::free_of_event(std::size_t piece) const {
    const KeptPiece& kept = pieces_[piece];
    const Neighbours& next = new_side_[piece];
    FilmPlace from = cuts_.new_film.event_at(kept.new_at).at, to = cuts_.new_film.event_at(kept.new_end() - 1).end();
    if (next.ahead != nobody) from = std::max(from, pieces_[next.ahead].new_end());
    if (next.behind != nobody) to = std::min(to, pieces_[next.behind].new_at);
    return {from < kept.new_at, kept.new_end() < to};
}

Saving PlanLedger::saved_without(std::size_t piece) const {
    const KeptPiece& kept = pieces_[piece];
    const FreeFilm of_event = free_of_event(piece);
    const FreeFilm of_old = free_of_old(piece);
    const std::int64_t inserted =
        insertions(cuts_.new_film, kept.new_at, kept.new_end()) - of_event.ahead - of_event.behind;
    const std::int64_t lifted = gap_lifts_[gap_[piece]] == 0;
    return {2 - inserted - lifted, 1 - inserted - lifted, 1 - inserted + of_old.ahead + of_old.behind};
}

void PlanLedger::drop(std::size_t piece) {
    kept_[piece] = 0;
    gap_lifts_[gap_[piece]] += pieces_[piece].length;
    unlink(old_side_, piece);
    unlink(new_side_, piece);
}

KeptPieces PlanLedger::kept_pieces() const {
    KeptPieces kept;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        if (is_kept(piece)) kept.push_back(pieces_[piece]);
    }
    return kept;
}
