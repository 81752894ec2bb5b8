#include "formats/aaf/aaf_operations.h"

#include "host/ascii_text.h"

#include <algorithm>

namespace formats::aaf {
namespace {

constexpr Auid speed_control = auid("9d2ea890-0968-11d3-8a38-0050040ef7d2");
constexpr Auid repeat_control = auid("9d2ea891-0968-11d3-8a38-0050040ef7d2");
constexpr Auid submaster = auid("f1db0f3d-8d64-11d3-80df-006008143e6f");
constexpr Auid smpte_wipe = auid("0c3bea44-fc05-11d2-8a29-0050040ef7d2");

constexpr Auid speed_ratio = auid("72559a80-24d7-11d3-8a50-0050040ef7d2");
constexpr Auid speed_map = auid("8d56827c-847e-11d5-935a-50f857c10000");
constexpr Auid speed_offset_map = auid("8d56827d-847e-11d5-935a-50f857c10000");
constexpr Auid offset_map = auid("8d56827a-847e-11d5-935a-50f857c10000");
constexpr Auid effect_id = auid("93994bd6-a81d-11d3-a05b-006094eb75cb");
constexpr Auid wipe_number = auid("e4962323-2267-11d3-8a4c-0050040ef7d2");
constexpr Auid constant_interpolation = auid("5b6c85a5-0ede-11d3-80a9-006008143e6f");
constexpr Auid linear_interpolation = auid("5b6c85a4-0ede-11d3-80a9-006008143e6f");

using TransitionKind = embedded::TransitionDescription::Kind;

struct TransitionRow {
    Auid id;
    TransitionKind kind;
};
constexpr TransitionRow known_transitions[] = {
    {auid("0c3bea40-fc05-11d2-8a29-0050040ef7d2"), TransitionKind::dissolve},
    {auid("89d9b67e-5584-302d-9abd-8bd330c46841"), TransitionKind::dissolve},
    {auid("a3479fae-4715-38b8-b020-907ae09e8769"), TransitionKind::dissolve}, // fade up
    {auid("624e04b0-8063-3d9f-8172-6ea7cf0bed6d"), TransitionKind::dissolve}, // fade down
    {auid("5e9010d1-2ab3-37bc-9166-5d74846558ac"), TransitionKind::other},    // dip to a colour
    {smpte_wipe, TransitionKind::wipe},
};

struct TransitionWord {
    const char* word;
    TransitionKind kind;
};
// The first that fits.
constexpr TransitionWord transition_words[] = {
    {"dip", TransitionKind::other},
    {"filmdissolve", TransitionKind::film_dissolve},
    {"film dissolve", TransitionKind::film_dissolve},
    {"film_dissolve", TransitionKind::film_dissolve},
    {"dissolve", TransitionKind::dissolve},
    {"fade_up", TransitionKind::dissolve},
    {"fadeup", TransitionKind::dissolve},
    {"fade_down", TransitionKind::dissolve},
    {"fadedown", TransitionKind::dissolve},
    {"smpte", TransitionKind::wipe},
    {"wipe", TransitionKind::wipe},
};

const Object* parameter_of(const Object& group, const Auid& id) {
    for (const Object* parameter : group.children(pid::parameters))
        if (parameter && parameter->auid(pid::parameter_definition) == id) return parameter;
    return nullptr;
}

struct ControlPoint {
    Fraction time, value;
};

/// A constant counts as one point.
std::vector<ControlPoint> points_of(const Object* parameter) {
    std::vector<ControlPoint> points;
    if (!parameter) return points;
    if (const auto constant = indirect_number(parameter->bytes(pid::constant_value)))
        points.push_back({Fraction(0), *constant});
    for (const Object* point : parameter->children(pid::point_list)) {
        const auto time = point ? point->rational(pid::point_time) : std::nullopt;
        const auto value = point ? indirect_number(point->bytes(pid::point_value)) : std::nullopt;
        if (time && value) points.push_back({*time, *value});
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const ControlPoint& a, const ControlPoint& b) { return a.time < b.time; });
    return points;
}

bool is_linear(const File& file, const Object& parameter) {
    const auto id = parameter.weak(pid::interpolation);
    if (!id) return true;
    return *id == linear_interpolation || ascii::lower_case(file.interpolation_name(*id)).find("linear") == 0;
}

/// Whether each value stays until the next point.
bool is_stepped(const File& file, const Object& parameter) {
    const auto id = parameter.weak(pid::interpolation);
    if (!id) return false;
    return *id == constant_interpolation || ascii::lower_case(file.interpolation_name(*id)).find("constant") == 0;
}

bool on_one_line(const std::vector<ControlPoint>& points) {
    const ControlPoint &first = points.front(), &last = points.back();
    return std::all_of(points.begin(), points.end(), [&](const ControlPoint& point) {
        return (point.value - first.value) * (last.time - first.time) ==
               (last.value - first.value) * (point.time - first.time);
    });
}

/// At a speed over the whole output; backward from the last frame of what is used.
Speed steady(const Fraction& speed, const Fraction& length) {
    const Fraction run = speed * length;
    if (speed < Fraction(0)) return {{{Fraction(0), length, -run - Fraction(1), Fraction(-1)}}};
    return {{{Fraction(0), length, Fraction(0), run}}};
}

/// Joins the points with straight lines, the outer ones drawn on to both ends of the output.
Speed joined(const std::vector<ControlPoint>& points, const Fraction& length) {
    Speed speed;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        if (points[i].time < points[i + 1].time)
            speed.pieces.push_back({points[i].time, points[i + 1].time, points[i].value, points[i + 1].value});
    if (speed.pieces.empty()) {
        speed.pieces.push_back({Fraction(0), length, points.front().value, points.front().value});
        return speed;
    }
    SpeedPiece& first = speed.pieces.front();
    const SpeedPiece as_was = first;
    first.source_from = as_was.source_at(Fraction(0));
    first.from = 0;
    SpeedPiece& last = speed.pieces.back();
    const SpeedPiece last_was = last;
    if (last.from < length) {
        last.source_to = last_was.source_at(length);
        last.to = length;
    }
    return speed;
}

/// Holds the frame of each point until the next.
Speed stepped(const std::vector<ControlPoint>& points, const Fraction& length) {
    Speed speed;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Fraction from = i == 0 ? Fraction(0) : points[i].time;
        const Fraction to = i + 1 < points.size() ? points[i + 1].time : std::max(from, length);
        if (from < to || i + 1 == points.size()) speed.pieces.push_back({from, to, points[i].value, points[i].value});
    }
    return speed;
}

