#include "formats/otio/otio_writer.h"

#include "embedded/edit_recipe.h"
#include "formats/otio/otio_media_writer.h"
#include "formats/otio/otio_reader.h"
#include "formats/otio/otio_timeline.h"
#include "formats/recipe_difference.h"
#include "formats/source_labels.h"

#include <algorithm>
#include <utility>

namespace formats {
namespace otio {
namespace {

using embedded::ChannelItem;
using embedded::CueDescription;
using embedded::EditBuilder;
using embedded::EditRecipe;
using embedded::EffectDescription;
using embedded::EventDescription;
using embedded::RecipeChannel;
using embedded::RecipeCue;
using embedded::TransitionDescription;

/// A cue and its time in the object that it stands in.
struct PlacedCue {
    const CueDescription* cue = nullptr;
    Fraction time;
};
using Cues = std::vector<PlacedCue>;

/// Writes one recipe.
class TimelineWriter {
public:
    TimelineWriter(const EditRecipe& recipe, const KeySpelling& keys, JsonPool& pool)
        : recipe_(recipe), keys_(keys), rate_(*recipe.edit.rate), values_(pool) {}

    JsonValue timeline();

private:
    JsonValue stack();
    JsonValue track(std::size_t number);
    void add_children(std::size_t number, JsonValue& track);
    bool is_lowest_listed(std::size_t number) const;

    JsonValue item(const ChannelItem& item, std::size_t number, bool lowest, const Cues& cues);
    bool is_clip(const ChannelItem& item, std::size_t number) const;
    JsonValue clip(const ChannelItem& item, const Cues& cues);
    JsonValue gap(const ChannelItem& item, bool nothing);
    void add_cmx_reel(const embedded::SourceDescription& source, JsonValue& clip);
    void add_times(const EventDescription& event, const Fraction& start, JsonValue& clip, JsonValue& own);
    JsonValue effects_of(const EventDescription& event, bool timed);
    JsonValue speed_effect(const Fraction& speed);
    JsonValue effect(const EffectDescription& effect);
    JsonValue numbers(const std::vector<int>& tracks);

    JsonValue transition(const TransitionDescription& transition);

    /// `start` is the time of the object at which its cues count from 0.
    JsonValue marker(const PlacedCue& cue, const Fraction& start, const char* exact);
    JsonValue markers(const Cues& cues, const Fraction& start, const char* exact);
    const embedded::SourceDescription* source_of(const ChannelItem& item) const;
    /// The cues of a channel's items, item by item; those that meet none that can hold them go to `others`.
    std::vector<Cues> cues_of_items(std::size_t number, Cues& others) const;
    Cues cues_of(int channel, EditBuilder::CueLevel level) const;

