#include "changelist/bench/heaviest_run.h"

#include <algorithm>

namespace {

constexpr std::size_t nobody = SIZE_MAX;

struct RunEnd {
    std::int64_t weight = 0;
    std::size_t item = nobody;
};

/// The heaviest run so far that ends ahead of each place, in a binary indexed tree over the ranks of places.
class RunEnds {
public:
    explicit RunEnds(std::size_t places) : best_(places + 1) {}

    RunEnd heaviest_below(std::size_t rank) const {
        RunEnd best;
        for (; rank > 0; rank -= rank & (~rank + 1)) {
            if (best_[rank].weight > best.weight) best = best_[rank];
        }
        return best;
    }
    void add(std::size_t rank, const RunEnd& end) {
        for (std::size_t at = rank + 1; at < best_.size(); at += at & (~at + 1)) {
            if (end.weight >= best_[at].weight) best_[at] = end;
        }
    }

private:
    Vector<RunEnd> best_;
};

Vector<std::size_t> ranks_of(const Vector<WeighedPlace>& row) {
    Vector<std::size_t> order(row.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return row[a].place < row[b].place; });
    Vector<std::size_t> ranks(row.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        ranks[order[rank]] = rank;
    return ranks;
}

} // namespace

Vector<std::size_t> heaviest_rising_run(const Vector<WeighedPlace>& row) {
    const Vector<std::size_t> ranks = ranks_of(row);
    RunEnds ends(row.size());
    Vector<std::size_t> before(row.size(), nobody);
    RunEnd heaviest;
    for (std::size_t item = 0; item < row.size(); ++item) {
        const RunEnd below = ends.heaviest_below(ranks[item]);
        before[item] = below.item;
        const RunEnd end{below.weight + row[item].weight, item};
        ends.add(ranks[item], end);
        if (end.weight >= heaviest.weight) heaviest = end;
    }
    Vector<std::size_t> run;
    for (std::size_t item = heaviest.item; item != nobody; item = before[item])
        run.push_back(item);
    std::reverse(run.begin(), run.end());
    return run;
}
