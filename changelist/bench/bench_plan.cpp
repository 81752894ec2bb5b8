// Plans steps that can always be carried out:
//
//      old   [ A ][ B ][   C   ][ D ]    A and C stay in place, B moves behind C, D leaves,
//      new   [ A ][ E ][   C   ][ B ]    E comes in
//
// Each reel is walked once from head to tail. At each gap between what stays, first the old film leaves and then
// the new comes in, so all film ahead of the gap is as it will be. What is needed before the walk comes to it is
// picked up ahead of everything else.

#include "changelist/bench/film_on_reels.h"
#include "changelist/bench/heaviest_run.h"
#include "changelist/steps/kept_steps.h"

#include <algorithm>
#include <limits>

namespace {

/// Film that is on both sides.
struct Piece {
    FilmPlace old_at = 0;
    FilmPlace new_at = 0;
    std::int64_t length = 0;
    std::size_t old_reel = 0;
    std::size_t new_reel = 0;
    bool stays = false;
    bool early = false;        ///< put down before the walk comes to where it lies
    std::size_t picked_up = 0; ///< index of the step
};

/// In the order of `place`; drops what lies on a piece that begins before it.
template <FilmPlace Piece::*place> void drop_overlaps(Vector<Piece>& pieces) {
    std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
        if (a.*place != b.*place) return a.*place < b.*place;
        return a.length != b.length ? a.length > b.length : a.old_at + a.new_at < b.old_at + b.new_at;
    });
    FilmPlace free_from = 0;
    std::erase_if(pieces, [&](const Piece& piece) {
        if (piece.*place < free_from) return true;
        free_from = piece.*place + piece.length;
        return false;
    });
}

bool continues(const Piece& ahead, const Piece& behind) {
    return ahead.old_reel == behind.old_reel && ahead.new_reel == behind.new_reel &&
           ahead.old_at + ahead.length == behind.old_at && ahead.new_at + ahead.length == behind.new_at;
}

/// Old film that leaves at one place.
struct Lift {
    FilmPlace first = 0;
    FilmPlace end = 0;
    std::int64_t frames = 0;

    void add(FilmPlace from, FilmPlace to) {
        if (from >= to) return;
        if (frames == 0) first = from;
        end = to;
        frames += to - from;
    }
};

