#include "tests/support/crossing_aaf.h"

#include <string>

namespace crossing {

using namespace aaf_writer;

namespace {

constexpr Rate rate{24};
constexpr std::int64_t hour = 86400;
constexpr std::int64_t dissolved = 12;
constexpr std::int64_t medium = 960, lead = 240; ///< frames of each medium, and those ahead of what is used

/// `first` counts frames from midnight on the tape.
struct Shot {
    int number;
    const char* name;
    int tape;
    std::int64_t first;
    const char* scene;
    const char* take;
};

constexpr std::int64_t at(int hours, int minutes, int seconds, int frames = 0) {
    return ((hours * 60 + minutes) * 60 + seconds) * 24 + frames;
}

constexpr Shot bank{1, "1-1", 1, at(1, 0, 20), "1", "1"}, rope{2, "1-2", 1, at(1, 2, 0), "1", "2"},
    boat{3, "2-1", 2, at(2, 0, 15), "2", "1"}, oars{4, "2-2", 2, at(2, 3, 0, 12), "2", "2"},
    landing{5, "1-3", 1, at(1, 5, 0), "1", "3"};
constexpr Shot shots[] = {bank, rope, boat, oars, landing};

Object shown(const Shot& shot, std::int64_t length) { return clip(shot.number, lead, length); }

Object pictures() {
    return sequence({shown(bank, 48), shown(rope, 60 + dissolved), transition(dissolved, 0), shown(boat, 72),
                     filler(24), effect(speed_control, 36, {shown(oars, 18)}, {constant(speed_ratio, 2)}),
                     shown(landing, 40)});
}

void add_shot(const Shot& shot, Objects& mobs) {
    const std::string name = shot.name;
    mobs.push_back(master(shot.number, name, {slot(1, rate, clip(shot.number + 100, 0, medium))},
                          {{"Scene", shot.scene}, {"Take", shot.take}}));
    mobs.push_back(file_source(shot.number + 100, name + ".mov",
                               {slot(1, rate, clip(200 + shot.tape, shot.first - lead - shot.tape * hour, medium))}));
}

Object whole_tape(int number) {
    return tape(200 + number, "TC0" + std::to_string(number),
                {slot(1, rate, clip(0, 0, hour)), slot(2, rate, timecode(number * hour, 24, hour), 1)});
}

} // namespace

Made aaf() {
    Made made;
    made.mobs.push_back(
        composition(1000, "The Crossing R1", {slot(1, rate, pictures()), slot(2, rate, timecode(hour, 24, 280), 1)}));
    for (const Shot& shot : shots)
        add_shot(shot, made.mobs);
    for (const int number : {1, 2})
        made.mobs.push_back(whole_tape(number));
    made.operations.push_back(defined(dissolve, "Cross Dissolve"));
    return made;
}

} // namespace crossing
