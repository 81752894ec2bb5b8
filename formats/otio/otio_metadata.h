#pragma once
// One field out of the metadata of a clip and its medium, in the order in which they count.

#include "formats/otio/otio_schema.h"

#include <string>
#include <string_view>

namespace formats::otio {

/// How a field is called: by ourselves, in column files, and whether it is the reel that every program has.
struct FieldName {
    std::string_view own;
    std::string_view column; ///< empty: none
    bool picture_reel = false;
};

class FieldSource {
public:
    FieldSource(const JsonValue& clip, const JsonValue* reference);

    /// The text of a field, empty where none is given.
    std::string text(const FieldName& name) const;
    /// A value of our own dictionary, the clip's before the reference's; null where neither has it.
    const JsonValue* own(std::string_view key) const;

private:
    std::string own_text(std::string_view key) const;
    std::string column_text(std::string_view column) const;
    std::string foreign_reel() const;

    const JsonValue* metadata_[2];
    const JsonValue* own_[2];
    const JsonValue* columns_[2];
};

} // namespace formats::otio
