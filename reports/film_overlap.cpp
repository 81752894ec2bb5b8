#include "reports/film_overlap.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

using Places = Vector<std::uint32_t>;

/// A piece, as the one for which an overlap is sought, with its samples widened by the margin.
struct Query {
    std::uint32_t place;
    std::int64_t above; ///< an overlapping piece ends above this
    std::int64_t reach; ///< and starts at or below this
};

/// The lowest place among the pieces put in so far that end above a limit.
class LowestByEnd {
public:
    explicit LowestByEnd(Vector<int> ends) : ends_(std::move(ends)), lowest_(ends_.size() + 1, no_piece) {
        std::sort(ends_.begin(), ends_.end(), [](int a, int b) { return a > b; });
    }

    void put(int end, std::uint32_t place) {
        for (std::size_t node = count_above(end) + 1; node < lowest_.size(); node += node & (~node + 1))
            lowest_[node] = std::min(lowest_[node], place);
    }
    std::uint32_t ending_above(std::int64_t limit) const {
        std::uint32_t found = no_piece;
        for (std::size_t node = count_above(limit); node > 0; node -= node & (~node + 1))
            found = std::min(found, lowest_[node]);
        return found;
    }

private:
    std::size_t count_above(std::int64_t limit) const {
        const auto end = std::partition_point(ends_.begin(), ends_.end(), [limit](int e) { return e > limit; });
        return static_cast<std::size_t>(end - ends_.begin());
    }

    Vector<int> ends_; ///< falling
    Places lowest_;    ///< a binary indexed tree over `ends_`
};

Query query_of(const Vector<FilmPiece>& pieces, std::uint32_t place, int margin_frames) {
    const FilmPiece& piece = pieces[place];
    const std::int64_t margin = std::int64_t{piece.in.cvt()->samples_per_frame()} * margin_frames;
    return {place, piece.in.sample - margin, piece.out + margin};
}

// Two conditions, so one is met by the order of the walk, from low starts to high, and the other by the tree.
void match_group(const Vector<FilmPiece>& pieces, Places group, int margin_frames, Places& result) {
    Vector<int> ends;
    Vector<Query> queries;
    for (const std::uint32_t place : group) {
        ends.push_back(pieces[place].out);
        queries.push_back(query_of(pieces, place, margin_frames));
    }
    std::sort(group.begin(), group.end(),
              [&](std::uint32_t a, std::uint32_t b) { return pieces[a].in.sample < pieces[b].in.sample; });
    std::sort(queries.begin(), queries.end(), [](const Query& a, const Query& b) { return a.reach < b.reach; });

    LowestByEnd started(std::move(ends));
    auto next = group.begin();
    for (const Query& query : queries) {
        for (; next != group.end() && pieces[*next].in.sample <= query.reach; ++next)
            started.put(pieces[*next].out, *next);
        const std::uint32_t found = started.ending_above(query.above);
        if (found < query.place) result[query.place] = found;
    }
}

} // namespace

Vector<std::uint32_t> first_overlaps(const Vector<FilmPiece>& pieces, int margin_frames) {
    const auto prefix_order = [&](std::uint32_t a, std::uint32_t b) {
        return std::strcmp(pieces[a].in.get_prefix(), pieces[b].in.get_prefix());
    };
    Places by_prefix(pieces.size());
    for (std::uint32_t place = 0; place < pieces.size(); ++place)
        by_prefix[place] = place;
    std::sort(by_prefix.begin(), by_prefix.end(),
              [&](std::uint32_t a, std::uint32_t b) { return prefix_order(a, b) < 0; });

    Places result(pieces.size(), no_piece);
    for (auto first = by_prefix.begin(); first != by_prefix.end();) {
        const auto last =
            std::find_if(first, by_prefix.end(), [&](std::uint32_t place) { return prefix_order(*first, place) != 0; });
        match_group(pieces, Places(first, last), margin_frames, result);
        first = last;
    }
    return result;
}
