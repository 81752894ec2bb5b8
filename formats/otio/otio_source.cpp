#include "formats/otio/otio_source.h"

#include "formats/file_names.h"
#include "formats/key_number.h"
#include "formats/otio/otio_fields.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <limits>

namespace formats::otio {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;

bool is_media(Schema schema) {
    return schema == Schema::external_reference || schema == Schema::generator_reference ||
           schema == Schema::image_sequence || schema == Schema::missing_reference;
}

/// The reference that counts: `Clip.1` has one, later clips a map of them and a key.
const JsonValue* active_reference(const Place& clip, const Context& context) {
    if (object_type(*clip.value).version == 1) return json_member(*clip.value, "media_reference");
    const JsonValue* map = json_member(*clip.value, "media_references");
    const JsonValue* key = json_member(*clip.value, "active_media_reference_key");
    if (map && !map->IsObject()) refuse(clip, "\"media_references\" isn't an object");
    if (key && !key->IsString()) refuse(clip, "\"active_media_reference_key\" isn't a text");
    if (!map && !key) return nullptr;
    const std::string_view name = key ? json_string(key) : "DEFAULT_MEDIA";
    if (map)
        for (const auto& member : map->GetObject())
            if (json_string(&member.name) == name) return member.value.IsNull() ? nullptr : &member.value;
    context.warn(clip, "there is no media reference \"" + std::string(name) + "\", so it has no media",
                 embedded::WarningKind::replaced);
    return nullptr;
}

/// The address of the medium; of a sequence of images what all its files begin with.
std::string url_of(const Media& media) {
    if (media.schema == Schema::external_reference) return json_text(json_member(media.reference, "target_url"));
    if (media.schema != Schema::image_sequence) return {};
    return json_text(json_member(media.reference, "target_url_base")) +
           json_text(json_member(media.reference, "name_prefix"));
}

std::string generator_kind(const Media& media) { return json_text(json_member(media.reference, "generator_kind")); }

std::string shot_name(const Place& clip, const Media& media) {
    std::string name = media.reference ? name_of(*media.reference) : std::string();
    if (name.empty()) name = name_of(*clip.value);
    if (name.empty()) name = media.generator() ? generator_kind(media) : stem_of(url_of(media));
    return name;
}

/// What the labels of one source are made from.
struct LabelMaker {
    const Place& clip;
    const Media& media;
    const Context& context;
    const FieldSource& fields;
    SourceDescription& source;

