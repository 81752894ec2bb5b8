#include "changelist/bench/what_stays.h"

#include "base/row_numbers.h"
#include "changelist/bench/best_below.h"
#include "changelist/bench/heaviest_run.h"
#include "changelist/bench/plan_cost.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t nobody = SIZE_MAX;

/// Calls `choose(reel, from, to)` for the pieces of each reel of the old cut that has some.
template <class Choose> void for_each_reel(const KeptPieces& pieces, Choose choose) {
    for (std::size_t from = 0; from < pieces.size();) {
        std::size_t to = from;
        while (to < pieces.size() && pieces[to].old_reel == pieces[from].old_reel)
            ++to;
        choose(pieces[from].old_reel, from, to);
        from = to;
    }
}

/// The best run that ends with an item.
struct RunEnd {
    std::int64_t gain = std::numeric_limits<std::int64_t>::min() / 2;
    std::int64_t frames = 0;
    std::size_t item = nobody; ///< of the row

    bool operator<(const RunEnd& other) const { return gain != other.gain ? gain < other.gain : frames < other.frames; }
    RunEnd less(std::int64_t cost) const { return {gain - cost, frames, item}; }
};

/// The pieces of a reel that may stay on it, in old order, with what the best run to each has ahead.
struct Row {
    Row(const KeptPieces& pieces, std::size_t reel, std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i)
            if (pieces[i].new_reel == reel) items.push_back(i);
        before.assign(items.size(), nobody);
        ends.resize(items.size());
    }
    void close(std::size_t item, const RunEnd& ahead, std::int64_t gain, std::int64_t frames) {
        before[item] = ahead.item;
        ends[item] = {ahead.gain + gain, ahead.frames + frames, item};
    }
    void keep(KeptPieces& pieces, const RunEnd& last) const {
        for (std::size_t item = last.item; item != nobody; item = before[item])
            pieces[items[item]].stays = true;
    }

    Vector<std::size_t> items; ///< indices of pieces
    Vector<std::size_t> before;
    Vector<RunEnd> ends;
};

