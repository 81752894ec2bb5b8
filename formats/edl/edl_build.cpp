#include "formats/edl/edl_build.h"
#include "embedded/warning.h"
#include "formats/file_names.h"
#include "formats/source_labels.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace formats::edl {
namespace {

using embedded::EditBuilder;
using embedded::EventDescription;
using embedded::LabelDescription;
using embedded::SourceDescription;
using embedded::SourceId;
using embedded::TransitionDescription;

std::string_view reel_of(const EventLine& line) {
    if (line.auxiliary()) return {};
    return line.real_reel.empty() ? line.reel : line.real_reel;
}

std::string_view shot_name(const EventLine& line, std::string_view name) {
    if (!name.empty()) return name;
    if (!line.file.empty()) return stem_in(line.file, "/\\");
    return line.real_reel.empty() ? line.reel : line.real_reel;
}

/// The sources of an edit, one for each reel, name and file. It begins at the earliest frame that is used of it,
/// but where a comment gives a key number: at the frame that this is of.
class Sources {
public:
    Sources(EditBuilder& builder, const RateInfo& rate, embedded::Warnings& warnings)
        : builder_(builder), rate_(rate), warnings_(warnings) {}

    void note(const PlacedLine& placed, std::string_view name) {
        if (placed.line->black() || placed.key.number) return;
        const std::int64_t first = placed.source_in.floor();
        const auto [known, fresh] = first_frames_.try_emplace(key_of(placed, name), Known{first, {}});
        if (!fresh) known->second.first = std::min(known->second.first, first);
    }

    struct Found {
        SourceId id;
        Fraction first; ///< frames since midnight
    };
    Found find(const PlacedLine& placed, std::string_view name, const std::string& path) {
        if (placed.key.number) return {add(placed, name, placed.key.start, path), placed.key.start};
        Known& known = first_frames_[key_of(placed, name)];
        if (!known.id) known.id = add(placed, name, known.first, path);
        return {*known.id, known.first};
    }

private:
    struct Known {
        std::int64_t first = 0;
        std::optional<SourceId> id;
    };
    /// The texts lie in the lists.
    struct Key {
        std::string_view reel, name, file;
        bool drop;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            const std::hash<std::string_view> hash;
            return (hash(key.name) * 31 + hash(key.reel)) * 31 + hash(key.file);
        }
    };

    static Key key_of(const PlacedLine& placed, std::string_view name) {
        const EventLine& line = *placed.line;
        return {reel_of(line), shot_name(line, name), line.file, placed.source_drop};
    }

    SourceId add(const PlacedLine& placed, std::string_view name, std::int64_t first, const std::string& path) {
        const EventLine& line = *placed.line;
        SourceDescription source;
        source.name = shot_name(line, name);
        source.identity = line.file.empty() ? "name:" + source.name : line.file;
        source.rate = &rate_;
        const std::string_view reel = reel_of(line);
        if (!reel.empty()) source.reels[embedded::tape_reel] = reel;
        source.video_timecode = LabelDescription{
            placed.source_drop ? rate_.drop_timecode : rate_.timecode, {}, static_cast<int>(first), rate_.rate()};
        if (placed.key.number) source.key = key_label(placed.key, place_of(path, line.line));
        return builder_.add_source(std::move(source));
    }

    std::optional<LabelDescription> key_label(const PlacedKey& key, const std::string& place) {
        const KeyNumber& number = *key.number;
        const label_t type = edlstr_to_label_type(number.film.c_str(), user_label_key);
        LabelPoint point(0, type);
        point.set_sample(number.text.c_str());
        const bool useful = point.is_useful();
        if (useful && key.ahead == 0) return LabelDescription{type, number.text, {}, {}};
        if (std::optional<LabelPoint> start = useful ? moved(point, -key.ahead) : std::nullopt)
            return LabelDescription{type, start->get_string(), {}, {}};
        warnings_.push_back(
            {embedded::WarningKind::dropped, place + ": " + quoted(number.text) +
                                                 (useful ? " has a cycle that begins below 0000+00"
                                                         : " can't be read as a key number of " + number.film)});
        return std::nullopt;
    }

    EditBuilder& builder_;
    const RateInfo& rate_;
    embedded::Warnings& warnings_;
    std::unordered_map<Key, Known, KeyHash> first_frames_;
};

/// Fills one channel, from the start of the edit.
class ChannelFiller {
public:
    struct Shared {
        EditBuilder& builder;
        Sources& sources;
        const std::vector<NamedList>& lists;
        Fraction frame; ///< seconds
        bool all_effects;
        embedded::Warnings& warnings;
    };

