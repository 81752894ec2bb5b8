#include "formats/aaf/aaf_chain.h"

#include "formats/aaf/aaf_pulldown.h"

#include <algorithm>

namespace formats::aaf {
namespace {

constexpr int segment_limit = 200;

bool alike(const Object& a, const Object& b, std::initializer_list<Pid> properties) {
    return std::all_of(properties.begin(), properties.end(),
                       [&](Pid each) { return a.bytes(each).view() == b.bytes(each).view(); });
}

/// Whether a component's frames count on from those of the one ahead of it, in a sequence that counts frames of `rate`.
bool goes_on(const Object& ahead, const Object& behind, const Fraction& rate) {
    const auto joined = [&](Pid start, std::initializer_list<Pid> same) {
        const Fraction end = Fraction(ahead.integer(start, 0)) + Fraction(ahead.integer(pid::length, 0));
        return end == Fraction(behind.integer(start, 0)) && alike(ahead, behind, same);
    };
    if (ahead.what() != behind.what() || ahead.is_damaged() || behind.is_damaged()) return false;
    switch (ahead.what()) {
    case Class::source_clip:
        return joined(pid::start_time, {pid::source_id, pid::source_slot});
    case Class::timecode: {
        const auto fps = static_cast<std::int64_t>(ahead.bytes(pid::timecode_fps).number(0, 2).value_or(0));
        const bool frame_for_frame = rate <= Fraction(0) || counting_of(rate) == fps;
        return frame_for_frame && joined(pid::timecode_start, {pid::timecode_fps, pid::timecode_drop});
    }
    case Class::edge_code:
        return joined(pid::edge_start, {pid::edge_film_kind, pid::edge_format, pid::edge_header});
    default:
        return false;
    }
}

struct Found {
    const Object* component = nullptr; ///< null where one lacks on the way to it
    const Object* run = nullptr;       ///< the first of those that go on from each other up to it
    bool outside = false;
    bool doubtful = false; ///< one on the way has no length
};

/// The component of a sequence at a position, which becomes one within it. Positions outside count on from the ends.
Found component_at(const Object& sequence, Fraction& position, const Fraction& rate) {
    Fraction start;
    Found found;
    Fraction found_start;
    const Object *last = nullptr, *run = nullptr;
    for (const Object* component : sequence.children(pid::components)) {
        if (!component) return {};
        found.doubtful = found.doubtful || !component->has(pid::length);
        const Fraction length(component->integer(pid::length, 0));
        if (component->what() == Class::transition) {
            start = start - length;
            last = nullptr;
            continue;
        }
        if (!last || !goes_on(*last, *component, rate)) run = component;
        last = component;
        if (!found.component || start <= position) {
            found.component = component;
            found.run = run;
            found_start = start;
        }
        start = start + length;
        if (position < start) break;
    }
    found.outside = position < Fraction(0) || start <= position;
    position = position - found_start;
    return found;
}

class Walker {
public:
    Walker(const File& file, Chain& chain) : file_(file), chain_(chain) {}

    /// Down to a segment that isn't made of others; false where none is reached.
    bool descend(Point& point);
    /// To the mob that a source clip refers to; false at the end of the chain.
    bool follow(Point& point);

private:
    bool into_sequence(Point& point);
    bool into_pulldown(Point& point);
    const Slot* target_of(const Object& clip, const Mob*& mob);
    void fault(const std::string& what) { chain_.faults.push_back(what); }

