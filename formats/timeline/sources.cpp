#include "formats/timeline/sources.h"

#include <cstdint>
#include <limits>

namespace formats::timeline {
namespace {

using embedded::Fraction;
using embedded::LabelDescription;
using embedded::SourceDescription;

void append(std::string& key, std::int64_t number) {
    key.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void append(std::string& key, const std::string& text) {
    append(key, static_cast<std::int64_t>(text.size()));
    key += text;
}

void append(std::string& key, const Fraction& value) {
    const Fraction::wide parts[] = {value.num(), value.den()};
    key.append(reinterpret_cast<const char*>(parts), sizeof parts);
}

void append(std::string& key, const std::optional<Fraction>& value) {
    key += value ? 'y' : 'n';
    if (value) append(key, *value);
}

void append(std::string& key, const std::optional<LabelDescription>& label) {
    key += label ? 'y' : 'n';
    if (!label) return;
    append(key, label->text);
    append(key, std::int64_t{label->type});
    key += label->sample ? 'y' : 'n';
    if (label->sample) append(key, std::int64_t{*label->sample});
    append(key, label->rate);
}

/// Bytes that are the same for equal sources alone.
void write_key(const SourceDescription& source, std::string& key) {
    key.clear();
    append(key, source.identity);
    append(key, source.name);
    key += source.opens ? 'o' : 'c';
    key += source.rendered ? 'r' : 'm';
    append(key, std::int64_t{source.rate ? source.rate->code : 0});
    append(key, source.film_rate);
    append(key, source.start_strip);
    append(key, source.length);
    append(key, static_cast<std::int64_t>(source.reels.size()));
    for (const auto& [medium, reel] : source.reels) {
        append(key, std::int64_t{medium.first});
        append(key, std::int64_t{medium.second});
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