/// Of items of a row from `from` to `to`, how many lie ahead of each in the new cut.
Vector<std::size_t> new_ranks(const KeptPieces& pieces, const Row& row, std::size_t from, std::size_t to) {
    const Vector<std::size_t> order = sorted_numbers(from, to, [&](std::size_t a, std::size_t b) {
        return pieces[row.items[a]].new_at < pieces[row.items[b]].new_at;
    });
    Vector<std::size_t> ranks(order.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        ranks[order[rank] - from] = rank;
    return ranks;
}

// A lift is needed between two that stay if any film between them is in no piece. Blocks are pieces that have no
// such film between them; from block to block a lift is needed.
class FewestMoves {
public:
    FewestMoves(const BenchCuts& cuts, KeptPieces& pieces, std::size_t reel, std::size_t from, std::size_t to)
        : pieces_(pieces), row_(pieces, reel, from, to), best_(row_.items.size()) {
        FilmPlace place = cuts.old_film.reel_start(reel);
        for (std::size_t i = from; i < to; ++i) {
            last_block_ += place < pieces[i].old_at;
            place = pieces[i].old_end();
            if (pieces[i].new_reel == reel) blocks_.push_back(last_block_);
        }
        last_block_ += place < cuts.old_film.reel_end(reel);
    }

    void choose() {
        const Vector<std::size_t> ranks = new_ranks(pieces_, row_, 0, row_.items.size());
        for (std::size_t from = 0; from < blocks_.size();) {
            std::size_t to = from;
            while (to < blocks_.size() && blocks_[to] == blocks_[from])
                ++to;
            choose_in_block(from, to, ranks);
            from = to;
        }
        RunEnd best = none(last_block_);
        for (std::size_t item = 0; item < blocks_.size(); ++item)
            best = std::max(best, row_.ends[item].less(blocks_[item] != last_block_));
        row_.keep(pieces_, best);
    }

private:
    static RunEnd none(std::size_t block) { return {block == 0 ? 0 : -1, 0, nobody}; }

    void choose_in_block(std::size_t from, std::size_t to, const Vector<std::size_t>& ranks) {
        const Vector<std::size_t> block_ranks = new_ranks(pieces_, row_, from, to);
        BestBelow<RunEnd> of_block(to - from);
        for (std::size_t item = from; item < to; ++item) {
            RunEnd ahead = std::max(none(blocks_[item]), best_.best_below(ranks[item]).less(1));
            ahead = std::max(ahead, of_block.best_below(block_ranks[item - from]));
            row_.close(item, ahead, 1, pieces_[row_.items[item]].length);
            of_block.add(block_ranks[item - from], row_.ends[item]);
            best_.add(ranks[item], row_.ends[item]);
        }
    }

    KeptPieces& pieces_;
    Row row_;
    BestBelow<RunEnd> best_;
    Vector<std::size_t> blocks_;
    std::size_t last_block_ = 0;
};

// Two that stay have their ends between them, one more join where old film is lifted, and one for each insertion. The
// tree holds what a run costs together with the first event behind it, so that the difference is the insertions.
class FewestSplices {
public:
    FewestSplices(const BenchCuts& cuts, KeptPieces& pieces, std::size_t reel, std::size_t from, std::size_t to)
        : cuts_(cuts), pieces_(pieces), reel_(reel), row_(pieces, reel, from, to), best_(row_.items.size()) {}

    void choose() {
        ranks_ = new_ranks(pieces_, row_, 0, row_.items.size());
        by_rank_.resize(ranks_.size());
        for (std::size_t item = 0; item < ranks_.size(); ++item)
            by_rank_[ranks_[item]] = item;
        for (std::size_t item = 0; item < ranks_.size(); ++item)
            find_ahead(item);
        const FilmPlace new_end = cuts_.new_film.reel_end(reel_);
        const std::int64_t all = insertions(cuts_.new_film, cuts_.new_film.reel_start(reel_), new_end);
        RunEnd best{-std::max<std::int64_t>(all - 1, 0), 0, nobody};
        for (std::size_t item = 0; item < ranks_.size(); ++item) {
            const std::int64_t lifted = piece(item).old_end() < cuts_.old_film.reel_end(reel_);
            best = std::max(best, row_.ends[item].less(lifted + inserted(piece(item).new_end(), new_end)));
        }
        row_.keep(pieces_, best);
    }

private:
    const KeptPiece& piece(std::size_t item) const { return pieces_[row_.items[item]]; }
    std::int64_t inserted(FilmPlace from, FilmPlace to) const { return insertions(cuts_.new_film, from, to); }

    void find_ahead(std::size_t item) {
        const KeptPiece& here = piece(item);
        const std::int64_t first_lift = cuts_.old_film.reel_start(reel_) < here.old_at;
        RunEnd ahead{-first_lift - inserted(cuts_.new_film.reel_start(reel_), here.new_at), 0, nobody};
        const auto events = static_cast<std::int64_t>(cuts_.new_film.events_ahead(here.new_at));
        ahead = std::max(ahead, best_.best_below(ranks_[item]).less(ends_of_two + 1 + events));
        if (item > 0) ahead = std::max(ahead, behind_neighbour(item - 1, item));
        if (ranks_[item] > 0) ahead = std::max(ahead, behind_neighbour(by_rank_[ranks_[item] - 1], item));
        row_.close(item, ahead, here.in_order ? outweighs_all : 0, here.length);
        RunEnd end = row_.ends[item];
        end.gain += static_cast<std::int64_t>(cuts_.new_film.index_at(here.new_end()));
        best_.add(ranks_[item], end);
    }
    RunEnd behind_neighbour(std::size_t ahead, std::size_t item) const {
        if (ahead > item || ranks_[ahead] > ranks_[item]) return {};
        const std::int64_t lifted = piece(ahead).old_end() < piece(item).old_at;
        return row_.ends[ahead].less(ends_of_two + lifted + inserted(piece(ahead).new_end(), piece(item).new_at));
    }

    static constexpr std::int64_t ends_of_two = 2;
    static constexpr std::int64_t outweighs_all = std::int64_t{1} << 36U; ///< more than any splices; a row fits many

    const BenchCuts& cuts_;
    KeptPieces& pieces_;
    std::size_t reel_;
    Row row_;
    BestBelow<RunEnd> best_;
    Vector<std::size_t> ranks_;
    Vector<std::size_t> by_rank_;
};

} // namespace

void keep_most_film(KeptPieces& pieces) {
    for_each_reel(pieces, [&](std::size_t reel, std::size_t from, std::size_t to) {
        Vector<WeighedPlace> row;
        Vector<std::size_t> of_row;
        for (std::size_t i = from; i < to; ++i) {
            if (pieces[i].new_reel != reel) continue;
            row.push_back({pieces[i].new_at, pieces[i].length});
            of_row.push_back(i);
        }
        for (const std::size_t kept : heaviest_rising_run(row))
            pieces[of_row[kept]].stays = true;
    });
}

void keep_for_fewest_moves(const BenchCuts& cuts, KeptPieces& pieces) {
    for_each_reel(pieces, [&](std::size_t reel, std::size_t from, std::size_t to) {
        FewestMoves(cuts, pieces, reel, from, to).choose();
    });
}

void keep_for_fewest_splices(const BenchCuts& cuts, KeptPieces& pieces) {
    for_each_reel(pieces, [&](std::size_t reel, std::size_t from, std::size_t to) {
        FewestSplices(cuts, pieces, reel, from, to).choose();
    });
}