    std::optional<LabelDescription> label(label_t type, const std::string& text, std::string_view what) const {
        return label_from_text(clip, context, type, text, what);
    }
    TCInf standard(Field field) const;
    const RateInfo* rate_of_ranges() const;
    const RateInfo& rate_of(const TCInf& standard) const;
    const RateInfo& media_rate(const RateInfo& of_timecode) const;
    bool timecodes() const;
    bool video(const RateInfo& rate, bool drop) const;
    void sound(const TCInf& standard_of_video) const;
    void film_numbers() const;
};

TCInf LabelMaker::standard(Field field) const {
    const std::string text = fields.text(field);
    if (text.empty()) return {};
    const TCInf found = edlstr_to_tv_standard(text.c_str());
    if (found.rate == Qb::frame_rate_unset)
        context.warn(clip,
                     "\"" + text + "\" of \"" + std::string(name_of_field(field).own) + "\" is no timecode standard",
                     embedded::WarningKind::rate);
    return found;
}

/// The rate of the medium's times, else of the clip's; null where that isn't listed or there are none.
const RateInfo* LabelMaker::rate_of_ranges() const {
    const std::optional<Time>* times[] = {
        media.available ? &media.available->start : nullptr,
        media.source_range ? &media.source_range->start : nullptr,
        media.source_range ? &media.source_range->duration : nullptr,
    };
    for (const auto* time : times) {
        if (!time || !*time) continue;
        return (*time)->info;
    }
    return nullptr;
}

/// What counts as the edit does goes frame for frame with it, so 24 in an edit at 23.976 is 23.976.
const RateInfo& LabelMaker::rate_of(const TCInf& given) const {
    const RateInfo* listed = embedded::rate_info(given.rate);
    if (!listed) listed = rate_of_ranges();
    return listed && listed->nominal != context.rate->nominal ? *listed : *context.rate;
}

/// That of its timecode, where the file doesn't tell them apart.
const RateInfo& LabelMaker::media_rate(const RateInfo& of_timecode) const {
    const std::optional<Fraction> given = read_rate(clip, fields.own(Field::media_rate), "\"media_rate\"");
    const RateInfo* listed = given ? embedded::nearest_rate(given->to_double()) : nullptr;
    if (given && !listed) context.warn(clip, "its \"media_rate\" is none that edits have", embedded::WarningKind::rate);
    return listed ? *listed : of_timecode;
}

/// Whether a text of its own gave it.
bool LabelMaker::video(const RateInfo& rate, bool drop) const {
    const label_t type = drop ? rate.drop_timecode : rate.timecode;
    const std::string text = fields.text(Field::timecode);
    if (!text.empty()) source.video_timecode = label(type, text, "timecode");
    const bool given = source.video_timecode.has_value();
    if (!given && !media.generator()) {
        const bool known = media.available && media.available->start;
        const Fraction start = known ? media.available->start->seconds_on(*context.rate) : Fraction(0);
        const std::int64_t frame = (start * rate.rate()).nearest();
        source.video_timecode = LabelDescription{type, {}, timeline::sample_of(frame, rate.nominal), {}};
    }
    const std::optional<Fraction> step = read_rate(clip, fields.own(Field::timecode_rate), "\"timecode_rate\"");
    if (source.video_timecode) source.video_timecode->rate = step ? *step : rate.rate();
    return given;
}

void LabelMaker::sound(const TCInf& standard_of_video) const {
    const std::string text = fields.text(Field::sound_timecode);
    if (text.empty()) return;
    TCInf used = standard(Field::sound_standard);
    if (used.rate == Qb::frame_rate_unset) used = standard_of_video;
    source.sound_timecode = label(TvStd_to_label_type(used), text, "sound timecode");
    const RateInfo* info = embedded::rate_info(used.rate);
    if (source.sound_timecode && info) source.sound_timecode->rate = info->rate();
}

/// Whether any of them is given.
bool LabelMaker::timecodes() const {
    const TCInf given = standard(Field::timecode_standard);
    const RateInfo& rate = rate_of(given);
    source.rate = &media_rate(rate);
    if (!source.film_rate && source.rate->code == context.rate->code) source.film_rate = context.film_rate;
    const bool marked = fields.text(Field::timecode).find(';') != std::string::npos;
    const JsonValue* own_drop = fields.own(Field::drop);
    const bool drop =
        rate.can_drop() && (own_drop ? json_truth(own_drop) : marked || context.drop_frame || given.drop != 0);
    const bool own_video = video(rate, drop);
    TCInf standard_of_video;
    standard_of_video.rate = rate.code;
    standard_of_video.drop = drop ? 1 : 0;
    sound(standard_of_video);

    const std::string text = fields.text(Field::timecode_24p);
    if (!text.empty()) source.timecode_24p = label(label_tc_24, text, "24-frame timecode");
    if (source.timecode_24p)
        source.timecode_24p->rate = source.film_rate ? *source.film_rate : embedded::film_rate_of(*source.rate);
    return own_video || source.sound_timecode || source.timecode_24p;
}

void LabelMaker::film_numbers() const {
    std::string film = fields.text(Field::film);
    if (film.empty()) film = "35mm-4p";
    const std::string key = fields.text(Field::key);
    if (!key.empty())
        source.key = label(edlstr_to_label_type(film.c_str(), user_label_key), plain_key_number(key), "key number");

    std::string ink_kind = fields.text(Field::ink_kind);
    if (ink_kind.empty()) ink_kind = film;
    const std::string ink = fields.text(Field::ink);
    if (!ink.empty()) source.ink = label(edlstr_to_label_type(ink_kind.c_str(), user_label_ink), ink, "ink number");
}

} // namespace

