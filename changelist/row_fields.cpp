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

RowLabels::RowLabels(label_t film_std) {
    key_.set_type(film_std);
    missing_key_ = key_;
    missing_key_.modify_count_length(missing_key_digits);
    ink_.set_type(label_t_to_ink_label_t(film_std));
}

LabelPoint RowLabels::key(const dbrecord& row, chgdb_field field) const {
    LabelPoint point = is_key_missing(row) ? missing_key_ : key_;
    parse_code(row, field, point);
    return point;
}

LabelPoint RowLabels::ink(const dbrecord& row, chgdb_field field) const {
    if (*text_field(row, field) == '\0') return {};
    LabelPoint point = ink_;
    parse_code(row, field, point);
    return point;
}

LabelPoint RowLabels::bracket(const dbrecord& row, chgdb_field field) const {
    LabelPoint point = key_;
    parse_code(row, field, point);
    return point;
}

LabelPoint RowLabels::timecode(const dbrecord& row, chgdb_field field) {
    LabelPoint point;
    point.set_type(timecode_kind(row));
    parse_timecode(row, field, point);
    return point;
}