int shown(std::int64_t frames) {
    return static_cast<int>(
        std::clamp<std::int64_t>(frames, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

ReelNumbers reels_of(const KeptRun& run) {
    ReelNumbers reels;
    for (const Vector<CutEvent>* cut : {&run.old_cut, &run.new_cut}) {
        for (const CutEvent& event : *cut)
            reels.add(event.reel);
    }
    reels.close();
    return reels;
}

class BenchPlan {
public:
    explicit BenchPlan(KeptRun& run)
        : run_(run), reels_(reels_of(run)), old_(run.old_cut, reels_), new_(run.new_cut, reels_), steps_(run.bench) {}

    void make() {
        steps_.clear();
        find_pieces();
        choose_what_stays();
        sort_new_order();
        find_early_ones();
        for (std::size_t reel = 0; reel < reels_.size(); ++reel)
            reel_length_.push_back(old_.reel_length(reel));
        pick_up_early_ones();
        for (std::size_t reel = 0; reel < reels_.size(); ++reel)
            walk(reel);
    }

private:
    void find_pieces();
    void join_neighbours();
    void choose_what_stays();
    void sort_new_order();
    void find_early_ones();
    void pick_up_early_ones();
    void walk(std::size_t reel);
    FilmPlace take_out(std::size_t reel, FilmPlace from);
    FilmPlace bring_in(std::size_t reel, FilmPlace from);

    change_step& add_step(change_action action, std::size_t reel, std::int64_t position, std::int64_t length);
    void name_old_film(change_step& step, FilmPlace first, FilmPlace end);
    void lift_out(std::size_t reel, Lift& lift);
    void pick_up(Piece& piece, std::int64_t position);
    void put_down(const Piece& piece);
    void insert(std::size_t reel, FilmPlace from, FilmPlace to);

    KeptRun& run_;
    ReelNumbers reels_;
    FilmOnReels old_;
    FilmOnReels new_;
    Vector<change_step>& steps_;
    Vector<Piece> pieces_;          ///< in old order
    Vector<std::size_t> new_order_; ///< indices of pieces
    std::size_t next_old_ = 0;      ///< the next piece that the walk comes to
    std::size_t next_new_ = 0;      ///< the same in new order
    std::int64_t position_ = 0;     ///< of the gap on the reel of the walk
    Vector<std::int64_t> reel_length_;
};

void BenchPlan::find_pieces() {
    for (const MatchedPiece& match : run_.matched) {
        const auto old_at = old_.find(match.old_reel, match.old_frame, match.length);
        const auto new_at = new_.find(match.new_reel, match.new_frame, match.length);
        if (!old_at || !new_at) continue;
        if (!is_same_film(old_.event_at(*old_at), *old_at, new_.event_at(*new_at), *new_at, match.length)) continue;
        pieces_.push_back({*old_at, *new_at, match.length, reels_.index(match.old_reel), reels_.index(match.new_reel)});
    }
    drop_overlaps<&Piece::new_at>(pieces_);
    drop_overlaps<&Piece::old_at>(pieces_);
    join_neighbours();
}

void BenchPlan::join_neighbours() {
    Vector<Piece> joined;
    for (const Piece& piece : pieces_) {
        if (!joined.empty() && continues(joined.back(), piece)) {
            joined.back().length += piece.length;
        } else {
            joined.push_back(piece);
        }
    }
    pieces_ = std::move(joined);
}

void BenchPlan::choose_what_stays() {
    for (std::size_t first = 0; first < pieces_.size();) {
        Vector<WeighedPlace> row;
        Vector<std::size_t> of_row;
        const std::size_t reel = pieces_[first].old_reel;
        for (; first < pieces_.size() && pieces_[first].old_reel == reel; ++first) {
            if (pieces_[first].new_reel != reel) continue;
            row.push_back({pieces_[first].new_at, pieces_[first].length});
            of_row.push_back(first);
        }
        for (const std::size_t kept : heaviest_rising_run(row))
            pieces_[of_row[kept]].stays = true;
    }
}

void BenchPlan::sort_new_order() {
    new_order_.resize(pieces_.size());
    for (std::size_t i = 0; i < new_order_.size(); ++i)
        new_order_[i] = i;
    std::sort(new_order_.begin(), new_order_.end(),
              [&](std::size_t a, std::size_t b) { return pieces_[a].new_at < pieces_[b].new_at; });
}

// The walk passes gaps in the order of what stays behind them, which is the same on both sides.
void BenchPlan::find_early_ones() {
    Vector<std::size_t> arrives(pieces_.size());
    std::size_t reel = 0;
    std::size_t gap = 0;
    for (const std::size_t index : new_order_) {
        if (pieces_[index].new_reel != reel) gap = 0;
        reel = pieces_[index].new_reel;
        arrives[index] = gap;
        if (pieces_[index].stays) ++gap;
    }
    reel = gap = 0;
    for (std::size_t index = 0; index < pieces_.size(); ++index) {
        Piece& piece = pieces_[index];
        if (piece.old_reel != reel) gap = 0;
        reel = piece.old_reel;
        piece.early = !piece.stays && (piece.new_reel != reel ? piece.new_reel < reel : arrives[index] < gap);
        if (piece.stays) ++gap;
    }
}

void BenchPlan::pick_up_early_ones() {
    std::size_t reel = 0;
    std::int64_t taken = 0;
    for (Piece& piece : pieces_) {
        if (!piece.early) continue;
        if (piece.old_reel != reel) taken = 0;
        reel = piece.old_reel;
        pick_up(piece, piece.old_at - old_.reel_start(reel) - taken);
        taken += piece.length;
    }
}

void BenchPlan::walk(std::size_t reel) {
    FilmPlace old_at = old_.reel_start(reel);
    FilmPlace new_at = new_.reel_start(reel);
    position_ = 0;
    for (;;) {
        old_at = take_out(reel, old_at);
        new_at = bring_in(reel, new_at);
        if (old_at == old_.reel_end(reel)) return;
        const std::int64_t stays = pieces_[next_old_].length;
        position_ += stays;
        old_at += stays;
        new_at += stays;
        ++next_old_;
        ++next_new_;
    }
}

/// Up to what stays next, or to the reel's end.
FilmPlace BenchPlan::take_out(std::size_t reel, FilmPlace from) {
    Lift lift;
    for (; next_old_ < pieces_.size(); ++next_old_) {
        Piece& piece = pieces_[next_old_];
        if (piece.old_reel != reel || piece.stays) break;
        lift.add(from, piece.old_at);
        from = piece.old_at + piece.length;
        if (piece.early) continue;
        lift_out(reel, lift);
        pick_up(piece, position_);
    }
    const bool at_end = next_old_ == pieces_.size() || pieces_[next_old_].old_reel != reel;
    const FilmPlace end = at_end ? old_.reel_end(reel) : pieces_[next_old_].old_at;
    lift.add(from, end);
    lift_out(reel, lift);
    return end;
}

FilmPlace BenchPlan::bring_in(std::size_t reel, FilmPlace from) {
    for (; next_new_ < new_order_.size(); ++next_new_) {
        const Piece& piece = pieces_[new_order_[next_new_]];
        if (piece.new_reel != reel) break;
        insert(reel, from, piece.new_at);
        if (piece.stays) return piece.new_at;
        put_down(piece);
        from = piece.new_at + piece.length;
    }
    insert(reel, from, new_.reel_end(reel));
    return new_.reel_end(reel);
}

change_step& BenchPlan::add_step(change_action action, std::size_t reel, std::int64_t position, std::int64_t length) {
    const bool takes = action == change_remove || action == change_pick_up;
    reel_length_[reel] += takes ? -length : length;
    change_step& step = steps_.emplace_back();
    step.step = static_cast<int>(steps_.size());
    step.action = action;
    step.reel = reels_.number(reel);
    step.position = step.printed_position = shown(position);
    step.length = shown(length);
    step.reel_length = shown(reel_length_[reel]);
    return step;
}

void BenchPlan::name_old_film(change_step& step, FilmPlace first, FilmPlace end) {
    name_film(step, old_, first, end);
    const LaidEvent& laid = old_.event_at(first);
    step.old_reel = laid.event->reel;
    step.old_frame = shown(laid.event->frame + (first - laid.at));
}

void BenchPlan::lift_out(std::size_t reel, Lift& lift) {
    if (lift.frames > 0) name_old_film(add_step(change_remove, reel, position_, lift.frames), lift.first, lift.end);
    lift = Lift();
}

void BenchPlan::pick_up(Piece& piece, std::int64_t position) {
    piece.picked_up = steps_.size();
    change_step& step = add_step(change_pick_up, piece.old_reel, position, piece.length);
    name_old_film(step, piece.old_at, piece.old_at + piece.length);
}

void BenchPlan::put_down(const Piece& piece) {
    change_step& step = add_step(change_put_down, piece.new_reel, position_, piece.length);
    name_old_film(step, piece.old_at, piece.old_at + piece.length);
    step.other_step = steps_[piece.picked_up].step;
    steps_[piece.picked_up].other_step = step.step;
    position_ += piece.length;
}

void BenchPlan::insert(std::size_t reel, FilmPlace from, FilmPlace to) {
    while (from < to) {
        const FilmPlace end = std::min(to, new_.event_at(from).end());
        name_film(add_step(change_insert, reel, position_, end - from), new_, from, end);
        position_ += end - from;
        from = end;
    }
}

} // namespace

void plan_bench_steps(KeptRun& run) { BenchPlan(run).make(); }