    const File& file_;
    Chain& chain_;
};

bool Walker::into_sequence(Point& point) {
    const Found found = component_at(*point.segment, point.position, point.rate);
    if (!found.component) {
        fault("a sequence of its chain holds nothing, or less than it should: the chain ends there");
        return false;
    }
    if (found.doubtful) fault("a sequence of its chain holds something that has no length");
    if (found.outside) fault("it lies outside of what its source holds");
    chain_.way.push_back(found.run);
    point.segment = found.component;
    return true;
}

bool Walker::into_pulldown(Point& point) {
    const auto pulldown = Pulldown::of(*point.segment, file_.phases_count_video());
    if (!pulldown) {
        fault("its chain leads through a pulldown of a kind that isn't known, and ends there");
        return false;
    }
    point.position = pulldown->input_at(point.position);
    point.rate = 0;
    point.step = point.step * pulldown->ratio();
    point.segment = point.segment->child(pid::pulldown_input);
    return point.segment != nullptr;
}

bool Walker::descend(Point& point) {
    for (int depth = 0; point.segment && depth < segment_limit; ++depth) {
        const Class what = point.segment->what();
        if (point.segment->is_damaged()) {
            fault("its chain leads to something of which only a part is in the file, and ends there");
            return false;
        }
        if (what == Class::sequence) {
            if (!into_sequence(point)) return false;
        } else if (what == Class::pulldown) {
            if (!into_pulldown(point)) return false;
        } else if (const Object* inner = inner_segment(*point.segment)) {
            point.segment = inner;
        } else {
            return true;
        }
    }
    return false;
}

const Slot* Walker::target_of(const Object& clip, const Mob*& mob) {
    const MobId id = clip.mob_id(pid::source_id).value_or(no_mob);
    if (id == no_mob) return nullptr;
    mob = file_.mob(id);
    if (!mob) {
        fault("its chain leads to a mob that isn't in the file, " + text_of(id));
        return nullptr;
    }
    const Slot* slot = mob->slot(clip.integer(pid::source_slot, 0));
    if (!slot || !slot->segment || slot->rate <= Fraction(0)) {
        fault("its chain leads to a slot of " + mob->title() + " that isn't there or has no rate");
        return nullptr;
    }
    return slot;
}

bool Walker::follow(Point& point) {
    if (point.segment->what() != Class::source_clip) return false;
    const Mob* mob = nullptr;
    const Slot* slot = target_of(*point.segment, mob);
    if (!slot) return false;
    const bool seen = std::any_of(chain_.links.begin(), chain_.links.end(),
                                  [&](const Link& link) { return link.mob == mob && link.slot == slot; });
    if (seen || chain_.links.size() == chain_limit) {
        fault(seen ? "its chain of mobs loops at " + mob->title() : "its chain of mobs is too long");
        return false;
    }
    point.position = point.position + Fraction(point.segment->integer(pid::start_time, 0));
    if (Fraction(0) < point.rate && !frame_for_frame(point.rate, slot->rate)) {
        point.position = point.position * slot->rate / point.rate;
        point.step = point.step * slot->rate / point.rate;
    }
    point.rate = slot->rate;
    point.position = point.position + slot->origin;
    point.segment = slot->segment;
    chain_.links.push_back({mob, slot, point.position, point.step});
    return true;
}

/// From a position in the mob's picture or sound to where a label's slot says something.
Point point_in(const Link& link, const Slot& slot) {
    const bool alike = frame_for_frame(link.slot->rate, slot.rate);
    const Fraction ratio = alike ? Fraction(1) : slot.rate / link.slot->rate;
    return {slot.segment, (link.position - link.slot->origin) * ratio + slot.origin, slot.rate, link.step * ratio};
}

std::optional<Point> label_at(const File& file, const Link& link, const Slot& slot, Chain& chain, Class what,
                              std::vector<const void*>& way) {
    if (!slot.segment || slot.rate <= Fraction(0)) return std::nullopt;
    Point point = point_in(link, slot);
    Chain own;
    const bool there = Walker(file, own).descend(point);
    for (std::string& fault : own.faults)
        chain.faults.push_back(std::move(fault));
    if (!there || point.segment->what() != what) return std::nullopt;
    way = std::move(own.way);
    way.push_back(&slot);
    return point;
}

} // namespace

const Link* Chain::first(Class what) const {
    const auto found =
        std::find_if(links.begin(), links.end(), [what](const Link& link) { return link.mob->what == what; });
    return found == links.end() ? nullptr : &*found;
}

const Link* Chain::material() const {
    const Link* master = first(Class::master_mob);
    return master || links.empty() ? master : &links.front();
}

bool frame_for_frame(const Fraction& a, const Fraction& b) {
    const Fraction difference = a < b ? b - a : a - b;
    return difference * Fraction(500) <= b;
}

bool shows_what_is_below(const Object& segment) {
    if (segment.what() == Class::scope_reference) return true;
    if (segment.what() != Class::sequence) return false;
    const auto& components = segment.children(pid::components);
    return std::all_of(components.begin(), components.end(),
                       [](const Object* each) { return each && each->what() == Class::scope_reference; });
}

bool is_picture_of_its_own(const Object& segment) {
    return segment.what() != Class::filler && !shows_what_is_below(segment);
}

const Object* foreground_of(const Object& group) {
    for (const Object* input : group.children(pid::input_segments))
        if (input && is_picture_of_its_own(*input)) return input;
    return nullptr;
}

const Object* inner_segment(const Object& segment) {
    switch (segment.what()) {
    case Class::selector:
        return segment.child(pid::selected);
    case Class::essence_group: {
        const auto& choices = segment.children(pid::choices);
        return choices.empty() ? nullptr : choices.front();
    }
    case Class::nested_scope: {
        const auto& slots = segment.children(pid::scope_slots);
        return slots.empty() ? nullptr : slots.back();
    }
    case Class::operation_group:
        return foreground_of(segment);
    default:
        return nullptr;
    }
}

Chain chain_of(const File& file, Point point) {
    Chain chain;
    Walker walker(file, chain);
    while (walker.descend(point) && walker.follow(point)) {
    }
    return chain;
}

std::optional<Timecode> timecode_at(const File& file, const Link& link, const Slot& slot, Chain& chain) {
    Timecode timecode;
    const auto point = label_at(file, link, slot, chain, Class::timecode, timecode.way);
    if (!point) return std::nullopt;
    const auto fps = static_cast<std::int64_t>(point->segment->bytes(pid::timecode_fps).number(0, 2).value_or(0));
    if (fps <= 0) {
        chain.faults.push_back("its timecode counts no frames, and is left out");
        return std::nullopt;
    }
    const std::int64_t counted = Fraction(0) < point->rate ? counting_of(point->rate) : fps;
    const Fraction ratio = counted == fps ? Fraction(1) : Fraction(fps, counted);
    timecode.frame = (Fraction(point->segment->integer(pid::timecode_start, 0)) + point->position * ratio).floor();
    timecode.counting = fps;
    timecode.drop = point->segment->integer(pid::timecode_drop, 0) != 0;
    timecode.step = point->step * ratio;
    return timecode;
}

std::optional<EdgeNumber> edge_number_at(const File& file, const Link& link, const Slot& slot, Chain& chain) {
    EdgeNumber number;
    const auto point = label_at(file, link, slot, chain, Class::edge_code, number.way);
    if (!point) return std::nullopt;
    number.frame = (Fraction(point->segment->integer(pid::edge_start, 0)) + point->position).floor();
    const Bytes header = point->segment->bytes(pid::edge_header);
    number.prefix = std::string(header.view().substr(0, header.view().find('\0')));
    number.film_kind = point->segment->integer(pid::edge_film_kind, 0);
    number.format = point->segment->integer(pid::edge_format, 0);
    number.step = point->step;
    return number;
}

} // namespace formats::aaf
