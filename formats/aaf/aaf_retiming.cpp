#include "formats/aaf/aaf_retiming.h"

#include <algorithm>
#include <utility>

namespace formats::aaf {

using timeline::Fraction;
using timeline::Item;
using timeline::Items;

namespace {

const Fraction nothing;

} // namespace

Items at_speed(Items items, const Fraction& speed, const Fraction& frame) {
    const bool backward = speed < nothing;
    const Fraction faster = magnitude(speed);
    for (Item& item : items) {
        if (item.is_transition()) {
            embedded::TransitionDescription& transition = *item.transition;
            transition.in_offset = transition.in_offset / faster;
            transition.out_offset = transition.out_offset / faster;
            if (backward) std::swap(transition.in_offset, transition.out_offset);
            continue;
        }
        const Fraction length = item.event.duration;
        if (backward) timeline::turn(item, frame);
        item.event.duration = length / faster;
        item.event.speed = item.event.speed * speed;
        for (timeline::Mark& mark : item.marks)
            mark.time = (backward ? std::max(nothing, length - mark.time - frame) : mark.time) / faster;
        std::erase_if(item.marks, [&](const timeline::Mark& mark) { return item.event.duration <= mark.time; });
    }
    if (backward) std::reverse(items.begin(), items.end());
    return items;
}

Items frozen(Items items, const Fraction& duration) {
    std::erase_if(items, [](const Item& item) { return item.is_transition(); });
    if (items.empty()) return items;
    items.resize(1);
    embedded::EventDescription& held = items.front().event;
    if (held.speed < nothing) timeline::turn(items.front(), held.duration);
    held.duration = duration;
    held.speed = 0;
    for (timeline::Mark& mark : items.front().marks)
        mark.time = nothing;
    return items;
}

} // namespace formats::aaf
