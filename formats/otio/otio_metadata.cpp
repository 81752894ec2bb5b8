#include "formats/otio/otio_metadata.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <iterator>

namespace formats::otio {
namespace {

constexpr std::size_t field_count = static_cast<std::size_t>(Field::count);

/// In the order of the fields.
constexpr FieldName field_names[] = {
    {"identity", "", false},
    {"film_rate", "", false},
    {"start_strip", "", false},
    {"reel", "Tape", true},
    {"snd_reel", "Soundroll", false},
    {"reel_24p", "", false},
    {"cam_reel", "Camroll", false},
    {"lab_reel", "Labroll", false},
    {"comp_reel", "", false},
    {"timecode", "", false},
    {"timecode_rate", "", false},
    {"timecode_std", "", false},
    {"drop", "", false},
    {"media_rate", "", false},
    {"sound_timecode", "Sound TC", false},
    {"sound_std", "", false},
    {"timecode_24p", "TC 24", false},
    {"film", "", false},
    {"keycode", "KN Start", false},
    {"ink", "", false},
    {"inkcode", "Ink Number", false},
    {"scene", "Scene", false},
    {"take", "Take", false},
    {"description", "", false},
    {"lost", "", false},
};
static_assert(std::size(field_names) == field_count);

/// `field_count` for what is no field of ours.
std::size_t field_of(std::string_view name) {
    std::size_t field = 0;
    while (field < field_count && field_names[field].own != name)
        ++field;
    return field;
}

constexpr std::string_view read_by_name[] = {"quillbrook", "cmx_3600", "ALE"};

/// Of two equal keys the first counts; later ones are as if they weren't there.
bool is_first_of_its_key(const JsonValue& object, JsonValue::ConstMemberIterator member) {
    return object.FindMember(member->name) == member;
}

std::string column_of(const JsonValue& columns, std::string_view name) {
    for (auto member = columns.MemberBegin(); member != columns.MemberEnd(); ++member) {
        if (!ascii::same(json_string(&member->name), name)) continue;
        std::string text = json_text(&member->value);
        if (!text.empty() && is_first_of_its_key(columns, member)) return text;
    }
    return {};
}

std::string reel_or_tape(const JsonValue& dictionary) {
    std::string reel = json_text(json_member(dictionary, "reel"));
    return reel.empty() ? json_text(json_member(dictionary, "tape")) : reel;
}

/// The first reel or tape that some other program's dictionary holds.
std::string reel_of_others(const JsonValue& metadata) {
    for (auto member = metadata.MemberBegin(); member != metadata.MemberEnd(); ++member) {
        const std::string_view key = json_string(&member->name);
        if (schema_of(member->value) != Schema::data || !member->value.IsObject()) continue;
        if (std::find(std::begin(read_by_name), std::end(read_by_name), key) != std::end(read_by_name)) continue;
        std::string reel = reel_or_tape(member->value);
        if (!reel.empty() && is_first_of_its_key(metadata, member)) return reel;
    }
    return {};
}

} // namespace

const FieldName& name_of_field(Field field) { return field_names[static_cast<std::size_t>(field)]; }

FieldSource::FieldSource(const JsonValue& clip, const JsonValue* reference)
    : metadata_{metadata_of(&clip), metadata_of(reference)}, own_{fields_of(own_metadata_of(&clip)),
                                                                  fields_of(own_metadata_of(reference))},
      columns_{json_object(metadata_[0], "ALE"), json_object(metadata_[1], "ALE")} {}

// From the back, so that of two equal keys the first stays.
FieldSource::OwnFields FieldSource::fields_of(const JsonValue* own_metadata) {
    OwnFields fields{};
    if (!own_metadata) return fields;
    for (auto member = own_metadata->MemberEnd(); member != own_metadata->MemberBegin();) {
        --member;
        const std::size_t field = field_of(json_string(&member->name));
        if (field < fields.size()) fields[field] = member->value.IsNull() ? nullptr : &member->value;
    }
    return fields;
}

const JsonValue* FieldSource::own(Field field) const {
    const auto number = static_cast<std::size_t>(field);
    return own_[0][number] ? own_[0][number] : own_[1][number];
}

std::string FieldSource::own_text(Field field) const {
    const auto number = static_cast<std::size_t>(field);
    std::string text = json_text(own_[0][number]);
    return text.empty() ? json_text(own_[1][number]) : text;
}

std::string FieldSource::column_text(std::string_view column) const {
    for (const JsonValue* columns : columns_) {
        if (!columns) continue;
        std::string text = column_of(*columns, column);
        if (!text.empty()) return text;
    }
    return {};
}

std::string FieldSource::foreign_reel() const {
    for (const JsonValue* metadata : metadata_) {
        std::string reel = metadata ? reel_of_others(*metadata) : std::string();
        if (!reel.empty()) return reel;
    }
    return {};
}

std::string FieldSource::text(Field field) const {
    const FieldName& name = name_of_field(field);
    std::string text = own_text(field);
    for (const JsonValue* metadata : metadata_)
        if (text.empty() && name.picture_reel) text = json_text(json_member(json_object(metadata, "cmx_3600"), "reel"));
    if (text.empty() && !name.column.empty()) text = column_text(name.column);
    if (text.empty() && name.picture_reel) text = foreign_reel();
    return text;
}

} // namespace formats::otio