bool Media::black() const {
    if (!generator()) return false;
    std::string kind = generator_kind(*this);
    if (kind.empty()) kind = name_of(*reference);
    return ascii::same(kind, "black") || ascii::same(kind, "slug");
}

std::optional<Time> Media::length() const {
    if (source_range && source_range->duration) return source_range->duration;
    return available ? available->duration : std::nullopt;
}

Media media_of(const Place& clip, const Context& context) {
    Media media;
    media.own = own_metadata_of(clip.value);
    media.source_range = read_range(clip, "source_range");
    const JsonValue* reference = active_reference(clip, context);
    if (!reference) return media;
    if (!reference->IsObject()) refuse(clip, "its media reference isn't an object");
    const Schema schema = schema_of(*reference);
    if (!is_media(schema) && schema != Schema::unknown) refuse(clip, "its media reference isn't one");
    if (schema == Schema::unknown)
        context.warn(clip, "its media reference is of an unknown type: missing media", embedded::WarningKind::replaced);
    media.reference = reference;
    media.schema = schema == Schema::unknown ? Schema::missing_reference : schema;
    const Place place = clip.step("media_reference", *reference);
    media.available = read_range(place, "available_range");
    return media;
}

Fraction length_of_clip(const Place& clip, const Media& media, const Context& context) {
    const std::optional<Time> length = media.length();
    if (!length) refuse(clip, "the clip has no length: neither source_range nor available_range gives one");
    return exact_or(media.own, "length", length->seconds_on(*context.rate));
}

namespace {

Fraction first_of(const Media& media, const Context& context) {
    return media.available && media.available->start ? media.available->start->seconds_on(*context.rate) : Fraction(0);
}

} // namespace

Fraction source_in_of(const Media& media, const Context& context) {
    if (!media.source_range || !media.source_range->start) return {};
    const Fraction start = media.source_range->start->seconds_on(*context.rate);
    return exact_or(media.own, "source_in", start - first_of(media, context));
}

Fraction start_of(const Media& media, const Context& context) {
    if (media.source_range && !media.source_range->start) return {};
    return first_of(media, context) + source_in_of(media, context);
}

bool is_rendered(const JsonValue& clip) { return json_truth(json_member(own_metadata_of(&clip), "rendered")); }

std::optional<LabelDescription> label_from_text(const Place& place, const Context& context, label_t type,
                                                const std::string& text, std::string_view what) {
    std::string fault;
    std::optional<LabelDescription> label = timeline::label_of_text(type, text, what, fault);
    if (!label) context.warn_dropped(place, fault);
    return label;
}

SourceDescription describe_source(const Place& clip, const Media& media, const Context& context) {
    SourceDescription source;
    const FieldSource fields(*clip.value, media.reference);
    source.name = shot_name(clip, media);
    source.identity = json_text(fields.own(Field::identity));
    if (source.identity.empty()) source.identity = url_of(media);
    if (source.identity.empty()) source.identity = "name:" + source.name;
    source.rendered = is_rendered(*clip.value);
    if (media.available && media.available->duration)
        source.length =
            exact_or(own_metadata_of(media.reference), "length", media.available->duration->seconds_on(*context.rate));
    source.film_rate = read_rate(clip, fields.own(Field::film_rate), "\"film_rate\"");
    if (const JsonValue* strip = fields.own(Field::start_strip))
        source.start_strip = read_number(clip, *strip, "\"start_strip\"", longest_time);
    for (const ReelField& field : reel_fields) {
        std::string reel = fields.text(field.field);
        if (!reel.empty()) source.reels.emplace(field.medium, std::move(reel));
    }
    const LabelMaker labels{clip, media, context, fields, source};
    const bool timed = labels.timecodes();
    labels.film_numbers();
    source.scene = fields.text(Field::scene);
    source.take = fields.text(Field::take);
    source.description = fields.text(Field::description);
    // Film is conformed from its numbers: media that is lost still opens from them.
    source.opens = !json_truth(fields.own(Field::lost)) &&
                   (!media.missing() || timed || !source.reels.empty() || source.key || source.ink || media.available);
    return source;
}

} // namespace formats::otio
