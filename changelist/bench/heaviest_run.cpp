#include "changelist/bench/heaviest_run.h"

#include "base/row_numbers.h"
#include "changelist/bench/best_below.h"

#include <algorithm>

namespace {

constexpr std::size_t nobody = SIZE_MAX;

struct RunEnd {
    std::int64_t weight = 0;
    std::size_t item = nobody;

    bool operator<(const RunEnd& other) const { return weight < other.weight; }
};

Vector<std::size_t> ranks_of(const Vector<WeighedPlace>& row) {
    const Vector<std::size_t> order =
        sorted_numbers(0, row.size(), [&](std::size_t a, std::size_t b) { return row[a].place < row[b].place; });
    Vector<std::size_t> ranks(row.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        ranks[order[rank]] = rank;
    return ranks;
}

} // namespace

Vector<std::size_t> heaviest_rising_run(const Vector<WeighedPlace>& row) {
    const Vector<std::size_t> ranks = ranks_of(row);
    BestBelow<RunEnd> ends(row.size());
    Vector<std::size_t> before(row.size(), nobody);
    RunEnd heaviest;
    for (std::size_t item = 0; item < row.size(); ++item) {
        const RunEnd below = ends.best_below(ranks[item]);
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
