#pragma once
// Small AAF files, and short ways to look at what they become.

#include "embedded/edit_builder.h"
#include "formats/aaf/aaf_reader.h"
#include "tests/support/aaf_writer.h"

#include <cmath>
#include <string>
#include <vector>

namespace aaf_edits {

using namespace aaf_writer;

inline void add(Objects& to, Objects more) {
    for (Object& each : more)
        to.push_back(std::move(each));
}

/// A master with that number, its file (1000 more) and its tape (2000 more), "T" and its name, with timecode from
/// `start`. All count frames of one rate, and are 10,000 long.
inline Objects shot(int number, const std::string& name, Rate rate = {24}, std::int64_t start = 86400,
                    const Comments& comments = {}) {
    constexpr std::int64_t length = 10000;
    const std::int64_t counting = (rate.num + rate.den / 2) / rate.den;
    return {master(number, name, {slot(1, rate, clip(number + 1000, 0, length))}, comments),
            file_source(number + 1000, name + ".mxf", {slot(1, rate, clip(number + 2000, 0, length))}),
            tape(number + 2000, "T" + name,
                 {slot(1, rate, clip(0, 0, length)), slot(2, rate, timecode(start, counting, length), 1)})};
}

/// Of one composition named "Reel", with shots A to D under the numbers 1 to 4.
inline Made reel(Objects slots, Rate rate = {24}) {
    Made made;
    made.mobs.push_back(composition(100, "Reel", std::move(slots)));
    for (int i = 1; i <= 4; ++i)
        add(made.mobs, shot(i, std::string(1, static_cast<char>('A' + i - 1)), rate));
    return made;
}

/// One with a single picture track.
inline Made track(Object segment, Rate rate = {24}) { return reel({slot(1, rate, std::move(segment))}, rate); }

inline formats::ReadResult read(const Made& made, const formats::ReadOptions& options = {}) {
    return formats::read_aaf_bytes(written(made), "reel.aaf", 1000, options);
}

inline std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", std::round(value * 1000) / 1000 + 0.0);
    return text;
}

/// The events of a channel in frames: "A 0-24 @48 | x 20-28 | b 24-24 | B 24-30 @0*2", behind "@" the source in, behind
/// "*" the speed where it isn't 1.
inline std::string drawn(const formats::ReadResult& result, int channel = 0) {
    if (!result.edit) return "no edit: " + result.error;
    const double rate = embedded::rate_info(result.edit->getSourceFrameRate())->rate().to_double();
    std::string text;
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(channel);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent event = at.get_channel_event();
        if (!at.is_in_point()) continue;
        ce_handle out = at;
        out.increment(ce_all);
        EditPtr source;
        source.i_open(event.cookie, edit_open_default);
        const bool material = !event.cookie.isEffect() && !event.cookie.isBlack();
        text += text.empty() ? "" : " | ";
        text += event.cookie.isEffect()  ? "x"
                : event.cookie.isBlack() ? "b"
                : source                 ? toUTF8(source->getName()).c_str()
                                         : "?";
        text += " " + number(event.edit_time * rate) + "-" + number(out.get_channel_event().edit_time * rate);
        if (material) text += " @" + number(event.source_time * rate);
        if (material && event.speed != 1.0F) text += "*" + number(static_cast<double>(event.speed));
    }
    return text;
}

inline std::string drawn(const Made& made, int channel = 0) { return drawn(read(made), channel); }

inline bool warns_of(const formats::ReadResult& result, const std::string& words) {
    for (const std::string& warning : result.warnings)
        if (warning.find(words) != std::string::npos) return true;
    return false;
}

/// The in points of a channel's material.
inline std::vector<ChannelEvent> material(const formats::ReadResult& result, int channel = 0) {
    std::vector<ChannelEvent> all;
    if (!result.edit) return all;
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(channel);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent event = at.get_channel_event();
        if (at.is_in_point() && !event.cookie.isEffect() && !event.cookie.isBlack()) all.push_back(event);
    }
    return all;
}

inline EditPtr source_of(const formats::ReadResult& result, std::size_t event = 0, int channel = 0) {
    EditPtr source;
    const std::vector<ChannelEvent> all = material(result, channel);
    if (event < all.size()) source.i_open(all[event].cookie, edit_open_default);
    return source;
}

inline std::string reel(const EditPtr& source, int medium, int roll) {
    return source ? source->getReelId(medium, roll).c_str() : "no source";
}

/// A field of the log, as "scene".
inline std::string field(const EditPtr& source, const char* key) {
    strp_field value;
    return source && read_edit_field(source.get(), key, value) == 0 ? value : "none";
}

/// What a label shows at the frame at which an event begins, moved by `frames` of the edit; "-" where its source has
/// none.
inline std::string label_at(const formats::ReadResult& result, UserLabelType kind, std::size_t event = 0,
                            int frames = 0) {
    const EditPtr source = source_of(result, event);
    if (!source) return "no source";
    EditLabel* label = source->getLabel(kind, {1, kind == user_label_timecode ? 2 : 1});
    if (!label->is_valid()) return "-";
    const double rate = embedded::rate_info(result.edit->getSourceFrameRate())->rate().to_double();
    const double time = material(result)[event].source_time + frames / rate;
    const double place = kind == user_label_timecode ? mPosn_Xlate(time, medium_edit, label, source)
                                                     : mPosn_Xlate(time, medium_edit, medium_film, source);
    return label->get_label_point(place).get_string();
}

/// `frames` frames at a whole speed, below 0 from their end.
inline Object played(int speed, int frames, Object shown) {
    return effect(speed_control, frames / std::abs(speed), {sequence({std::move(shown)})},
                  {constant(speed_ratio, speed < 0 ? -1 : 1, std::abs(speed))});
}
/// Which of them a frame of the effect shows.
inline int frame_played(int speed, int frames, int frame) { return speed * frame + (speed < 0 ? frames - 1 : 0); }

} // namespace aaf_edits
