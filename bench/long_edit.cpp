#include "bench/long_edit.h"

#include "bench/printed.h"

namespace bench {
namespace {

constexpr int rolls = 40;
constexpr int shortest = 24;

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

constexpr int effect_every = 20;
constexpr int reuse_every = 5;

int length_of(int index) { return shortest + index * 13 % 90; }

// Clips of a roll advance through it, so that most material is used once and some again.
std::string clip(int index, int material, int slipped = 0) {
    const int roll = material * 7 % rolls;
    const int start = 86400 * (roll % 23) + 100 + material * 37 % 40000 + slipped;
    return printed(R"({"OTIO_SCHEMA":"Clip.1","name":"shot %d","source_range":)", index) +
           range(start, length_of(index)) + R"(,"media_reference":)" + media(roll) + '}';
}

std::string gap(int length, const std::string& effects) {
    return R"({"OTIO_SCHEMA":"Gap.1","source_range":)" + range(0, length) + R"(,"effects":[)" + effects + "]}";
}

std::string dissolve() {
    return R"({"OTIO_SCHEMA":"Transition.1","transition_type":"SMPTE_Dissolve","in_offset":)" + time(8) +
           R"(,"out_offset":)" + time(8) + '}';
}

/// The last of every five events repeats the one four before it.
int material_of(int index) { return index % reuse_every == reuse_every - 1 ? index - reuse_every + 1 : index; }

template <class ClipAt>
std::string picture(int events, const ClipAt& clip_at, int dissolve_every = 10, const char* name = "V1") {
    std::string children;
    for (int i = 0; i < events; ++i) {
        if (i > 0) children += i % dissolve_every == 0 ? ",\n" + dissolve() + ",\n" : std::string(",\n");
        children += clip_at(i);
    }
    return printed(R"({"OTIO_SCHEMA":"Track.1","kind":"Video","name":"%s","children":[)", name) + children + "]}";
}

/// Frames that a clip has slipped up to that version, each clip in its turn.
int slip_of(int index, int version) {
    constexpr int turns = 20, frames = 10;
    return frames * ((version + turns - 1 - index % turns) / turns);
}

std::string effects_over(int events, int every) {
    const std::string effect = R"({"OTIO_SCHEMA":"Effect.1","name":"Superimpose","effect_name":"Superimpose",)"
                               R"("metadata":{"quillbrook":{"tracks":[0]}}})";
    std::string children;
    for (int i = 0; i < events; ++i) {
        if (i > 0) children += ",\n";
        children += gap(length_of(i), i % every == every / 4 ? effect : "");
    }
    return R"({"OTIO_SCHEMA":"Track.1","kind":"Video","name":"FX","metadata":{"quillbrook":{"subtype":8}},)"
           R"("children":[)" +
           children + "]}";
}

std::string timeline(const std::string& tracks) {
    return R"({"OTIO_SCHEMA":"Timeline.1","name":"Long edit","global_start_time":)" + time(86400) +
           R"(,"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" + tracks + "]}}\n";
}

} // namespace

std::string long_edit(int events) {
    return timeline(picture(events, [](int i) { return clip(i, i); }));
}

std::string long_reel(int events, int reel, int version) {
    return timeline(picture(events, [&](int i) { return clip(i, (reel - 1) * events + i, slip_of(i, version)); }));
}

std::string long_optical_edit(int records) {
    const int events = records * effect_every / (effect_every + 1);
    const std::string clips = picture(events, [](int i) { return clip(i, material_of(i)); });
    return timeline(clips + ",\n" + effects_over(events, effect_every));
}

std::string shaped_edit(const EditShape& shape) {
    const int events = shape.clips / shape.tracks;
    std::string tracks;
    for (int track = 0; track < shape.tracks; ++track) {
        const auto clip_at = [&](int i) {
            const int number = track * events + i, use = number % shape.uses;
            return clip(number, number / shape.uses, use * 13 % 50);
        };
        const std::string name = printed("V%d", track + 1);
        tracks += (track == 0 ? "" : ",\n") + picture(events, clip_at, shape.dissolve_every, name.c_str());
    }
    if (shape.effect_every > 0) tracks += ",\n" + effects_over(events, shape.effect_every);
    return timeline(tracks);
}

} // namespace bench
