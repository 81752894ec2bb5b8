#pragma once
// One field out of the metadata of a clip and its medium, in the order in which they count.

#include "formats/otio/otio_schema.h"

#include <array>
#include <string>
#include <string_view>

namespace formats::otio {

/// What is known of a clip and its medium by name.
enum class Field {
    identity,
    film_rate,
    start_strip,
    reel,
    sound_reel,
    reel_24p,
    camera_reel,
    lab_reel,
    composite_reel,
    timecode,
    timecode_rate,
    timecode_standard,
    drop,
    media_rate,
    sound_timecode,
    sound_standard,
    timecode_24p,
    film,
    key,
    ink_kind,
    ink,
    scene,
    take,
    description,
    lost,
    count
};

/// How a field is called: by ourselves, in column files, and whether it is the reel that every program has.
struct FieldName {
    std::string_view own;
    std::string_view column; ///< empty: none
    bool picture_reel = false;
};
const FieldName& name_of_field(Field field);

/// The dictionaries of both are gone through once, so they must stay as they are.
class FieldSource {
public:
    FieldSource(const JsonValue& clip, const JsonValue* reference);

    /// The text of a field, empty where none is given.
    std::string text(Field field) const;
    /// A value of our own dictionary, the clip's before the reference's; null where neither has it.
    const JsonValue* own(Field field) const;

private:
    using OwnFields = std::array<const JsonValue*, static_cast<std::size_t>(Field::count)>;

    static OwnFields fields_of(const JsonValue* own_metadata);
    std::string own_text(Field field) const;
    std::string column_text(std::string_view column) const;
    std::string foreign_reel() const;

    const JsonValue* metadata_[2];
    OwnFields own_[2];
    const JsonValue* columns_[2];
};

} // namespace formats::otio
