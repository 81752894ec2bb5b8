#include "logging/shot_index.h"

#include "base/row_numbers.h"
#include "logging/log_shot.h"
#include "logging/log_shot_list.h"

#include <algorithm>

void shot_intervals::add(std::int64_t low, std::int64_t high, std::size_t shot) {
    intervals_.push_back({low, high, shot});
}

void shot_intervals::build() {
    level single;
    single.reserve(intervals_.size());
    for (const interval& one : intervals_)
        single.push_back({one.low, one.high});
    levels_.push_back(std::move(single));
    for (std::size_t block = 2; block / 2 < intervals_.size(); block *= 2)
        levels_.push_back(merge_blocks(levels_.back(), block));
}

// Where a block's shots begin is merged from its halves; how far they reach is then summed up anew.
shot_intervals::level shot_intervals::merge_blocks(const level& finer, std::size_t block) const {
    level coarser;
    coarser.reserve(finer.size());
    const auto by_low = [](const reach& a, const reach& b) { return a.low < b.low; };
    for (std::size_t first = 0; first < finer.size(); first += block) {
        const auto begin = finer.begin() + static_cast<std::ptrdiff_t>(first);
        const auto middle = begin + static_cast<std::ptrdiff_t>(std::min(block / 2, finer.size() - first));
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(block, finer.size() - first));
        std::merge(begin, middle, middle, end, std::back_inserter(coarser), by_low);
        for (std::size_t i = first + 1; i < coarser.size(); ++i)
            coarser[i].furthest = std::max(coarser[i].furthest, coarser[i - 1].furthest);
    }
    return coarser;
}

bool shot_intervals::block_holds(std::size_t depth, std::size_t block, std::int64_t from, std::int64_t to) const {
    const level& reaches = levels_[depth];
    const std::size_t first = block << depth;
    if (first >= reaches.size()) return false;
    const std::size_t last = std::min(first + (std::size_t{1} << depth), reaches.size());
    const auto begin = reaches.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = reaches.begin() + static_cast<std::ptrdiff_t>(last);
    const auto behind =
        std::upper_bound(begin, end, from, [](std::int64_t value, const reach& one) { return value < one.low; });
    return behind != begin && std::prev(behind)->furthest >= to;
}

std::size_t shot_intervals::first_holding(std::int64_t from, std::int64_t to) const {
    if (levels_.empty()) return none;
    std::size_t depth = levels_.size() - 1;
    std::size_t block = 0;
    if (!block_holds(depth, block, from, to)) return none;
    while (depth > 0) {
        --depth;
        block *= 2;
        if (!block_holds(depth, block, from, to)) ++block;
    }
    return intervals_[block].shot;
}

void shot_index::build(const Vector<std::unique_ptr<LogShot>>& shots) {
    shots_ = &shots;
    Vector<std::size_t> order = row_numbers(0, shots.size());
    const auto reel_of = [&](std::size_t shot) { return std::string_view(shots[shot]->reel); };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return reel_of(a) < reel_of(b); });
    for (const std::size_t shot : order) {
        if (reels_.empty() || reels_.back().reel != reel_of(shot)) reels_.push_back({reel_of(shot), {}});
        const std::int64_t low = std::int64_t{shots[shot]->start.sample} - shot_match_slack;
        const std::int64_t high = std::int64_t{shots[shot]->end.sample} + shot_match_slack;
        reels_.back().intervals.add(low, high, shot);
    }
    for (reel_shots& one : reels_)
        one.intervals.build();
}

const shot_index::reel_shots* shot_index::find_reel(std::string_view reel) const {
    const auto found = std::lower_bound(reels_.begin(), reels_.end(), reel,
                                        [](const reel_shots& one, std::string_view text) { return one.reel < text; });
    return found != reels_.end() && found->reel == reel ? &*found : nullptr;
}

LogShot* shot_index::find(int start, int end, std::string_view reel) const {
    const auto [from, to] = std::minmax(start, end);
    const std::size_t longest = std::min(reel.size(), sizeof(LogShot::reel) - 1);
    std::size_t first = shot_intervals::none;
    for (std::size_t length = 0; length <= longest; ++length) {
        if (const reel_shots* one = find_reel(reel.substr(0, length)))
            first = std::min(first, one->intervals.first_holding(from, to));
    }
    return first == shot_intervals::none ? nullptr : (*shots_)[first].get();
}
