#include "changelist/matching/event_tree.h"

EventTree::EventTree(const Vector<EventSpan>& spans, Vector<std::uint32_t> events) : events_(std::move(events)) {
    // Halves are as even as can be, so all leaves lie on the last two levels.
    std::size_t nodes = 1;
    for (std::size_t share = events_.size(); share > leaf_events; share = (share + 1) / 2)
        nodes = 2 * nodes + 1;
    nodes_.assign(nodes, Node{EventBounds(EventSpan{}), no_event});
    arrange(spans, whole(), true);
}

void EventTree::arrange(const Vector<EventSpan>& spans, const Part& part, bool by_start) {
    if (part.is_leaf()) return close_leaf(spans, part);
    const auto place = [this](std::size_t index) { return events_.begin() + static_cast<std::ptrdiff_t>(index); };
    std::nth_element(place(part.from), place(part.middle()), place(part.to), [&](std::uint32_t a, std::uint32_t b) {
        return by_start ? spans[a].key_in < spans[b].key_in : spans[a].key_end < spans[b].key_end;
    });
    arrange(spans, part.lower(), !by_start);
    arrange(spans, part.upper(), !by_start);
    const Node& lower = nodes_[part.lower().node];
    const Node& upper = nodes_[part.upper().node];
    Node& node = nodes_[part.node];
    node = lower;
    node.bounds.add(upper.bounds);
    node.first = std::min(lower.first, upper.first);
}

void EventTree::close_leaf(const Vector<EventSpan>& spans, const Part& part) {
    const auto from = events_.begin() + static_cast<std::ptrdiff_t>(part.from);
    const auto to = events_.begin() + static_cast<std::ptrdiff_t>(part.to);
    std::sort(from, to);
    Node node{EventBounds(spans[*from]), *from};
    for (auto event = from; event != to; ++event)
        node.bounds.add(EventBounds(spans[*event]));
    nodes_[part.node] = node;
}

// Each node looks again only when the event that it named has gone, so all looks together cost no more than
// taking each event out of each of its nodes.
std::uint32_t EventTree::first_left(const Vector<EventSpan>& spans, const Part& part) {
    std::uint32_t& first = nodes_[part.node].first;
    if (first == no_event || !spans[first].gone) return first;
    if (!part.is_leaf()) return first = std::min(first_left(spans, part.lower()), first_left(spans, part.upper()));
    first = no_event;
    for (std::size_t i = part.to; i-- > part.from;) {
        if (!spans[events_[i]].gone) first = events_[i];
    }
    return first;
}

void EventTree::list_left(const Vector<EventSpan>& spans, Vector<std::uint32_t>& left) const {
    for (const std::uint32_t event : events_) {
        if (!spans[event].gone) left.push_back(event);
    }
}

void EventForest::plant(const Vector<EventSpan>& spans) {
    Vector<std::uint32_t> events;
    events.swap(waiting_);
    while (!trees_.empty() && trees_.back().size() <= 2 * events.size()) {
        trees_.back().list_left(spans, events);
        trees_.pop_back();
    }
    std::erase_if(events, [&](std::uint32_t event) { return spans[event].gone; });
    if (!events.empty()) trees_.emplace_back(spans, std::move(events));
}
