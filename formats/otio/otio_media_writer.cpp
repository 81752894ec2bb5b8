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

double step_of(const LabelDescription& label) {
    return label.rate ? (Fraction(1) / *label.rate).to_double() : EditLabel(label.type, {}).posn_step;
}

/// Of the standards that count as the label does the one that steps as it does; the source's own where none does.
TCInf standard_of(const LabelDescription& timecode, const RateInfo& own) {
    constexpr int codes = 10;
    const double step = step_of(timecode);
    const bool own_counts_alike = own.timecode == timecode.type || own.drop_timecode == timecode.type;
    const RateInfo* found = own_counts_alike ? &own : nullptr;
    for (int code = 1; code <= codes; ++code) {
        const RateInfo* rate = embedded::rate_info(static_cast<Qb::FrameRate>(code));
        const bool counts_alike = rate && (rate->timecode == timecode.type || rate->drop_timecode == timecode.type);
        if (!counts_alike) continue;
        if (!found || Fraction(rate->den, rate->num).to_double() == step) found = rate;
    }
    if (!found) return {};
    return {found->code, static_cast<std::uint8_t>(timecode.type != found->timecode)};
}

/// The rate that is read of a standard: what counts as the edit does is the edit's.
const RateInfo& read_rate_of(const RateInfo& rate, const RateInfo& edit_rate) {
    return rate.nominal == edit_rate.nominal ? edit_rate : rate;
}

/// Whether the media's rate and how its timecode counts have to be told apart.
bool counts_apart(const SourceDescription& source, const RateInfo& edit_rate) {
    const RateInfo& rate = read_rate_of(rate_of(source, edit_rate), edit_rate);
    if (rate.code != rate_of(source, edit_rate).code) return true;
    if (!source.video_timecode) return false;
    const LabelDescription& label = *source.video_timecode;
    const bool of_the_rate = label.type == rate.timecode || label.type == rate.drop_timecode;
    return !of_the_rate || step_of(label) != Fraction(rate.den, rate.num).to_double();
}

/// Where the label's text doesn't name the sample, as one below 0 or past a day.
bool text_names_it(const LabelDescription& label) {
    LabelPoint read(0, label.type);
    read.set_sample(formats::text_of(label).c_str());
    return read.is_useful() && read.sample == point_of(label).sample;
}

/// The range tells the video timecode too.
bool has_range(const SourceDescription& source, const RateInfo& edit_rate) {
    const auto& timecode = source.video_timecode;
    return source.length || (timecode && !text_names_it(*timecode) && !counts_apart(source, edit_rate));
}