    const EditRecipe& recipe_;
    const KeySpelling& keys_;
    const RateInfo& rate_;
    const Values values_;
};

JsonValue TimelineWriter::timeline() {
    const embedded::EditDescription& edit = recipe_.edit;
    JsonValue own = values_.object();
    values_.add_given(own, "project", edit.project);
    values_.add(own, "modification_time", JsonValue(edit.modification_time));
    if (edit.drop_frame) values_.add(own, "drop_frame", JsonValue(true));
    if (edit.film_rate) values_.add(own, "film_rate", text_of(*edit.film_rate));
    if (edit.timecode_24p) values_.add(own, "timecode_24p", formats::text_of(*edit.timecode_24p));
    values_.add_given(own, "identity", edit.identity);

    JsonValue timeline = values_.object("Timeline.1");
    values_.add(timeline, "name", edit.name);
    values_.add_own(timeline, std::move(own));
    values_.add(timeline, "global_start_time", values_.frames(static_cast<double>(edit.start_frame), rate_));
    values_.add(timeline, "tracks", stack());
    return timeline;
}

JsonValue TimelineWriter::stack() {
    JsonValue tracks = Values::array();
    for (std::size_t i = 0; i < recipe_.channels.size(); ++i)
        values_.push(tracks, track(i));
    JsonValue stack = values_.object("Stack.1");
    values_.add(stack, "name", "tracks");
    values_.add(stack, "children", std::move(tracks));
    values_.add(stack, "effects", Values::array());
    values_.add(stack, "markers", markers(cues_of(-1, EditBuilder::CueLevel::stack), 0, "time"));
    values_.add(stack, "source_range", JsonValue());
    return stack;
}

bool TimelineWriter::is_lowest_listed(std::size_t number) const {
    for (std::size_t i = 0; i < recipe_.channels.size(); ++i) {
        const RecipeChannel& channel = recipe_.channels[i];
        const bool listed =
            channel.kind == picture_channel && channel.subtype != fx_subtype && channel.subtype != unlisted_subtype;
        if (listed) return i == number;
    }
    return false;
}

JsonValue TimelineWriter::track(std::size_t number) {
    const RecipeChannel& channel = recipe_.channels[number];
    const bool sound = channel.kind == sound_channel;
    int count = 0;
    for (std::size_t i = 0; i <= number; ++i)
        if (recipe_.channels[i].kind == channel.kind) ++count;
    JsonValue own = values_.object();
    if (channel.subtype != plain_subtype) values_.add(own, "subtype", JsonValue(channel.subtype));
    JsonValue track = values_.object("Track.1");
    values_.add(track, "name", (sound ? "A" : "V") + std::to_string(count));
    values_.add(track, "kind", sound ? "Audio" : "Video");
    add_children(number, track);
    values_.add(track, "effects", Values::array());
    values_.add(track, "source_range", JsonValue());
    values_.add_own(track, std::move(own));
    return track;
}

void TimelineWriter::add_children(std::size_t number, JsonValue& track) {
    const RecipeChannel& channel = recipe_.channels[number];
    const bool lowest = is_lowest_listed(number);
    Cues of_track = cues_of(static_cast<int>(number), EditBuilder::CueLevel::track);
    const std::vector<Cues> of_items = cues_of_items(number, of_track);
    JsonValue children = Values::array();
    auto cut = channel.cuts.begin();
    for (std::size_t i = 0; i <= channel.items.size(); ++i) {
        bool first = !channel.fx(); // the second at one cut is none, as is any on an FX channel
        for (; cut != channel.cuts.end() && cut->before_item == i; ++cut)
            if (std::exchange(first, false)) values_.push(children, transition(cut->transition));
        if (i < channel.items.size()) values_.push(children, item(channel.items[i], number, lowest, of_items[i]));
    }
    values_.add(track, "children", std::move(children));
    values_.add(track, "markers", markers(of_track, 0, "time"));
}

// Black of the lowest track is a gap there; elsewhere, or with anything on it, it is a clip.
JsonValue TimelineWriter::item(const ChannelItem& item, std::size_t number, bool lowest, const Cues& cues) {
    const bool plain = item.event.effects.empty() && item.event.effect_tracks.empty() && cues.empty();
    if (!is_clip(item, number)) return gap(item, lowest && item.kind == ChannelItem::Kind::gap);
    if (item.kind == ChannelItem::Kind::black && lowest && plain) return gap(item, false);
    return clip(item, cues);
}

// On an FX track only the effects count, so that there black is a gap.
bool TimelineWriter::is_clip(const ChannelItem& item, std::size_t number) const {
    const bool black = item.kind == ChannelItem::Kind::black;
    return item.kind != ChannelItem::Kind::gap && !(black && recipe_.channels[number].fx());
}

JsonValue TimelineWriter::gap(const ChannelItem& item, bool nothing) {
    JsonValue own = values_.object(), gap = values_.object("Gap.1");
    if (nothing) values_.add(own, "nothing", JsonValue(true));
    if (!item.event.effect_tracks.empty()) values_.add(own, "tracks", numbers(item.event.effect_tracks));
    values_.add(gap, "name", "");
    add_times(item.event, 0, gap, own);
    values_.add(gap, "effects", effects_of(item.event, false));
    values_.add(gap, "markers", Values::array());
    values_.add_own(gap, std::move(own));
    return gap;
}

JsonValue TimelineWriter::clip(const ChannelItem& item, const Cues& cues) {
    const EventDescription& event = item.event;
    const embedded::SourceDescription* source = source_of(item);
    const Fraction start = source ? start_of_media(*source, rate_) + event.source_in : Fraction(0);
    JsonValue own = values_.object(), clip = values_.object("Clip.1");
    if (source && source->rendered) values_.add(own, "rendered", JsonValue(true));
    if (!event.effect_tracks.empty()) values_.add(own, "tracks", numbers(event.effect_tracks));
    values_.add(clip, "name", source ? source->name : "black");
    add_times(event, start, clip, own);
    values_.add(clip, "media_reference",
                source ? media_reference(values_, *source, rate_, keys_) : black_reference(values_));
    values_.add(clip, "effects", effects_of(event, source != nullptr));
    values_.add(clip, "markers", markers(cues, start, "offset"));
    values_.add_own(clip, std::move(own));
    if (source && source->images) add_cmx_reel(*source, clip);
    return clip;
}

// Programs that conform look for the reel here.
void TimelineWriter::add_cmx_reel(const embedded::SourceDescription& source, JsonValue& clip) {
    const auto reel = source.reels.find(embedded::tape_reel);
    if (reel == source.reels.end()) return;
    JsonValue cmx = values_.object();
    values_.add(cmx, "reel", reel->second);
    values_.add(clip["metadata"], "cmx_3600", std::move(cmx));
}

void TimelineWriter::add_times(const EventDescription& event, const Fraction& start, JsonValue& clip, JsonValue& own) {
    JsonValue from = values_.time(start, rate_, own, "source_in", event.source_in);
    JsonValue length = values_.time(event.duration, rate_, own, "length");
    values_.add(clip, "source_range", values_.range(std::move(from), std::move(length)));
}

JsonValue TimelineWriter::effects_of(const EventDescription& event, bool timed) {
    JsonValue effects = Values::array();
    if (timed && !(event.speed == Fraction(1))) values_.push(effects, speed_effect(event.speed));
    for (const EffectDescription& one : event.effects)
        values_.push(effects, effect(one));
    return effects;
}

JsonValue TimelineWriter::speed_effect(const Fraction& speed) {
    const bool freeze = speed == Fraction(0);
    JsonValue own = values_.object();
    JsonValue effect = values_.object(freeze ? "FreezeFrame.1" : "LinearTimeWarp.1");
    values_.add(effect, "name", "");
    values_.add(effect, "effect_name", freeze ? "FreezeFrame" : "LinearTimeWarp");
    values_.add(effect, "time_scalar", Values::number(speed.to_double()));
    if (!is_double(speed)) values_.add_exact(own, "speed", speed);
    values_.add_own(effect, std::move(own));
    return effect;
}

JsonValue TimelineWriter::effect(const EffectDescription& described) {
    JsonValue own = values_.object(), effect = values_.object("Effect.1");
    if (described.for_the_lab) values_.add(own, "optical", JsonValue(true));
    if (!described.tracks.empty()) values_.add(own, "tracks", numbers(described.tracks));
    values_.add(effect, "name", described.name);
    values_.add(effect, "effect_name", described.name);
    values_.add_own(effect, std::move(own));
    return effect;
}

JsonValue TimelineWriter::numbers(const std::vector<int>& tracks) {
    JsonValue list = Values::array();
    for (const int track : tracks)
        values_.push(list, JsonValue(track));
    return list;
}

JsonValue TimelineWriter::transition(const TransitionDescription& described) {
    using Kind = TransitionDescription::Kind;
    const char* const custom = described.name.empty() ? "" : "Custom_Transition";
    JsonValue own = values_.object(), transition = values_.object("Transition.1");
    if (described.kind == Kind::wipe) {
        JsonValue wipe = values_.object();
        values_.add(wipe, "pattern", JsonValue(described.pattern));
        values_.add(wipe, "reversed", JsonValue(described.reversed));
        values_.add(own, "wipe", std::move(wipe));
    }
    const char* const types[] = {"SMPTE_Dissolve", "Film_Dissolve", "SMPTE_Wipe", custom};
    values_.add(transition, "name", described.name);
    values_.add(transition, "transition_type", types[static_cast<int>(described.kind)]);
    const Fraction before = std::max(described.in_offset, Fraction(0));
    const Fraction behind = std::max(described.out_offset, Fraction(0));
    values_.add(transition, "in_offset", values_.time(before, rate_, own, "in_offset"));
    values_.add(transition, "out_offset", values_.time(behind, rate_, own, "out_offset"));
    values_.add_own(transition, std::move(own));
    return transition;
}

JsonValue TimelineWriter::marker(const PlacedCue& placed, const Fraction& start, const char* exact) {
    constexpr int printed = 4;
    const CueDescription& cue = *placed.cue;
    JsonValue own = values_.object(), none = values_.object();
    if (cue.flags != printed) values_.add(own, "flags", JsonValue(cue.flags));
    JsonValue at = values_.time(start + placed.time, rate_, own, exact, placed.time);
    JsonValue marker = values_.object("Marker.2");
    values_.add(marker, "name", cue.text);
    values_.add(marker, "color", "RED");
    values_.add(marker, "marked_range", values_.range(std::move(at), values_.time(0, rate_, none, "")));
    values_.add_own(marker, std::move(own));
    return marker;
}

JsonValue TimelineWriter::markers(const Cues& cues, const Fraction& start, const char* exact) {
    JsonValue marks = Values::array();
    for (const PlacedCue& cue : cues)
        values_.push(marks, marker(cue, start, exact));
    return marks;
}

Cues TimelineWriter::cues_of(int channel, EditBuilder::CueLevel level) const {
    Cues cues;
    for (const RecipeCue& cue : recipe_.cues)
        if (cue.channel == channel && cue.level == level) cues.push_back({&cue.cue, cue.cue.time});
    return cues;
}

std::vector<Cues> TimelineWriter::cues_of_items(std::size_t number, Cues& others) const {
    const std::vector<ChannelItem>& items = recipe_.channels[number].items;
    std::vector<Fraction> ends;
    for (const ChannelItem& item : items)
        ends.push_back((ends.empty() ? Fraction(0) : ends.back()) + item.event.duration);
    std::vector<Cues> of_items(items.size());
    for (const PlacedCue& cue : cues_of(static_cast<int>(number), EditBuilder::CueLevel::clip)) {
        const auto place =
            static_cast<std::size_t>(std::upper_bound(ends.begin(), ends.end(), cue.time) - ends.begin());
        const bool held = place < items.size() && cue.time >= Fraction(0) && is_clip(items[place], number);
        if (held)
            of_items[place].push_back({cue.cue, cue.time - (ends[place] - items[place].event.duration)});
        else
            others.push_back(cue);
    }
    return of_items;
}

const embedded::SourceDescription* TimelineWriter::source_of(const ChannelItem& item) const {
    const auto source = static_cast<std::size_t>(item.event.source);
    const bool material = item.kind == ChannelItem::Kind::event && source < recipe_.sources.size();
    return material ? &recipe_.sources[source] : nullptr;
}

/// What the text says otherwise than the recipe, as warnings; or that nothing can be read of it.
void compare(const EditRecipe& recipe, Written& written) {
    ReadResult again = read_otio_bytes(written.text, "the written text", recipe.edit.modification_time);
    const EditRecipe* got = embedded::recipe_of(again.edit);
    if (!got) {
        written.error = "the edit can't be written as OpenTimelineIO: " + again.error;
        written.text.clear();
        return;
    }
    for (const std::string& difference : differences_of(recipe, *got))
        written.warnings.push_back({embedded::WarningKind::dropped, difference + " isn't kept"});
}

} // namespace
} // namespace otio

Written write_otio(const EditPtr& edit, const KeySpelling& keys) {
    Written written;
    const embedded::EditRecipe* recipe = embedded::recipe_of(edit);
    if (!recipe) {
        written.error = "it holds no edit";
        return written;
    }
    JsonTree document;
    JsonValue timeline = otio::TimelineWriter(*recipe, keys, document.GetAllocator()).timeline();
    written.text = json_to_lines(timeline);
    otio::compare(*recipe, written);
    return written;
}

} // namespace formats