    ChannelFiller(const Shared& shared, int channel, bool lowest, bool sound, std::int64_t start)
        : shared_(shared), channel_(channel), lowest_(lowest), sound_(sound), now_(start) {}

    void add(const Clip& clip);

private:
    Fraction seconds(std::int64_t frames) const { return Fraction(frames) * shared_.frame; }
    std::string place(const Clip& clip, const EventLine& line) const {
        return place_of(shared_.lists[clip.list].path, line.line);
    }

    /// Black on the lowest picture track; elsewhere what lies below shows.
    void add_nothing(std::int64_t frames);
    void fill_up_to(std::int64_t time);
    void add_what_it_comes_from(const Clip& clip, bool after_gap);
    /// `room` is the frames of what it leads into.
    void add_transition(const Clip& clip, std::int64_t room);
    void add_event(const Clip& clip, const PlacedLine& placed, std::string_view name, std::int64_t frames);
    void end_key(const Clip& clip);

    const Shared& shared_;
    int channel_;
    bool lowest_;
    bool sound_;
    std::int64_t now_;
};

void ChannelFiller::add_nothing(std::int64_t frames) {
    if (lowest_)
        shared_.builder.add_black(channel_, seconds(frames));
    else
        shared_.builder.add_gap(channel_, seconds(frames));
}

void ChannelFiller::fill_up_to(std::int64_t time) {
    if (time > now_) add_nothing(time - now_);
    now_ = std::max(now_, time);
}

// What goes before a transition where the clip before doesn't lead into it.
void ChannelFiller::add_what_it_comes_from(const Clip& clip, bool after_gap) {
    if (clip.joined) return;
    const bool from_black = !clip.from || clip.from->line->black();
    if (!from_black)
        add_event(clip, *clip.from, clip.from->line->name, 0);
    else if (!after_gap)
        add_nothing(0);
}

void ChannelFiller::add_transition(const Clip& clip, std::int64_t room) {
    TransitionDescription transition;
    transition.name = clip.placed.event->transition_name;
    transition.label = place(clip, clip.line());
    transition.out_offset = seconds(std::min<std::int64_t>(clip.frames, room));
    if (clip.frames > room)
        shared_.warnings.push_back({embedded::WarningKind::dropped,
                                    transition.label + ": the transition is " + std::to_string(clip.frames) +
                                        " frames long and its event " + std::to_string(room) + "; cut to that"});
    if (clip.type == EditType::wipe && !sound_) {
        constexpr int first_reversed = 100;
        transition.kind = TransitionDescription::Kind::wipe;
        transition.reversed = clip.line().wipe_code >= first_reversed;
        transition.pattern = clip.line().wipe_code - (transition.reversed ? first_reversed : 0);
        if (transition.name.empty()) transition.name = "SMPTE_Wipe";
    } else if (ascii::holds(transition.name, "film") && ascii::holds(transition.name, "dissolve")) {
        transition.kind = TransitionDescription::Kind::film_dissolve;
    }
    if (transition.name.empty()) transition.name = "SMPTE_Dissolve";
    shared_.builder.add_transition(channel_, std::move(transition));
}

void ChannelFiller::add_event(const Clip& clip, const PlacedLine& placed, std::string_view name, std::int64_t frames) {
    const Sources::Found source = shared_.sources.find(placed, name, shared_.lists[clip.list].path);
    EventDescription event;
    event.source = source.id;
    event.duration = seconds(frames);
    event.source_in = (placed.source_in - source.first) * shared_.frame;
    event.speed = placed.speed;
    event.label = place(clip, *placed.line);
    for (const std::string& effect : placed.line->effects)
        event.effects.push_back({effect, shared_.all_effects, {}});
    shared_.builder.add_event(channel_, std::move(event));
}

// The foreground fades away from where the line begins:
//
//     | key . . . |\ . . . . .
//                 |-X-|        frames
void ChannelFiller::end_key(const Clip& clip) {
    if (clip.frames == 0) return;
    PlacedLine own = clip.placed;
    if (own.speed < Fraction()) own.source_in = own.source_in - own.speed * Fraction(clip.frames);
    if (!clip.joined) add_event(clip, own, clip.name, 0);
    add_transition(clip, clip.frames);
    add_nothing(clip.frames);
    now_ += clip.frames;
}

void ChannelFiller::add(const Clip& clip) {
    const bool after_gap = clip.placed.in > now_;
    fill_up_to(clip.placed.in);
    if (clip.type == EditType::key_out) return end_key(clip);
    const bool moves = clip.type == EditType::dissolve || clip.type == EditType::wipe || clip.type == EditType::key;
    if (moves && clip.frames > 0) {
        add_what_it_comes_from(clip, after_gap);
        add_transition(clip, clip.placed.out - now_);
    }
    if (clip.black())
        add_nothing(clip.placed.out - now_);
    else
        add_event(clip, clip.placed, clip.name, clip.placed.out - now_);
    now_ = clip.placed.out;
}

