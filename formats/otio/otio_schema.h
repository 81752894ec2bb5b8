#pragma once
// Objects of .otio documents: what type they are, and where they stand for messages.

#include "formats/json_document.h"

#include <string>
#include <string_view>

namespace formats::otio {

enum class Schema {
    data, ///< no schema at all
    unknown,
    timeline,
    collection,
    stack,
    track,
    clip,
    gap,
    transition,
    marker,
    effect,
    linear_time_warp,
    freeze_frame,
    external_reference,
    missing_reference,
    generator_reference,
    image_sequence,
    rational_time,
    time_range,
    other, ///< known, and of no use as any of these
};

struct ObjectType {
    Schema schema = Schema::data;
    int version = 0;
    int newest = 0; ///< version that can be read; 0 for unknown names
};

constexpr std::string_view schema_key = "OTIO_SCHEMA";
/// By what stands under that key; null where nothing does.
ObjectType type_named_by(const JsonValue* schema);
inline ObjectType object_type(const JsonValue& value) { return type_named_by(json_member(value, schema_key)); }
inline Schema schema_of(const JsonValue& value) { return object_type(value).schema; }
inline bool is_composition(Schema schema) { return schema == Schema::stack || schema == Schema::track; }

/// One step on the way from the root of the document to an object. Lives on the stack while the object is read.
struct Place {
    const Place* up = nullptr;
    std::string_view key;
    int index = -1; ///< within the array under `key`
    const JsonValue* value = nullptr;

    Place step(std::string_view name, const JsonValue& at, int number = -1) const { return {this, name, number, &at}; }
    /// As `tracks/V1/children[17] "A012"`.
    std::string text() const;

private:
    /// The same without the name, put behind a text; gives where in it the last step begins.
    std::size_t append_steps(std::string& path) const;
};

/// What stops the reading, in words that name the object.
struct ReadError {
    std::string message;
};
[[noreturn]] void refuse(const Place& place, const std::string& reason);

/// Refuses the document when any object in it is of a newer version than can be read.
void refuse_newer_versions(const JsonValue& root);

/// The elements of the array under `key`; empty where it lacks, refused where it isn't one.
const JsonValue& array_of(const Place& place, std::string_view key);
inline const JsonValue& children_of(const Place& place) { return array_of(place, "children"); }
inline Place child_of(const Place& place, const JsonValue& child, rapidjson::SizeType index) {
    return place.step("children", child, static_cast<int>(index));
}
std::string name_of(const JsonValue& object);
/// In words, as `type "Wonder.1"`.
std::string type_name(const JsonValue& object);
/// Refused where the field is there and isn't a truth value.
bool is_enabled(const Place& place);
/// The metadata of an object, and in it our own dictionary; null where there is none.
const JsonValue* metadata_of(const JsonValue* object);
const JsonValue* own_metadata_of(const JsonValue* object);

} // namespace formats::otio
