#include "changelist/listed_row.h"

#include "changelist/changelist_options.h"
#include "host/text.h"
#include "reports/number_text.h"
#include "reports/report.h"

#include <cstring>

namespace {

constexpr int key_chars = 19;
constexpr int timecode_chars = 14;
constexpr int standard_chars = 11;
constexpr std::size_t shown_name_chars = 16;
constexpr int shot_name_bytes = 1023;
constexpr int digits_of_missing_key = 4;

/// A field cut to the length that its column holds.
template <int Chars> struct FieldText {
    char text[Chars + 1] = {};

    FieldText(const dbrecord& row, chgdb_field field) { row.in_field(field, text, Chars); }
};

LightweightString<char> first_characters(const char* name) {
    const auto bytes = static_cast<int>(::strnlen(name, shot_name_bytes));
    const LightweightString<wchar_t> wide = fromUTF8(name, bytes);
    return toUTF8(LightweightString<wchar_t>(wide.view().substr(0, shown_name_chars)));
}

} // namespace

const char* ListedRow::text(chgdb_field field) const {
    const char* text = row_.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

int ListedRow::number(chgdb_field field) const { return decimal_number(text(field)); }

bool ListedRow::is_kind(const char* kind) const { return std::strcmp(text(hf_record_type), kind) == 0; }

bool ListedRow::key_missing() const {
    const char* missing = text(hf_keycode_missing);
    return *missing == '\0' || decimal_number(missing) != 0;
}

LabelPoint ListedRow::key(chgdb_field field) const {
    LabelPoint point = get_invalid_label()->get_label_point(0);
    point.set_type(film_std_);
    if (key_missing()) point.modify_count_length(digits_of_missing_key);
    point.set_sample(FieldText<key_chars>(row_, field).text);
    return point;
}

LabelPoint ListedRow::timecode(chgdb_field field) const {
    LabelPoint point = get_invalid_label()->get_label_point(0);
    point.set_type(edlstr_to_label_type(FieldText<standard_chars>(row_, hf_prim_tc_std).text));
    point.set_sample(FieldText<timecode_chars>(row_, field).text);
    return point;
}

void ListedRow::print_shot(report& out) const {
    if (changelist_options().use_scene_take) {
        out.print("\t %.16s\t %.16s", text(hf_scene), text(hf_take));
    } else {
        out.print("\t %s", first_characters(text(hf_shot_name)).c_str());
    }
}
