#include "formats/fcpxml/fcpxml_speed.h"

#include <algorithm>

namespace formats::fcpxml {
namespace {

/// An ease time that is there and isn't 0.
bool eases(const xml::Element& point, std::string_view attribute) {
    if (!point.has_attribute(attribute)) return false;
    const std::optional<Fraction> time = parse_time(point.attribute(attribute));
    return !time || !(*time == Fraction(0));
}

SpeedPoint read_point(const xml::Element& point, const Fraction& scale, std::string& fault) {
    SpeedPoint read;
    const std::optional<Fraction> time = parse_time(point.attribute("time"));
    const std::optional<Fraction> value = parse_time(point.attribute("value"));
    if (!time || !value) {
        fault = "one of its points has no time or value that can be read";
        return read;
    }
    read.time = *time * scale;
    read.value = *value * scale;
    read.eased = point.attribute("interp") == "smooth" || eases(point, "inTime") || eases(point, "outTime");
    return read;
}

/// The part of a span that lies between two times, if any.
void add_part(const Span& span, const Fraction& from, const Fraction& to, std::vector<Span>& parts) {
    Span part = span;
    part.from = std::max(span.from, from);
    part.to = std::min(span.to, to);
    if (part.to <= part.from) return;
    part.value = span.value_at(part.from);
    parts.push_back(part);
}

void drop_short_first(std::vector<Span>& parts, const Fraction& least) {
    if (parts.size() < 2) return;
    const Span first = parts.front();
    if (least <= first.to - first.from) return;
    parts.erase(parts.begin());
    parts.front().value = parts.front().value_at(first.from);
    parts.front().from = first.from;
}

void drop_short_last(std::vector<Span>& parts, const Fraction& least) {
    if (parts.size() < 2) return;
    const Span last = parts.back();
    if (least <= last.to - last.from) return;
    parts.pop_back();
    parts.back().to = last.to;
}

} // namespace

// Two points are a constant speed whatever they say of easing: there is nothing to ease into.
std::vector<Span> SpeedMap::spans(const Fraction& from, const Fraction& to, const Fraction& least_hold) const {
    if (identity()) return {{from, to, from, 1, false}};
    std::vector<Span> parts;
    add_part({from, points_.front().time, points_.front().value, 0}, from, to, parts);
    const bool held_before = !parts.empty();
    for (std::size_t i = 1; i < points_.size(); ++i) {
        const SpeedPoint &a = points_[i - 1], &b = points_[i];
        if (a.time == b.time) continue;
        const bool curved = points_.size() > 2 && (a.eased || b.eased);
        add_part({a.time, b.time, a.value, (b.value - a.value) / (b.time - a.time), curved}, from, to, parts);
    }
    add_part({points_.back().time, to, points_.back().value, 0}, from, to, parts);
    if (held_before) drop_short_first(parts, least_hold);
    if (points_.back().time < to) drop_short_last(parts, least_hold);
    return parts;
}

bool SpeedMap::covers(const Fraction& from, const Fraction& to, const Fraction& least_hold) const {
    return identity() || (points_.front().time < from + least_hold && to - least_hold < points_.back().time) ||
           (points_.front().time <= from && to <= points_.back().time);
}

SpeedMap read_speed_map(const xml::Element& time_map, const Fraction& scale, std::string& fault) {
    std::vector<SpeedPoint> points;
    for (const xml::Element child : time_map.children())
        if (child.name() == "timept") points.push_back(read_point(child, scale, fault));
    const auto earlier = [](const SpeedPoint& a, const SpeedPoint& b) { return a.time < b.time; };
    if (fault.empty() && points.size() < 2) fault = "it has less than two points";
    if (fault.empty() && !std::is_sorted(points.begin(), points.end(), earlier)) fault = "its times go backward";
    return fault.empty() ? SpeedMap(std::move(points)) : SpeedMap();
}

} // namespace formats::fcpxml
