#include "changelist/steps/film_fields.h"

#include "changelist/row_fields.h"

ChangeRecord& FilmReader::read(const dbrecord& row) {
    film_.edit_length = number_field(row, hf_edit_length);
    film_.speed = floating_number(text_field(row, hf_speed));
    film_.keycode_missing = is_key_missing(row) ? 1 : 0;
    film_.keycode_in = labels_.key(row, hf_keycode_in);
    film_.inkcode_in = labels_.ink(row, hf_inkcode_in);
    return film_;
}

LabelPoint missing_key_out(const LabelPoint& key_in) {
    LabelPoint point = key_in;
    point.modify_count_length(missing_key_digits);
    point.set_prefix("????????");
    point.set_sample(0);
    return point;
}
