#include "formats/edl/edl_writer.h"

#include "embedded/edit_recipe.h"
#include "formats/edl/edl_event.h"
#include "formats/edl/edl_list.h"
#include "formats/edl/edl_text.h"
#include "formats/edl/edl_tracks.h"
#include "formats/log_doubts.h"
#include "formats/source_labels.h"
#include "host/ascii_text.h"
#include "host/channel_kinds.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <map>
#include <set>

namespace formats {
namespace edl {
namespace {

using embedded::ChannelItem;
using embedded::EditBuilder;
using embedded::EditRecipe;
using embedded::EffectDescription;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::LaidEvent;
using embedded::RecipeChannel;
using embedded::RecipeCue;
using embedded::SourceDescription;
using embedded::TransitionDescription;
using embedded::WarningKind;

/// A transition at the cut before an item, and what it takes of both sides.
struct Joint {
    const TransitionDescription* transition = nullptr;
    Fraction before, behind;

    bool is_there() const { return transition != nullptr; }
};

/// One side of an event of the list: what its line and comments are made of.
struct Side {
    const ChannelItem* item = nullptr; ///< null for black
    Fraction from;                     ///< seconds of the edit at which its line begins
    Fraction start, end;               ///< of the item
};

/// The key number of a line's first source frame, and the frame of tape since midnight, at or before that, with which
/// one of film begins.
struct CountedKey {
    LabelPoint number;
    std::int64_t cycle = 0;
};

/// Writes one channel.
///
///     | A . . . . . . |\B . . . . |     the edit: the transition lies around the cut
///     | A . . . |----X----| . . . |     the list: B begins with the transition, and so earlier in its source
///               B
class ListWriter {
public:
    ListWriter(const EditRecipe& recipe, const EdlWriting& writing)
        : recipe_(recipe), writing_(writing), rate_(*recipe.edit.rate),
          channel_(recipe.channels[static_cast<std::size_t>(writing.channel)]), record_{&rate_,
                                                                                        recipe.edit.drop_frame &&
                                                                                            rate_.can_drop()} {}

    Written run();

private:
    void find_joints();
    void find_starts();
    void write_head();
    void write_item(std::size_t i);
    void write_end();
    bool vanishes(const Side& side, const Fraction& to);
    void write_cut(const Side& side, const Fraction& to);
    void write_transition(const Joint& joint, const Side& from, const Side& to, const Fraction& end);
    void write_line(const Side& side, const Fraction& to, const std::string& type, int frames);
    void write_speed(const Side& side, const Fraction& to, bool normal_too = false);
    bool have_speeds_at_one_place(const Side& from, const Side& to, const Fraction& end);
    void write_comments(const Side& side, const Fraction& to, const char* part);
    std::optional<LabelPoint> key_at(const SourceDescription& source, std::int64_t frame, const Fraction& first) const;
    std::optional<CountedKey> key_of(const Side& side, const Fraction& to);
    void write_key(const Side& side, const Fraction& to);
    std::string last_key_comment(const Side& side, const Fraction& to, const CountedKey& key);
    void write_effects(const Side& side, bool with_transition);
    void write_transition_name(const TransitionDescription& transition);
    /// Those before a time, or all that are left.
    void write_cues(const Fraction* before);
    std::string type_of(const TransitionDescription& transition);

    const SourceDescription* source_of(const Side& side) const;
    Side side_of(std::size_t i, const Fraction& from) const;
    std::string reel_of(const Side& side);
    std::int64_t record_frame(const Fraction& seconds);
    std::string told_by_no_timecode() const;
    bool source_drop(const SourceDescription* source) const;
    std::string name_of(const Side& side) const;
    /// Seconds of the source at which the line's stretch of it begins; backward its lowest frame.
    static Fraction source_seconds(const Side& side, const Fraction& to);
    /// The same in frames since midnight.
    Fraction source_frames(const Side& side, const Fraction& to) const;
    std::int64_t source_frame(const Side& side, const Fraction& to) const { return source_frames(side, to).floor(); }
    std::string channel_text() const;
    std::string name_of_channel(std::size_t number) const;

    void tell(const std::string& text, WarningKind kind = WarningKind::dropped) {
        if (std::find(told_.begin(), told_.end(), text) != told_.end()) return;
        told_.push_back(text);
        written_.warnings.push_back({kind, text});
    }
    void tell_of_other_channels();
    void tell_of_edit();
    void tell_of_source(const SourceDescription& source);
    void tell_of_losses();

