#include "formats/otio/otio_details.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <limits>

namespace formats::otio {
namespace {

constexpr double highest_scalar = 1e6;
constexpr int highest_channel = 0x7FFF;
constexpr int highest_pattern = 0xFFFF;

using ascii::is_digit;
bool begins(const std::string& text, std::string_view start) { return text.compare(0, start.size(), start) == 0; }

std::string name_or(const JsonValue& object, std::string_view other) {
    std::string name = name_of(object);
    return name.empty() ? json_text(json_member(object, other)) : name;
}

Fraction scalar_of(const Place& effect, Schema schema) {
    if (schema == Schema::freeze_frame) return 0;
    const JsonValue* scalar = json_member(*effect.value, "time_scalar");
    if (!scalar) return 1;
    return exact_or(own_metadata_of(effect.value), "speed",
                    read_number(effect, *scalar, "\"time_scalar\"", highest_scalar));
}

void read_effect(const Place& effect, const Context& context, Effects& effects) {
    if (!effect.value->IsObject()) refuse(effect, "the effect isn't an object");
    if (!is_enabled(effect)) return;
    effects.any = true;
    const Schema schema = schema_of(*effect.value);
    if (schema == Schema::linear_time_warp || schema == Schema::freeze_frame) {
        effects.speed = effects.speed * scalar_of(effect, schema);
        return;
    }
    if (schema != Schema::effect && schema != Schema::unknown) refuse(effect, "isn't an effect");
    const JsonValue* own = own_metadata_of(effect.value);
    embedded::EffectDescription description;
    description.name = name_or(*effect.value, "effect_name");
    description.for_the_lab =
        context.all_effects || json_member(own, "tracks") || json_truth(json_member(own, "optical"));
    description.tracks = read_tracks(effect, context);
    effects.graph.push_back(std::move(description));
}

/// The number that the first run of digits makes, none above the limit.
std::optional<int> first_digits(const std::string& text) {
    const auto start = std::find_if(text.begin(), text.end(), is_digit);
    if (start == text.end()) return std::nullopt;
    int number = 0;
    for (auto digit = start; digit != text.end() && is_digit(*digit); ++digit)
        number = std::min(number * 10 + (*digit - '0'), highest_pattern);
    return number;
}

std::optional<int> digits_at_end(const std::string& text) {
    auto start = text.end();
    while (start != text.begin() && is_digit(*(start - 1)))
        --start;
    return first_digits(std::string(start, text.end()));
}

/// "W001" and the like, as the wipes of edit decision lists are called.
bool is_wipe_code(const std::string& code) {
    return code.size() > 1 && ascii::upper(code[0]) == 'W' && std::all_of(code.begin() + 1, code.end(), is_digit);
}

void number_wipe(const JsonValue& object, const std::string& type, const std::string& code,
                 embedded::TransitionDescription& wipe) {
    const JsonValue* own = json_object(own_metadata_of(&object), "wipe");
    long long pattern = 0;
    if (json_integer(json_member(own, "pattern"), 0, highest_pattern, &pattern)) {
        wipe.pattern = static_cast<int>(pattern);
    } else if (const auto digits = first_digits(code)) {
        wipe.reversed = *digits >= 100;
        wipe.pattern = wipe.reversed ? *digits - 100 : *digits;
    } else {
        wipe.pattern = digits_at_end(type).value_or(1);
    }
    if (const JsonValue* reversed = json_member(own, "reversed")) wipe.reversed = json_truth(reversed);
}

Fraction offset_of(const Place& transition, std::string_view key, const Context& context) {
    const std::optional<Time> offset = read_time(transition, key);
    if (!offset || offset->value < Fraction(0)) return {};
    return exact_or(own_metadata_of(transition.value), key, offset->seconds_on(*context.rate));
}

std::optional<Mark> read_marker(const Place& marker, const Context& context) {
    const ObjectType type = object_type(*marker.value);
    if (type.schema == Schema::unknown) return std::nullopt;
    if (type.schema != Schema::marker) refuse(marker, "isn't a marker");
    const std::optional<Range> range = read_range(marker, type.version == 1 ? "range" : "marked_range");
    if (!range || !range->start) {
        context.warn_dropped(marker, "the marker stands nowhere, so it is left out");
        return std::nullopt;
    }
    const JsonValue* own = own_metadata_of(marker.value);
    const Fraction time = exact_or(own, "time", range->start->seconds_on(*context.rate));
    Mark mark{time, name_or(*marker.value, "comment"), 4, exact_of(own, "offset")};
    long long flags = 0;
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    if (json_integer(json_member(own, "flags"), least, most, &flags)) mark.flags = static_cast<int>(flags);
    return mark;
}

} // namespace

Effects read_effects(const Place& item, const Context& context) {
    Effects effects;
    const JsonValue& list = array_of(item, "effects");
    for (rapidjson::SizeType i = 0; i < list.Size(); ++i)
        if (!list[i].IsNull()) read_effect(item.step("effects", list[i], static_cast<int>(i)), context, effects);
    return effects;
}

std::vector<int> read_tracks(const Place& object, const Context& context) {
    std::vector<int> tracks;
    const JsonValue* list = json_member(own_metadata_of(object.value), "tracks");
    if (!list) return tracks;
    if (!list->IsArray()) {
        context.warn(object, "its \"tracks\" aren't an array, so they don't count");
        return tracks;
    }
    for (const JsonValue& track : list->GetArray()) {
        long long number = 0;
        if (json_integer(&track, 0, highest_channel, &number))
            tracks.push_back(static_cast<int>(number));
        else
            context.warn(object, "one of its \"tracks\" is no number of a track");
    }
    return tracks;
}

void warn_of_effects(const Place& object, const Context& context) {
    if (read_effects(object, context).any) context.warn_dropped(object, "its effects are left out");
}

embedded::TransitionDescription read_transition(const Place& transition, const Context& context) {
    using Kind = embedded::TransitionDescription::Kind;
    const JsonValue& object = *transition.value;
    const std::string type = json_text(json_member(object, "transition_type"));
    const std::string code = json_text(json_member(json_object(metadata_of(&object), "cmx_3600"), "transition"));
    const bool own_wipe = json_object(own_metadata_of(&object), "wipe") != nullptr;

    embedded::TransitionDescription result;
    if (own_wipe || begins(type, "SMPTE_Wipe") || is_wipe_code(code)) {
        result.kind = Kind::wipe;
        number_wipe(object, type, code, result);
    } else {
        result.kind = type == "SMPTE_Dissolve"  ? Kind::dissolve
                      : type == "Film_Dissolve" ? Kind::film_dissolve
                                                : Kind::other;
    }
    result.name = name_or(object, "transition_type");
    result.in_offset = offset_of(transition, "in_offset", context);
    result.out_offset = offset_of(transition, "out_offset", context);
    result.label = transition.text();
    return result;
}

std::vector<Mark> read_markers(const Place& object, const Context& context) {
    std::vector<Mark> marks;
    const JsonValue& list = array_of(object, "markers");
    for (rapidjson::SizeType i = 0; i < list.Size(); ++i) {
        if (list[i].IsNull()) continue;
        auto mark = read_marker(object.step("markers", list[i], static_cast<int>(i)), context);
        if (mark) marks.push_back(std::move(*mark));
    }
    return marks;
}

} // namespace formats::otio
