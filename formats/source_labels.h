#pragma once
// The labels of described sources as points.

#include "embedded/edit_builder.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace formats {

/// Its first sample.
inline LabelPoint point_of(const embedded::LabelDescription& label) {
    LabelPoint point(0, label.type);
    if (label.sample)
        point.set_sample(*label.sample);
    else
        point.set_sample(label.text.c_str());
    return point;
}

/// As it was given, else as its kind writes it.
inline std::string text_of(const embedded::LabelDescription& label) {
    return label.sample ? point_of(label).get_string() : label.text;
}

/// So many frames on; nothing where no label counts that far.
inline std::optional<LabelPoint> moved(LabelPoint point, std::int64_t frames) {
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    if (frames < -most || frames > most) return std::nullopt;
    const std::int64_t sample = point.sample + frames * point.cvt()->samples_per_frame();
    if (sample < 0 || sample > most) return std::nullopt;
    point.sample = static_cast<int>(sample);
    return point;
}

/// Film frames a second.
inline embedded::Fraction film_rate_of(const embedded::SourceDescription& source, const embedded::RateInfo& edit_rate) {
    return source.film_rate ? *source.film_rate : embedded::film_rate_of(source.rate ? *source.rate : edit_rate);
}

} // namespace formats
