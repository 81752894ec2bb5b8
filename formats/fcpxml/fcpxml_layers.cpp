#include "formats/fcpxml/fcpxml_layers.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace formats::fcpxml {
namespace {

using timeline::Stretch;

/// What stands next to each other without a gap.
struct Segment {
    Fraction start, end;
    Items items;
};

/// The items that a stretch touches, and where they start.
Run touched(const Run& run, const Stretch& stretch, std::size_t& work) {
    constexpr std::size_t looks_of_a_copy = 100;
    work += run.items.size() / looks_of_a_copy;
    Run part{run.lane, run.start, {}};
    Fraction start = run.start;
    for (const Item& item : run.items) {
        const Fraction end = item.is_transition() ? start : start + item.length();
        if (end < stretch.from) {
            part.start = end;
        } else if (start <= stretch.to) {
            part.items.push_back(copy_of(item));
            ++work;
        }
        start = end;
    }
    return part;
}

/// The parts of a row from a time on that show something. A fade from or to a gap stays with what it fades.
void add_segments(Items row, Fraction now, std::vector<Segment>& segments) {
    Items waiting; // a transition, before it is known what stands behind it
    bool open = false;
    for (Item& item : row) {
        if (item.is_transition()) {
            (open ? segments.back().items : waiting).push_back(std::move(item));
            continue;
        }
        const Fraction end = now + item.length();
        const bool gap = item.kind == Item::Kind::gap;
        if (!gap) {
            if (!open) segments.push_back({now, now, std::exchange(waiting, {})});
            segments.back().items.push_back(std::move(item));
            segments.back().end = end;
        }
        waiting.clear();
        open = !gap;
        now = end;
    }
}

void add_segments_of(const Run& run, const Stretch& stretch, std::size_t& work, std::vector<Segment>& segments) {
    Run part = touched(run, stretch, work);
    add_segments(trimmed(std::move(part.items), {stretch.from - part.start, stretch.to - part.start}),
                 std::max(part.start, stretch.from), segments);
}

bool equal(const Segment& a, const Segment& b, const SameSource& same) {
    if (a.items.size() != 1 || b.items.size() != 1 || !(a.start == b.start) || !(a.end == b.end)) return false;
    const embedded::EventDescription &x = a.items[0].event, &y = b.items[0].event;
    return same(x.source, y.source) && x.source_in == y.source_in && x.speed == y.speed;
}

/// False where two of them lie at one time and aren't equal; of equal ones the first stays.
bool part_segments(std::vector<Segment>& in_order, const SameSource& same) {
    std::vector<Segment> kept;
    for (Segment& segment : in_order) {
        if (!kept.empty() && segment.start < kept.back().end) {
            if (!equal(kept.back(), segment, same)) return false;
            continue;
        }
        kept.push_back(std::move(segment));
    }
    in_order = std::move(kept);
    return true;
}

/// Where two pieces of different rows meet, a fade of one of them must not become a dissolve into the other.
bool needs_parting(const Items& before, const Items& behind) {
    return !before.empty() && !behind.empty() && (before.back().is_transition() || behind.front().is_transition());
}

void append(Items& row, Items more) {
    row.insert(row.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Goes on in a row at a time, over a gap if there is one.
void append_at(Items& row, Fraction& now, const Fraction& start, Items more) {
    const bool hole = now < start;
    if (hole || needs_parting(row, more)) row.push_back(gap_of(hole ? start - now : Fraction(0)));
    now = std::max(now, start) + timeline::length_of(more);
    append(row, std::move(more));
}

/// Those of one channel by their starts.
class Occupied {
public:
    bool has_room(const Run& run) const {
        const Fraction end = run.end();
        const auto behind = ends_.lower_bound(run.start);
        if (behind != ends_.end() && behind->first < end) return false;
        return behind == ends_.begin() || std::prev(behind)->second <= run.start;
    }
    void take(const Run& run) { ends_[run.start] = run.end(); }

private:
    std::map<Fraction, Fraction> ends_;
};

struct LaneChannel {
    Occupied occupied;
    std::vector<Run*> runs;
};

struct LowerLane {
    bool operator()(const Lane& a, const Lane& b) const { return compare_lanes(a, b) < 0; }
};

} // namespace

int compare_lanes(const Lane& a, const Lane& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const int x = i < a.size() ? a[i] : 0, y = i < b.size() ? b[i] : 0;
        if (x != y) return x < y ? -1 : 1;
    }
    return 0;
}

Item copy_of(const Item& item) {
    Item copy;
    copy.kind = item.kind;
    copy.depth = item.depth;
    copy.event = item.event;
    copy.marks = item.marks;
    if (item.transition) copy.transition = std::make_unique<embedded::TransitionDescription>(*item.transition);
    return copy;
}

bool has_picture(const Items& items) {
    return std::any_of(items.begin(), items.end(), [](const Item& item) {
        return item.kind == Item::Kind::event || item.kind == Item::Kind::black;
    });
}

Fraction in_last_frame(const Fraction& end) { return end - Fraction(1, 1000); }

Item gap_of(const Fraction& length, const std::string& label) {
    Item gap;
    gap.event.duration = length;
    gap.event.label = label;
    return gap;
}

Item frozen(const Items& items, const Fraction& at, const Fraction& length, const Fraction& frame, bool has_frames) {
    Item held = gap_of(length);
    Fraction start;
    for (const Item& item : items) {
        if (item.is_transition()) continue;
        const Fraction end = start + item.length();
        if (start <= at && at <= end) {
            held = copy_of(item);
            held.marks.clear();
            const bool backward = item.event.speed < Fraction(0);
            const Fraction last = has_frames || backward ? end - frame : in_last_frame(end);
            const Fraction shown = at < end ? at : last;
            const Fraction into = backward ? last - shown : shown - start;
            held.event.source_in = held.event.source_in + into * magnitude(held.event.speed);
            held.event.speed = 0;
            held.event.duration = length;
            if (at < end) break;
        }
        start = end;
    }
    return held;
}

bool add_mark(Items& items, timeline::Mark mark) {
    Fraction start;
    for (Item& item : items) {
        if (item.is_transition()) continue;
        const Fraction end = start + item.length();
        if (start <= mark.time && mark.time < end) {
            mark.time = mark.time - start;
            item.marks.push_back(std::move(mark));
            return true;
        }
        start = end;
    }
    return false;
}

std::optional<Items> merged(const Runs& runs, const Stretch& stretch, const SameSource& same, std::size_t& work) {
    std::vector<Segment> segments;
    for (const Run& run : runs)
        add_segments_of(run, stretch, work, segments);
    std::stable_sort(segments.begin(), segments.end(),
                     [](const Segment& a, const Segment& b) { return a.start < b.start; });
    if (!part_segments(segments, same)) return std::nullopt;
    Items row;
    Fraction now = stretch.from;
    for (Segment& segment : segments)
        append_at(row, now, segment.start, std::move(segment.items));
    if (now < stretch.to) row.push_back(gap_of(stretch.to - now));
    return row;
}

Runs without_gaps(Runs runs) {
    Runs parts;
    for (Run& run : runs) {
        std::vector<Segment> segments;
        add_segments(std::move(run.items), run.start, segments);
        for (Segment& segment : segments)
            parts.push_back({run.lane, segment.start, std::move(segment.items)});
    }
    return parts;
}

Items row_of(std::vector<Run*> runs, const Fraction& zero) {
    std::stable_sort(runs.begin(), runs.end(), [](const Run* a, const Run* b) { return a->start < b->start; });
    Items row;
    Fraction now = zero;
    for (Run* run : runs)
        append_at(row, now, run->start, std::move(run->items));
    return row;
}

std::vector<std::vector<Run*>> channels_of(Runs& runs) {
    std::map<Lane, std::vector<LaneChannel>, LowerLane> lanes;
    for (Run& run : runs) {
        if (run.end() <= run.start) continue;
        std::vector<LaneChannel>& channels = lanes[run.lane];
        auto free = std::find_if(channels.begin(), channels.end(),
                                 [&](const LaneChannel& channel) { return channel.occupied.has_room(run); });
        if (free == channels.end()) free = channels.emplace(channels.end());
        free->occupied.take(run);
        free->runs.push_back(&run);
    }
    std::vector<std::vector<Run*>> all;
    for (auto& [lane, channels] : lanes)
        for (LaneChannel& channel : channels)
            all.push_back(std::move(channel.runs));
    return all;
}

} // namespace formats::fcpxml
