#pragma once
// Short ways to read edit lists and to look at the edits that come of them.

#include "embedded/edit_builder.h"
#include "formats/edl/edl_reader.h"

#include <string>
#include <vector>

namespace edl_tests {

inline formats::ReadResult read(const std::vector<std::string>& lists, double rate = 24, bool all_effects = false) {
    std::vector<formats::EdlText> texts;
    for (std::size_t i = 0; i < lists.size(); ++i)
        texts.push_back({lists[i], std::string(1, static_cast<char>('a' + i)) + ".edl", 0});
    formats::ReadOptions options;
    options.rate = rate > 0 ? embedded::nearest_rate(rate) : nullptr;
    options.all_effects = all_effects;
    return formats::read_edl_texts(texts, options);
}

inline formats::ReadResult read(const std::string& list, double rate = 24) { return read(std::vector{list}, rate); }

/// What was told of a list.
inline std::vector<std::string> told(const formats::ReadResult& result) {
    std::vector<std::string> texts;
    for (const embedded::Warning& warning : result.warnings)
        texts.push_back(warning.text);
    return texts;
}

inline EditPtr source_of(const Cookie& cookie) {
    EditPtr source;
    source.i_open(cookie, edit_open_default);
    return source;
}

/// Timecode of a source at one of its positions.
inline std::string timecode_at(const EditPtr& source, double time) {
    return source->getLabel(user_label_timecode, {medium_source_picture, 2})->get_label_point(time).get_string();
}

inline std::string key_at(const EditPtr& source, double time) {
    EditLabel* key = source->getLabel(user_label_key, {medium_film, 1});
    return key->is_valid() ? key->get_label_point(mPosn_Xlate(time, medium_edit, medium_film, source)).get_string()
                           : "";
}

inline std::string kind_of(const EditPtr& edit, const ce_handle& handle) {
    const Cookie kind = edit->getED2CookieForED5Effect(handle);
    if (kind.isWipe())
        return "wipe" + std::to_string(kind.wipeType()) + (kind.wipeDirection() == wipe_reversed ? "r" : "");
    return kind.isFilmDissolve() ? "film" : kind.isDissolve() ? "diss" : "other";
}

/// A channel's events in frames: "0-10 A@01:00:00:00 | 10-18 diss | 18-20 black", a speed behind "*".
inline std::string drawn(const EditPtr& edit, int channel, double rate = 24) {
    std::string text;
    const auto frames = [rate](double time) { return std::to_string(static_cast<long>(time * rate + 0.5)); };
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ce_handle start = at;
        const ChannelEvent in = at.get_channel_event();
        at.increment(ce_all);
        const ChannelEvent out = at.get_channel_event();
        text += (text.empty() ? "" : " | ") + frames(in.edit_time) + "-" + frames(out.edit_time) + " ";
        if (in.cookie.isEffect()) {
            text += kind_of(edit, start);
            continue;
        }
        if (in.cookie.isBlack()) {
            text += "black";
            continue;
        }
        const EditPtr source = source_of(in.cookie);
        text += std::string(toUTF8(source->getName()).c_str()) + "@" + timecode_at(source, in.source_time);
        if (in.speed < 1.0F || in.speed > 1.0F) {
            std::string speed = std::to_string(static_cast<double>(in.speed));
            speed.erase(speed.find_last_not_of('0') + 1);
            if (speed.back() == '.') speed.pop_back();
            text += "*" + speed;
        }
    }
    return text;
}

/// Where a channel's event begins, the first being 0; transitions count.
inline ChannelEvent event_at(const EditPtr& edit, int channel, int event) {
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
    ce_handle at = cel->get_start_ceh();
    for (int i = 0; i < 2 * event; ++i)
        at.increment(ce_all);
    return at.get_channel_event();
}

inline EditPtr source_at(const EditPtr& edit, int channel, int event) {
    return source_of(event_at(edit, channel, event).cookie);
}

inline std::string reel_at(const EditPtr& edit, int channel, int event) {
    return source_at(edit, channel, event)->getReelId(0, -1).c_str();
}

} // namespace edl_tests
