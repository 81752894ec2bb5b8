// What items show: media, what was made in the edit, and what clips, compound clips and angles hold.

#include "formats/fcpxml/fcpxml_details.h"
#include "formats/fcpxml/fcpxml_story.h"
#include "formats/file_names.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <utility>

namespace formats::fcpxml {
namespace {

using embedded::WarningKind;

/// Items that come of compound clips in compound clips; one that is used ten times in one that is used ten times, and
/// so on, is refused before it fills the memory.
constexpr std::size_t most_work = 100'000;

/// Whether all roles of one side of a synchronised clip are switched off.
bool is_silent(const Element& sync_clip, std::string_view side) {
    bool off = false;
    for (const Element source : sync_clip.children()) {
        if (source.name() != "sync-source" || source.attribute("sourceID") != side) continue;
        for (const Element role : source.children()) {
            if (role.name() != "audio-role-source") continue;
            if (role.attribute("active") != "0") return false;
            off = true;
        }
    }
    return off;
}

bool is_enabled_for(const Element& element, bool sound) {
    const std::string_view enabled = element.attribute("srcEnable");
    return enabled.empty() || enabled == "all" || enabled == (sound ? "audio" : "video");
}

/// Whether a clip is nothing but the holder of that picture or sound.
bool holds_media(const Element& clip, Element media) {
    while (story_of(media) == Story::video || story_of(media) == Story::audio)
        media = media.parent();
    return media == clip;
}

/// What says how a medium goes with what is around it: of a clip that is its holder, the clip's.
Element conform_of_media(const Element& element) {
    const bool held = story_of(element) == Story::video || story_of(element) == Story::audio;
    const Element own = element.child("conform-rate");
    return own || !held || story_of(element.parent()) != Story::clip ? own : element.parent().child("conform-rate");
}

/// Whether the frames of a medium go one for one with those around it.
bool conforms(const Element& conform, const Format& medium) {
    if (!conform || conform.attribute("scaleEnabled") == "0") return false;
    const std::optional<Fraction> rate = parse_rate(conform.attribute("srcFrameRate"));
    return medium.rate && (!rate || rate == medium.rate);
}

/// As long as the longest of its runs.
Fraction end_of(const Runs& runs, const Fraction& start) {
    Fraction end = start;
    for (const Run& run : runs)
        end = std::max(end, run.end());
    return end;
}

/// Where a span begins in its medium. What is held at the medium's end is its last frame.
Fraction start_in(const Asset* asset, const Span& span, const Fraction& half_frame) {
    const Fraction from = span.lowest();
    if (!asset || !asset->duration || !(span.slope == Fraction(0))) return from;
    const Fraction end = asset->start + *asset->duration;
    return end - half_frame < from && from < end + half_frame ? in_last_frame(end) : from;
}

} // namespace

int StoryReader::add_shot(Shot shot) {
    shots_.push_back(std::move(shot));
    return static_cast<int>(shots_.size()) - 1;
}

void StoryReader::check_work(const Element& element) const {
    if (work_ > most_work)
        refuse(element, "its compound clips hold each other so often that more than " + std::to_string(most_work) +
                            " items come of them");
}

/// Of a clip that holds its media, that of the first; it stands in the clip as at home.
Format StoryReader::media_format_of(const Element& element) const {
    if (const Asset* asset = context_.asset_of(element)) return asset->format;
    const Element media = context_.resources.find(element.attribute("ref"));
    if (story_of(element) == Story::ref_clip) return context_.format_of(media.child("sequence"));
    if (story_of(element) == Story::mc_clip) return context_.format_of(media.child("multicam"));
    if (story_of(element) == Story::clip)
        for (const Element child : element.children())
            if (const Asset* asset = context_.asset_of(child); asset && lane_of(child) == 0) return asset->format;
    return context_.format_of(element);
}

/// The frames a second of what a clip contains.
std::optional<Fraction> StoryReader::rate_inside(const Element& clip) const {
    const std::optional<Fraction> conformed = parse_rate(clip.child("conform-rate").attribute("srcFrameRate"));
    return conformed ? conformed : media_format_of(clip).rate;
}

Fraction StoryReader::start_of(const Element& element) const {
    if (const auto start = context_.time(element, "start")) return *start;
    const Element media = context_.resources.find(element.attribute("ref"));
    switch (story_of(element)) {
    case Story::asset_clip:
    case Story::video:
    case Story::audio: {
        const Asset* asset = context_.asset_of(element);
        return asset ? asset->start : Fraction(0);
    }
    case Story::ref_clip:
        return context_.time(media.child("sequence"), "tcStart").value_or(Fraction(0));
    case Story::mc_clip:
        return context_.time(media.child("multicam"), "tcStart").value_or(Fraction(0));
    default:
        return 0;
    }
}

// Where media and sequence differ in rate, either the frames go one for one, so that the media's time is longer or
// shorter than the sequence's, or time is time. Rates that count alike go one for one unless it is said otherwise.
Fraction StoryReader::pace_of(const Element& element, const Level& level) const {
    const Element conform = element.child("conform-rate");
    if (conform && conform.attribute("scaleEnabled") == "0") return 1;
    if (conform) {
        std::optional<Fraction> rate = parse_rate(conform.attribute("srcFrameRate"));
        if (!rate) rate = media_format_of(element).rate;
        if (rate) return context_.true_rate(*rate) / level.rate;
        if (!sound_) context_.warn(conform, "doesn't tell the rate that it is for; taken as the sequence's");
        return 1;
    }
    const Story story = story_of(element);
    const bool has_rate =
        context_.asset_of(element) || story == Story::clip || story == Story::ref_clip || story == Story::mc_clip;
    const Format format = has_rate && !element.child("timeMap") ? media_format_of(element) : Format();
    const RateInfo* around = embedded::nearest_rate(level.rate.to_double());
    const bool alike = format.info && around && format.info->nominal == around->nominal && !format.still;
    return alike ? context_.true_rate(*format.rate) / level.rate : Fraction(1);
}

Fraction StoryReader::length_of(const Element& element, const Level& level) {
    const Element pick = chosen(element);
    if (!pick) return 0;
    if (const auto length = context_.length(pick, "duration")) return *length;
    const Fraction pace = pace_of(pick, level);
    if (const Asset* asset = context_.asset_of(pick); asset && asset->duration) return *asset->duration * pace;
    const Story story = story_of(pick);
    const Content* content = nullptr;
    if (story == Story::ref_clip) content = compound(pick, level);
    if (story == Story::mc_clip) content = angle(pick, level);
    if (story == Story::clip || story == Story::sync_clip) content = &contained(pick, level);
    if (!content) refuse(pick, "has no \"duration\"");
    return std::max(Fraction(0), (end_of(content->runs, content->start) - start_of(pick)) * pace);
}

Items StoryReader::content_of(const Element& element, const Clock& clock, const Fraction& length, const Level& level) {
    Items items;
    const Story story = story_of(element);
    const Content* content = nullptr;
    switch (story) {
    case Story::asset_clip:
    case Story::video:
    case Story::audio:
        return media(element, clock, length, level);
    case Story::title:
        if (!sound_) return made(element, length, "name:" + name_or(element, "title"));
        break;
    case Story::clip:
    case Story::sync_clip:
        content = &contained(element, level);
        break;
    case Story::ref_clip:
        content = is_enabled_for(element, sound_) ? compound(element, level) : nullptr;
        if (!content && is_enabled_for(element, sound_)) return missing(element, length);
        break;
    case Story::mc_clip:
        content = is_enabled_for(element, sound_) ? angle(element, level) : nullptr;
        if (!content && is_enabled_for(element, sound_)) return missing(element, length);
        break;
    default:
        break;
    }
    if (content) items = nest(element, *content, clock, length, level);
    if (items.empty()) items.push_back(fcpxml::gap_of(length, place_of(element)));
    if (story != Story::gap) adopt(element, items);
    return items;
}

bool StoryReader::shows(const Element& element, const Asset& asset) const {
    const Story story = story_of(element);
    if (!is_enabled_for(element, sound_)) return false;
    return sound_ ? asset.has_audio && story != Story::video : asset.has_video && story != Story::audio;
}

bool StoryReader::seen(const Element& element) const {
    const Story story = story_of(element);
    if (story == Story::audio || !is_enabled_for(element, false)) return false;
    if (story == Story::asset_clip) {
        const Asset* asset = context_.asset_of(element);
        return !asset || asset->has_video;
    }
    if (story != Story::clip) return true;
    for (const Element child : element.children()) {
        const Story inner = story_of(child);
        if (inner == Story::video || inner == Story::spine || inner == Story::title) return true;
        if ((inner == Story::clip || inner == Story::asset_clip) && seen(child)) return true;
    }
    return false;
}

Items StoryReader::missing(const Element& element, const Fraction& length) {
    if (!sound_) warn_missing(element);
    Items items;
    items.push_back(fcpxml::gap_of(length, place_of(element)));
    if (sound_) return items;
    Shot shot;
    shot.element = element;
    shot.name = name_or(element, element.attribute("ref"));
    items[0].kind = Item::Kind::event;
    items[0].event.source = add_shot(std::move(shot));
    return items;
}

Items StoryReader::made(const Element& element, const Fraction& length, const std::string& identity) {
    Items items;
    Item& item = items.emplace_back();
    item.event.duration = length;
    item.event.label = place_of(element);
    const std::string_view effect = context_.resources.find(element.attribute("ref")).attribute("name");
    const std::string name = name_or(element, effect);
    const auto is_black = [](std::string_view text) { return ascii::same(text, "black") || ascii::same(text, "slug"); };
    if (is_black(effect) || is_black(name)) {
        item.kind = Item::Kind::black;
        return items;
    }
    Shot shot;
    shot.element = element;
    shot.name = name;
    shot.made = identity;
    item.kind = Item::Kind::event;
    item.event.source = add_shot(std::move(shot));
    item.event.effects = read_effects(element, context_);
    return items;
}

std::vector<Span> StoryReader::spans_of(const Element& element, const Clock& clock, const Fraction& length,
                                        const Level& level) {
    const Fraction end = clock.start + length / clock.pace;
    const Element time_map = element.child("timeMap");
    if (!time_map) return SpeedMap().spans(clock.start, end);
    std::string fault;
    const SpeedMap map = read_speed_map(time_map, context_.scale, fault);
    if (!sound_ && !fault.empty())
        context_.warn(element, "its speed map can't be used, so it runs at normal speed: " + fault,
                      WarningKind::replaced);
    if (!sound_ && !map.covers(clock.start, end, half_frame(level)))
        context_.warn(element, "its speed map doesn't reach as far as it does; there it stands still");
    std::vector<Span> spans = map.spans(clock.start, end, half_frame(level));
    if (spans.empty()) spans.push_back({clock.start, end, clock.start, 1, false});
    if (std::none_of(spans.begin(), spans.end(), [](const Span& span) { return span.curved; })) {
        if (!sound_ && spans.size() > 1)
            context_.warn(element,
                          "changes its speed; each of its " + std::to_string(spans.size()) +
                              " speeds is an event of its own",
                          WarningKind::note);
        return spans;
    }
    if (!sound_)
        context_.warn(element,
                      "changes its speed gradually: it is one event at its mean speed, with an effect for the lab",
                      WarningKind::replaced);
    Span whole{clock.start, end, spans.front().value, 0, true};
    whole.slope = (spans.back().value_at(end) - whole.value) / (end - clock.start);
    return {whole};
}

void StoryReader::warn_missing(const Element& element) const {
    context_.warn(
        element, "refers to \"" + std::string(element.attribute("ref")) + "\", which isn't there: its media is missing",
        WarningKind::replaced);
}

Shot StoryReader::shot_of(const Element& element, const Asset* asset) const {
    const bool starts = element.has_attribute("start");
    if (!asset)
        warn_missing(element);
    else if (!starts && !sound_ && !(asset->start == Fraction(0)) && story_of(element) == Story::asset_clip)
        context_.warn(element, "has no \"start\"; taken as the first frame of its media");
    Shot shot;
    shot.element = element;
    shot.asset = asset;
    std::string other = asset ? asset->name : std::string();
    if (asset && other.empty()) other = stem_of(decoded(asset->src));
    shot.name = name_or(element, other);
    shot.own = {element};
    shot.format = asset ? asset->format : context_.format_of(element);
    const Element conform = conform_of_media(element);
    if (!shot.format.rate && !shot.still()) shot.format = format_at(parse_rate(conform.attribute("srcFrameRate")));
    shot.conformed = conforms(conform, shot.format);
    shot.drop = element.attribute("tcFormat") == "DF";
    shot.starts = starts;
    return shot;
}

Items StoryReader::media(const Element& element, const Clock& clock, const Fraction& length, const Level& level) {
    const Asset* asset = context_.asset_of(element);
    const bool generator = !asset && context_.resources.find(element.attribute("ref")).name() == "effect";
    if (generator && !sound_) return made(element, length, "name:" + name_or(element, "generator"));
    Items items;
    if (generator || (asset ? !shows(element, *asset) : sound_ || story_of(element) == Story::audio)) {
        items.push_back(fcpxml::gap_of(length, place_of(element)));
        return items;
    }
    const int number = add_shot(shot_of(element, asset));
    for (const Span& span : spans_of(element, clock, length, level)) {
        Item& item = items.emplace_back();
        item.kind = Item::Kind::event;
        item.event.source = number;
        item.event.duration = (span.to - span.from) * clock.pace;
        item.event.source_in = start_in(asset, span, half_frame(level));
        item.event.speed = span.slope / clock.pace;
        item.event.label = place_of(element);
        item.event.effects = read_effects(element, context_);
        if (span.curved) item.event.effects.push_back({"Variable speed", true, {}});
    }
    return items;
}

// What is said of a clip goes before what is said of its media; what is said of a synchronised clip or one of several
// angles is of the shot, not of the reel.
void StoryReader::adopt(const Element& element, Items& items) {
    const Story story = story_of(element);
    const bool tells = (story == Story::sync_clip || story == Story::mc_clip) && has_metadata(element);
    const Element conform = element.child("conform-rate");
    const std::vector<embedded::EffectDescription> effects = read_effects(element, context_);
    std::unordered_map<int, int> numbers;
    for (Item& item : items) {
        if (item.kind != Item::Kind::event) continue;
        item.event.effects.insert(item.event.effects.end(), effects.begin(), effects.end());
        const Shot& old = shots_[static_cast<std::size_t>(item.event.source)];
        const bool direct = story == Story::clip && holds_media(element, old.element) && old.made.empty();
        const bool conformed = old.conformed || (old.made.empty() && conforms(conform, old.format));
        if (!direct && conformed == old.conformed && (!tells || !old.made.empty())) continue;
        const auto [known, fresh] = numbers.try_emplace(item.event.source, 0);
        if (fresh) {
            Shot shot = old;
            shot.conformed = conformed;
            if (direct || tells) (direct ? shot.own : shot.around).push_back(element);
            if (direct && element.has_attribute("name")) shot.name = element.attribute("name");
            if (direct && element.has_attribute("tcFormat")) shot.drop = element.attribute("tcFormat") == "DF";
            known->second = add_shot(std::move(shot));
        }
        item.event.source = known->second;
        if (direct) item.event.label = place_of(element);
    }
}

StoryReader::Content StoryReader::read_contained(const Element& clip, const Level& level) {
    Level inner;
    const std::optional<Fraction> rate = rate_inside(clip);
    inner.rate = rate ? context_.true_rate(*rate) : level.rate;
    inner.depth = level.depth + 1;
    inner.nested = true;
    inner.own_sound_off = is_silent(clip, "storyline");
    inner.connected_sound_off = is_silent(clip, "connected");
    Content content{{}, start_of(clip)};
    for (const Element child : clip.children()) {
        const Story story = story_of(child);
        const bool item = story != Story::none && story != Story::caption && story != Story::transition;
        if (!item || lane_of(child) != 0) continue;
        if (story == Story::unknown) {
            if (!sound_) context_.warn(child, "isn't known here and is left out", WarningKind::dropped);
            continue;
        }
        add_connected(child, context_.time(child, "offset").value_or(Fraction(0)), inner, content.runs);
    }
    return content;
}

// Kept, as what a clip without a length contains is asked for twice: were it read twice, each such clip that lies in
// another would double the work.
const StoryReader::Content& StoryReader::contained(const Element& clip, const Level& level) {
    const auto known = contents_.find(clip.number());
    if (known != contents_.end()) return known->second;
    return contents_.emplace(clip.number(), read_contained(clip, level)).first->second;
}

const StoryReader::Content* StoryReader::content_of_media(const Element& key, const Element& sequence,
                                                          const Element& spine, const Level& level) {
    const auto known = contents_.find(key.number());
    if (known != contents_.end()) return &known->second;
    if (!open_.insert(key.number()).second) refuse(key, "holds itself");
    if (!context_.format_of(sequence).rate)
        context_.warn_once(sequence, "doesn't tell its frames a second, so they are counted as the edit's",
                           WarningKind::rate);
    const Storyline storyline = storyline_of(sequence);
    Level inner;
    inner.rate = storyline.rate;
    inner.depth = level.depth + 1;
    inner.nested = true;
    Content content{{}, storyline.start, Frames{storyline.start, storyline.rate}};
    add_spine(spine, zero_of(spine, storyline.start, storyline.rate), inner, content.runs);
    for (Run& run : content.runs)
        settle_on_frames(run, *content.frames);
    open_.erase(key.number());
    return &contents_.emplace(key.number(), std::move(content)).first->second;
}

const StoryReader::Content* StoryReader::compound(const Element& ref_clip, const Level& level) {
    const Element sequence = context_.resources.find(ref_clip.attribute("ref")).child("sequence");
    if (!sequence) return nullptr;
    return content_of_media(sequence, sequence, sequence.child("spine"), level);
}

const StoryReader::Content* StoryReader::angle(const Element& mc_clip, const Level& level) {
    static const Content nothing;
    const Element multicam = context_.resources.find(mc_clip.attribute("ref")).child("multicam");
    if (!multicam) return nullptr;
    Element source, any;
    for (const Element child : mc_clip.children()) {
        if (child.name() != "mc-source") continue;
        any = child;
        if (!source && is_enabled_for(child, sound_)) source = child;
    }
    if (any && !source) return &nothing;
    if (!any && !sound_) context_.warn(mc_clip, "doesn't name its angle; the first is taken");
    for (const Element child : multicam.children()) {
        if (child.name() != "mc-angle") continue;
        if (!any || child.attribute("angleID") == source.attribute("angleID"))
            return content_of_media(child, multicam, child, level);
    }
    if (!sound_)
        context_.warn(mc_clip,
                      "its multicam clip has no angle \"" + std::string(source.attribute("angleID")) +
                          "\": nothing is shown",
                      WarningKind::replaced);
    return &nothing;
}

} // namespace formats::fcpxml
