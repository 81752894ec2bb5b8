#include "documents/film_count.h"

#include <algorithm>
#include <cctype>

namespace documents {
namespace {

std::int64_t divided_down(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

} // namespace

std::int64_t FeetOfFilm::first_frame(std::int64_t foot) const { return divided_down(foot * perforations, in_frame); }

std::int64_t FeetOfFilm::foot_of(std::int64_t frame) const {
    return divided_down((frame + 1) * in_frame - 1, perforations);
}

FeetOfFilm feet_of(label_t film) {
    const label_t foot = label_t_to_foot_label_t(film);
    if (foot == label_none || foot == label_frames) return {};
    const label_cvt* const cvt = get_static_label_cvt(foot);
    return {cvt->samples_per_count(), cvt->samples_per_frame()};
}

std::string position_text(label_t film, std::int64_t frame) {
    if (!feet_of(film)) return std::to_string(frame);
    film::Count count;
    count.kind = label_t_to_foot_label_t(film);
    return count.text_at(frame);
}

std::string grouped_prefix(const std::string& prefix) {
    constexpr std::size_t length = 8, maker = 2, kind = 4;
    const auto plain = [](unsigned char c) { return c < 0x80 && std::isalnum(c) != 0; };
    if (prefix.size() != length || !std::all_of(prefix.begin(), prefix.end(), plain)) return prefix;
    return prefix.substr(0, maker) + ' ' + prefix.substr(maker, kind - maker) + ' ' + prefix.substr(kind);
}

KeyParts key_parts(const film::Count& count, std::int64_t k) {
    if (!count) return {};
    LabelPoint point = count.point_at(k);
    std::string text = point.get_string();
    const std::string prefix = point.get_prefix();
    if (prefix.empty() || text.compare(0, prefix.size(), prefix) != 0) return {"", text, text};
    return {grouped_prefix(prefix), text.substr(prefix.size()), std::move(text)};
}

} // namespace documents