Speed from_offsets(const File& file, const Object& parameter, const std::vector<ControlPoint>& points,
                   const Fraction& length) {
    if (is_stepped(file, parameter)) return stepped(points, length);
    if (points.size() > 1 && on_one_line(points)) return joined({points.front(), points.back()}, length);
    if (is_linear(file, parameter)) return joined(points, length);
    Speed speed = joined({points.front(), points.back()}, length);
    speed.curve = true;
    return speed;
}

/// Where a speed that changes leads: the area below straight lines from point to point.
Speed from_speeds(const std::vector<ControlPoint>& points, const Fraction& length) {
    const bool constant = std::all_of(points.begin(), points.end(),
                                      [&](const ControlPoint& point) { return point.value == points.front().value; });
    if (constant) return steady(simple_speed(points.front().value), length);
    Fraction run = points.front().value * points.front().time;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        run = run + (points[i].value + points[i + 1].value) * (points[i + 1].time - points[i].time) / Fraction(2);
    run = run + points.back().value * (length - points.back().time);
    Speed speed = steady(run / length, length);
    speed.curve = true;
    return speed;
}

Speed from_lengths(const Object& group, const Fraction& length) {
    Speed speed = steady(Fraction(1), length);
    for (const Object* input : group.children(pid::input_segments))
        if (input && Fraction(0) < length) {
            speed = steady(Fraction(input->integer(pid::length, 0)) / length, length);
            break;
        }
    speed.doubt = "nothing tells the speed but the lengths";
    return speed;
}

std::string words_of(const File& file, const Object& group) {
    const Object* id = parameter_of(group, effect_id);
    std::string words = ascii::lower_case(file.operation_of(group).name) + " ";
    if (!id) return words;
    const std::string_view bytes = id->bytes(pid::constant_value).view();
    return words + ascii::lower_case(std::string(bytes.substr(std::min<std::size_t>(17, bytes.size()))));
}

TransitionKind kind_of(const File& file, const Object& group) {
    const auto id = group.weak(pid::operation);
    for (const TransitionRow& row : known_transitions)
        if (id == row.id) return row.kind;
    const std::string words = words_of(file, group);
    for (const TransitionWord& row : transition_words)
        if (words.find(row.word) != std::string::npos) return row.kind;
    return TransitionKind::other;
}

