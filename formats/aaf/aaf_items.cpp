#include "formats/aaf/aaf_items.h"

#include "formats/timeline/retiming.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace formats::aaf {
namespace {

using embedded::WarningKind;

constexpr int segments_deep = 100;
constexpr std::size_t items_limit = 200'000;
constexpr Auid sub_clip = auid("0d010102-0101-0500-060e-2b3404010101");
constexpr Auid adjusted_clip = auid("0d010102-0101-0600-060e-2b3404010101");

const Fraction nothing;

void append(Items& items, Items more) { std::move(more.begin(), more.end(), std::back_inserter(items)); }

bool is_way_to_a_clip(const Mob& mob) { return mob.usage == sub_clip || mob.usage == adjusted_clip; }

/// Frames of a segment; more are damage.
constexpr std::int64_t longest = std::int64_t{1} << 31;

/// Of what all behind it, or the whole track, depends on.
Fraction length_of(const Object& segment, const Place& place) {
    if (segment.is_damaged()) refuse(place, "its properties break off, so that nothing tells what it is");
    const auto length = segment.integer(pid::length);
    if (!length) refuse(place, "it has no length, and all behind it would move");
    if (*length < 0) refuse(place, "its length is below 0");
    if (*length > longest) refuse(place, "its length is out of all bounds");
    return Fraction(*length);
}

/// Counts calls within each other.
class Depth {
public:
    Depth(int& depth, const Place& place) : depth_(depth) {
        if (++depth_ > segments_deep) {
            --depth_;
            refuse(place, "segments lie too deep in each other");
        }
    }
    ~Depth() { --depth_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    int& depth_;
};

void add_effect(Items& items, const embedded::EffectDescription& effect) {
    for (Item& item : items)
        if (item.kind == Item::Kind::event) item.event.effects.push_back(effect);
}

/// Whether there is a marker on any of its slots.
bool has_markers(const Mob& mob) {
    return std::any_of(mob.slots.begin(), mob.slots.end(), [](const Slot& slot) {
        if (slot.kind != Kind::markers || !slot.segment) return false;
        const auto& events = slot.segment->children(pid::components);
        return slot.segment->has(pid::event_position) ||
               std::any_of(events.begin(), events.end(),
                           [](const Object* event) { return event && event->has(pid::event_position); });
    });
}

/// A transition that one piece of a speed cuts off may stay whole in another, or be cut off in each.
embedded::Warnings cut_off_in_all(embedded::Warnings cut_off, const Items& items) {
    if (cut_off.empty()) return cut_off;
    std::set<std::string> told;
    for (const Item& item : items)
        if (item.is_transition()) told.insert(timeline::cut_off(*item.transition).text);
    std::erase_if(cut_off, [&](const embedded::Warning& warning) { return !told.insert(warning.text).second; });
    return cut_off;
}

/// Of items at a speed, whether their own is another one.
bool plays_unevenly(const Items& items, const Fraction& speed) {
    return std::any_of(items.begin(), items.end(), [&](const Item& item) {
        return item.kind == Item::Kind::event && !(speed == nothing) &&
               timeline::plays_unevenly(item.event.speed / speed, speed);
    });
}

} // namespace

/// A component of a sequence with what transitions take of it, or a transition with what it has to both sides.
struct Flattener::Part {
    const Object* object = nullptr;
    std::string name;            ///< for messages
    Fraction start;              ///< of its frame 0 in the sequence
    Fraction length, head, tail; ///< of a transition before and behind its cut: `head` and `tail`
    Fraction lead, trail;        ///< what transitions lie over of its frames, on both sides of their cuts
    bool transition = false;

