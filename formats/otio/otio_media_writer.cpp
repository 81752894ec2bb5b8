#include "formats/otio/otio_media_writer.h"

#include "formats/otio/otio_fields.h"
#include "formats/source_labels.h"

namespace formats::otio {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;

constexpr std::string_view by_name = "name:";

const RateInfo& rate_of(const SourceDescription& source, const RateInfo& edit_rate) {
    return source.rate ? *source.rate : edit_rate;
}

/// Of the standards that count as the label does the one that steps as it does; the source's own where none does.
TCInf standard_of(const LabelDescription& timecode, const RateInfo& own) {
    constexpr int codes = 10;
    const double kinds_own = EditLabel(timecode.type, {}).posn_step;
    const double step = timecode.rate ? (Fraction(1) / *timecode.rate).to_double() : kinds_own;
    const RateInfo* found = &own;
    for (int code = 1; code <= codes; ++code) {
        const RateInfo* rate = embedded::rate_info(static_cast<Qb::FrameRate>(code));
        const bool counts_alike = rate && (rate->timecode == timecode.type || rate->drop_timecode == timecode.type);
        if (counts_alike && Fraction(rate->den, rate->num).to_double() == step) found = rate;
    }
    return {found->code, static_cast<std::uint8_t>(timecode.type != found->timecode)};
}

bool is_drop(const LabelDescription& timecode, const RateInfo& rate) {
    return rate.can_drop() && timecode.type == rate.drop_timecode;
}

/// Where the label's text doesn't name the sample, as one below 0 or past a day.
bool text_names_it(const LabelDescription& label) {
    LabelPoint read(0, label.type);
    read.set_sample(formats::text_of(label).c_str());
    return read.is_useful() && read.sample == point_of(label).sample;
}

/// The range tells the video timecode too.
bool has_range(const SourceDescription& source) {
    return source.length || (source.video_timecode && !text_names_it(*source.video_timecode));
}

bool has_numbers(const SourceDescription& source) {
    return !source.reels.empty() || source.key || source.ink || source.sound_timecode || source.timecode_24p ||
           source.video_timecode;
}

/// Empty where the source has none.
std::string_view address_of(const SourceDescription& source) {
    const std::string_view identity = source.identity;
    const bool generated = !source.video_timecode;
    return generated || identity == std::string(by_name) + source.name ? std::string_view() : identity;
}

JsonValue reference_of(const Values& values, const SourceDescription& source) {
    const std::string_view address = address_of(source);
    if (!source.video_timecode) {
        JsonValue generator = values.object("GeneratorReference.1");
        // Of a source without a name the kind would be the name.
        values.add(generator, "generator_kind", source.name.empty() ? "" : source.rendered ? "rendered" : "picture");
        values.add(generator, "parameters", values.object());
        return generator;
    }
    if (address.empty() && has_numbers(source)) return values.object("MissingReference.1");
    JsonValue external = values.object("ExternalReference.1");
    values.add(external, "target_url", address);
    return external;
}

void add_timecodes(const Values& values, const SourceDescription& source, const RateInfo& edit_rate, JsonValue& own) {
    const RateInfo& rate = rate_of(source, edit_rate);
    const bool drop = source.video_timecode && is_drop(*source.video_timecode, rate);
    values.add(own, "timecode_std", tv_standard_to_edlstr({rate.code, static_cast<std::uint8_t>(drop)}));
    if (rate.can_drop()) values.add(own, "drop", JsonValue(drop));
    if (source.video_timecode && !has_range(source))
        values.add(own, "timecode", formats::text_of(*source.video_timecode));
    if (source.sound_timecode) {
        const TCInf standard = standard_of(*source.sound_timecode, rate);
        values.add(own, "sound_timecode", formats::text_of(*source.sound_timecode));
        values.add(own, "sound_std", tv_standard_to_edlstr(standard));
    }
    if (source.timecode_24p) values.add(own, "timecode_24p", formats::text_of(*source.timecode_24p));
}

void add_film_numbers(const Values& values, const SourceDescription& source, JsonValue& own) {
    if (source.key) {
        values.add(own, "film", label_type_to_edlstr(source.key->type));
        values.add(own, "keycode", formats::text_of(*source.key));
    }
    if (source.ink) {
        values.add(own, "ink", label_type_to_edlstr(source.ink->type));
        values.add(own, "inkcode", formats::text_of(*source.ink));
    }
}

JsonValue own_metadata(const Values& values, const SourceDescription& source, const RateInfo& edit_rate) {
    JsonValue own = values.object();
    for (const ReelField& field : reel_fields)
        if (const auto reel = source.reels.find(field.medium); reel != source.reels.end())
            values.add_given(own, field.name.own.data(), reel->second);
    add_timecodes(values, source, edit_rate, own);
    add_film_numbers(values, source, own);
    values.add_given(own, "scene", source.scene);
    values.add_given(own, "take", source.take);
    values.add_given(own, "description", source.description);
    if (source.film_rate) values.add(own, "film_rate", otio::text_of(*source.film_rate));
    if (!(source.start_strip == Fraction(0)))
        values.add(own, "start_strip", Values::number(source.start_strip.to_double()));
    if (!source.opens) values.add(own, "lost", JsonValue(true));
    const bool told_by_name = source.identity == std::string(by_name) + source.name;
    if (!told_by_name && address_of(source).empty()) values.add_given(own, "identity", source.identity);
    return own;
}

JsonValue available_range(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                          JsonValue& own) {
    const RateInfo& rate = rate_of(source, edit_rate);
    const int first = source.video_timecode ? point_of(*source.video_timecode).sample : 0;
    JsonValue range = values.object("TimeRange.1");
    if (source.length) values.add(range, "duration", values.time(*source.length, edit_rate, own, "length"));
    values.add(range, "start_time", values.frames(first, rate));
    return range;
}

} // namespace

Fraction start_of_media(const SourceDescription& source, const RateInfo& edit_rate) {
    if (!has_range(source) || !source.video_timecode) return 0;
    const RateInfo& rate = rate_of(source, edit_rate);
    const Fraction frames(point_of(*source.video_timecode).sample);
    return frames / (rate.nominal == edit_rate.nominal ? edit_rate : rate).rate();
}

JsonValue media_reference(const Values& values, const SourceDescription& source, const RateInfo& edit_rate) {
    JsonValue reference = reference_of(values, source);
    JsonValue own = own_metadata(values, source, edit_rate);
    values.add(reference, "name", source.name);
    values.add(reference, "available_range",
               has_range(source) ? available_range(values, source, edit_rate, own) : JsonValue());
    values.add_own(reference, std::move(own));
    return reference;
}

JsonValue black_reference(const Values& values) {
    JsonValue black = values.object("GeneratorReference.1");
    values.add(black, "generator_kind", "black");
    values.add(black, "parameters", values.object());
    values.add_own(black, values.object());
    return black;
}

} // namespace formats::otio
