#pragma once
// Short hands for the tests of labels.

#include "host/labels.h"

#include <string>
#include <vector>

constexpr label_t kind(int number) { return static_cast<label_t>(number); }

inline std::string text_of(int sample, int type, const char* prefix = "") {
    LabelPoint point(sample, kind(type));
    point.set_prefix(prefix);
    return point.get_string();
}

inline LabelPoint point_of(const char* text, int type) {
    LabelPoint point;
    point.set_type(kind(type));
    point.set_sample(text);
    return point;
}

/// The sample of a text that must be readable; -999999 when it isn't.
inline int sample_of(const char* text, int type) {
    const LabelPoint point = point_of(text, type);
    return point.is_useful() ? point.sample : -999999;
}

inline bool refuses(const char* text, int type) {
    const LabelPoint point = point_of(text, type);
    return !point.is_useful() && point.sample == 0;
}

inline const std::vector<int>& film_kinds() {
    static const std::vector<int> kinds = {10, 11, 12, 21, 22, 23, 24, 25, 26, 27, 28, 29, 34, 35, 36, 37,
                                           38, 39, 40, 41, 42, 13, 14, 15, 16, 17, 43, 44, 45, 46, 47};
    return kinds;
}
