#include "film/stretches.h"

#include <algorithm>

namespace film {
namespace {

/// The first stretch that reaches up to a number or beyond.
Stretches::const_iterator reaching(const Stretches& all, std::int64_t number) {
    return std::lower_bound(all.begin(), all.end(), number,
                            [](const FrameRange& range, std::int64_t n) { return range.last < n; });
}

} // namespace

Stretches merged(std::vector<FrameRange> ranges) {
    std::erase_if(ranges, [](const FrameRange& range) { return range.length() <= 0; });
    std::sort(ranges.begin(), ranges.end(), [](const FrameRange& a, const FrameRange& b) { return a.first < b.first; });
    Stretches all;
    for (const FrameRange& range : ranges) {
        if (all.empty() || range.first > all.back().last + 1)
            all.push_back(range);
        else
            all.back().last = std::max(all.back().last, range.last);
    }
    return all;
}

Stretches without(const Stretches& all, const Stretches& gone) {
    Stretches left;
    for (const FrameRange& range : all) {
        std::int64_t from = range.first;
        for (auto hole = reaching(gone, range.first); hole != gone.end() && hole->first <= range.last; ++hole) {
            if (from < hole->first) left.push_back({from, hole->first - 1});
            from = hole->last + 1;
        }
        if (from <= range.last) left.push_back({from, range.last});
    }
    return left;
}

Stretches within(const Stretches& all, const FrameRange& range) {
    Stretches inside;
    for (auto one = reaching(all, range.first); one != all.end() && one->first <= range.last; ++one)
        inside.push_back({std::max(one->first, range.first), std::min(one->last, range.last)});
    return inside;
}

std::optional<std::int64_t> last_below(const Stretches& all, std::int64_t number) {
    const auto next = reaching(all, number);
    if (next == all.begin()) return std::nullopt;
    return (next - 1)->last;
}

std::optional<std::int64_t> first_above(const Stretches& all, std::int64_t number) {
    const auto next = reaching(all, number);
    if (next == all.end()) return std::nullopt;
    return next->first;
}

std::int64_t count_of(const Stretches& all) {
    std::int64_t count = 0;
    for (const FrameRange& range : all)
        count += range.length();
    return count;
}

} // namespace film
