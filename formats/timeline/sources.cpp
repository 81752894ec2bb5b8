#include "formats/timeline/sources.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace formats::timeline {
namespace {

using embedded::Fraction;
using embedded::LabelDescription;
using embedded::SourceDescription;

template <typename Short> bool append_if_short(std::string& key, Fraction::wide number) {
    const auto value = static_cast<Short>(number);
    if (value != number) return false;
    char bytes[1 + sizeof value] = {static_cast<char>(sizeof value)};
    std::memcpy(bytes + 1, &value, sizeof value);
    key.append(bytes, sizeof bytes);
    return true;
}

/// In few bytes, as there is a key for each source. How many there are stands ahead.
void append(std::string& key, Fraction::wide number) {
    append_if_short<std::int8_t>(key, number) || append_if_short<std::int16_t>(key, number) ||
        append_if_short<std::int32_t>(key, number) || append_if_short<std::int64_t>(key, number) ||
        append_if_short<Fraction::wide>(key, number);
}

void append(std::string& key, const std::string& text) {
    append(key, Fraction::wide{text.size()});
    key += text;
}

void append(std::string& key, const Fraction& value) {
    append(key, value.num());
    append(key, value.den());
}

void append(std::string& key, const std::optional<Fraction>& value) {
    key += value ? 'y' : 'n';
    if (value) append(key, *value);
}

void append(std::string& key, const std::optional<LabelDescription>& label) {
    key += label ? 'y' : 'n';
    if (!label) return;
    append(key, label->text);
    append(key, Fraction::wide{label->type});
    key += label->sample ? 'y' : 'n';
    if (label->sample) append(key, Fraction::wide{*label->sample});
    append(key, label->rate);
}

/// Bytes that are the same for equal sources alone.
void write_key(const SourceDescription& source, std::string& key) {
    key.clear();
    append(key, source.identity);
    append(key, source.name);
    key += source.opens ? 'o' : 'c';
    key += source.rendered ? 'r' : 'm';
    append(key, Fraction::wide{source.rate ? source.rate->code : 0});
    append(key, source.film_rate);
    append(key, source.start_strip);
    append(key, source.length);
    append(key, Fraction::wide{source.reels.size()});
    for (const auto& [medium, reel] : source.reels) {
        append(key, Fraction::wide{medium.first});
        append(key, Fraction::wide{medium.second});
        append(key, reel);
    }
    for (const auto* label :
         {&source.video_timecode, &source.sound_timecode, &source.timecode_24p, &source.key, &source.ink})
        append(key, *label);
    for (const auto* text : {&source.scene, &source.take, &source.description})
        append(key, *text);
}

} // namespace

embedded::SourceId Sources::add(SourceDescription source) {
    write_key(source, key_);
    const auto [entry, fresh] = known_.try_emplace(key_, 0);
    if (fresh) entry->second = builder_.add_source(std::move(source));
    return entry->second;
}

std::optional<LabelDescription> label_of_text(label_t type, const std::string& text, std::string_view what,
                                              std::string& fault) {
    if (type == label_none) {
        fault = "the kind of its " + std::string(what) + " is unknown, so it is left out";
        return std::nullopt;
    }
    LabelPoint point(0, type);
    point.set_sample(text.c_str());
    if (point.is_useful() && text.find('\0') == std::string::npos) return LabelDescription{type, text, {}, {}};
    fault = "\"" + text + "\" can't be read as its " + std::string(what);
    return std::nullopt;
}

int sample_of(std::int64_t frame, int nominal) {
    if (frame < std::numeric_limits<int>::min() || frame > std::numeric_limits<int>::max())
        frame %= std::int64_t{86400} * nominal;
    return static_cast<int>(frame);
}

} // namespace formats::timeline
