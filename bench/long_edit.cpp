#include "bench/long_edit.h"

#include <cstdio>

namespace bench {
namespace {

constexpr int rolls = 40;
constexpr int shortest = 24;

template <class... Values> std::string printed(const char* format, Values... values) {
    char text[1024];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string time(int frames) { return printed(R"({"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":%d})", frames); }

std::string range(int start, int length) {
    return R"({"OTIO_SCHEMA":"TimeRange.1","start_time":)" + time(start) + R"(,"duration":)" + time(length) + '}';
}

std::string media(int roll) {
    return R"({"OTIO_SCHEMA":"ExternalReference.1","available_range":)" + range(86400 * (roll % 23), 48000) +
           printed(R"(,"target_url":"file:///rolls/A%03d.mov","metadata":{"quillbrook":)"
                   R"({"reel":"A%03d","cam_reel":"A%03d","keycode":"KJ%06d1000+00","scene":"%d","take":"%d"}}})",
                   roll, roll, roll, 123456 + roll, roll * 3 + 1, roll % 5 + 1);
}

// Clips of a roll advance through it, so that most material is used once and some again.
std::string clip(int index) {
    const int roll = index * 7 % rolls;
    const int start = 86400 * (roll % 23) + 100 + index * 37 % 40000;
    return printed(R"({"OTIO_SCHEMA":"Clip.1","name":"shot %d","source_range":)", index) +
           range(start, shortest + index * 13 % 90) + R"(,"media_reference":)" + media(roll) + '}';
}

std::string dissolve() {
    return R"({"OTIO_SCHEMA":"Transition.1","transition_type":"SMPTE_Dissolve","in_offset":)" + time(8) +
           R"(,"out_offset":)" + time(8) + '}';
}

} // namespace

std::string long_edit(int events) {
    std::string children;
    for (int i = 0; i < events; ++i) {
        if (i > 0) children += i % 10 == 0 ? ",\n" + dissolve() + ",\n" : std::string(",\n");
        children += clip(i);
    }
    return R"({"OTIO_SCHEMA":"Timeline.1","name":"Long edit","global_start_time":)" + time(86400) +
           R"(,"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)"
           R"({"OTIO_SCHEMA":"Track.1","kind":"Video","name":"V1","children":[)" +
           children + "]}]}}\n";
}

} // namespace bench