/// Whether the range's start tells the timecode.
bool range_tells_timecode(const SourceDescription& source, const RateInfo& edit_rate) {
    return has_range(source, edit_rate) && source.video_timecode && !counts_apart(source, edit_rate);
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

JsonValue image_sequence(const Values& values, const embedded::ImageFiles& images) {
    JsonValue sequence = values.object("ImageSequenceReference.1");
    values.add(sequence, "target_url_base", images.folder);
    values.add(sequence, "name_prefix", images.prefix);
    values.add(sequence, "name_suffix", images.suffix);
    values.add(sequence, "start_frame", JsonValue(images.first_frame));
    values.add(sequence, "frame_step", JsonValue(1));
    values.add(sequence, "rate", Values::number(images.rate.to_double()));
    values.add(sequence, "frame_zero_padding", JsonValue(images.digits));
    values.add(sequence, "missing_frame_policy", "error");
    return sequence;
}

JsonValue reference_of(const Values& values, const SourceDescription& source) {
    const std::string_view address = address_of(source);
    if (source.images) return image_sequence(values, *source.images);
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
    const bool apart = counts_apart(source, edit_rate);
    TCInf standard{rate.code, 0};
    if (source.video_timecode) standard = standard_of(*source.video_timecode, rate);
    const RateInfo* counting = embedded::rate_info(standard.rate);
    values.add(own, "timecode_std", tv_standard_to_edlstr(standard));
    if (counting && counting->can_drop()) values.add(own, "drop", JsonValue(standard.drop != 0));
    if (apart) values.add(own, "media_rate", otio::text_of(rate.rate()));
    if (apart && source.video_timecode && source.video_timecode->rate)
        values.add(own, "timecode_rate", otio::text_of(*source.video_timecode->rate));
    if (source.video_timecode && !range_tells_timecode(source, edit_rate))
        values.add(own, "timecode", formats::text_of(*source.video_timecode));
    if (source.sound_timecode) {
        values.add(own, "sound_timecode", formats::text_of(*source.sound_timecode));
        values.add(own, "sound_std", tv_standard_to_edlstr(standard_of(*source.sound_timecode, rate)));
    }
    if (source.timecode_24p) values.add(own, "timecode_24p", formats::text_of(*source.timecode_24p));
}

/// A number that isn't to be spelled in another way stays as it was given.
std::string key_text(const LabelDescription& key, const KeySpelling& keys) {
    return &keys == &plain_spelling() ? formats::text_of(key) : spelled(point_of(key), keys);
}

/// Of images both ends are told.
void add_last_key(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                  const KeySpelling& keys, JsonValue& own) {
    if (!source.images || !source.length) return;
    LabelPoint last = point_of(*source.key);
    const std::int64_t frames = (*source.length * film_rate_of(source, edit_rate)).floor() - 1;
    last += static_cast<int>(frames * last.cvt()->samples_per_frame());
    values.add(own, "keycode_last", spelled(last, keys));
}

void add_film_numbers(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                      const KeySpelling& keys, JsonValue& own) {
    if (source.key) {
        values.add(own, "film", label_type_to_edlstr(source.key->type));
        values.add(own, "keycode", key_text(*source.key, keys));
        add_last_key(values, source, edit_rate, keys, own);
    }
    if (source.ink) {
        values.add(own, "ink", label_type_to_edlstr(source.ink->type));
        values.add(own, "inkcode", formats::text_of(*source.ink));
    }
}

JsonValue own_metadata(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                       const KeySpelling& keys) {
    JsonValue own = values.object();
    for (const ReelField& field : reel_fields)
        if (const auto reel = source.reels.find(field.medium); reel != source.reels.end())
            values.add_given(own, name_of_field(field.field).own.data(), reel->second);
    add_timecodes(values, source, edit_rate, own);
    add_film_numbers(values, source, edit_rate, keys, own);
    values.add_given(own, "scene", source.scene);
    values.add_given(own, "take", source.take);
    values.add_given(own, "description", source.description);
    if (source.film_rate) values.add(own, "film_rate", otio::text_of(*source.film_rate));
    if (!(source.start_strip == Fraction(0)))
        values.add(own, "start_strip", Values::number(source.start_strip.to_double()));
    if (!source.opens) values.add(own, "lost", JsonValue(true));
    const bool told_by_name = source.identity == std::string(by_name) + source.name;
    const bool told_by_address = !source.images && !address_of(source).empty();
    if (!told_by_name && !told_by_address) values.add_given(own, "identity", source.identity);
    return own;
}

JsonValue available_range(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                          JsonValue& own) {
    const RateInfo& rate = rate_of(source, edit_rate);
    const bool tells = range_tells_timecode(source, edit_rate);
    const int first = tells ? point_of(*source.video_timecode).sample : 0;
    JsonValue range = values.object("TimeRange.1");
    if (source.length) values.add(range, "duration", values.time(*source.length, edit_rate, own, "length"));
    values.add(range, "start_time", values.frames(first, rate));
    return range;
}

} // namespace

Fraction start_of_media(const SourceDescription& source, const RateInfo& edit_rate) {
    if (!range_tells_timecode(source, edit_rate)) return 0;
    const Fraction frames(point_of(*source.video_timecode).sample);
    return frames / read_rate_of(rate_of(source, edit_rate), edit_rate).rate();
}

JsonValue media_reference(const Values& values, const SourceDescription& source, const RateInfo& edit_rate,
                          const KeySpelling& keys) {
    JsonValue reference = reference_of(values, source);
    JsonValue own = own_metadata(values, source, edit_rate, keys);
    values.add(reference, "name", source.name);
    values.add(reference, "available_range",
               has_range(source, edit_rate) ? available_range(values, source, edit_rate, own) : JsonValue());
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
