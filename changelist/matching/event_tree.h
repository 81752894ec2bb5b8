#pragma once
// Finds the first of many events whose film lies in a wanted range.
//
// Events are numbered in the order in which they are preferred. A tree halves its events by the sample at which
// they begin, then by the one at which they end, and so on; each node knows the bounds of what it holds and the
// first event of it, so a search leaves out what lies outside and what comes behind the best one found.

#include "host/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Stands for "no event".
constexpr std::uint32_t no_event = 0xffffffffu;

/// What a tree knows of an event.
struct EventSpan {
    int key_in = 0;  ///< samples
    int key_end = 0; ///< samples, exclusive; below the start where the event runs backward
    int length = 0;  ///< frames
    bool gone = false;
    double speed = 1.0;
};

/// Lowest and highest value of a set; holds nothing while it is empty.
template <class T> struct Bounds {
    T low;
    T high;

    explicit Bounds(T value) : low(value), high(value) {}
    void add(const Bounds& other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
    bool holds(T value) const { return low <= value && value <= high; }
};

struct EventBounds {
    Bounds<int> key_in;
    Bounds<int> key_end;
    Bounds<int> length;
    Bounds<double> speed;

    explicit EventBounds(const EventSpan& span)
        : key_in(span.key_in), key_end(span.key_end), length(span.length), speed(span.speed) {}
    void add(const EventBounds& other) {
        key_in.add(other.key_in);
        key_end.add(other.key_end);
        length.add(other.length);
        speed.add(other.speed);
    }
};

/// A query answers three questions: `misses(bounds)`: no event within can be wanted; `takes_all(bounds)`: every
/// one within is; `takes(event)`.
class EventTree {
public:
    /// `events` isn't empty.
    EventTree(const Vector<EventSpan>& spans, Vector<std::uint32_t> events);

    /// The first wanted event ahead of `best` that isn't gone; `best` if there is none.
    template <class Query> std::uint32_t first(const Vector<EventSpan>& spans, const Query& query, std::uint32_t best) {
        search(spans, query, whole(), best);
        return best;
    }
    std::size_t size() const { return events_.size(); }
    /// Appends the events that aren't gone.
    void list_left(const Vector<EventSpan>& spans, Vector<std::uint32_t>& left) const;

private:
    struct Node {
        EventBounds bounds;
        std::uint32_t first; ///< may be gone: `first_left` corrects it
    };
    /// A node and the stretch of `events_` below it.
    struct Part {
        std::size_t node;
        std::size_t from;
        std::size_t to;

        bool is_leaf() const { return to - from <= leaf_events; }
        std::size_t middle() const { return from + (to - from) / 2; }
        Part lower() const { return {2 * node + 1, from, middle()}; }
        Part upper() const { return {2 * node + 2, middle(), to}; }
    };
    static constexpr std::size_t leaf_events = 8;

    Part whole() const { return {0, 0, events_.size()}; }
    void arrange(const Vector<EventSpan>& spans, const Part& part, bool by_start);
    void close_leaf(const Vector<EventSpan>& spans, const Part& part);
    std::uint32_t first_left(const Vector<EventSpan>& spans, const Part& part);

    template <class Query>
    void search(const Vector<EventSpan>& spans, const Query& query, const Part& part, std::uint32_t& best) {
        if (first_left(spans, part) >= best || query.misses(nodes_[part.node].bounds)) return;
        if (query.takes_all(nodes_[part.node].bounds)) {
            best = nodes_[part.node].first;
        } else if (part.is_leaf()) {
            search_leaf(spans, query, part, best);
        } else {
            const bool upper_first = nodes_[part.upper().node].first < nodes_[part.lower().node].first;
            search(spans, query, upper_first ? part.upper() : part.lower(), best);
            search(spans, query, upper_first ? part.lower() : part.upper(), best);
        }
    }
    template <class Query>
    void search_leaf(const Vector<EventSpan>& spans, const Query& query, const Part& part, std::uint32_t& best) const {
        for (std::size_t i = part.from; i < part.to && events_[i] < best; ++i) {
            if (!spans[events_[i]].gone && query.takes(events_[i])) best = events_[i];
        }
    }

    Vector<std::uint32_t> events_; ///< those of a leaf in order
    Vector<Node> nodes_;           ///< the children of i are 2i+1 and 2i+2
};

/// Trees of falling size, for events that keep coming.
class EventForest {
public:
    void add(std::uint32_t event) { waiting_.push_back(event); }

    template <class Query> std::uint32_t first(const Vector<EventSpan>& spans, const Query& query, std::uint32_t best) {
        if (!waiting_.empty()) plant(spans);
        for (EventTree& tree : trees_)
            best = tree.first(spans, query, best);
        return best;
    }

private:
    /// Makes a tree of the events that wait, and of the trees that aren't larger.
    void plant(const Vector<EventSpan>& spans);

    Vector<std::uint32_t> waiting_;
    Vector<EventTree> trees_;
};