class EditMaker {
public:
    EditMaker(const std::vector<NamedList>& lists, const Tracks& tracks, embedded::EditDescription description,
              bool all_effects, embedded::Warnings& warnings)
        : lists_(lists), tracks_(tracks), rate_(*description.rate), builder_(std::move(description)),
          sources_(builder_, rate_, warnings),
          warnings_(warnings), shared_{builder_,    sources_, lists, Fraction(rate_.den, rate_.num),
                                       all_effects, warnings} {}

    EditPtr run();

private:
    void note_sources();
    void add_channels();
    void add_channel_numbered(const TrackPlace& place);
    void fill(const TrackPlace& place, const std::vector<Clip>& clips);
    int channel_for_cues(std::size_t list, const Event& event) const;
    void add_cue(std::size_t list, const Event& event, const Locator& locator);

    const std::vector<NamedList>& lists_;
    const Tracks& tracks_;
    const RateInfo& rate_;
    EditBuilder builder_;
    Sources sources_;
    embedded::Warnings& warnings_;
    ChannelFiller::Shared shared_;
    std::map<TrackPlace, int> channels_;
    int sound_channels_ = 0;
};

void EditMaker::note_sources() {
    for (const auto& [place, clips] : tracks_.clips) {
        for (const Clip& clip : clips) {
            sources_.note(clip.placed, clip.name);
            if (clip.from) sources_.note(*clip.from, clip.from->line->name);
        }
    }
}

// Sound channels keep their numbers, so those that aren't used are there too.
void EditMaker::add_channel_numbered(const TrackPlace& place) {
    if (place.kind == sound_channel)
        for (++sound_channels_; sound_channels_ < place.number; ++sound_channels_)
            builder_.add_channel(2);
    channels_[place] = builder_.add_channel(place.kind);
}

void EditMaker::fill(const TrackPlace& place, const std::vector<Clip>& clips) {
    const bool lowest = channels_.at(place) == 0 && place.kind == picture_channel;
    ChannelFiller filler(shared_, channels_.at(place), lowest, place.kind == sound_channel, tracks_.start);
    for (const Clip& clip : clips)
        filler.add(clip);
}

void EditMaker::add_channels() {
    for (const auto& [place, clips] : tracks_.clips)
        add_channel_numbered(place);
    for (const auto& [place, clips] : tracks_.clips)
        fill(place, clips);
}

int EditMaker::channel_for_cues(std::size_t list, const Event& event) const {
    for (const EventLine& line : event.lines) {
        for (const int track : line.channels.picture)
            for (const bool key : {false, true})
                if (const auto found = channels_.find({1, list, track, key}); found != channels_.end())
                    return found->second;
        for (const int channel : line.channels.sound)
            if (const auto found = channels_.find({2, 0, channel, false}); found != channels_.end())
                return found->second;
    }
    return 0;
}

void EditMaker::add_cue(std::size_t list, const Event& event, const Locator& locator) {
    const std::string place = place_of(lists_[list].path, locator.line);
    try {
        const std::int64_t frame = tracks_.record_frames(locator.record, rate_) - tracks_.start;
        if (frame < 0) throw BadLine{"a mark before the programme begins, left out"};
        builder_.add_cue(channel_for_cues(list, event), EditBuilder::CueLevel::clip,
                         {Fraction(frame) * shared_.frame, locator.text, 4});
    } catch (const BadLine& bad) {
        warnings_.push_back({embedded::WarningKind::dropped, place + ": " + bad.reason});
    }
}

EditPtr EditMaker::run() {
    note_sources();
    add_channels();
    for (std::size_t i = 0; i < lists_.size(); ++i)
        for (const Event& event : lists_[i].list.events)
            for (const Locator& locator : event.locators)
                add_cue(i, event, locator);
    EditPtr edit = builder_.finish();
    warnings_.insert(warnings_.end(), builder_.warnings().begin(), builder_.warnings().end());
    return edit;
}

} // namespace

EditPtr build_edit(const std::vector<NamedList>& lists, const Tracks& tracks, embedded::EditDescription description,
                   bool all_effects, embedded::Warnings& warnings) {
    description.drop_frame = tracks.drop;
    description.start_frame = tracks.start;
    return EditMaker(lists, tracks, std::move(description), all_effects, warnings).run();
}

} // namespace formats::edl
