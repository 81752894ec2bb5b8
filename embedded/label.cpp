// Labelled media: points counted from a start, on a scale of seconds or film frames.

#include "embedded/clamped.h"
#include "embedded/label_kinds.h"
#include "host/labels.h"

#include <algorithm>

using embedded::clamp_to_int;
using embedded::default_posn_step;

Label::Label() = default;

Label::Label(label_t type) : posn_step(default_posn_step(type)), start_(0, type) {}

LabelPoint Label::get_label_point(int samples) const {
    LabelPoint point = start_;
    point += samples;
    return point;
}

LabelPoint Label::get_label_point(double posn) const {
    const int samples = posn_to_sample(posn);
    if (!end_set) return get_label_point(samples);
    return get_label_point(std::clamp(samples, std::min(0, end), std::max(0, end)));
}

LabelPoint Label::get_unbounded_label_point(double posn) const { return get_label_point(posn_to_sample(posn)); }

const char* Label::get_string(int samples) const {
    shown_ = get_label_point(samples);
    return shown_.get_string();
}

int Label::get_sample(int samples) const { return clamp_to_int(std::int64_t(start_.sample) + samples); }

double Label::sample_to_posn(int samples) const { return samples * posn_step; }

int Label::posn_to_sample(double posn) const { return posn_step == 0.0 ? 0 : embedded::floor_to_int(posn / posn_step); }

double Label::get_abs_posn(int samples) const {
    return static_cast<double>(std::int64_t(start_.sample) + samples) * posn_step;
}

double Label::get_posn(const LabelPoint& point) const {
    return static_cast<double>(std::int64_t(point.sample) - start_.sample) * posn_step;
}

void Label::set_prefix(const char* prefix) { start_.set_prefix(prefix); }

void Label::set_end(int sample) {
    end = clamp_to_int(std::int64_t(sample) - start_.sample);
    end_set = 1;
}

void EditLabel::set_type(label_t type) {
    start_.set_type(type);
    posn_step = default_posn_step(type);
}

void EditLabel::set_start(int sample) { start_.set_sample(sample); }

void EditLabel::set_start(double posn) { start_.set_sample(posn_to_sample(posn)); }

void EditLabel::set_start(const char* text) { start_.set_sample(text); }

void EditLabel::set_start(const LabelPoint& point) { start_ = point; }

Label* get_invalid_label() {
    static Label label;
    return &label;
}

EditLabel* invalid_edit_label() {
    static EditLabel label;
    return &label;
}
