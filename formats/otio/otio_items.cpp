#include "formats/otio/otio_items.h"

#include "formats/otio/otio_check.h"

#include <algorithm>
#include <utility>

namespace formats::otio {
namespace {

bool holds_nests(const JsonValue& children) {
    return std::any_of(children.Begin(), children.End(),
                       [](const JsonValue& child) { return is_composition(schema_of(child)); });
}

} // namespace

int kind_of_track(const JsonValue& track) {
    const JsonValue* kind = json_member(track, "kind");
    if (!kind || json_string(kind) == "Video") return picture_channel;
    return json_string(kind) == "Audio" ? sound_channel : 0;
}

std::vector<Place> tracks_of_kind(const Place& composition, int kind) {
    std::vector<Place> tracks;
    if (schema_of(*composition.value) == Schema::track) {
        if (kind_of_track(*composition.value) == kind) tracks.push_back(composition);
        return tracks;
    }
    const JsonValue& children = children_of(composition);
    for (rapidjson::SizeType i = 0; i < children.Size(); ++i) {
        const bool track = schema_of(children[i]) == Schema::track;
        if ((track ? kind_of_track(children[i]) : picture_channel) == kind)
            tracks.push_back(child_of(composition, children[i], i));
    }
    return tracks;
}

bool has_effects(const Place& object, const Context& context) { return read_effects(object, context).any; }

Items Flattener::children(const Place& track, int kind, bool effects_of_gaps) {
    kind_ = kind;
    on_fx_ = effects_of_gaps;
    Items items;
    const JsonValue& list = children_of(track);
    items.reserve(list.Size());
    for (rapidjson::SizeType i = 0; i < list.Size(); ++i)
        add(child_of(track, list[i], i), items);
    if (holds_nests(list)) drop_inner_transitions(items, *context_.warnings);
    return items;
}

Items Flattener::single(const Place& item, int kind) {
    kind_ = kind;
    on_fx_ = false;
    Items items;
    add(item, items);
    return items;
}

void Flattener::add(const Place& item, Items& items) {
    switch (schema_of(*item.value)) {
    case Schema::clip:
        add_clip(item, items);
        break;
    case Schema::gap:
        add_gap(item, items);
        break;
    case Schema::stack:
    case Schema::track:
        add_nest(item, items);
        break;
    case Schema::transition: {
        Item& added = items.emplace_back();
        added.kind = Item::Kind::transition;
        added.depth = depth_;
        added.transition = std::make_unique<embedded::TransitionDescription>(read_transition(item, context_));
        break;
    }
    default:
        refuse(item, "a child of " + type_name(*item.value) + " can't stand in a composition");
    }
}

Item Flattener::gap_of(const Place& object, const Fraction& length) const {
    Item gap;
    gap.depth = depth_;
    gap.event.duration = length;
    gap.event.label = object.text();
    return gap;
}

void Flattener::add_gap(const Place& gap, Items& items) {
    Item item = gap_of(gap, length(gap));
    item.never_black = json_truth(json_member(own_metadata_of(gap.value), "nothing"));
    if (is_enabled(gap)) {
        Effects effects = read_effects(gap, context_);
        if (on_fx_) {
            item.event.effects = std::move(effects.graph);
            item.event.effect_tracks = read_tracks(gap, context_);
        } else if (effects.any) {
            context_.warn_dropped(gap, "its effects are left out");
        }
    }
    items.push_back(std::move(item));
}

void Flattener::add_marks(const Place& object, const Fraction& from, Item& item) {
    for (Mark& mark : read_markers(object, context_)) {
        mark.time = exact_or(mark.offset, mark.time - from);
        if (Fraction(0) <= mark.time && mark.time < item.length()) item.marks.push_back(std::move(mark));
    }
}

void Flattener::add_clip(const Place& clip, Items& items) {
    const Media media = media_of(clip, context_);
    Item item = gap_of(clip, length_of_clip(clip, media, context_));
    if (is_enabled(clip)) {
        Effects effects = read_effects(clip, context_);
        add_marks(clip, start_of(media, context_), item);
        item.event.effects = std::move(effects.graph);
        item.event.effect_tracks = read_tracks(clip, context_);
        item.kind = media.black() ? Item::Kind::black : Item::Kind::event;
        if (item.kind == Item::Kind::event) {
            item.event.speed = effects.speed;
            item.event.source_in = source_in_of(media, context_);
            item.event.source = sources_.add(describe_source(clip, media, context_));
        }
    }
    items.push_back(std::move(item));
}

void Flattener::add_nest(const Place& nest, Items& items) {
    check_composition(nest, context_);
    const Fraction taken = length(nest);
    if (!is_enabled(nest)) {
        items.push_back(gap_of(nest, taken));
        return;
    }
    const std::vector<Place> tracks = tracks_of_kind(nest, kind_);
    const Effects effects = read_effects(nest, context_);
    if (tracks.empty())
        items.push_back(gap_of(nest, taken));
    else if (tracks.size() > 1 || effects.any)
        add_rendered(nest, effects, items);
    else
        splice(nest, tracks.front(), items);
}

void Flattener::add_rendered(const Place& nest, const Effects& effects, Items& items) {
    Item item = gap_of(nest, length(nest));
    item.kind = Item::Kind::event;
    const std::optional<Range> range = read_range(nest, "source_range");
    const std::optional<Time> start = range ? range->start : std::nullopt;
    if (start) item.event.source_in = start->seconds_on(*context_.rate);
    item.event.speed = effects.speed;
    if (on_fx_) {
        item.event.effects = effects.graph;
        item.event.effect_tracks = read_tracks(nest, context_);
    } else if (!effects.graph.empty()) {
        context_.warn_dropped(nest, "its effects are left out");
    }
    embedded::SourceDescription source;
    source.name = name_of(*nest.value);
    source.identity = "comp:" + source.name;
    source.rendered = true;
    source.rate = context_.rate;
    source.film_rate = context_.film_rate;
    item.event.source = sources_.add(std::move(source));
    items.push_back(std::move(item));
}

/// The content of a nest's only track, which may be a child of the nest that isn't one, or the nest itself.
Items Flattener::track_in_nest(const Place& nest, const Place& track) {
    Items content;
    if (schema_of(*track.value) != Schema::track) {
        add(track, content);
        return content;
    }
    const bool inner = track.value != nest.value;
    if (inner && !is_enabled(track)) {
        content.push_back(gap_of(track, length(track)));
        return content;
    }
    content = children(track, kind_, on_fx_);
    if (!inner) return content;
    warn_of_effects(track, context_);
    const Stretch stretch = stretch_of_track(track, length_of(content), context_);
    return trimmed(std::move(content), stretch, context_.warnings);
}

void Flattener::splice(const Place& nest, const Place& track, Items& items) {
    const Fraction taken = length(nest);
    ++depth_;
    Items content = track_in_nest(nest, track);
    --depth_;
    const Fraction total = length_of(content);
    const std::optional<Range> range = read_range(nest, "source_range");
    Fraction from = range && range->start ? range->start->seconds_on(*context_.rate) : Fraction(0);
    const bool misses = from + taken <= Fraction(0) || total <= from;
    if (misses && range && schema_of(*nest.value) == Schema::track) {
        if (Fraction(0) < total)
            context_.warn(nest, "its source_range meets none of its content and starts at its head",
                          embedded::WarningKind::replaced);
        from = 0;
    }
    for (Item& item :
         spliced(std::move(content), {from, from + taken}, gap_of(nest, taken).event, depth_, context_.warnings))
        items.push_back(std::move(item));
}

} // namespace formats::otio
