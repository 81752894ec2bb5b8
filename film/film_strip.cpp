#include "film/film_strip.h"

#include "embedded/clamped.h"

#include <algorithm>
#include <tuple>

namespace film {

const Fraction hair_ahead(1, 1000000);

std::int64_t whole_frame(const Fraction& place) {
    return place.den() == 1 ? place.floor() : (place + hair_ahead).floor();
}

int Count::sample_at(std::int64_t k) const {
    const int frame = get_static_label_cvt(kind)->samples_per_frame();
    return embedded::clamp_to_int(frame_at(k) * frame + perforation);
}

LabelPoint Count::point_at(std::int64_t k) const {
    LabelPoint point(sample_at(k), kind);
    point.set_prefix(prefix.c_str());
    return point;
}

std::string Count::text_at(std::int64_t k) const { return kind == label_none ? "" : point_at(k).get_string(); }

void sort_strips(Strips& strips) {
    const auto before = [](const Strip& a, const Strip& b) {
        return std::tuple(a.start, a.layer, a.role) < std::tuple(b.start, b.layer, b.role);
    };
    // They are large, and mostly made in order.
    if (!std::is_sorted(strips.begin(), strips.end(), before)) std::stable_sort(strips.begin(), strips.end(), before);
}

} // namespace film
