#include "formats/otio/otio_metadata.h"

#include "host/ascii_text.h"

#include <algorithm>

namespace formats::otio {
namespace {

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

FieldSource::FieldSource(const JsonValue& clip, const JsonValue* reference)
    : metadata_{metadata_of(&clip), metadata_of(reference)}, own_{own_metadata_of(&clip), own_metadata_of(reference)},
      columns_{json_object(metadata_[0], "ALE"), json_object(metadata_[1], "ALE")} {}

const JsonValue* FieldSource::own(std::string_view key) const {
    const JsonValue* of_clip = json_member(own_[0], key);
    return of_clip ? of_clip : json_member(own_[1], key);
}

std::string FieldSource::own_text(std::string_view key) const {
    std::string text = json_text(json_member(own_[0], key));
    return text.empty() ? json_text(json_member(own_[1], key)) : text;
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

std::string FieldSource::text(const FieldName& name) const {
    std::string text = own_text(name.own);
    for (const JsonValue* metadata : metadata_)
        if (text.empty() && name.picture_reel) text = json_text(json_member(json_object(metadata, "cmx_3600"), "reel"));
    if (text.empty() && !name.column.empty()) text = column_text(name.column);
    if (text.empty() && name.picture_reel) text = foreign_reel();
    return text;
}

} // namespace formats::otio
