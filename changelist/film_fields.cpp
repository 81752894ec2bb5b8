#include "changelist/film_fields.h"

#include "changelist/row_fields.h"

namespace {

constexpr int code_chars = 19;
constexpr int missing_digits = 4;

} // namespace

ChangeRecord& FilmReader::read(const dbrecord& row) {
    film_.edit_length = number_field(row, hf_edit_length);
    film_.speed = floating_number(text_field(row, hf_speed));
    const bool flagged = *text_field(row, hf_keycode_missing) != '\0';
    film_.keycode_missing = flagged ? number_field(row, hf_keycode_missing) : blank_.keycode_missing;
    film_.keycode_in = read_key(row, hf_keycode_in, blank_.keycode_in);
    film_.inkcode_in = read_ink(row, hf_inkcode_in, blank_.inkcode_in);
    return film_;
}

LabelPoint FilmReader::key_out(const dbrecord& row) const { return read_key(row, hf_keycode_out, blank_.keycode_out); }

LabelPoint FilmReader::ink_out(const dbrecord& row) const { return read_ink(row, hf_inkcode_out, blank_.inkcode_out); }

LabelPoint FilmReader::read_key(const dbrecord& row, chgdb_field field, const LabelPoint& blank) const {
    LabelPoint point = blank;
    if (film_.keycode_missing) point.modify_count_length(missing_digits);
    char text[code_chars + 1] = "";
    row.in_field(field, text, code_chars);
    point.set_sample(text);
    return point;
}

LabelPoint FilmReader::read_ink(const dbrecord& row, chgdb_field field, const LabelPoint& blank) const {
    char text[code_chars + 1] = "";
    row.in_field(field, text, code_chars);
    if (!*text) return get_invalid_label()->get_label_point(0);
    LabelPoint point = blank;
    point.set_sample(text);
    return point;
}

LabelPoint missing_key_out(const LabelPoint& key_in) {
    LabelPoint point = key_in;
    point.modify_count_length(missing_digits);
    point.set_prefix("????????");
    point.set_sample(0);
    return point;
}
