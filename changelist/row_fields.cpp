#include "changelist/row_fields.h"

LightweightString<wchar_t> shot_name_field(const dbrecord& row) {
    return fromUTF8(text_field(row, hf_shot_name),
                    static_cast<int>(::strnlen(text_field(row, hf_shot_name), shot_name_chars)));
}

void parse_code(const dbrecord& row, chgdb_field field, LabelPoint& point) {
    char text[code_chars + 1] = "";
    copy_field(row, field, text);
    point.set_sample(text);
}

void parse_timecode(const dbrecord& row, chgdb_field field, LabelPoint& point) {
    char text[timecode_chars + 1] = "";
    copy_field(row, field, text);
    point.set_sample(text);
}

label_t timecode_kind(const dbrecord& row) {
    char standard[standard_chars + 1] = "";
    copy_field(row, hf_prim_tc_std, standard);
    return edlstr_to_label_type(standard);
}

LabelPoint RowLabels::key(const dbrecord& row, chgdb_field field) const {
    LabelPoint point;
    point.set_type(key_);
    if (is_key_missing(row)) point.modify_count_length(missing_key_digits);
    parse_code(row, field, point);
    return point;
}

LabelPoint RowLabels::ink(const dbrecord& row, chgdb_field field) const {
    LabelPoint point;
    if (*text_field(row, field) == '\0') return point;
    point.set_type(ink_);
    parse_code(row, field, point);
    return point;
}

LabelPoint RowLabels::timecode(const dbrecord& row, chgdb_field field) {
    LabelPoint point;
    point.set_type(timecode_kind(row));
    parse_timecode(row, field, point);
    return point;
}
