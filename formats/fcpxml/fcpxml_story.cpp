#include "formats/fcpxml/fcpxml_story.h"

#include "formats/fcpxml/fcpxml_details.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace formats::fcpxml {
namespace {

using embedded::WarningKind;

/// Items in items, whichever way. Real edits have less than ten.
constexpr int most_depth = 100;

bool is_item(Story story) {
    return story != Story::none && story != Story::caption && story != Story::transition && story != Story::unknown;
}

void append(Items& row, Items more) {
    row.insert(row.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

bool holds_transitions_of_nests(const Items& row) {
    return std::any_of(row.begin(), row.end(), [](const Item& item) { return item.is_transition() && item.depth > 0; });
}

} // namespace

StoryReader::Level StoryReader::Level::in(int lane_of_child) const {
    Level level = *this;
    level.depth = depth + 1;
    level.lane.push_back(lane_of_child);
    level.own_sound_off = connected_sound_off;
    return level;
}

Storyline StoryReader::storyline_of(const Element& sequence) const {
    const Format format = context_.format_of(sequence);
    return {sequence, context_.time(sequence, "tcStart").value_or(Fraction(0)),
            format.rate ? context_.true_rate(*format.rate) : context_.rate->rate()};
}

Runs StoryReader::runs_of(const Storyline& storyline) {
    Level level;
    level.rate = storyline.rate;
    Runs runs;
    const Element spine = storyline.sequence.child("spine");
    add_spine(spine, zero_of(spine, storyline.start, storyline.rate), level, runs);
    return runs;
}

Runs StoryReader::runs_of_item(const Element& element, const Fraction& rate) {
    Level level;
    level.rate = rate;
    Runs runs;
    add_connected(element, Fraction(0), level, runs);
    return runs;
}

void StoryReader::check_depth(const Element& element, const Level& level) const {
    if (level.depth > most_depth)
        refuse(element, "lies in more than " + std::to_string(most_depth) + " items in each other");
}

/// Offsets in the spine of a sequence count from its timecode. Some writers begin at 0 all the same. Less than a frame
/// before it is the same time, rounded.
Fraction StoryReader::zero_of(const Element& spine, const Fraction& start, const Fraction& rate) const {
    for (const Element child : spine.children()) {
        const std::optional<Fraction> offset = context_.time(child, "offset");
        if (!offset || story_of(child) == Story::none) continue;
        if (start < *offset + Fraction(1) / rate) return 0;
        if (!sound_)
            context_.warn(spine.parent(),
                          "its items lie before its \"tcStart\", so their offsets are counted from there");
        return start;
    }
    return start;
}

std::optional<Fraction> StoryReader::length_of_member(const Element& child, const Level& level) {
    switch (story_of(child)) {
    case Story::none:
        return std::nullopt;
    case Story::caption:
        if (!sound_) context_.left_out(child);
        return std::nullopt;
    case Story::unknown:
    case Story::spine:
        if (!sound_)
            context_.warn(child, "isn't known here; it is left out, and what time it takes is a gap",
                          WarningKind::dropped);
        return context_.length(child, "duration");
    default:
        return length_of(child, level);
    }
}

std::vector<StoryReader::Member> StoryReader::members_of(const Element& spine, const Fraction& zero,
                                                         const Level& level) {
    std::vector<Member> members;
    Fraction now = zero;
    for (const Element child : spine.children()) {
        const std::optional<Fraction> length = length_of_member(child, level);
        if (!length) continue;
        const std::optional<Fraction> offset = context_.time(child, "offset");
        const bool transition = story_of(child) == Story::transition;
        members.push_back({child, offset ? zero + *offset : now, *length, transition});
        if (!transition) now = members.back().place + *length;
    }
    settle(members, level);
    return members;
}

// Items of a storyline follow each other. Where rounded times leave less than half a frame between two of them, the
// first goes on to the second; where they overlap the second counts.
void StoryReader::settle(std::vector<Member>& members, const Level& level) {
    Member* before = nullptr;
    for (Member& member : members) {
        if (member.transition) continue;
        if (before) {
            const Fraction end = before->place + before->length;
            const Fraction room = member.place - before->place;
            if (room < Fraction(0)) {
                if (!sound_)
                    context_.warn(member.element, "lies before the item that it follows; it is put behind that");
                member.place = end;
            } else if (member.place < end || member.place - end < half_frame(level)) {
                if (half_frame(level) < end - member.place && !sound_)
                    context_.warn(before->element, "reaches into the item behind it and is cut to where that begins",
                                  WarningKind::dropped);
                before->length = room;
            }
        }
        before = &member;
    }
}

void StoryReader::add_spine(const Element& spine, const Fraction& zero, const Level& level, Runs& runs) {
    check_depth(spine, level);
    const std::vector<Member> members = members_of(spine, zero, level);
    const auto first = std::find_if(members.begin(), members.end(), [](const Member& m) { return !m.transition; });
    const std::size_t own = runs.size();
    const Fraction start = first == members.end() ? zero : first->place;
    runs.push_back({level.lane, start, {}});
    Items row;
    Fraction now = start;
    const auto go_to = [&](const Fraction& place) {
        if (now < place) row.push_back(fcpxml::gap_of(place - now));
        now = std::max(now, place);
    };
    for (std::size_t i = 0; i < members.size(); ++i) {
        const Member& member = members[i];
        if (member.transition) {
            const Fraction cut = cut_of(members, i);
            go_to(cut);
            add_transition(members, i, cut, level, row);
            continue;
        }
        go_to(member.place);
        append(row, item(member.element, member.place, member.length, level, runs));
        now = now + member.length;
    }
    if (holds_transitions_of_nests(row)) drop_inner_transitions(row, context_.warnings);
    for (const Member& member : members)
        if (member.transition && !sound_) add_marks_of_transition(member, start, row);
    runs[own].items = std::move(row);
}

namespace {

template <class Members> const auto* item_before(const Members& members, std::size_t at) {
    while (at-- > 0)
        if (!members[at].transition) return &members[at];
    return static_cast<const typename Members::value_type*>(nullptr);
}

template <class Members> const auto* item_behind(const Members& members, std::size_t at) {
    while (++at < members.size())
        if (!members[at].transition) return &members[at];
    return static_cast<const typename Members::value_type*>(nullptr);
}

} // namespace

// The cut is where the item behind begins, never the middle of the transition: of an odd number of frames the middle
// is no frame. Between two items with a hole between them it belongs to the one that it covers the end of.
Fraction StoryReader::cut_of(const std::vector<Member>& members, std::size_t transition) const {
    const Member& member = members[transition];
    const Member *before = item_before(members, transition), *behind = item_behind(members, transition);
    if (!before) return behind ? behind->place : member.place;
    const Fraction end = before->place + before->length;
    if (!behind || (end < behind->place && member.place + member.length <= behind->place)) return end;
    return behind->place;
}

void StoryReader::warn_of_items_in(const Element& transition) const {
    for (const Element child : transition.children())
        if (!sound_ && is_item(story_of(child)))
            context_.warn(child, "lies in a transition, where nothing is shown; it is left out", WarningKind::dropped);
}

void StoryReader::add_transition(const std::vector<Member>& members, std::size_t at, const Fraction& cut,
                                 const Level& level, Items& row) {
    const Member& member = members[at];
    warn_of_items_in(member.element);
    const bool head = !item_before(members, at), tail = !item_behind(members, at);
    if (head && tail) {
        if (!sound_) context_.warn(member.element, "stands between no items and is left out", WarningKind::dropped);
        return;
    }
    const Fraction rounded = half_frame(level);
    if (cut + rounded < member.place || member.place + member.length + rounded < cut) {
        if (!sound_) context_.warn(member.element, "doesn't touch its cut and is left out", WarningKind::dropped);
        return;
    }
    std::optional<embedded::TransitionDescription> read = read_transition(member.element, sound_, context_);
    if (!read) return;
    const Fraction nothing;
    if (!head) read->in_offset = std::max(nothing, cut - member.place);
    if (!tail) read->out_offset = std::max(nothing, member.place + member.length - cut);
    Item item;
    item.kind = Item::Kind::transition;
    item.transition = std::make_unique<embedded::TransitionDescription>(std::move(*read));
    row.push_back(std::move(item));
}

// Its own clock reads an hour at its start, as that of gaps and titles does.
void StoryReader::add_marks_of_transition(const Member& transition, const Fraction& row_start, Items& row) {
    const Fraction hour = Fraction(3600) * context_.scale;
    for (timeline::Mark& mark : read_markers(transition.element, context_)) {
        const Fraction start =
            context_.time(transition.element, "start").value_or(mark.time < hour ? Fraction(0) : hour);
        mark.time = transition.place + mark.time - start - row_start;
        if (!add_mark(row, std::move(mark))) context_.unused_marker(transition.element);
    }
}

Element StoryReader::chosen(const Element& element) {
    if (story_of(element) != Story::audition) return element;
    for (const Element child : element.children())
        if (is_item(story_of(child))) return chosen(child);
    return {};
}

// The marks of an item that is seen and heard stand on its picture.
void StoryReader::add_marks(const Element& element, const Clock& clock, Items& items) {
    if (seen(element) == sound_) return;
    for (timeline::Mark& mark : read_markers(element, context_)) {
        mark.time = (mark.time - clock.start) * clock.pace;
        if (!add_mark(items, std::move(mark))) context_.unused_marker(element);
    }
}

void StoryReader::tell_of_marks(const Element& element) const {
    for (std::size_t left = read_markers(element, context_).size(); left > 0; --left)
        context_.unused_marker(element);
}

Items StoryReader::item(const Element& element, const Fraction& place, const Fraction& length, const Level& level,
                        Runs& runs) {
    check_depth(element, level);
    Items items;
    const Element pick = chosen(element);
    if (!pick) {
        items.push_back(fcpxml::gap_of(length, place_of(element)));
        return items;
    }
    const Clock clock{place, start_of(pick), pace_of(pick, level)};
    const bool enabled = pick.attribute("enabled") != "0" && element.attribute("enabled") != "0";
    const bool split = sound_ && (pick.has_attribute("audioStart") || pick.has_attribute("audioDuration"));
    if (enabled && split && !level.own_sound_off) add_split_sound(pick, clock, level, runs);
    if (!enabled || split || (sound_ && level.own_sound_off))
        items.push_back(fcpxml::gap_of(length, place_of(pick)));
    else if (sound_)
        items = content_of(pick, clock, length, level);
    else
        items = with_cuts_on_frames(content_of(pick, clock, length, level), level.rate);
    const bool no_item = level.nested && story_of(pick) == Story::gap;
    if (enabled && !no_item)
        add_marks(pick, clock, items);
    else if (!sound_)
        tell_of_marks(pick);
    add_connected(pick, clock, level, runs);
    const Story story = story_of(pick);
    if (enabled && story != Story::clip && story != Story::sync_clip) add_contained(pick, clock, length, level, runs);
    return items;
}

// Sound that begins or ends elsewhere than its picture overlaps that of its neighbours: it goes beside the storyline.
void StoryReader::add_split_sound(const Element& element, const Clock& clock, const Level& level, Runs& runs) {
    const Fraction start = context_.time(element, "audioStart").value_or(clock.start);
    const std::optional<Fraction> length = context_.length(element, "audioDuration");
    const Clock own{clock.at(start), start, clock.pace};
    const Fraction taken = length ? *length * clock.pace : length_of(element, level);
    Items items = content_of(element, own, taken, level);
    if (has_picture(items)) runs.push_back({level.lane, own.place, std::move(items)});
}

void StoryReader::add_connected(const Element& parent, const Clock& clock, const Level& level, Runs& runs) {
    for (const Element child : parent.children()) {
        const Story story = story_of(child);
        if (story == Story::caption && !sound_) context_.left_out(child);
        if (!is_item(story) || lane_of(child) == 0) continue;
        const std::optional<Fraction> offset = context_.time(child, "offset");
        add_connected(child, offset ? clock.at(*offset) : clock.place, level.in(lane_of(child)), runs);
    }
}

void StoryReader::add_connected(const Element& child, const Fraction& place, const Level& level, Runs& runs) {
    if (story_of(child) == Story::spine) return add_spine(child, place, level, runs);
    const std::size_t own = runs.size();
    runs.push_back({level.lane, place, {}});
    Items items = item(child, place, length_of(child, level), level, runs);
    runs[own].items = std::move(items);
}

// What lies in an item that has a picture of its own, without a lane, covers it, but never beyond its ends.
void StoryReader::add_contained(const Element& parent, const Clock& clock, const Fraction& length, const Level& level,
                                Runs& runs) {
    for (const Element child : parent.children()) {
        const Story story = story_of(child);
        if (!is_item(story) || lane_of(child) != 0) continue;
        if (!sound_ && story != Story::audio)
            context_.warn(child, "lies in an item with a picture of its own; it is put above that");
        const std::optional<Fraction> offset = context_.time(child, "offset");
        Runs inner;
        add_connected(child, offset ? clock.at(*offset) : clock.place, level.in(1), inner);
        for (Run& run : inner) {
            const Fraction from = clock.place - run.start;
            run.items = trimmed(std::move(run.items), {from, from + length}, sound_ ? nullptr : &context_.warnings);
            run.start = std::max(run.start, clock.place);
            runs.push_back(std::move(run));
        }
    }
}

} // namespace formats::fcpxml
