// Plans steps that can always be carried out:
//
//      old   [ A ][ B ][   C   ][ D ]    A and C stay in place, B moves behind C, D leaves,
//      new   [ A ][ E ][   C   ][ B ]    E comes in
//
// Each reel is walked once from head to tail. At each gap between what stays, first the old film leaves and then
// the new comes in, so all film ahead of the gap is as it will be. What is needed before the walk comes to it is
// picked up ahead of everything else.

#include "changelist/bench/choose_pieces.h"
#include "changelist/steps/kept_steps.h"

#include <algorithm>
#include <limits>

namespace {

/// Film that is on both sides.
struct Piece : KeptPiece {
    explicit Piece(const KeptPiece& kept) : KeptPiece(kept) {}

    bool early = false;        ///< put down before the walk comes to where it lies
    std::size_t picked_up = 0; ///< index of the step
};

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

class BenchPlan {
public:
    BenchPlan(const BenchCuts& cuts, const KeptPieces& pieces, Vector<change_step>& steps)
        : reels_(cuts.reels), old_(cuts.old_film), new_(cuts.new_film), steps_(steps),
          pieces_(pieces.begin(), pieces.end()), new_order_(in_new_order(pieces)) {}

    void make() {
        steps_.clear();
        find_early_ones();
        for (std::size_t reel = 0; reel < reels_.size(); ++reel)
            reel_length_.push_back(old_.reel_length(reel));
        pick_up_early_ones();
        for (std::size_t reel = 0; reel < reels_.size(); ++reel)
            walk(reel);
    }

private:
    void find_early_ones();
    void pick_up_early_ones();
    void walk(std::size_t reel);
    bool is_lift_parted(std::size_t reel, FilmPlace from) const;
    FilmPlace end_of_gap(std::size_t reel, std::size_t next) const;
    FilmPlace take_out(std::size_t reel, FilmPlace from);
    FilmPlace bring_in(std::size_t reel, FilmPlace from);

    change_step& add_step(change_action action, std::size_t reel, std::int64_t position, std::int64_t length);
    void name_old_film(change_step& step, FilmPlace first, FilmPlace end);
    void lift_out(std::size_t reel, Lift& lift);
    void pick_up(Piece& piece, std::int64_t position);
    void put_down(const Piece& piece);
    void insert(std::size_t reel, FilmPlace from, FilmPlace to);

    const ReelNumbers& reels_;
    const FilmOnReels& old_;
    const FilmOnReels& new_;
    Vector<change_step>& steps_;
    Vector<Piece> pieces_;          ///< in old order
    Vector<std::size_t> new_order_; ///< indices of pieces
    std::size_t next_old_ = 0;      ///< the next piece that the walk comes to
    std::size_t next_new_ = 0;      ///< the same in new order
    std::int64_t position_ = 0;     ///< of the gap on the reel of the walk
    Vector<std::int64_t> reel_length_;
};

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

/// What is picked up on the way would cut the film that leaves here in two.
bool BenchPlan::is_lift_parted(std::size_t reel, FilmPlace from) const {
    int lifts = 0;
    bool lifted = false;
    std::size_t next = next_old_;
    for (; next < pieces_.size() && pieces_[next].old_reel == reel && !pieces_[next].stays; ++next) {
        lifted = lifted || from < pieces_[next].old_at;
        from = pieces_[next].old_end();
        if (pieces_[next].early) continue;
        lifts += lifted;
        lifted = false;
    }
    return lifts + (lifted || from < end_of_gap(reel, next)) > 1;
}

FilmPlace BenchPlan::end_of_gap(std::size_t reel, std::size_t next) const {
    const bool at_end = next == pieces_.size() || pieces_[next].old_reel != reel;
    return at_end ? old_.reel_end(reel) : pieces_[next].old_at;
}

/// Up to what stays next, or to the reel's end. The film that leaves goes in one lift, if need be behind what is
/// picked up from between.
FilmPlace BenchPlan::take_out(std::size_t reel, FilmPlace from) {
    const bool parted = is_lift_parted(reel, from);
    Lift lift;
    for (; next_old_ < pieces_.size(); ++next_old_) {
        Piece& piece = pieces_[next_old_];
        if (piece.old_reel != reel || piece.stays) break;
        lift.add(from, piece.old_at);
        from = piece.old_end();
        if (piece.early) continue;
        if (!parted) lift_out(reel, lift);
        pick_up(piece, position_ + lift.frames);
    }
    const FilmPlace end = end_of_gap(reel, next_old_);
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
        from = piece.new_end();
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
    name_old_film(step, piece.old_at, piece.old_end());
}

void BenchPlan::put_down(const Piece& piece) {
    change_step& step = add_step(change_put_down, piece.new_reel, position_, piece.length);
    name_old_film(step, piece.old_at, piece.old_end());
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

void plan_bench_steps(KeptRun& run, bench_goal goal) {
    const BenchCuts cuts(run);
    const ChosenPieces chosen = choose_pieces(cuts, run.matched, goal);
    run.bench_cost = chosen.cost;
    run.simple_cost = chosen.simple_cost;
    BenchPlan(cuts, chosen.pieces, run.bench).make();
}
