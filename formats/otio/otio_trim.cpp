#include "formats/otio/otio_items.h"

#include <algorithm>
#include <utility>

namespace formats::otio {
namespace {

/// Takes `head` seconds off the start and `tail` off the end. The medium moves by as much times the speed; played
/// backward, what comes off the head is the end of the medium's stretch.
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

/// Whether a transition whose cut lies there stays: inside, or at an end of the content that isn't trimmed.
///
///     |x A . . |x| B . . x|      the one in the middle stays, and so does that at the tail;
///          [ - - - - - - - ]     that at the head has lost its place
bool keeps_cut(const Stretch& stretch, const Fraction& cut, const Fraction& total) {
    if (stretch.from < cut && cut < stretch.to) return true;
    const bool at_head = cut == Fraction(0) && stretch.from <= cut && cut < stretch.to;
    const bool at_tail = cut == total && stretch.from < cut && cut <= stretch.to;
    return at_head || at_tail;
}

} // namespace

Fraction length_of(const Items& items) {
    Fraction length;
    for (const Item& item : items)
        if (!item.is_transition()) length = length + item.length();
    return length;
}

Items trimmed(Items items, const Stretch& stretch) {
    const Fraction total = length_of(items);
    if (stretch.from <= Fraction(0) && total <= stretch.to) return items;
    Items kept;
    Fraction start;
    for (Item& item : items) {
        if (item.is_transition()) {
            if (keeps_cut(stretch, start, total)) kept.push_back(std::move(item));
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

Stretch stretch_of_track(const Place& track, const Fraction& content, const Context& context) {
    const Stretch whole{Fraction(0), content};
    const std::optional<Range> range = read_range(track, "source_range");
    if (!range) return whole;
    const Fraction from = range->start ? range->start->seconds_on(*context.rate) : Fraction(0);
    const Fraction to = range->duration ? from + range->duration->seconds_on(*context.rate) : content;
    if (to <= Fraction(0) || content <= from) {
        if (Fraction(0) < content)
            context.warn_dropped(track, "its source_range meets none of its content and is left out");
        return whole;
    }
    return {from, to};
}

} // namespace formats::otio
