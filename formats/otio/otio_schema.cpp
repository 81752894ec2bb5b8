#include "formats/otio/otio_schema.h"

#include "host/ascii_text.h"

#include <charconv>
#include <vector>

namespace formats::otio {
namespace {

struct KnownName {
    std::string_view name;
    Schema schema;
    int newest;
};

constexpr KnownName known_names[] = {
    {"RationalTime", Schema::rational_time, 1},
    {"TimeRange", Schema::time_range, 1},
    {"Clip", Schema::clip, 2},
    {"ExternalReference", Schema::external_reference, 1},
    {"MissingReference", Schema::missing_reference, 1},
    {"Gap", Schema::gap, 1},
    {"Filler", Schema::gap, 1},
    {"Transition", Schema::transition, 1},
    {"Marker", Schema::marker, 3},
    {"Effect", Schema::effect, 1},
    {"TimeEffect", Schema::effect, 1},
    {"LinearTimeWarp", Schema::linear_time_warp, 1},
    {"FreezeFrame", Schema::freeze_frame, 1},
    {"Track", Schema::track, 1},
    {"Sequence", Schema::track, 1},
    {"Stack", Schema::stack, 1},
    {"Timeline", Schema::timeline, 1},
    {"SerializableCollection", Schema::collection, 1},
    {"GeneratorReference", Schema::generator_reference, 1},
    {"ImageSequenceReference", Schema::image_sequence, 1},
    {"MediaReference", Schema::missing_reference, 1},
    {"TimeTransform", Schema::other, 1},
    {"SerializableObject", Schema::other, 1},
    {"SerializableObjectWithMetadata", Schema::other, 1},
    {"Composable", Schema::other, 1},
    {"Item", Schema::other, 1},
    {"Composition", Schema::other, 1},
    {"Color", Schema::other, 1},
    {"Box2d", Schema::other, 1},
    {"V2d", Schema::other, 1},
};

ObjectType known_type(std::string_view name, int version) {
    for (const KnownName& known : known_names)
        if (name == known.name && version > 0) return {known.schema, version, known.newest};
    return {Schema::unknown, version, 0};
}

ObjectType named_type(std::string_view text) {
    const std::size_t size = text.size();
    const bool one_digit = size > 2 && text[size - 2] == '.' && ascii::is_digit(text[size - 1]); // nearly all have
    if (one_digit) return known_type(text.substr(0, size - 2), text[size - 1] - '0');
    const std::size_t dot = text.rfind('.');
    if (dot == std::string_view::npos) return {Schema::unknown, 0, 0};
    const std::string_view digits = text.substr(dot + 1);
    int version = 0;
    const auto [end, trouble] = std::from_chars(digits.data(), digits.data() + digits.size(), version);
    const bool too_high = trouble == std::errc::result_out_of_range;
    if ((trouble != std::errc() && !too_high) || end != digits.data() + digits.size()) return {Schema::unknown, 0, 0};
    return known_type(text.substr(0, dot), too_high ? 1 << 30 : version);
}

void append_segment(const Place& place, std::string& path) {
    if (place.index >= 0 && place.value && schema_of(*place.value) == Schema::track) {
        const std::string name = name_of(*place.value);
        path += name;
        if (!name.empty()) return;
    }
    path += place.key;
    if (place.index >= 0) path.append(1, '[').append(std::to_string(place.index)).append(1, ']');
}

bool is_newer(const ObjectType& type) { return type.newest != 0 && type.version > type.newest; }

// Places are made up only for the refusal: they would cost more than the look at all objects.
bool holds_newer(const JsonValue& value) {
    if (value.IsArray()) {
        for (const JsonValue& element : value.GetArray())
            if (holds_newer(element)) return true;
    } else if (value.IsObject()) {
        if (is_newer(object_type(value))) return true;
        for (const auto& member : value.GetObject())
            if (holds_newer(member.value)) return true;
    }
    return false;
}

void check_version(const Place& place) {
    const ObjectType type = object_type(*place.value);
    if (!is_newer(type)) return;
    refuse(place, "\"" + std::string(json_string(json_member(*place.value, schema_key))) +
                      "\" has a higher version than this program reads (" + std::to_string(type.newest) + ")");
}

void check_versions_below(const Place& place) {
    if (place.value->IsObject()) {
        check_version(place);
        for (const auto& member : place.value->GetObject())
            if (member.value.IsObject() || member.value.IsArray())
                check_versions_below(place.step(json_string(&member.name), member.value));
        return;
    }
    int index = 0;
    for (const JsonValue& element : place.value->GetArray()) {
        if (element.IsObject() || element.IsArray()) check_versions_below({place.up, place.key, index, &element});
        ++index;
    }
}

} // namespace

ObjectType type_named_by(const JsonValue* schema) {
    if (!schema) return {};
    return schema->IsString() ? named_type(json_string(schema)) : ObjectType{Schema::unknown, 0, 0};
}

std::size_t Place::append_steps(std::string& path) const {
    if (up) up->append_steps(path);
    if (!key.empty() && !path.empty()) path += '/';
    const std::size_t last = path.size();
    if (!key.empty()) append_segment(*this, path);
    return last;
}

std::string Place::text() const {
    constexpr std::size_t usual_text = 60;
    std::string result;
    result.reserve(usual_text);
    const std::size_t last = append_steps(result);
    const std::string name = value ? name_of(*value) : std::string();
    const bool shown = !result.empty() && std::string_view(result).substr(last) == name;
    if (!name.empty() && !shown) result.append(result.empty() ? "\"" : " \"").append(name).append(1, '"');
    return result.empty() ? "the root" : result;
}

void refuse(const Place& place, const std::string& reason) { throw ReadError{place.text() + ": " + reason}; }

void refuse_newer_versions(const JsonValue& root) {
    if (holds_newer(root)) check_versions_below({nullptr, {}, -1, &root});
}

const JsonValue& array_of(const Place& place, std::string_view key) {
    static const JsonValue empty(rapidjson::kArrayType);
    const JsonValue* found = json_member(*place.value, key);
    if (!found) return empty;
    if (!found->IsArray()) refuse(place, "\"" + std::string(key) + "\" isn't an array");
    return *found;
}

std::string type_name(const JsonValue& object) {
    const std::string name(json_string(json_member(object, schema_key)));
    return name.empty() ? "no type" : "type \"" + name + "\"";
}

std::string name_of(const JsonValue& object) { return json_text(json_member(object, "name")); }

bool is_enabled(const Place& place) {
    const JsonValue* enabled = json_member(*place.value, "enabled");
    if (!enabled) return true;
    if (!enabled->IsBool()) refuse(place, "\"enabled\" isn't true or false");
    return enabled->GetBool();
}

const JsonValue* metadata_of(const JsonValue* object) { return json_object(object, "metadata"); }

const JsonValue* own_metadata_of(const JsonValue* object) { return json_object(metadata_of(object), "quillbrook"); }

} // namespace formats::otio
