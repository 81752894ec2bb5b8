#include "formats/fcpxml/fcpxml_frames.h"

#include "formats/timeline/retiming.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace formats::fcpxml {
namespace {

// Times in 1/2400 s are at most half of that beside what is meant, and two of them add up in a nest; times in 1/1000 s
// are as far beside it by themselves.
const Fraction rounding(1, 2000);

/// The transition at a cut that was at `before` and is at `now`.
void settle(embedded::TransitionDescription& transition, const Fraction& before, const Fraction& now,
            const Frames& frames) {
    const Fraction none;
    transition.in_offset = std::max(none, now - frames.settled(before - transition.in_offset));
    transition.out_offset = std::max(none, frames.settled(before + transition.out_offset) - now);
}

} // namespace

Fraction Frames::settled(const Fraction& time) const {
    const Fraction whole = zero + Fraction(((time - zero) * rate).nearest()) / rate;
    return time - rounding <= whole && whole <= time + rounding ? whole : time;
}

void settle_on_frames(Run& run, const Frames& frames) {
    Fraction before = run.start, now = frames.settled(before);
    run.start = now;
    Items kept;
    kept.reserve(run.items.size());
    std::vector<timeline::Mark> waiting; // of what has gone
    for (Item& item : run.items) {
        if (item.is_transition()) {
            settle(*item.transition, before, now, frames);
            kept.push_back(std::move(item));
            continue;
        }
        for (timeline::Mark& mark : item.marks)
            mark.time = std::max(Fraction(0), frames.settled(before + mark.time) - now);
        const Fraction end = before + item.length(), settled_end = frames.settled(end);
        item.marks.insert(item.marks.begin(), waiting.begin(), waiting.end());
        waiting.clear();
        if (before < end && settled_end <= now) {
            waiting = std::move(item.marks);
        } else {
            item.event.duration = settled_end - now;
            kept.push_back(std::move(item));
        }
        before = end;
        now = settled_end;
    }
    run.items = std::move(kept);
}

Items with_cuts_on_frames(Items items, const Fraction& rate) {
    return items.size() < 2 ? std::move(items) : timeline::on_whole_frames(std::move(items), 0, rate, rounding * rate);
}

void fit(Items& items, const Fraction& length) {
    Fraction lacks = length - timeline::length_of(items);
    if (lacks == Fraction(0)) return;
    for (std::size_t i = items.size(); i-- > 0;) {
        if (items[i].is_transition()) continue;
        const Fraction own = items[i].length();
        if (Fraction(0) < own + lacks) {
            items[i].event.duration = own + lacks;
            return;
        }
        lacks = lacks + own;
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (Fraction(0) < lacks) items.push_back(gap_of(lacks));
}

} // namespace formats::fcpxml
