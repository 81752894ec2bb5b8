#include "tests/support/aaf_samples.h"

#include <string>
#include <utility>

namespace aaf_samples {

using namespace aaf_writer;

namespace {

constexpr Rate film_rate{24}, ntsc{30000, 1001};
constexpr std::int64_t material = 100'000;

void add_shot(Objects& mobs, int number, const std::string& name) {
    mobs.push_back(master(number, name, {slot(1, film_rate, clip(number + 1000, 0, material))}, {{"Scene", "1"}}));
    mobs.push_back(file_source(number + 1000, name + ".mxf", {slot(1, film_rate, clip(number + 2000, 0, material))}));
    mobs.push_back(
        tape(number + 2000, "T" + name,
             {slot(1, film_rate, clip(0, 0, material)), slot(2, film_rate, timecode(86400, 24, material), 1)}));
}

Object marker_with_attributes(Pid attributes) {
    Objects tags;
    tags.push_back(Object(auid("0d010101-0101-3f00-060e-2b3402060101"))
                       .text(pid::tag_name, "_ATN_CRM_COM")
                       .indirect_text(pid::tag_value, "see"));
    return marker(8, "", {1}).vector(attributes, std::move(tags));
}

void add_telecine(Objects& mobs, int number) {
    mobs.push_back(tape(number, "TK01",
                        {slot(1, ntsc, sequence({pulldown(9000, false, clip(number + 1, 0, 7200))})),
                         slot(2, ntsc, timecode(108000, 30, 9000), 1)}));
    mobs.push_back(film(number + 1, "A012",
                        {slot(1, film_rate, clip(0, 0, 8000)), slot(2, film_rate, edge_code("KJ291010", 0, 8000), 1),
                         slot(3, film_rate, edge_code("AA", 0, 8000, 2), 2)}));
}

} // namespace

Made everything() {
    constexpr Pid own_attributes = 0xfff8;
    Object pictures =
        scope(90, {sequence({filler(12), transition(12, 0), clip(1, 0, 30), transition(8, 4), clip(50, 2, 20),
                             effect(speed_control, 10, {clip(2, 0, 20)},
                                    {varying(speed_offset_map, {{0, 0}, {5, 15}, {10, 20}}, cubic)})}),
                   sequence({below(10), selector(10, clip(3, 0, 10)), choices(10, {clip(4, 0, 10)})})});
    Made made;
    made.mobs.push_back(
        composition(100, "Reel",
                    {slot(1, film_rate, std::move(pictures)), slot(2, film_rate, timecode(86400, 24, 90), 1),
                     slot(3, film_rate, clip(1, 0, 62, 1, sound), 1),
                     markers_slot(9, film_rate, {marker(4, "look", {1}), marker_with_attributes(own_attributes)})}));
    for (int i = 1; i <= 4; ++i)
        add_shot(made.mobs, i, std::string(1, static_cast<char>('A' + i - 1)));
    made.mobs.push_back(sub_clip(50, "sub", {slot(1, film_rate, clip(60, 5, 100))}));
    made.mobs.push_back(
        master(60, "S", {slot(1, film_rate, pulldown(1000, true, clip(61, 0, 1250)))}, {{"Scene", "1"}}));
    add_telecine(made.mobs, 61);
    made.operations.push_back(defined(dissolve, "Video Dissolve"));
    made.classes.push_back(defined_property(auid("60958184-47b1-11d4-a01c-0004ac969f50"), own_attributes));
    return made;
}

Made long_cut(std::size_t clips) {
    constexpr int shots = 200;
    Objects parts;
    for (std::size_t i = 0; i < clips; ++i) {
        const auto at = static_cast<std::int64_t>(i);
        if (i % 10 == 9) parts.push_back(transition(16, 8));
        parts.push_back(clip(1000 + static_cast<int>(i % shots), 37 * at % 500, 40 + at % 50));
    }
    Made made;
    made.mobs.push_back(composition(
        1, "Long",
        {slot(1, film_rate, sequence(std::move(parts))), slot(2, film_rate, timecode(86400, 24, material), 1)}));
    for (int i = 0; i < shots; ++i) {
        const std::string name = "shot " + std::to_string(i);
        made.mobs.push_back(master(1000 + i, name, {slot(1, film_rate, clip(2000 + i, 0, 1000))},
                                   {{"Scene", std::to_string(i)}, {"Take", "1"}}));
        made.mobs.push_back(
            file_source(2000 + i, name + ".mxf", {slot(1, film_rate, pulldown(1000, true, clip(3000, 30 * i, 1250)))}));
    }
    add_telecine(made.mobs, 3000);
    made.operations.push_back(defined(dissolve, "Video Dissolve"));
    return made;
}

} // namespace aaf_samples