void number_wipe(const File& file, const Object& group, embedded::TransitionDescription& wipe) {
    constexpr int highest = 0xFFFF;
    for (const Object* parameter : group.children(pid::parameters)) {
        const auto id = parameter ? parameter->auid(pid::parameter_definition) : std::nullopt;
        if (!id) continue;
        const std::string name = ascii::lower_case(file.parameter_name(*id));
        const std::vector<ControlPoint> points = points_of(parameter);
        if (points.empty()) continue;
        if (*id == wipe_number || name.find("wipenumber") != std::string::npos)
            wipe.pattern = static_cast<int>(std::clamp<std::int64_t>(points.front().value.nearest(), 0, highest));
        else if (name.find("reverse") != std::string::npos)
            wipe.reversed = !(points.front().value == Fraction(0));
    }
}

} // namespace

Fraction SpeedPiece::speed() const {
    return from < to ? simple_speed((source_to - source_from) / (to - from)) : Fraction(0);
}

// By continued fractions, whose first that is near enough has the smallest terms.
Fraction simple_speed(const Fraction& speed) {
    constexpr std::int64_t most = 10000;
    const bool backward = speed < Fraction(0);
    const Fraction wanted = magnitude(speed);
    const Fraction allowed = wanted / Fraction(1000000);
    Fraction rest = wanted;
    std::int64_t num = 1, den = 0, last_num = 0, last_den = 1;
    for (int i = 0; i < 20; ++i) {
        const std::int64_t whole = rest.floor();
        if (whole > most * most) break;
        const std::int64_t next_num = whole * num + last_num, next_den = whole * den + last_den;
        if (next_den > most || next_num > most * most) break;
        last_num = num, last_den = den, num = next_num, den = next_den;
        const Fraction found(num, den);
        if (magnitude(found - wanted) <= allowed) return backward ? -found : found;
        rest = Fraction(1) / (rest - Fraction(whole));
    }
    return speed;
}

namespace {

bool is_freeze(const File& file, const Object& group) {
    return group.weak(pid::operation) == repeat_control ||
           ascii::lower_case(file.operation_of(group).name).find("repeat control") != std::string::npos;
}

} // namespace

bool is_speed(const File& file, const Object& group) {
    const auto id = group.weak(pid::operation);
    if (id == speed_control || is_freeze(file, group)) return true;
    const Operation operation = file.operation_of(group);
    const std::string name = ascii::lower_case(operation.name);
    return operation.time_warp || name.find("motion control") != std::string::npos ||
           name.find("speed") != std::string::npos;
}

Speed speed_of(const File& file, const Object& group, const Fraction& length) {
    for (const Auid& map : {speed_offset_map, offset_map}) {
        const Object* parameter = parameter_of(group, map);
        const std::vector<ControlPoint> points = points_of(parameter);
        if (!points.empty()) return from_offsets(file, *parameter, points, length);
    }
    const std::vector<ControlPoint> speeds = points_of(parameter_of(group, speed_map));
    if (!speeds.empty() && Fraction(0) < length) return from_speeds(speeds, length);
    if (is_freeze(file, group)) return steady(Fraction(0), length);
    const std::vector<ControlPoint> ratio = points_of(parameter_of(group, speed_ratio));
    if (ratio.empty()) return from_lengths(group, length);
    const Fraction& longer = ratio.front().value;
    if (!(longer == Fraction(0))) return steady(simple_speed(Fraction(1) / longer), length);
    Speed held = steady(longer, length);
    held.doubt = "its ratio of lengths is 0, which counts as a held frame";
    return held;
}

bool is_nest(const File& file, const Object& group) {
    return group.weak(pid::operation) == submaster ||
           ascii::lower_case(file.operation_of(group).name).find("submaster") != std::string::npos;
}

std::string effect_name(const File& file, const Object& group) {
    const std::string name = file.operation_of(group).name;
    if (!name.empty()) return name;
    const auto id = group.weak(pid::operation);
    return "effect " + (id ? text_of(*id) : std::string("without id"));
}

embedded::TransitionDescription transition_of(const File& file, const Object& transition) {
    embedded::TransitionDescription result;
    const Object* group = transition.child(pid::transition_operation);
    if (!group) return result;
    result.kind = kind_of(file, *group);
    result.name = effect_name(file, *group);
    if (result.kind == TransitionKind::wipe) number_wipe(file, *group, result);
    return result;
}

} // namespace formats::aaf
