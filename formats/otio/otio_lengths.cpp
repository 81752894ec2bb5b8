#include "formats/otio/otio_items.h"

#include <algorithm>

namespace formats::otio {

Fraction Lengths::of(const Place& item) {
    const auto known = known_.find(item.value);
    if (known != known_.end()) return known->second;
    const Fraction measured = measure(item);
    if (is_composition(schema_of(*item.value))) known_.emplace(item.value, measured);
    return measured;
}

Fraction Lengths::measure(const Place& item) {
    const Schema schema = schema_of(*item.value);
    if (schema == Schema::transition) return {};
    if (schema == Schema::clip) {
        Context quiet = context_;
        embedded::Warnings said_elsewhere;
        quiet.warnings = &said_elsewhere;
        return length_of_clip(item, media_of(item, quiet), quiet);
    }
    if (schema != Schema::gap && !is_composition(schema))
        refuse(item, "a child of " + type_name(*item.value) + " can't stand in a composition");
    const std::optional<Range> range = read_range(item, "source_range");
    if (range && range->duration)
        return exact_or(own_metadata_of(item.value), "length", range->duration->seconds_on(*context_.rate));
    if (schema == Schema::gap) return {};
    return schema == Schema::track ? of_children(item) : longest_child(item);
}

Fraction Lengths::of_children(const Place& track) {
    Fraction sum;
    const JsonValue& list = children_of(track);
    for (rapidjson::SizeType i = 0; i < list.Size(); ++i)
        sum = sum + of(child_of(track, list[i], i));
    return sum;
}

/// What the range of a track in a stack leaves of its content; nothing is added to that.
Fraction Lengths::shown_of(const Place& track) {
    Context quiet = context_;
    embedded::Warnings said_elsewhere;
    quiet.warnings = &said_elsewhere;
    const Fraction content = of_children(track);
    const Stretch stretch = stretch_of_track(track, content, quiet);
    return std::min(stretch.to, content) - std::max(stretch.from, Fraction(0));
}

Fraction Lengths::longest_child(const Place& stack) {
    Fraction longest;
    const JsonValue& list = children_of(stack);
    for (rapidjson::SizeType i = 0; i < list.Size(); ++i) {
        const Place child = child_of(stack, list[i], i);
        longest = std::max(longest, schema_of(list[i]) == Schema::track ? shown_of(child) : of(child));
    }
    return longest;
}

} // namespace formats::otio
