#include "changelist/bench/common_shots.h"

#include "base/row_numbers.h"
#include "changelist/bench/heaviest_run.h"

#include <algorithm>

namespace {

constexpr int deepest = 12;
constexpr std::size_t pairs_for_a_shot = 16;
constexpr std::size_t nearest_of_many = 8;

/// A stretch of both rows.
struct Part {
    std::size_t old_from, old_to;
    std::size_t new_from, new_to;

    bool empty() const { return old_from == old_to || new_from == new_to; }
    std::size_t size() const { return old_to - old_from + (new_to - new_from); }
};

/// Where one shot stands, in lists of places by shot.
struct Places {
    std::size_t old_from, old_to;
    std::size_t new_from, new_to;

    std::size_t pairs() const { return (old_to - old_from) * (new_to - new_from); }
};

class CommonShots {
public:
    CommonShots(const Vector<std::uint32_t>& old_row, const Vector<std::uint32_t>& new_row)
        : old_row_(old_row), new_row_(new_row) {}

    Vector<ShotPair> find() {
        match({0, old_row_.size(), 0, new_row_.size()}, deepest);
        return std::move(found_);
    }

private:
    void match(Part part, int depth);
    void match_middle(const Part& part, int depth);
    Vector<Places> places_in(const Part& part);
    bool add_pairs(const Vector<Places>& places, std::size_t most, Vector<ShotPair>& pairs) const;
    void add_nearest(const Places& places, Vector<ShotPair>& pairs) const;
    Vector<ShotPair> longest_run(Vector<ShotPair> pairs) const;

    const Vector<std::uint32_t>& old_row_;
    const Vector<std::uint32_t>& new_row_;
    Vector<std::size_t> old_places_; ///< of the part in hand, by shot
    Vector<std::size_t> new_places_;
    Vector<ShotPair> found_;
};

// What both begin or end with is part of some longest run.
void CommonShots::match(Part part, int depth) {
    for (; !part.empty() && old_row_[part.old_from] == new_row_[part.new_from]; ++part.old_from, ++part.new_from)
        found_.push_back({part.old_from, part.new_from});
    std::size_t tail = 0;
    for (; !part.empty() && old_row_[part.old_to - 1] == new_row_[part.new_to - 1]; ++tail)
        --part.old_to, --part.new_to;
    if (!part.empty()) match_middle(part, depth);
    for (std::size_t i = 0; i < tail; ++i)
        found_.push_back({part.old_to + i, part.new_to + i});
}

void CommonShots::match_middle(const Part& part, int depth) {
    const Vector<Places> places = places_in(part);
    Vector<ShotPair> pairs;
    const bool all = add_pairs(places, pairs_for_a_shot * part.size(), pairs);
    const Vector<ShotPair> run = longest_run(std::move(pairs));
    if (all || depth == 0 || run.empty()) {
        found_.insert(found_.end(), run.begin(), run.end());
        return;
    }
    Part rest = part;
    for (const ShotPair& pair : run) {
        match({rest.old_from, pair.old_shot, rest.new_from, pair.new_shot}, depth - 1);
        found_.push_back(pair);
        rest.old_from = pair.old_shot + 1;
        rest.new_from = pair.new_shot + 1;
    }
    match(rest, depth - 1);
}

Vector<std::size_t> by_shot(const Vector<std::uint32_t>& row, std::size_t from, std::size_t to) {
    return sorted_numbers(from, to,
                          [&](std::size_t a, std::size_t b) { return row[a] != row[b] ? row[a] < row[b] : a < b; });
}

/// Of shots that stand in both rows, the rarest first.
Vector<Places> CommonShots::places_in(const Part& part) {
    old_places_ = by_shot(old_row_, part.old_from, part.old_to);
    new_places_ = by_shot(new_row_, part.new_from, part.new_to);
    const auto end_of = [](const Vector<std::uint32_t>& row, const Vector<std::size_t>& places, std::size_t from) {
        std::size_t end = from;
        while (end < places.size() && row[places[end]] == row[places[from]])
            ++end;
        return end;
    };
    Vector<Places> found;
    for (std::size_t i = 0, j = 0; i < old_places_.size() && j < new_places_.size();) {
        const std::uint32_t old_shot = old_row_[old_places_[i]];
        const std::uint32_t new_shot = new_row_[new_places_[j]];
        const std::size_t old_end = old_shot <= new_shot ? end_of(old_row_, old_places_, i) : i;
        const std::size_t new_end = new_shot <= old_shot ? end_of(new_row_, new_places_, j) : j;
        if (old_shot == new_shot) found.push_back({i, old_end, j, new_end});
        i = old_end;
        j = new_end;
    }
    std::sort(found.begin(), found.end(), [](const Places& a, const Places& b) {
        return a.pairs() != b.pairs() ? a.pairs() < b.pairs() : a.old_from < b.old_from;
    });
    return found;
}

/// False where not all pairs fit.
bool CommonShots::add_pairs(const Vector<Places>& places, std::size_t most, Vector<ShotPair>& pairs) const {
    for (const Places& shot : places) {
        if (pairs.size() + shot.pairs() > most) {
            if (pairs.empty()) add_nearest(shot, pairs);
            return false;
        }
        for (std::size_t i = shot.old_from; i < shot.old_to; ++i) {
            for (std::size_t j = shot.new_from; j < shot.new_to; ++j)
                pairs.push_back({old_places_[i], new_places_[j]});
        }
    }
    return true;
}

/// The third use of a shot is likely to be still about the third.
void CommonShots::add_nearest(const Places& places, Vector<ShotPair>& pairs) const {
    for (std::size_t i = places.old_from; i < places.old_to; ++i) {
        const std::size_t middle = places.new_from + (i - places.old_from);
        const std::size_t first = std::max(places.new_from + nearest_of_many, middle) - nearest_of_many;
        const std::size_t end = std::min(places.new_to, middle + nearest_of_many);
        for (std::size_t j = first; j < end; ++j)
            pairs.push_back({old_places_[i], new_places_[j]});
    }
}

Vector<ShotPair> CommonShots::longest_run(Vector<ShotPair> pairs) const {
    std::sort(pairs.begin(), pairs.end(), [](const ShotPair& a, const ShotPair& b) {
        return a.old_shot != b.old_shot ? a.old_shot < b.old_shot : a.new_shot > b.new_shot;
    });
    // Of pairs with a shot in common the places fall, so that a run holds one of them at most.
    const auto rows = static_cast<std::int64_t>(old_row_.size());
    Vector<WeighedPlace> row;
    for (const ShotPair& pair : pairs)
        row.push_back(
            {static_cast<std::int64_t>(pair.new_shot) * rows + (rows - 1 - static_cast<std::int64_t>(pair.old_shot)),
             1});
    Vector<ShotPair> run;
    for (const std::size_t item : heaviest_rising_run(row))
        run.push_back(pairs[item]);
    return run;
}

} // namespace

Vector<ShotPair> common_shots(const Vector<std::uint32_t>& old_row, const Vector<std::uint32_t>& new_row) {
    return CommonShots(old_row, new_row).find();
}
