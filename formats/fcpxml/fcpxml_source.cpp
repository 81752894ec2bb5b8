#include "formats/fcpxml/fcpxml_source.h"

#include "formats/fcpxml/fcpxml_frames.h"
#include "formats/file_names.h"
#include "formats/key_number.h"

#include <iterator>

namespace formats::fcpxml {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;

struct ReelField {
    embedded::ReelLabel medium;
    Field field;
};

constexpr ReelField reel_fields[] = {
    {embedded::tape_reel, Field::reel},    {embedded::sound_reel, Field::sound_reel},
    {embedded::reel_24p, Field::reel_24p}, {embedded::camera_reel, Field::camera_reel},
    {embedded::lab_reel, Field::lab_reel}, {embedded::composite_reel, Field::comp_reel},
};

/// Where no metadata names the reel: what the medium is called, else its file.
std::string reel_of(const Shot& shot, const Fields& fields) {
    if (!fields[Field::reel].empty()) return std::string(fields[Field::reel]);
    if (!shot.asset) return {};
    return shot.asset->name.empty() ? stem_of(decoded(shot.asset->src)) : shot.asset->name;
}

/// What a clip without a note was filed under.
std::string keywords_of(const std::vector<Element>& clips) {
    std::string words;
    for (const Element& clip : clips)
        for (const Element child : clip.children())
            if (child.name() == "keyword" && !child.attribute("value").empty())
                words += (words.empty() ? "" : ", ") + std::string(child.attribute("value"));
    return words;
}

} // namespace

const Fields& ShotSources::fields_of(const Asset& asset) {
    const auto [known, fresh] = fields_.try_emplace(&asset);
    if (fresh) known->second.take(asset.element);
    return known->second;
}

const RateInfo& ShotSources::rate_of(const Shot& shot) {
    if (shot.format.info) return *shot.format.info;
    if (shot.asset && !shot.still() && (shot.format.rate || shot.asset->has_video))
        context_.warn_once(shot.asset->element,
                           shot.format.rate ? "no timecode counts at its rate, so its own is counted as the edit's"
                                            : "doesn't tell its frames a second, so they are counted as the edit's",
                           embedded::WarningKind::rate);
    return *context_.rate;
}

Fraction ShotSources::true_rate_of(const Shot& shot) {
    return shot.format.info ? context_.true_rate(shot.format.info->rate()) : context_.rate->rate();
}

// Media whose frames go one for one with the edit's are counted frame for frame, at whatever rate they were made: film
// at 25 in an edit at 24 is neither faster nor slower, but a frame for a frame. Media that counts like the edit is
// counted so too, unless it plays at its own, slightly different speed. Of retimed media that is conformed the speed is
// told in frames too: half, double.
Bound ShotSources::bind(const std::vector<Shot>& shots, int number, const Fraction& media_in, const Fraction& speed) {
    const Shot& shot = shots[static_cast<std::size_t>(number)];
    bool frame_for_frame = false;
    Fraction unit = 1;
    if (shot.made.empty() && !shot.still()) {
        const Fraction edit = context_.rate->rate(), media = true_rate_of(shot);
        const bool counts_alike = rate_of(shot).nominal == context_.rate->nominal;
        frame_for_frame =
            shot.conformed || magnitude(speed) * media == edit || (counts_alike && !(magnitude(speed) == Fraction(1)));
        if (frame_for_frame) unit = media / edit;
    }
    const auto [known, fresh] = known_.try_emplace({number, frame_for_frame}, 0);
    if (fresh) known->second = sources_.add(describe(shot, frame_for_frame));
    if (shot.still()) return {known->second, 0, 0};
    const Fraction start = shot.asset ? shot.asset->start : Fraction(0);
    const Fraction rate = shot.made.empty() ? true_rate_of(shot) : context_.rate->rate();
    const Fraction first = Frames{start, rate}.settled(media_in);
    return {known->second, (first - start) * unit, speed * unit};
}

std::optional<LabelDescription> ShotSources::label(const Shot& shot, label_t type, std::string_view text,
                                                   const char* what) {
    std::string fault;
    auto made = timeline::label_of_text(type, std::string(text), what, fault);
    if (!made) context_.warn(shot.element, fault, embedded::WarningKind::dropped);
    return made;
}