    /// As `Around::clear` in its own frames; where what is shown begins in it, with that of what is around it.
    std::optional<Fraction> clear_frame(const std::optional<Stretch>& frames, const Around& around) const {
        const bool back = around.backward;
        std::optional<Fraction> own;
        if (nothing < (back ? trail : lead)) own = back ? length - trail - Fraction(1) : lead;
        const bool begins = frames && (back ? frames->to <= start + length - tail : start + head <= frames->from);
        if (!around.clear || !begins) return own;
        const Fraction outer = *around.clear - start;
        return !own ? outer : back ? std::min(*own, outer) : std::max(*own, outer);
    }
};

Fraction Flattener::Grid::from(const Fraction& frame) const {
    const Fraction place = (frame - zero) / step;
    const bool back = around && around->turns();
    const Fraction own(back ? place.floor() : -(-place).floor());
    return zero + step * (around ? around->from(own) : own);
}

Items Flattener::track(const Object& segment, const Fraction& rate, const Mob& composition, const Place& place) {
    const bool alike = counting_of(rate) == context_.rate->nominal;
    const Around around{place, rate, alike ? context_.rate->rate() : rate, nullptr, {}, {}};
    open_ = {&composition};
    const bool parts = segment.what() == Class::sequence;
    Items items =
        parts ? sequence(segment, std::nullopt, around) : range(segment, {nothing, length_of(segment, place)}, around);
    embedded::Warnings& told = *context_.warnings;
    told.insert(told.end(), cut_off_.begin(), cut_off_.end());
    cut_off_.clear();
    timeline::drop_inner_transitions(items, told);
    return items;
}

Item Flattener::item_for(const Stretch& frames, const Around& around) {
    if (++made_ > items_limit) refuse(around.place, "it has too many items");
    Item item;
    item.depth = static_cast<int>(open_.size()) - 1;
    item.event.duration = (frames.to - frames.from) / around.step;
    item.event.label = around.place.text();
    return item;
}

Items Flattener::gap(const Stretch& frames, const Around& around, Item::Kind kind) {
    Items items;
    items.push_back(item_for(frames, around));
    items.back().kind = kind;
    return items;
}

Items Flattener::range(const Object& segment, const Stretch& frames, const Around& around) {
    const Depth deeper(depth_, around.place);
    if (segment.is_damaged()) refuse(around.place, "its properties break off, so that nothing tells what it is");
    const bool empty = frames.from == frames.to;
    switch (segment.what()) {
    case Class::sequence:
        return sequence(segment, frames, around);
    case Class::source_clip:
    case Class::pulldown:
        return clip(segment, frames, around);
    case Class::filler:
        return gap(frames, around);
    default:
        break;
    }
    if (empty) return gap(frames, around);
    switch (segment.what()) {
    case Class::operation_group:
        return operation(segment, frames, around);
    case Class::nested_scope:
        return scope(segment, frames, around);
    case Class::scope_reference:
        return reference(segment, frames, around);
    case Class::selector:
    case Class::essence_group:
        if (const Object* inner = inner_segment(segment)) return range(*inner, frames, around);
        warn(WarningKind::replaced, around, "nothing of it is chosen, so it is a gap");
        return gap(frames, around);
    default:
        warn(WarningKind::replaced, around, segment.class_name() + " isn't known: it counts as black");
        return gap(frames, around, Item::Kind::black);
    }
}

// The overlap moves what is behind to the left. At the outer ends there is nothing to overlap with.
std::vector<Flattener::Part> Flattener::parts_of(const Object& sequence, const Around& around) {
    std::vector<Part> parts;
    const auto& components = sequence.children(pid::components);
    Fraction start;
    for (std::size_t i = 0; i < components.size(); ++i) {
        const std::string name = "component " + std::to_string(i + 1);
        const Place place = around.place.step(name);
        if (!components[i]) refuse(place, "isn't in the file, and all behind it would move");
        Part part{components[i], name, start, length_of(*components[i], place), {}, {}, {}, {}, false};
        part.transition = components[i]->what() == Class::transition;
        if (part.transition && !parts.empty() && parts.back().transition) {
            context_.warn(WarningKind::dropped, place, "dropped, as it follows another transition");
            continue;
        }
        const bool behind_transition = parts.size() > 1 && parts.back().transition;
        if (behind_transition) {
            part.start = start - parts.back().length;
            share_overlap(parts[parts.size() - 2], parts.back(), part, around.place.step(parts.back().name));
        } else if (!parts.empty() && parts.back().transition) {
            part.lead = parts.back().tail = parts.back().length;
        }
        if (!part.transition) start = part.start + part.length;
        parts.push_back(std::move(part));
    }
    if (parts.size() > 1 && parts.back().transition)
        parts[parts.size() - 2].trail = parts.back().head = parts.back().length;
    return parts;
}

//     before   . . . . . . .|        what `before` loses lies behind the cut, what `behind` loses before it
//                   |- head | tail -|
//     behind        |. . . . . . .
void Flattener::share_overlap(Part& before, Part& transition, Part& behind, const Place& place) {
    const auto given = transition.object->integer(pid::cut_point);
    if (!given) context_.warn(WarningKind::doubt, place, "nothing tells its cut point: it counts as 0");
    const Fraction cut(given.value_or(0));
    transition.head = std::clamp(cut, nothing, transition.length);
    transition.tail = transition.length - transition.head;
    if (!(transition.head == cut)) context_.warn(WarningKind::replaced, place, "its cut point lies outside of it");
    before.tail = transition.tail;
    behind.head = transition.head;
    before.trail = behind.lead = transition.length;
    const Fraction room = before.length - before.head;
    if (before.tail <= room && behind.head <= behind.length) return;
    context_.warn(WarningKind::doubt, place, "it is longer than a neighbour, and what is behind it stands later");
    const Fraction lost_before = std::max(nothing, before.tail - room);
    const Fraction lost_behind = std::max(nothing, behind.head - behind.length);
    before.tail = before.tail - lost_before;
    behind.head = behind.head - lost_behind;
    behind.start = behind.start + lost_before + lost_behind;
}

Items Flattener::transition(const Part& part, const Around& around) {
    Items items;
    Item& item = items.emplace_back();
    item.kind = Item::Kind::transition;
    item.depth = static_cast<int>(open_.size()) - 1;
    item.transition = std::make_unique<embedded::TransitionDescription>(transition_of(context_.file, *part.object));
    item.transition->in_offset = part.head / around.step;
    item.transition->out_offset = part.tail / around.step;
    item.transition->label = around.place.text();
    return items;
}

Items Flattener::sequence(const Object& sequence, const std::optional<Stretch>& frames, const Around& around) {
    Items items;
    if (!sequence.has(pid::components)) warn(WarningKind::dropped, around, "it holds nothing, not even an empty list");
    Fraction length;
    for (const Part& part : parts_of(sequence, around)) {
        const Place place = around.place.step(part.name);
        Around inside{place, around.rate, around.step, around.scope, around.at + part.start, around.others};
        inside.backward = around.backward;
        inside.clear = part.clear_frame(frames, around);
        if (around.grid) inside.grid = around.grid->seen_from(part.start);
        if (around.sub_clip) inside.sub_clip = *around.sub_clip - part.start;
        if (part.transition) {
            append(items, transition(part, inside));
            continue;
        }
        length = part.start + part.length;
        append(items, shown_of(part, frames, inside));
    }
    const auto said = sequence.integer(pid::length);
    if (said && !(length == Fraction(*said)))
        warn(WarningKind::doubt, around,
             "its length is given as " + std::to_string(*said) + ", but what it holds is " +
                 std::to_string(length.nearest()) + " long, which counts");
    if (!frames || (frames->from == nothing && frames->to == length)) return items;
    tell_of_what_lacks(*frames, length, around);
    const Stretch taken{frames->from / around.step, frames->to / around.step};
    return timeline::spliced(std::move(items), taken, item_for(*frames, around).event,
                             static_cast<int>(open_.size()) - 1, looking_ ? nullptr : &cut_off_);
}

// What a nest doesn't show isn't looked at, so that nests in nests cost no more than what they show, and numbers are
// true where that begins.
Items Flattener::shown_of(const Part& part, const std::optional<Stretch>& frames, const Around& inside) {
    const Stretch whole{part.head, part.length - part.tail};
    const Stretch shown{frames ? std::max(whole.from, frames->from - part.start) : whole.from,
                        frames ? std::min(whole.to, frames->to - part.start) : whole.to};
    if (shown.to < shown.from || (shown.from == shown.to && whole.from < whole.to)) return gap(whole, inside);
    Items items;
    if (whole.from < shown.from) append(items, gap({whole.from, shown.from}, inside));
    append(items, range(*part.object, shown, inside));
    if (shown.to < whole.to) append(items, gap({shown.to, whole.to}, inside));
    tell_of_changes_in_overlaps(part, inside);
    return items;
}

/// Lists take what lies under a transition from the event beside it, as if that went on.
void Flattener::tell_of_changes_in_overlaps(const Part& part, const Around& inside) {
    const Fraction frame(1), from = part.head, to = part.length - part.tail;
    const std::string why = " it changes within what the transition shows of it: lists go on with what is at the cut";
    if (nothing < part.head && !is_one_piece(*part.object, {nothing, std::min(from + frame, to)}, inside))
        warn(WarningKind::doubt, inside, "at its head" + why);
    if (nothing < part.tail && !is_one_piece(*part.object, {std::max(from, to - frame), part.length}, inside))
        warn(WarningKind::doubt, inside, "at its tail" + why);
}

bool Flattener::is_one_piece(const Object& segment, const Stretch& frames, const Around& around) {
    if (looking_) return true;
    looking_ = true;
    const Items items = range(segment, frames, around);
    looking_ = false;
    return std::count_if(items.begin(), items.end(),
                         [](const Item& item) { return !item.is_transition() && nothing < item.length(); }) <= 1;
}

void Flattener::tell_of_what_lacks(const Stretch& frames, const Fraction& length, const Around& around) const {
    const auto of_the_edit = [&](const Fraction& count) {
        return (count / around.step * context_.rate->rate()).floor();
    };
    const std::int64_t ahead = of_the_edit(std::max(nothing, std::min(frames.to, nothing) - frames.from));
    const std::int64_t behind = of_the_edit(std::max(nothing, frames.to - std::max(frames.from, length)));
    if (ahead > 0)
        warn(WarningKind::doubt, around, "it begins " + std::to_string(ahead) + " frames ahead of what it holds");
    if (behind > 0)
        warn(WarningKind::doubt, around, "it runs " + std::to_string(behind) + " frames past the end of what it holds");
}

Items Flattener::clip(const Object& clip, const Stretch& frames, const Around& around) {
    const MobId id = clip.mob_id(pid::source_id).value_or(no_mob);
    if (clip.what() == Class::source_clip && id == no_mob) {
        warn(WarningKind::replaced, around, "it refers to nothing, so it is black");
        return gap(frames, around, Item::Kind::black);
    }
    if (clip.what() == Class::source_clip && !clip.has(pid::start_time))
        warn(WarningKind::doubt, around, "nothing tells where in its source it begins: it counts from 0");
    const Mob* mob = clip.what() == Class::source_clip ? context_.file.mob(id) : nullptr;
    if (mob && mob->what == Class::composition_mob) return nest(clip, *mob, frames, around);
    Items items;
    add_events(clip, frames, around, items);
    return items;
}

Items Flattener::nest(const Object& clip, const Mob& mob, const Stretch& frames, const Around& around) {
    if (std::find(open_.begin(), open_.end(), &mob) != open_.end()) refuse(around.place, mob.title() + " holds itself");
    const std::int64_t slot_id = clip.integer(pid::source_slot, 0);
    const Slot* slot = mob.slot(slot_id);
    if (!slot || !slot->segment || slot->rate <= nothing) {
        warn(WarningKind::replaced, around,
             "slot " + std::to_string(slot_id) + " of " + mob.title() + " isn't there or has no rate: it is a gap");
        return gap(frames, around);
    }
    const Fraction ratio = frame_for_frame(around.rate, slot->rate) ? Fraction(1) : slot->rate / around.rate;
    const Fraction start(clip.integer(pid::start_time, 0));
    const Stretch taken{(start + frames.from) * ratio + slot->origin, (start + frames.to) * ratio + slot->origin};
    const Place place = around.place.step(mob.title());
    const Place inner = place.step("slot " + std::to_string(slot->id));
    Around inside{inner, slot->rate, around.step * ratio, nullptr, {}, {}};
    inside.backward = around.backward;
    if (around.clear) inside.clear = (start + *around.clear) * ratio + slot->origin;
    const bool between_frames = !(ratio == Fraction(1)) && context_.file.kind_of(*slot->segment) == Kind::picture;
    if (!between_frames && around.grid) inside.grid = around.grid->seen_from(-start - slot->origin);
    if (between_frames && (around.grid || !around.backward))
        inside.grid = Grid{start * ratio + slot->origin, ratio, around.grid ? &*around.grid : nullptr};
    if (is_way_to_a_clip(mob)) {
        inside.others = around.others;
        inside.others.insert(inside.others.begin(), &mob);
        inside.sub_clip = slot->origin;
    } else if (has_markers(mob)) {
        context_.warn(WarningKind::dropped, place, "its own markers are left out");
    }
    open_.push_back(&mob);
    Items items = range(*slot->segment, taken, inside);
    open_.pop_back();
    return between_frames ? timeline::on_whole_frames(std::move(items), frames.from, around.step) : std::move(items);
}

Traced Flattener::traced(const Object& clip, const Fraction& frame, const Around& around) const {
    return trace(context_.file, {&clip, frame, around.rate, around.step});
}

// Each step of a chain runs on in one direction, so where first and last frame took the same way, all between them did.
Fraction Flattener::end_of_way(const Object& clip, const Stretch& frames, const Traced& first, const Around& around) {
    const auto same = [&](std::int64_t frame) {
        return traced(clip, frames.from + Fraction(frame), around).chain.way == first.chain.way;
    };
    const Fraction whole_frames(std::int64_t{1} << 60);
    const Fraction count = std::min(frames.to - frames.from, whole_frames);
    std::int64_t last = -(-count).floor() - 1;
    if (last < 1 || same(last)) return frames.to;
    std::int64_t known = 0;
    while (known + 1 < last) {
        const std::int64_t middle = known + (last - known) / 2;
        (same(middle) ? known : last) = middle;
    }
    return frames.from + Fraction(last);
}

void Flattener::add_events(const Object& clip, const Stretch& frames, const Around& around, Items& items) {
    Stretch rest = frames;
    do {
        const Traced first = traced(clip, rest.from, around);
        const Fraction end = end_of_way(clip, rest, first, around);
        for (const std::string& fault : first.chain.faults)
            warn(WarningKind::doubt, around, fault);
        if (end < rest.to)
            warn(WarningKind::note, around,
                 "it is parted after " + std::to_string((end - frames.from).nearest()) +
                     " frames, where its material goes on with other numbers");
        const bool shown_first = around.backward ? end == frames.to : rest.from == frames.from;
        Around here = around;
        if (!shown_first) here.clear.reset();
        items.push_back(event(clip, {rest.from, end}, first, here));
        rest.from = end;
    } while (rest.from < rest.to);
}

// Through pulldown numbers can't be true at each frame. They are at the first that is a list's own: behind a
// transition, and played backward the last.
ClipSource Flattener::source_for(const Object& clip, const Stretch& frames, const Traced& first, const Around& around) {
    const MobId wanted = clip.mob_id(pid::source_id).value_or(no_mob);
    Fraction shown = around.backward ? frames.to - Fraction(1) : frames.from;
    if (around.grid) shown = around.grid->from(shown);
    const bool later = around.clear && (around.backward ? *around.clear < shown : shown < *around.clear);
    if (later) shown = *around.clear;
    const auto since_sub_clip = [&](const Fraction& frame) {
        return around.sub_clip ? std::optional((frame - *around.sub_clip) / around.step) : std::nullopt;
    };
    if (frames.from < shown && shown < frames.to) {
        const SubClips others{around.others, since_sub_clip(shown)};
        ClipSource made = source_of(traced(clip, shown, around), wanted, others, context_, around.place);
        made.in = made.in - (shown - frames.from) / around.step;
        if (nothing <= made.in) return made;
    }
    return source_of(first, wanted, {around.others, since_sub_clip(frames.from)}, context_, around.place);
}

Item Flattener::event(const Object& clip, const Stretch& frames, const Traced& first, const Around& around) {
    Item item = item_for(frames, around);
    item.kind = Item::Kind::event;
    if (looking_) return item;
    ClipSource made = source_for(clip, frames, first, around);
    const Fraction frame = Fraction(1) / around.step; // lengths are whole frames of other rates
    if (made.source.length && made.in + item.event.duration >= *made.source.length + frame)
        warn(WarningKind::doubt, around, "it runs past the end of its material");
    if (made.in < nothing) warn(WarningKind::doubt, around, "it begins ahead of its material");
    item.event.source_in = made.in;
    item.event.source = sources_.add(std::move(made.source));
    add_marks(first, item);
    return item;
}

/// Markers of the bin's clip stand in its own time.
void Flattener::add_marks(const Traced& traced, Item& item) {
    const Link* link = traced.chain.material();
    if (!link) return;
    for (const Slot& slot : link->mob->slots) {
        if (slot.kind != Kind::markers || !slot.segment) continue;
        const Fraction ratio = slot.rate <= nothing ? Fraction(1) : link->slot->rate / slot.rate;
        for (const Object* marker : slot.segment->children(pid::components)) {
            if (!marker || !marker->has(pid::event_position)) continue;
            const Fraction place(marker->integer(pid::event_position, 0));
            const Fraction time = (place * ratio - (link->position - link->slot->origin)) / link->step;
            if (nothing <= time && time < item.event.duration)
                item.marks.push_back({time, marker->text(pid::event_comment), 4});
        }
    }
}

Items Flattener::operation(const Object& group, const Stretch& frames, const Around& around) {
    const Object* input = foreground_of(group);
    const std::string name = effect_name(context_.file, group);
    if (!input && group.children(pid::input_segments).empty()) return generator(group, frames, around);
    if (!input) {
        warn(WarningKind::dropped, around, "the effect \"" + name + "\" on what lies below is left out");
        return gap(frames, around);
    }
    tell_of_other_inputs(group, *input, around);
    if (is_speed(context_.file, group)) return retimed(group, frames, around);
    Items items = range(*input, frames, around);
    if (!is_nest(context_.file, group)) add_effect(items, {name, context_.all_effects, {}});
    return items;
}

/// Fill and matte of a title are the same clip; any other second picture is lost.
void Flattener::tell_of_other_inputs(const Object& group, const Object& taken, const Around& around) const {
    for (const Object* input : group.children(pid::input_segments)) {
        if (!input || input == &taken || !is_picture_of_its_own(*input)) continue;
        const bool same = taken.mob_id(pid::source_id) && taken.mob_id(pid::source_id) == input->mob_id(pid::source_id);
        if (!same)
            warn(WarningKind::dropped, around,
                 "of the inputs of \"" + effect_name(context_.file, group) + "\" only the first is read");
    }
}

Items Flattener::generator(const Object& group, const Stretch& frames, const Around& around) {
    embedded::SourceDescription source;
    source.name = effect_name(context_.file, group);
    source.identity = "effect:" + source.name;
    source.rate = context_.rate;
    Item item = item_for(frames, around);
    item.kind = Item::Kind::event;
    item.event.source_in = frames.from / around.step;
    item.event.source = sources_.add(std::move(source));
    Items items;
    items.push_back(std::move(item));
    return items;
}

Items Flattener::retimed(const Object& group, const Stretch& frames, const Around& around) {
    const Object& input = *foreground_of(group);
    const std::string name = effect_name(context_.file, group);
    const Speed speed = speed_of(context_.file, group, length_of(group, around.place));
    if (speed.doubt) warn(WarningKind::doubt, around, "the effect \"" + name + "\": " + speed.doubt);
    embedded::Warnings cut_off_elsewhere = std::exchange(cut_off_, {});
    bool uneven = false;
    Items items;
    for (std::size_t i = 0; i < speed.pieces.size(); ++i) {
        const SpeedPiece& each = speed.pieces[i];
        const bool first = i == 0, last = i + 1 == speed.pieces.size();
        const Stretch shown{first ? frames.from : std::max(frames.from, each.from),
                            last ? frames.to : std::min(frames.to, each.to)};
        if (!(shown.from < shown.to)) continue;
        Items part = piece(input, each, shown, around);
        uneven = uneven || plays_unevenly(part, each.speed());
        append(items, std::move(part));
    }
    if (uneven && context_.file.kind_of(group) == Kind::picture)
        warn(WarningKind::doubt, around,
             "the effect \"" + name + "\": it " + std::string(timeline::plays_unevenly_text));
    for (embedded::Warning& warning : cut_off_in_all(std::exchange(cut_off_, std::move(cut_off_elsewhere)), items))
        cut_off_.push_back(std::move(warning));
    if (context_.file.kind_of(group) == Kind::picture)
        items = timeline::on_whole_frames(std::move(items), frames.from, around.step);
    if (!speed.curve) return items;
    warn(WarningKind::replaced, around,
         "the curve of \"" + name + "\" has no exact speed: its mean stands for it, and it is an effect for the lab");
    add_effect(items, {name, true, {}});
    return items;
}

Items Flattener::piece(const Object& input, const SpeedPiece& piece, const Stretch& frames, const Around& around) {
    const Fraction speed = piece.speed();
    const Fraction from = piece.source_at(frames.from), to = piece.source_at(frames.to);
    const Fraction frame(1);
    Around inside = around;
    inside.backward = around.backward != (speed < nothing);
    if (around.clear) inside.clear = piece.source_at(*around.clear);
    inside.grid.reset();
    inside.sub_clip.reset();
    const bool known = around.grid || !around.backward;
    if (!(speed == nothing) && known && context_.file.kind_of(input) == Kind::picture)
        inside.grid = Grid{piece.source_at(nothing), speed, around.grid ? &*around.grid : nullptr};
    if (speed == nothing)
        return timeline::held(range(input, {from, from + frame}, inside), (frames.to - frames.from) / around.step);
    const Stretch used = speed < nothing ? Stretch{to + frame, from + frame} : Stretch{from, to};
    Items items = range(input, used, inside);
    if (speed < nothing)
        for (Item& item : items)
            timeline::turn(item, frame / around.step);
    return timeline::at_speed(std::move(items), speed, frame / around.step);
}

Items Flattener::scope(const Object& nested, const Stretch& frames, const Around& around) {
    const auto& slots = nested.children(pid::scope_slots);
    if (slots.empty() || !slots.back()) {
        warn(WarningKind::replaced, around, "it holds no tracks, so it is a gap");
        return gap(frames, around);
    }
    const Scope inner{around.scope, around.at, &slots, slots.size() - 1};
    const Place place = around.place.step("track " + std::to_string(slots.size()));
    return range(*slots.back(), frames,
                 {place, around.rate, around.step, &inner, nothing, around.others, around.backward, around.clear,
                  around.grid, around.sub_clip});
}

Items Flattener::reference(const Object& reference, const Stretch& frames, const Around& around) {
    std::int64_t up = reference.integer(pid::relative_scope, 0);
    const std::int64_t down = reference.integer(pid::relative_slot, 0);
    const Scope* scope = around.scope;
    Fraction at = around.at;
    for (; scope && up > 0; --up) {
        at = at + scope->outer_at;
        scope = scope->outer;
    }
    if (!scope || down < 1 || down > static_cast<std::int64_t>(scope->index)) return gap(frames, around);
    const std::size_t index = scope->index - static_cast<std::size_t>(down);
    const Object* below = (*scope->slots)[index];
    if (!below) refuse(around.place, "the track below isn't in the file");
    const Scope lower{scope->outer, scope->outer_at, scope->slots, index};
    const Place place = around.place.step("track " + std::to_string(index + 1));
    Around inside{place, around.rate, around.step, &lower, nothing, around.others, around.backward, {}, {}, {}};
    if (around.clear) inside.clear = at + *around.clear;
    if (around.grid) inside.grid = around.grid->seen_from(-at);
    if (around.sub_clip) inside.sub_clip = at + *around.sub_clip;
    return range(*below, {at + frames.from, at + frames.to}, inside);
}

} // namespace formats::aaf
