#include "formats/timeline/items.h"

#include <algorithm>
#include <utility>

namespace formats::timeline {
namespace {

void hand_over(Item& item, const Channel& channel, embedded::EditBuilder& builder) {
    embedded::EventDescription& event = item.event;
    if (item.is_transition()) {
        builder.add_transition(channel.number, std::move(*item.transition));
    } else if (item.kind == Item::Kind::event) {
        builder.add_event(channel.number, std::move(event));
    } else if (channel.fx) {
        builder.add_gap(channel.number, event.duration, std::move(event.effects), std::move(event.effect_tracks));
    } else if (item.kind == Item::Kind::black || (channel.gaps_are_black && !item.never_black)) {
        builder.add_black(channel.number, event.duration, std::move(event.effects), std::move(event.effect_tracks));
    } else {
        builder.add_gap(channel.number, event.duration);
    }
}

Item gap_like(const embedded::EventDescription& gap, const Fraction& length, int depth) {
    Item item;
    item.depth = depth;
    item.event.label = gap.label;
    item.event.duration = length;
    return item;
}

} // namespace

Fraction length_of(const Items& items) {
    Fraction length;
    for (const Item& item : items)
        if (!item.is_transition()) length = length + item.length();
    return length;
}

void cut(Item& item, const Fraction& head, const Fraction& tail) {
    embedded::EventDescription& event = item.event;
    event.duration = event.duration - head - tail;
    event.source_in =
        event.speed < Fraction(0) ? event.source_in - tail * event.speed : event.source_in + head * event.speed;
    std::vector<Mark> kept;
    for (Mark& mark : item.marks) {
        mark.time = mark.time - head;
        if (Fraction(0) <= mark.time && mark.time < event.duration) kept.push_back(std::move(mark));
    }
    item.marks = std::move(kept);
}

bool keeps_cut(const Stretch& stretch, const Fraction& cut, const Fraction& total) {
    if (stretch.from < cut && cut < stretch.to) return true;
    const bool at_head = cut == Fraction(0) && stretch.from <= cut && cut < stretch.to;
    const bool at_tail = cut == total && stretch.from < cut && cut <= stretch.to;
    return at_head || at_tail;
}

bool is_seen(const embedded::TransitionDescription& transition, const Fraction& cut, const Stretch& stretch) {
    return stretch.from < cut + transition.out_offset && cut - transition.in_offset < stretch.to;
}

embedded::Warning cut_off(const embedded::TransitionDescription& transition) {
    return {embedded::WarningKind::dropped,
            transition.label + ": left out, as what is taken of its track begins or ends inside it"};
}

Items trimmed(Items items, const Stretch& stretch, embedded::Warnings* warnings) {
    const Fraction total = length_of(items);
    if (stretch.from <= Fraction(0) && total <= stretch.to) return items;
    Items kept;
    Fraction start;
    for (Item& item : items) {
        if (item.is_transition()) {
            if (keeps_cut(stretch, start, total))
                kept.push_back(std::move(item));
            else if (warnings && is_seen(*item.transition, start, stretch))
                warnings->push_back(cut_off(*item.transition));
            continue;
        }
        const Fraction end = start + item.length();
        const Fraction from = std::max(start, stretch.from);
        const Fraction to = std::min(end, stretch.to);
        if (from < to || (start == end && stretch.from <= start && start <= stretch.to)) {
            if (from < to) cut(item, from - start, end - to);
            kept.push_back(std::move(item));
        }
        start = end;
    }
    return kept;
}

Items spliced(Items content, const Stretch& taken, const embedded::EventDescription& gap, int depth,
              embedded::Warnings* warnings) {
    const Fraction length = taken.to - taken.from;
    content = trimmed(std::move(content), taken, warnings);

    // What follows must not move: where content lacks there is a gap.
    const Fraction before = std::min(std::max(-taken.from, Fraction(0)), length);
    const Fraction missing = length - before - length_of(content);
    if (Fraction(0) < before) content.insert(content.begin(), gap_like(gap, before, depth));
    if (Fraction(0) < missing) content.push_back(gap_like(gap, missing, depth));
    return content;
}

void drop_inner_transitions(Items& items, embedded::Warnings& warnings) {
    Items kept;
    for (std::size_t i = 0; i < items.size();) {
        std::size_t end = i + 1;
        while (items[i].is_transition() && end < items.size() && items[end].is_transition())
            ++end;
        int outermost = items[i].depth;
        for (std::size_t j = i; j < end; ++j)
            outermost = std::min(outermost, items[j].depth);
        for (; i < end; ++i) {
            if (items[i].depth == outermost)
                kept.push_back(std::move(items[i]));
            else
                warnings.push_back(
                    {embedded::WarningKind::dropped,
                     items[i].transition->label + ": left out for the transition around its nest at the same cut"});
        }
    }
    items = std::move(kept);
}

void hand_over(Items items, const Channel& channel, embedded::EditBuilder& builder) {
    Fraction start;
    for (Item& item : items) {
        for (const Mark& mark : item.marks)
            builder.add_cue(channel.number, embedded::EditBuilder::CueLevel::clip,
                            {start + mark.time, mark.text, mark.flags});
        if (!item.is_transition()) start = start + item.length();
        hand_over(item, channel, builder);
    }
}

} // namespace formats::timeline