void ShotSources::set_timecodes(const Shot& shot, const Fields& fields, bool frame_for_frame,
                                SourceDescription& source) {
    const RateInfo& counted = rate_of(shot);
    const label_t type = shot.drop ? counted.drop_timecode : counted.timecode;
    const Fraction step = frame_for_frame ? context_.rate->rate() : true_rate_of(shot);
    if (!fields[Field::timecode].empty())
        source.video_timecode = label(shot, type, fields[Field::timecode], "timecode");
    if (!source.video_timecode) {
        const Fraction start = shot.asset ? shot.asset->start : Fraction(0);
        const std::int64_t frame = (start * true_rate_of(shot)).nearest();
        source.video_timecode = LabelDescription{type, {}, timeline::sample_of(frame, counted.nominal), {}};
    }
    source.video_timecode->rate = step;
    if (!fields[Field::sound_timecode].empty())
        source.sound_timecode = label(shot, type, fields[Field::sound_timecode], "sound timecode");
    if (source.sound_timecode) source.sound_timecode->rate = step;
    if (!fields[Field::timecode_24p].empty())
        source.timecode_24p = label(shot, label_tc_24, fields[Field::timecode_24p], "24-frame timecode");
    if (source.timecode_24p)
        source.timecode_24p->rate = source.film_rate ? *source.film_rate : embedded::film_rate_of(*source.rate);
}

void ShotSources::set_film_numbers(const Shot& shot, const Fields& fields, SourceDescription& source) {
    const std::string film(fields[Field::film].empty() ? "35mm-4p" : fields[Field::film]);
    const std::string ink_film(fields[Field::ink].empty() ? film : fields[Field::ink]);
    if (!fields[Field::keycode].empty())
        source.key = label(shot, edlstr_to_label_type(film.c_str(), user_label_key),
                           plain_key_number(fields[Field::keycode]), "key number");
    if (!fields[Field::inkcode].empty())
        source.ink =
            label(shot, edlstr_to_label_type(ink_film.c_str(), user_label_ink), fields[Field::inkcode], "ink number");
}

Fields ShotSources::fields_of(const Shot& shot) {
    Fields fields;
    for (const Element& element : shot.own)
        fields.take(element);
    for (const Element& element : shot.around)
        fields.take_of_shot(element);
    if (shot.asset) fields.take(fields_of(*shot.asset));
    return fields;
}

void ShotSources::set_rates(const Shot& shot, const Fields& fields, bool frame_for_frame, SourceDescription& source) {
    const RateInfo& rate = rate_of(shot);
    source.rate = frame_for_frame ? context_.rate : &rate;
    if (frame_for_frame && rate.nominal != context_.rate->nominal)
        source.film_rate = embedded::film_share(rate.nominal) * context_.rate->rate();
    else if (!frame_for_frame && !(context_.scale == Fraction(1)))
        source.film_rate = context_.true_rate(embedded::film_rate_of(rate));
    const std::string_view given = fields[Field::film_rate];
    if (given.empty()) return;
    if (const std::optional<Fraction> own = parse_rate(given))
        source.film_rate = own;
    else
        context_.warn(shot.element, "\"" + std::string(given) + "\" can't be read as its film rate",
                      embedded::WarningKind::dropped);
}

SourceDescription ShotSources::describe(const Shot& shot, bool frame_for_frame) {
    SourceDescription source;
    source.name = shot.name;
    source.rate = context_.rate;
    source.rendered = !shot.made.empty();
    source.identity = source.rendered ? shot.made : shot.asset ? shot.asset->identity : "name:" + shot.name;
    if (source.rendered) return source;

    const Fields fields = fields_of(shot);
    set_rates(shot, fields, frame_for_frame, source);
    for (const ReelField& reel : reel_fields)
        if (!fields[reel.field].empty()) source.reels.emplace(reel.medium, fields[reel.field]);
    if (const std::string reel = reel_of(shot, fields); !reel.empty())
        source.reels.emplace(reel_fields[0].medium, reel);
    if (!shot.still()) set_timecodes(shot, fields, frame_for_frame, source);
    set_film_numbers(shot, fields, source);
    source.scene = fields[Field::scene];
    source.take = fields[Field::take];
    source.description = fields[Field::description];
    if (source.description.empty()) source.description = keywords_of(shot.own);
    if (shot.asset && shot.asset->duration && !shot.still())
        source.length = *shot.asset->duration * (frame_for_frame ? true_rate_of(shot) / context_.rate->rate() : 1);
    source.opens = shot.asset || shot.starts || !source.reels.empty() || source.key || source.ink;
    return source;
}

} // namespace formats::fcpxml