    const EditRecipe& recipe_;
    const EdlWriting& writing_;
    const embedded::RateInfo& rate_;
    const RecipeChannel& channel_;
    const Counting record_;
    std::vector<Joint> joints_;    ///< before each item, and one at the end
    std::vector<Fraction> starts_; ///< of the items, and the end of the last
    int number_ = 0;
    bool frame_code_is_drop_ = false;
    std::deque<const RecipeCue*> cues_; ///< those that are still to be written, by time
    std::vector<std::string> told_;
    std::map<std::string, std::set<std::string>> losses_; ///< what sources lose, and their names
    LogDoubts doubts_{writing_.log};
    Written written_;
};

void ListWriter::find_starts() {
    Fraction now;
    for (const ChannelItem& item : channel_.items) {
        starts_.push_back(now);
        now = now + item.event.duration;
    }
    starts_.push_back(now);
}

void ListWriter::find_joints() {
    embedded::Warnings said_when_read;
    joints_.resize(channel_.items.size() + 1);
    const Fraction frame(rate_.den, rate_.num);
    for (const LaidEvent& laid : lay_out_cuts(channel_.items, channel_.cuts, frame, said_when_read)) {
        if (laid.kind != LaidEvent::Kind::transition) continue;
        const embedded::ChannelCut& cut = channel_.cuts[laid.index];
        const Fraction at = starts_[cut.before_item];
        joints_[cut.before_item] = {&cut.transition, at - laid.edit_in, laid.edit_out - at};
    }
}

Side ListWriter::side_of(std::size_t i, const Fraction& from) const {
    const ChannelItem& item = channel_.items[i];
    const bool material = item.kind == ChannelItem::Kind::event;
    return {material ? &item : nullptr, from, starts_[i], starts_[i + 1]};
}

const SourceDescription* ListWriter::source_of(const Side& side) const {
    if (!side.item) return nullptr;
    const auto source = static_cast<std::size_t>(side.item->event.source);
    return source < recipe_.sources.size() ? &recipe_.sources[source] : nullptr;
}

std::string ListWriter::reel_of(const Side& side) {
    const SourceDescription* source = source_of(side);
    if (!source) return "BL";
    const std::string& reel = source->reel(embedded::tape_reel);
    const std::string field = field_text(reel);
    EventLine line;
    line.reel = field;
    if (field.empty() || line.black() || line.auxiliary()) {
        if (!reel.empty()) tell("source \"" + source->name + "\": its reel \"" + reel + "\" means no reel in a list");
        return "AX";
    }
    if (field != reel) tell("source \"" + source->name + "\": the blanks of its reel \"" + reel + "\" aren't kept");
    return field;
}

std::int64_t ListWriter::record_frame(const Fraction& seconds) {
    const Fraction frames = seconds * rate_.rate();
    if (frames.den() != 1) tell("times that lie between two frames are moved to the nearest", WarningKind::replaced);
    return recipe_.edit.start_frame + frames.nearest();
}

bool ListWriter::source_drop(const SourceDescription* source) const {
    if (!source || !source->video_timecode) return record_.drop;
    const embedded::RateInfo& rate = source->rate ? *source->rate : rate_;
    return rate_.can_drop() && rate.can_drop() && source->video_timecode->type == rate.drop_timecode;
}

Fraction ListWriter::source_frames(const Side& side, const Fraction& to) const {
    const SourceDescription* source = source_of(side);
    if (!source) return 0;
    const embedded::RateInfo& own = source->rate ? *source->rate : rate_;
    const int first = source->video_timecode ? point_of(*source->video_timecode).sample : 0;
    const Fraction first_frame =
        own.nominal == rate_.nominal ? Fraction(first) : Fraction(first) / own.rate() * rate_.rate();
    return first_frame + source_seconds(side, to) * rate_.rate();
}

Fraction ListWriter::source_seconds(const Side& side, const Fraction& to) {
    const EventDescription& event = side.item->event;
    const Fraction moved = event.speed < Fraction(0) ? to - side.end : side.from - side.start;
    return event.source_in + moved * event.speed;
}

std::string ListWriter::name_of(const Side& side) const {
    const SourceDescription* source = source_of(side);
    return name_of_channel(static_cast<std::size_t>(writing_.channel)) + " at " +
           timecode_text(recipe_.edit.start_frame + (side.from * rate_.rate()).nearest(), record_) +
           (source ? ", \"" + source->name + "\"" : "");
}

std::string ListWriter::name_of_channel(std::size_t number) const {
    const int kind = recipe_.channels[number].kind;
    int count = 0;
    for (std::size_t i = 0; i <= number; ++i)
        if (recipe_.channels[i].kind == kind) ++count;
    return (kind == sound_channel ? "A" : "V") + std::to_string(count);
}

std::string ListWriter::channel_text() const {
    if (channel_.kind != sound_channel) return "V";
    const std::string name = name_of_channel(static_cast<std::size_t>(writing_.channel));
    return name == "A1" ? "A" : name;
}

void ListWriter::write_head() {
    const std::string title = field_text(recipe_.edit.name);
    if (!title.empty()) written_.text += "TITLE: " + title + "\n";
    written_.text += record_.drop ? "FCM: DROP FRAME\n" : "FCM: NON-DROP FRAME\n";
    written_.text += std::string("* FRAME RATE: ") + rate_.name + "\n";
    frame_code_is_drop_ = record_.drop;
}

// A ";" marks the timecodes of drop-frame, so the mode is only ever switched off.
void ListWriter::write_line(const Side& side, const Fraction& to, const std::string& type, int frames) {
    const SourceDescription* source = source_of(side);
    WrittenLine line;
    line.reel = reel_of(side);
    line.channels = channel_text();
    line.type = type;
    line.frames = frames;
    line.record_in = record_frame(side.from);
    line.record_out = record_frame(to);
    line.source_drop = source_drop(source);
    line.source_in = source_frame(side, to);
    const Fraction length(line.record_out - line.record_in);
    const Fraction speed = source ? side.item->event.speed : Fraction(1);
    const Fraction used = magnitude(speed) * length;
    line.source_out = line.source_in + (speed == Fraction(0) ? std::min(length, Fraction(1)) : used).nearest();
    if (source && channel_.kind == picture_channel && Fraction(0) < length)
        doubts_.note(name_of(side), source->reel(embedded::tape_reel), line.source_in,
                     std::max(line.source_in, line.source_out - 1), film_rate_of(*source, rate_) / rate_.rate());
    if (frame_code_is_drop_ && !line.source_drop) {
        written_.text += "FCM: NON-DROP FRAME\n";
        frame_code_is_drop_ = false;
    }
    written_.text += event_text(number_, line, record_);
}

void ListWriter::write_speed(const Side& side, const Fraction& to, bool normal_too) {
    const SourceDescription* source = source_of(side);
    if (!source || (side.item->event.speed == Fraction(1) && !normal_too)) return;
    const Fraction& speed = side.item->event.speed;
    const std::optional<std::string> exact = exact_speed(speed, rate_);
    if (!exact)
        tell(name_of(side) + ": its speed of " + std::to_string(speed.to_double()) +
                 " can't be told exactly, and is rounded",
             WarningKind::replaced);
    written_.text += speed_text(reel_of(side), exact ? *exact : nearest_speed(speed, rate_), source_frame(side, to),
                                {&rate_, source_drop(source)});
}

// A speed alone would be taken for that of both lines.
bool ListWriter::have_speeds_at_one_place(const Side& from, const Side& to, const Fraction& end) {
    if (!source_of(from) || !source_of(to) || from.item->event.speed == to.item->event.speed) return false;
    return reel_of(from) == reel_of(to) && source_frame(from, from.from) == source_frame(to, end);
}

void ListWriter::write_comments(const Side& side, const Fraction& to, const char* part) {
    constexpr std::string_view by_name = "name:";
    const SourceDescription* source = source_of(side);
    if (!source) return;
    const bool like_a_key = find_key_number(source->name, true).has_value(); // the first that is found counts
    if (like_a_key) write_key(side, to);
    written_.text += std::string("* ") + part + " CLIP NAME: " + field_text(source->name) + "\n";
    if (source->identity.substr(0, by_name.size()) != by_name)
        written_.text += "* SOURCE FILE: " + field_text(source->identity) + "\n";
    if (!like_a_key) write_key(side, to);
    tell_of_source(*source);
}

/// The key number of a frame since midnight, that of the log where there is one.
std::optional<LabelPoint> ListWriter::key_at(const SourceDescription& source, std::int64_t frame,
                                             const Fraction& first) const {
    const Fraction film_rate = film_rate_of(source, rate_);
    if (writing_.log) {
        const auto logged = writing_.log(source.reel(embedded::tape_reel), frame, film_rate / rate_.rate());
        return logged ? std::optional(logged->key) : std::nullopt;
    }
    if (!source.key) return std::nullopt;
    const Fraction seconds = (Fraction(frame) - first) / rate_.rate() - source.start_strip;
    return moved(point_of(*source.key), (seconds * film_rate).floor());
}

/// The key number of the line's first source frame. Readers count on from there as if its frame of film began with that
/// of tape; where it doesn't they need to know a frame that does:
///
///     tape at 30    |0 |1 |2 |3 |4 |5 |6 |     3 is of 2, in a cycle from 0
///     film at 24    |0  |1  |2  |3  |4  |
std::optional<CountedKey> ListWriter::key_of(const Side& side, const Fraction& to) {
    const SourceDescription& source = *source_of(side);
    const std::int64_t frame = source_frame(side, to);
    const Fraction first = source_frames(side, to) - source_seconds(side, to) * rate_.rate();
    const Fraction share = film_rate_of(source, rate_) / rate_.rate();
    const std::optional<LabelPoint> key = key_at(source, frame, first);
    if (!key) return std::nullopt;
    if (share.den() == 1) return CountedKey{*key, frame};
    const auto begins_cycle = [&](std::int64_t start) {
        const std::optional<LabelPoint> begun = key_at(source, start, first);
        for (std::int64_t on = 1; begun && on < share.den(); ++on) {
            const std::optional<LabelPoint> counted = moved(*begun, (Fraction(on) * share).floor());
            const std::optional<LabelPoint> there = key_at(source, start + on, first);
            if (!counted || !there || !(*counted == *there)) return false;
        }
        return begun && begun->sample >= 0;
    };
    constexpr std::int64_t longest_cycle = 25; // 24 frames of film in a second of tape
    const std::int64_t of_day = frame_of_day(frame, {&rate_, source_drop(&source)});
    for (std::int64_t back = 0; share.den() <= longest_cycle && back < share.den() && back <= of_day; ++back)
        if (begins_cycle(frame - back)) return CountedKey{*key, frame - back};
    tell(name_of(side) +
             ": where the cycle of its film begins can't be told, so numbers counted from its first key number "
             "may be one off",
         WarningKind::replaced);
    return CountedKey{*key, frame};
}

std::string ListWriter::last_key_comment(const Side& side, const Fraction& to, const CountedKey& key) {
    const Fraction share = film_rate_of(*source_of(side), rate_) / rate_.rate();
    const Fraction first(source_frame(side, to) - key.cycle);
    const Fraction frames =
        Fraction(record_frame(to) - record_frame(side.from) - 1) * magnitude(side.item->event.speed);
    const std::int64_t film = ((first + frames) * share).floor() - (first * share).floor();
    const std::optional<LabelPoint> last = moved(key.number, film);
    return last ? "* KEY OUT: " + spelled(*last, *writing_.keys) + "\n" : "";
}

void ListWriter::write_key(const Side& side, const Fraction& to) {
    const SourceDescription* source = source_of(side);
    const std::optional<CountedKey> key = key_of(side, to);
    std::string cycle;
    if (key && key->cycle != source_frame(side, to)) cycle = timecode_text(key->cycle, {&rate_, source_drop(source)});
    const std::optional<std::string> comment = key ? key_comment(key->number, *writing_.keys, cycle) : std::nullopt;
    if (comment) written_.text += *comment;
    if (comment && writing_.last_keys) written_.text += last_key_comment(side, to, *key);
    if (!comment && (key || (!writing_.log && source->key))) tell(name_of(side) + ": its key number isn't kept");
}

// In an event with a transition the comment would name that.
void ListWriter::write_effects(const Side& side, bool with_transition) {
    if (!side.item) return;
    for (const EffectDescription& effect : side.item->event.effects) {
        const std::string name = field_text(effect.name);
        if (with_transition || name.empty())
            tell(name_of(side) + ": its effect \"" + effect.name + "\" isn't kept");
        else
            written_.text += "* EFFECT NAME: " + name + "\n";
        if (effect.for_the_lab)
            tell(name_of(side) + ": that the lab makes its effect isn't kept; --all-effects says so when it is read");
    }
}

std::string ListWriter::type_of(const TransitionDescription& transition) {
    constexpr int most_patterns = 100;
    if (transition.kind != TransitionDescription::Kind::wipe) return "D";
    if (transition.pattern < 0 || transition.pattern >= most_patterns) {
        tell("a wipe of pattern " + std::to_string(transition.pattern) + " becomes a dissolve", WarningKind::replaced);
        return "D";
    }
    char code[16];
    std::snprintf(code, sizeof code, "W%03d", transition.pattern + (transition.reversed ? most_patterns : 0));
    return code;
}

void ListWriter::write_transition_name(const TransitionDescription& transition) {
    using Kind = TransitionDescription::Kind;
    std::string name = field_text(transition.name);
    const bool names_film = ascii::holds(name, "film") && ascii::holds(name, "dissolve");
    if (transition.kind == Kind::other)
        tell("a transition \"" + transition.name + "\" becomes a dissolve", WarningKind::replaced);
    if (transition.kind == Kind::film_dissolve && !names_film) name = "FILM DISSOLVE";
    if (transition.kind != Kind::film_dissolve && names_film) name.clear();
    if (name == "SMPTE_Dissolve" || name == "SMPTE_Wipe") name.clear();
    if (!name.empty()) written_.text += "* EFFECT NAME: " + name + "\n";
}

void ListWriter::write_cues(const Fraction* before) {
    while (!cues_.empty() && (!before || cues_.front()->cue.time < *before)) {
        const embedded::CueDescription& cue = cues_.front()->cue;
        const std::string text = field_text(cue.text);
        cues_.pop_front();
        if (text.empty() || cue.flags == 0 || cue.time < Fraction(0)) {
            tell("cues without a text, that aren't printed, or before the start aren't kept");
            continue;
        }
        written_.text += "* LOC: " + timecode_text(record_frame(cue.time), record_) + " RED     " + text + "\n";
    }
}

/// Whether nothing is left of a line once its times are moved to frames.
bool ListWriter::vanishes(const Side& side, const Fraction& to) {
    if (record_frame(side.from) < record_frame(to)) return false;
    tell(name_of(side) + ": it is shorter than a frame of the list, and is left out");
    return true;
}

void ListWriter::write_cut(const Side& side, const Fraction& to) {
    if (vanishes(side, to)) return;
    ++number_;
    write_line(side, to, "C", 0);
    write_speed(side, to);
    write_comments(side, to, "FROM");
    write_effects(side, false);
    write_cues(&to);
}

void ListWriter::write_transition(const Joint& joint, const Side& from, const Side& to, const Fraction& end) {
    if (vanishes(to, end)) return;
    ++number_;
    const auto frames = static_cast<int>(record_frame(to.from + joint.before + joint.behind) - record_frame(to.from));
    write_line(from, from.from, "C", 0);
    write_line(to, end, type_of(*joint.transition), frames);
    const bool each = have_speeds_at_one_place(from, to, end);
    write_speed(from, from.from, each);
    write_speed(to, end, each);
    write_transition_name(*joint.transition);
    write_comments(from, from.from, "FROM");
    write_comments(to, end, "TO");
    write_effects(to, true);
    write_cues(&end);
}

// A gap is what isn't recorded, but for one at the head, which holds the start.
void ListWriter::write_item(std::size_t i) {
    const Joint& head = joints_[i];
    const Fraction from = starts_[i] - head.before, to = starts_[i + 1] - joints_[i + 1].before;
    const Side side = side_of(i, from);
    const bool gap = channel_.items[i].kind == ChannelItem::Kind::gap && starts_[i] > Fraction(0);
    if (head.is_there())
        write_transition(head, i > 0 ? side_of(i - 1, from) : Side{nullptr, from, from, from}, side, to);
    else if (from < to && !gap)
        write_cut(side, to);
}

// What fades out at the end fades to black.
void ListWriter::write_end() {
    const Joint& joint = joints_.back();
    if (joint.is_there()) {
        const Fraction from = starts_.back() - joint.before;
        const Side black{nullptr, from, from, starts_.back()};
        write_transition(joint, side_of(channel_.items.size() - 1, from), black, starts_.back() + joint.behind);
    }
    if (number_ > 0) write_cues(nullptr);
}

void ListWriter::tell_of_other_channels() {
    std::string names;
    for (std::size_t i = 0; i < recipe_.channels.size(); ++i)
        if (static_cast<int>(i) != writing_.channel) names += (names.empty() ? "" : ", ") + name_of_channel(i);
    if (!names.empty())
        tell("holds " + name_of_channel(static_cast<std::size_t>(writing_.channel)) + " alone: " + names +
             " need lists of their own");
}

void ListWriter::tell_of_edit() {
    const embedded::EditDescription& edit = recipe_.edit;
    if (!edit.project.empty()) tell("the edit: its project isn't kept");
    if (edit.film_rate) tell("the edit: its film rate isn't kept");
    if (edit.timecode_24p) tell("the edit: its 24-frame timecode isn't kept");
}

void ListWriter::tell_of_source(const SourceDescription& source) {
    const embedded::RateInfo& rate = source.rate ? *source.rate : rate_;
    const bool other_reels = source.reels.size() > source.reels.count(embedded::tape_reel);
    const struct {
        bool lost;
        const char* what;
    } losses[] = {
        {other_reels, "its other reels"},
        {source.sound_timecode.has_value(), "its sound timecode"},
        {source.timecode_24p.has_value(), "its 24-frame timecode"},
        {source.ink.has_value(), "its ink number"},
        {!source.scene.empty() || !source.take.empty() || !source.description.empty(),
         "its scene, take and description"},
        {!(film_rate_of(source, rate_) == embedded::film_rate_of(rate_)), "its film rate"},
        {source.rendered, "that it is rendered"},
        {!source.opens, "that its media is lost"},
    };
    std::string lost;
    for (const auto& loss : losses)
        if (loss.lost) lost += (lost.empty() ? "" : ", ") + std::string(loss.what);
    const std::string where = "source \"" + source.name + "\": ";
    if (!lost.empty()) losses_[lost].insert(source.name);
    if (rate.nominal != rate_.nominal)
        tell(where + "its timecode counts " + rate.name + " and is written as the edit counts", WarningKind::rate);
}

void ListWriter::tell_of_losses() {
    constexpr std::size_t most_names = 3;
    for (const auto& [what, names] : losses_) {
        std::string text = names.size() == 1 ? "source" : "sources";
        std::size_t count = 0;
        for (const std::string& name : names)
            if (count++ < most_names) text += (count == 1 ? " \"" : ", \"") + name + "\"";
        if (names.size() > most_names) text += " and " + std::to_string(names.size() - most_names) + " more";
        tell(text + ": not kept: " + what);
    }
}

// Behind midnight timecodes begin anew, and those before noon are taken for the next day's.
std::string ListWriter::told_by_no_timecode() const {
    const std::int64_t day = frames_of_day(rate_, record_.drop);
    const std::int64_t begin = frame_of_day(recipe_.edit.start_frame, record_);
    const std::int64_t length = (starts_.back() * rate_.rate()).nearest();
    const std::int64_t last = begin < day / 2 ? day : day + day / 2;
    if (begin + length <= last && length < day) return "";
    return name_of_channel(static_cast<std::size_t>(writing_.channel)) + " begins at " + timecode_text(begin, record_) +
           " and is " + std::to_string(length) +
           " frames long; an edit list that runs over midnight begins after noon and ends before noon";
}

Written ListWriter::run() {
    find_starts();
    written_.error = channel_.fx() ? "an FX track can't be an edit list" : told_by_no_timecode();
    if (!written_.error.empty()) return std::move(written_);
    for (const RecipeCue& cue : recipe_.cues)
        if (cue.channel < 0 || cue.channel == writing_.channel) cues_.push_back(&cue);
    std::stable_sort(cues_.begin(), cues_.end(), [](const RecipeCue* a, const RecipeCue* b) {
        return a->cue.time == b->cue.time ? a->level < b->level : a->cue.time < b->cue.time;
    });
    find_joints();
    tell_of_other_channels();
    tell_of_edit();
    write_head();
    for (std::size_t i = 0; i < channel_.items.size(); ++i)
        write_item(i);
    write_end();
    tell_of_losses();
    doubts_.tell(written_.warnings);
    if (number_ == 0) {
        written_ = {};
        written_.error =
            name_of_channel(static_cast<std::size_t>(writing_.channel)) + " holds nothing for an edit list";
    }
    return std::move(written_);
}

} // namespace
} // namespace edl

Written write_edl(const EditPtr& edit, const EdlWriting& writing) {
    const embedded::EditRecipe* recipe = embedded::recipe_of(edit);
    const bool known =
        recipe && writing.channel >= 0 && static_cast<std::size_t>(writing.channel) < recipe->channels.size();
    if (!known) return {{}, {}, "the edit has no such channel"};
    return edl::ListWriter(*recipe, writing).run();
}

} // namespace formats
