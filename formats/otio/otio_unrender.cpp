#include "formats/otio/otio_unrender.h"

#include <algorithm>
#include <cmath>

namespace formats::otio {
namespace {

using Allocator = JsonPool;

constexpr int seconds_scale = 1000;
constexpr double whole_limit = 9007199254740992.0;

JsonValue copied(const std::string& text, Allocator& allocator) {
    return JsonValue(text.data(), static_cast<rapidjson::SizeType>(text.size()), allocator);
}

/// The time as a count at a rate far above those of films, so that no reader takes it for frames.
JsonValue time_value(const Fraction& seconds, Allocator& allocator) {
    double value = static_cast<double>(seconds.num()) * seconds_scale;
    double rate = static_cast<double>(seconds.den()) * seconds_scale;
    if (std::fabs(value) > whole_limit || rate > 1e14) {
        value = seconds.to_double() * seconds_scale;
        rate = seconds_scale;
    }
    JsonValue time(rapidjson::kObjectType);
    time.AddMember("OTIO_SCHEMA", "RationalTime.1", allocator);
    time.AddMember("rate", rate, allocator);
    time.AddMember("value", value, allocator);
    return time;
}

JsonValue composition_of(JsonValue child, const char* schema, Allocator& allocator) {
    JsonValue children(rapidjson::kArrayType);
    children.PushBack(child, allocator);
    JsonValue result(rapidjson::kObjectType);
    result.AddMember("OTIO_SCHEMA", rapidjson::StringRef(schema), allocator);
    result.AddMember("children", children, allocator);
    return result;
}

/// The seconds of the origin in which its only track of a kind has anything, of a clip's stretch of it.
Stretch content_of(const Place& origin, int kind, const Context& context) {
    Lengths lengths(context);
    const Place track = tracks_of_kind(origin, kind).front();
    const bool is_track = schema_of(*track.value) == Schema::track;
    const bool inner = track.value != origin.value;
    const Fraction content = !is_track ? lengths.of(track)
                             : inner   ? lengths.shown_of(track)
                                       : lengths.of_children(track);
    const Fraction length = lengths.of(origin);
    const std::optional<Range> range = read_range(origin, "source_range");
    Fraction start = range && range->start ? range->start->seconds_on(*context.rate) : Fraction(0);
    const bool misses = content <= start || start + length <= Fraction(0);
    if (misses && !inner && is_track) start = 0; // as for every nested track
    return {std::max(-start, Fraction(0)), std::min(content - start, length)};
}

bool has_lab_effect(const Effects& effects) {
    return std::any_of(effects.graph.begin(), effects.graph.end(),
                       [](const embedded::EffectDescription& effect) { return effect.for_the_lab; });
}

class Unrenderer {
public:
    Unrenderer(Allocator& allocator, const Context& context) : allocator_(allocator), context_(context) {
        quiet_ = context;
        quiet_.warnings = &said_elsewhere_;
    }

    void walk(const Place& item, int kind) {
        const Schema schema = schema_of(*item.value);
        if (schema == Schema::clip) {
            if (replace(item, kind)) walk(item, kind);
        } else if (is_composition(schema)) {
            walk_children(item, schema == Schema::track ? kind_of_track(*item.value) : picture_channel);
        }
    }

private:
    void walk_children(const Place& composition, int kind) {
        if (schema_of(*composition.value) == Schema::track && subtype_of(composition, quiet_) == fx_subtype) return;
        const JsonValue& children = children_of(composition);
        for (rapidjson::SizeType i = 0; i < children.Size(); ++i)
            walk(child_of(composition, children[i], i), kind);
    }

    /// What the clip was rendered from, where that can stand in its place; null otherwise.
    const JsonValue* origin_of(const Place& clip, int kind) {
        if (!is_rendered(*clip.value) || !is_enabled(clip)) return nullptr;
        const JsonValue* origin = json_object(own_metadata_of(clip.value), "rendered_from");
        if (!origin || !is_composition(schema_of(*origin))) return nullptr;
        const Place place = clip.step("metadata/quillbrook/rendered_from", *origin);
        if (!is_enabled(place) || has_effects(place, quiet_)) return nullptr;
        if (tracks_of_kind(place, kind).size() != 1) return nullptr;
        const Effects effects = read_effects(clip, quiet_);
        if (effects.speed != Fraction(1)) return nullptr;
        if (!has_lab_effect(effects)) return origin;
        context_.warn(clip, "it stays rendered material, for it has an effect that is the lab's");
        return nullptr;
    }

    /// Of the stretch that the clip shows.
    void warn_of_lack(const Place& clip, const JsonValue& origin, int kind, const Stretch& shown) {
        const Place place = clip.step("metadata/quillbrook/rendered_from", origin);
        const Stretch content = content_of(place, kind, quiet_);
        if (shown.from < content.from || content.to < shown.to)
            context_.warn(clip, "what it was rendered from is too short for it: a gap stands for what lacks");
    }

    bool replace(const Place& clip, int kind) {
        const JsonValue* origin = origin_of(clip, kind);
        if (!origin) return false;
        const Media media = media_of(clip, quiet_);
        const Fraction from = source_in_of(media, context_);
        const Fraction length = length_of_clip(clip, media, context_);
        warn_of_lack(clip, *origin, kind, {from, from + length});
        JsonValue range(rapidjson::kObjectType);
        range.AddMember("OTIO_SCHEMA", "TimeRange.1", allocator_);
        range.AddMember("start_time", time_value(from, allocator_), allocator_);
        range.AddMember("duration", time_value(length, allocator_), allocator_);

        JsonValue moved;
        moved.Swap(*const_cast<JsonValue*>(origin));
        JsonValue track = composition_of(std::move(moved), "Track.1", allocator_);
        track.AddMember("kind", rapidjson::StringRef(kind == sound_channel ? "Audio" : "Video"), allocator_);
        // Unlike a track, a stack has a gap wherever its range lies beyond its content.
        JsonValue nest = composition_of(std::move(track), "Stack.1", allocator_);
        nest.AddMember("name", copied(name_of(*clip.value), allocator_), allocator_);
        nest.AddMember("source_range", range, allocator_);
        const_cast<JsonValue*>(clip.value)->Swap(nest);
        return true;
    }

    Allocator& allocator_;
    const Context& context_;
    Context quiet_;
    embedded::Warnings said_elsewhere_;
};

} // namespace

void unrender(JsonTree& document, const Context& context) {
    // The document belongs to the caller, who may change it; places only lend it out as constant.
    const Root root(document);
    Unrenderer unrenderer(document.GetAllocator(), context);
    for (const Place& channel : root.channels())
        unrenderer.walk(channel, picture_channel);
}

} // namespace formats::otio
