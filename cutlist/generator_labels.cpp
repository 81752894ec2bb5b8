#include "cutlist/generator_labels.h"

namespace {

constexpr const char* no_code = "NOCODE";
const MediumRollIdent film_roll(medium_film, 1);
const MediumRollIdent ink_roll(medium_ink, 1);

void start_at_zero(EditLabel& label) {
    label.set_start(0);
    label.start_offset = 0;
}

EditLabel make_key_label(label_t type, int long_keycode) {
    EditLabel label(type, film_roll);
    if (long_keycode >= 0) label.modify_count_length(long_keycode + 4);
    start_at_zero(label);
    label.set_prefix(no_code);
    return label;
}

EditLabel make_ink_label(label_t film_type) {
    EditLabel label(label_t_to_ink_label_t(film_type), ink_roll);
    start_at_zero(label);
    return label;
}

int frames_at(double film_position) {
    const LabelPoint point = generator().foot_label.get_label_point(film_position);
    return point.sample / point.cvt()->samples_per_frame();
}

} // namespace

generator_labels& generator() {
    static generator_labels labels;
    return labels;
}

void make_generator_labels(Edit& edit, label_t film_type, int long_keycode) {
    generator_labels& labels = generator();
    const MediumRollMedium output =
        getMediumRollfromOutputDetails(edit.getVideoMetadata().scan_mode(), edit.getFrameRate());
    labels.edit_tc_label = *edit.getLabel(user_label_timecode, MediumRollIdent(output, 1));

    labels.key_label = make_key_label(film_type, long_keycode);
    labels.foot_label = labels.key_label;
    labels.foot_label.set_type(label_t_to_foot_label_t(labels.key_label.type()));
    if (!labels.foot_label.is_valid()) labels.foot_label.set_type(labels.key_label.type());
    labels.ink_label = make_ink_label(label_key_35mm_4p);
    labels.film_standard_set = 0;
}

void clear_generator_labels() {
    generator_labels& labels = generator();
    labels.edit_tc_label = labels.key_label = labels.foot_label = labels.ink_label = EditLabel();
}

void set_film_standard(label_t type, int long_keycode) {
    generator_labels& labels = generator();
    if (labels.film_standard_set == 1) return;
    labels.key_label = make_key_label(label_t_to_key_label_t(type), long_keycode);
    labels.ink_label = make_ink_label(type);
    const label_t foot = label_t_to_foot_label_t(type);
    labels.foot_label = EditLabel(foot != label_none ? foot : type, film_roll);
    labels.film_standard_set = 1;
}

int frame_of_position(double time, const EditPtr& edit) {
    return frames_at(mPosn_Xlate(time, medium_edit, medium_film, edit));
}

int frames_of_duration(double duration, const EditPtr& edit) {
    return frames_at(mPosn_Xlate(duration, medium_edit, &generator().foot_label, edit));
}
