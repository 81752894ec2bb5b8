// Labels of 35mm film with four perforations and of 24-frame timecode: the least that a changelist needs.

#include <host/labels.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr auto ink_35mm = static_cast<label_t>(43);
constexpr auto feet_35mm = static_cast<label_t>(13);

/// Perforations: four a frame, sixteen frames a count.
class Film : public label_cvt {
public:
    Film(label_t type, int prefix) : type_(type), prefix_(prefix) {}
    label_t label_type() const override { return type_; }
    void format(int sample, const char* prefix, char* out, unsigned size) const override {
        const int frames = std::abs(sample) / 4;
        std::snprintf(out, size, "%s%04d%c%02d", prefix, frames / 16, sample < 0 ? '-' : '+', frames % 16);
    }
    bool parse(const char* text, int& sample, char* prefix) const override {
        const std::string all(text);
        const std::size_t sign = all.rfind('+');
        if (sign == std::string::npos || sign < static_cast<std::size_t>(prefix_)) return false;
        std::snprintf(prefix, static_cast<std::size_t>(prefix_) + 1, "%s", text);
        const int count = std::atoi(all.substr(static_cast<std::size_t>(prefix_), sign).c_str());
        sample = 64 * count + 4 * std::atoi(all.c_str() + sign + 1);
        return true;
    }
    int prefix_length() const override { return prefix_; }
    int count_digits() const override { return 4; }
    int samples_per_count() const override { return 64; }
    int samples_per_frame() const override { return 4; }

private:
    label_t type_;
    int prefix_;
};

class Timecode : public label_cvt {
public:
    label_t label_type() const override { return label_tc_24; }
    void format(int sample, const char*, char* out, unsigned size) const override {
        const int seconds = sample / 24;
        std::snprintf(out, size, "%02d:%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60, sample % 24);
    }
    bool parse(const char* text, int& sample, char* prefix) const override {
        int hours = 0, minutes = 0, seconds = 0, frames = 0;
        *prefix = '\0';
        if (std::sscanf(text, "%d:%d:%d:%d", &hours, &minutes, &seconds, &frames) != 4) return false;
        sample = ((hours * 60 + minutes) * 60 + seconds) * 24 + frames;
        return true;
    }
    int prefix_length() const override { return 0; }
    int count_digits() const override { return 0; }
    int samples_per_count() const override { return 1; }
    int samples_per_frame() const override { return 1; }
};

/// Of points without a kind.
class NoLabel : public Timecode {
public:
    label_t label_type() const override { return label_none; }
    void format(int, const char*, char* out, unsigned) const override { *out = '\0'; }
    bool parse(const char*, int&, char*) const override { return false; }
};

label_cvt* converter_of(label_t type) {
    static Film key(label_key_35mm_4p, 8), ink(ink_35mm, 4), feet(feet_35mm, 0);
    static Timecode timecode;
    static NoLabel none;
    for (label_cvt* known : {static_cast<label_cvt*>(&key), static_cast<label_cvt*>(&ink),
                             static_cast<label_cvt*>(&feet), static_cast<label_cvt*>(&timecode)})
        if (known->label_type() == type) return known;
    return &none;
}

struct KindText {
    label_t type;
    const char* text;
};
constexpr KindText kind_texts[] = {
    {label_key_35mm_4p, "35mm-4p"}, {ink_35mm, "35mm-4p-ink"}, {feet_35mm, "35mm-4p-ft"}, {label_tc_24, "24fps"}};

bool is_film(label_t type) { return type == label_key_35mm_4p || type == ink_35mm || type == feet_35mm; }

} // namespace

LabelPoint::LabelPoint(int number, label_t type) { set_type(type), set_sample(number); }
bool LabelPoint::operator==(const LabelPoint& other) const {
    return type_ == other.type_ && sample == other.sample && std::strcmp(prefix_, other.prefix_) == 0;
}
void LabelPoint::set_sample(int number) {
    sample = number;
    given_ = true;
}
void LabelPoint::set_sample(const char* text) {
    sample = 0;
    char prefix[sizeof prefix_] = "";
    given_ = cvt()->parse(text, sample, prefix);
    if (given_) fit_prefix(prefix);
}
void LabelPoint::set_type(label_t type) {
    type_ = type;
    fit_prefix(std::string(prefix_).c_str());
}
const char* LabelPoint::get_string() {
    cvt()->format(sample, prefix_, text_, sizeof text_);
    return text_;
}
void LabelPoint::set_prefix(const char* prefix) { fit_prefix(prefix); }
void LabelPoint::fit_prefix(const char* prefix) {
    std::string fitted(prefix);
    fitted.resize(static_cast<std::size_t>(cvt()->prefix_length()), fitted.empty() ? ' ' : '_');
    std::strcpy(prefix_, fitted.c_str());
}
void LabelPoint::modify_count_length(int) {}
label_cvt* LabelPoint::cvt() const { return converter_of(type_); }

Label::Label() = default;
Label::Label(label_t type) { start_.set_type(type); }
LabelPoint Label::get_label_point(int samples) const {
    LabelPoint point = start_;
    if (point.is_valid()) point.set_sample(start_.sample + samples);
    return point;
}
const char* Label::get_string(int samples) const {
    shown_ = get_label_point(samples);
    return shown_.get_string();
}
void Label::set_end(int sample) {
    end = sample - start_.sample;
    end_set = 1;
}
void EditLabel::set_type(label_t type) { start_.set_type(type); }
void EditLabel::set_start(int sample) { start_.set_sample(sample); }
void EditLabel::set_start(const char* text) { start_.set_sample(text); }

Label* get_invalid_label() {
    static Label label;
    return &label;
}
EditLabel* invalid_edit_label() {
    static EditLabel label;
    return &label;
}

label_t edlstr_to_label_type(const char* text) {
    for (const KindText& kind : kind_texts)
        if (std::strcmp(kind.text, text) == 0) return kind.type;
    return label_none;
}
const char* label_type_to_edlstr(label_t type) {
    for (const KindText& kind : kind_texts)
        if (kind.type == type) return kind.text;
    return "";
}
label_t label_t_to_foot_label_t(label_t type) { return is_film(type) ? feet_35mm : label_none; }
label_t label_t_to_ink_label_t(label_t type) { return is_film(type) ? ink_35mm : label_none; }
