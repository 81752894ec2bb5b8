#include "documents/bench_reels.h"

#include <algorithm>

namespace documents {
namespace {

/// Where a frame begins a run, which is cut there if it has to be.
BenchReel::iterator cut_at(BenchReel& reel, std::int64_t position) {
    auto run = reel.begin();
    for (; run != reel.end() && position >= run->length; ++run)
        position -= run->length;
    if (position == 0 || run == reel.end()) return run;
    BenchRun tail = *run;
    tail.old_start += position;
    tail.length -= position;
    run->length = position;
    return reel.insert(run + 1, tail);
}

} // namespace

std::int64_t length_of(const BenchReel& reel) {
    std::int64_t length = 0;
    for (const BenchRun& run : reel)
        length += run.length;
    return length;
}

BenchReel part_of(const BenchReel& reel, std::int64_t from, std::int64_t to) {
    BenchReel part;
    std::int64_t at = 0;
    for (const BenchRun& run : reel) {
        const std::int64_t begin = std::max(from, at), end = std::min(to, at + run.length);
        if (begin < end) {
            part.push_back(run);
            part.back().old_start += begin - at;
            part.back().length = end - begin;
        }
        at += run.length;
    }
    return part;
}

Bench::Bench(const std::vector<std::int64_t>& lengths, std::size_t reels) : reels_(std::max(reels, lengths.size())) {
    for (std::size_t i = 0; i < lengths.size(); ++i)
        if (lengths[i] > 0) reels_[i].push_back({static_cast<int>(i) + 1, 0, lengths[i], 0, 0});
}

BenchReel Bench::take(BenchReel& reel, std::int64_t position, std::int64_t length) const {
    cut_at(reel, position);
    const auto last = cut_at(reel, position + length); // cutting behind moves what lies ahead
    const auto first = cut_at(reel, position);
    const auto end = first + (last - first);
    BenchReel taken(first, end);
    reel.erase(first, end);
    return taken;
}

bool Bench::carry_out(const change_step& step) {
    if (step.reel < 1 || static_cast<std::size_t>(step.reel) > reels_.size()) return false;
    if (step.position < 0 || step.length <= 0) return false;
    BenchReel& reel = reels_[static_cast<std::size_t>(step.reel) - 1];
    const bool takes = step.action == change_remove || step.action == change_pick_up;
    const std::int64_t end = std::int64_t{step.position} + (takes ? step.length : 0);
    if (end > length_of(reel)) return false;
    if (takes) {
        BenchReel taken = take(reel, step.position, step.length);
        for (BenchRun& run : taken)
            run.fetched = step.step;
        if (step.action == change_pick_up)
            held_[step.step] = std::move(taken);
        else
            gone_.insert(gone_.end(), taken.begin(), taken.end());
        return true;
    }
    BenchReel put{{0, 0, step.length, step.step, 0}};
    if (step.action == change_put_down) {
        const auto held = held_.find(step.other_step);
        if (held == held_.end() || length_of(held->second) != step.length) return false;
        put = std::move(held->second);
        held_.erase(held);
        for (BenchRun& run : put)
            run.step = step.step;
    }
    reel.insert(cut_at(reel, step.position), put.begin(), put.end());
    return true;
}

} // namespace documents
