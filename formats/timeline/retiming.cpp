#include "formats/timeline/retiming.h"

#include <algorithm>
#include <utility>

namespace formats::timeline {

void turn(Item& item, const Fraction& frame, const Fraction& normal) {
    embedded::EventDescription& event = item.event;
    const Fraction skipped = frame * (magnitude(event.speed) - normal);
    if (Fraction(0) < event.speed) event.source_in = event.source_in - skipped;
    if (event.speed < Fraction(0)) event.source_in = event.source_in + skipped;
}

Items at_speed(Items items, const Fraction& speed, const Fraction& frame) {
    const Fraction none, pace = magnitude(speed);
    const bool backward = speed < none;
    for (Item& item : items) {
        if (item.is_transition()) {
            embedded::TransitionDescription& transition = *item.transition;
            if (backward) std::swap(transition.in_offset, transition.out_offset);
            transition.in_offset = transition.in_offset / pace;
            transition.out_offset = transition.out_offset / pace;
            continue;
        }
        for (Mark& mark : item.marks)
            mark.time = (backward ? std::max(none, item.length() - mark.time - frame) : mark.time) / pace;
        item.event.duration = item.event.duration / pace;
        item.event.speed = item.event.speed * speed;
    }
    if (backward) std::reverse(items.begin(), items.end());
    return items;
}

Items held(Items items, const Fraction& duration) {
    std::erase_if(items, [](const Item& item) { return item.is_transition(); });
    if (items.empty()) return items;
    items.resize(1);
    Item& item = items.front();
    if (item.event.speed < Fraction(0)) turn(item, item.length());
    item.event.duration = duration;
    item.event.speed = 0;
    for (Mark& mark : item.marks)
        mark.time = 0;
    return items;
}

bool plays_unevenly(const Fraction& inner, const Fraction& outer) {
    const auto is_whole = [](const Fraction& speed) {
        return magnitude(speed - Fraction(speed.nearest())) <= Fraction(1, 1000);
    };
    return !(inner == Fraction(0)) && !is_whole(outer) && !is_whole(Fraction(1) / inner);
}

Items on_whole_frames(Items items, const Fraction& from, const Fraction& rate, const Fraction& rounding) {
    const Fraction end = from + length_of(items) * rate;
    Fraction at = from, moved;
    std::vector<Mark> waiting; // of what no frame shows
    Items kept;
    for (Item& item : items) {
        if (item.is_transition()) {
            item.transition->in_offset = item.transition->in_offset + moved;
            item.transition->out_offset = std::max(Fraction(0), item.transition->out_offset - moved);
            kept.push_back(std::move(item));
            continue;
        }
        at = at + item.length() * rate;
        const Fraction next = std::min(end, Fraction(-(rounding - at).floor()));
        const Fraction later = (next - at) / rate;
        const bool shown = item.length() == Fraction(0) || moved < item.length() + later;
        item.marks.insert(item.marks.begin(), waiting.begin(), waiting.end());
        for (Mark& mark : item.marks)
            mark.time = shown ? std::max(mark.time, moved) : Fraction(0);
        waiting.clear();
        if (shown) {
            cut(item, moved, -later);
            kept.push_back(std::move(item));
        } else {
            waiting = std::move(item.marks);
        }
        moved = later;
    }
    return kept;
}

} // namespace formats::timeline
