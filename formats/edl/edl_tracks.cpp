#include "formats/edl/edl_tracks.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>

namespace formats::edl {
namespace {

constexpr std::int64_t seconds_of_day = 86400;
constexpr const char* without_transition = "an event without length that no transition follows";

Fraction ratio_of(const Fraction& speed, const RateInfo& rate) {
    if (is_normal_speed(magnitude(speed), rate)) return speed < Fraction() ? -1 : 1;
    return speed / Fraction(rate.nominal);
}

/// Frames of a source that a record takes at a speed. Lists give one or the other:
///
///     record    |1   2   3   4|         at twice the speed
///     stretch   |1 . 2 . 3 . 4 .|       8: the record's length times the speed
///     span      |1 . 2 . 3 . 4|         7: from the first frame that is used to the last
Fraction stretch_of_source(const Fraction& speed, std::int64_t record) { return magnitude(speed) * Fraction(record); }
Fraction span_of_source(const Fraction& speed, std::int64_t record) {
    return magnitude(speed) * Fraction(record - 1) + Fraction(1);
}

bool within_a_frame(const Fraction& length, std::int64_t frames) {
    return magnitude(length - Fraction(frames)) <= Fraction(1);
}

/// Whether a line's source is as long as its record takes at that speed.
bool is_as_used(const Fraction& speed, std::int64_t record, std::int64_t source) {
    return within_a_frame(stretch_of_source(speed, record), source) ||
           within_a_frame(span_of_source(speed, record), source);
}

/// How much later than its event each side begins, in frames of the record.
struct Delays {
    std::int64_t picture = 0, sound = 0;
};

/// Lays out one list after the other, then settles each track.
class Layout {
public:
    Layout(const std::vector<NamedList>& lists, const RateInfo& rate, bool reverse_from_first)
        : lists_(lists), rate_(rate), reverse_from_first_(reverse_from_first) {}

    Tracks run();

private:
    void warn(int line, const std::string& text, embedded::WarningKind kind = embedded::WarningKind::doubt) {
        tracks_.warnings.push_back({kind, place_of(path_, line) + ": " + text});
    }
    /// What was left out or shortened.
    void warn_dropped(int line, const std::string& text) { warn(line, text, embedded::WarningKind::dropped); }

    /// Nothing of the line is on a track.
    void leave_out(const EventLine& line, const std::string& why) {
        warn_dropped(line.line, why + "; the event is left out");
    }

    void add_list(std::size_t index);
    void add_event(const Event& event);
    void add_line(const Event& event, const EventLine& line, const Delays& delays);
    void add_picture(const PlacedLine& placed, std::int64_t delay);
    void add_sound(const PlacedLine& placed, std::int64_t delay);
    void add_clip(const TrackPlace& place, const PlacedLine& placed, std::int64_t delay);
    Delays delays_of(const Event& event) const;
    void delay_clip(Clip& clip, std::int64_t delay);
    void take_from(const TrackPlace& place, Clip& clip);
    void end_event();
    bool sound_is_taken(int channel);

    PlacedKey key_of(const EventLine& line, bool drop, std::int64_t source_in);
    PlacedLine place(const Event& event, const EventLine& line);
    std::int64_t frames(const Timecode& time, bool drop, const EventLine& line);
    bool ends_behind_midnight(const EventLine& line, std::int64_t out, std::int64_t wrapped, std::int64_t source) const;
    std::int64_t record_length(const EventLine& line, std::int64_t in, std::int64_t out, std::int64_t source);
    void check_source_length(const PlacedLine& placed, std::int64_t source);

    void pass_midnight();
    void settle(std::vector<Clip>& clips);
    void hold_before_split(Clip& before, const Clip& clip);
    bool cut_before(Clip& before, const Clip& clip);
    bool goes_on(const Clip& before, const Clip& clip, const PlacedLine& from);
    void join(Clip& before, Clip& clip);
    void find_start();

    const std::vector<NamedList>& lists_;
    const RateInfo& rate_;
    const bool reverse_from_first_;
    Tracks tracks_;
    std::size_t list_ = 0;
    std::string path_;
    std::map<TrackPlace, PlacedLine> from_;  ///< lines without length that wait for their transition
    std::map<int, std::size_t> sound_lists_; ///< which list a sound channel comes from
    bool told_of_sound_ = false;
    bool over_midnight_ = false;
};

std::int64_t Layout::frames(const Timecode& time, bool drop, const EventLine& line) {
    bool skipped = false;
    const std::int64_t found = frames_of(time, rate_, drop, &skipped);
    if (skipped)
        warn(line.line, "a timecode that drop-frame leaves out; the next one counts", embedded::WarningKind::rate);
    return found;
}

// Any length suits a still's one frame, so an out of 0 isn't midnight there.
bool Layout::ends_behind_midnight(const EventLine& line, std::int64_t out, std::int64_t wrapped,
                                  std::int64_t source) const {
    if (wrapped >= frames_of_day(rate_, tracks_.drop) / 2) return false;
    const Fraction speed = ratio_of(*line.speed, rate_);
    return out > 0 || (!(speed == Fraction(0)) && is_as_used(speed, wrapped, source));
}

// The record's length where its out lies before its in: over midnight, or never filled in.
std::int64_t Layout::record_length(const EventLine& line, std::int64_t in, std::int64_t out, std::int64_t source) {
    if (out >= in) return out - in;
    const std::int64_t wrapped = out - in + frames_of_day(rate_, tracks_.drop);
    if (wrapped == source || (line.speed && ends_behind_midnight(line, out, wrapped, source))) {
        over_midnight_ = true;
        return wrapped;
    }
    if (out != 0) throw BadLine{"the record out lies before the record in"};
    warn(line.line, "no record out; the source's length counts");
    return std::max<std::int64_t>(0, source);
}

// Where a speed follows, the source is as long as the record, or as much as is used.
void Layout::check_source_length(const PlacedLine& placed, std::int64_t source) {
    const std::int64_t record = placed.out - placed.in;
    if (source == record || record == 0 || placed.line->black()) return;
    if (placed.speed == Fraction(1) || !is_as_used(placed.speed, record, source))
        warn(placed.line->line, "the source is " + std::to_string(source) + " frames long and the record " +
                                    std::to_string(record) + "; the record counts");
}

PlacedKey Layout::key_of(const EventLine& line, bool drop, std::int64_t source_in) {
    if (!line.key) return {};
    if (!line.key->cycle) return {&*line.key, source_in, 0};
    const std::int64_t start = frames(*line.key->cycle, drop, line);
    const Fraction share = film_rate_of(rate_) / rate_.rate();
    if (start <= source_in) return {&*line.key, start, (Fraction(source_in - start) * share).floor()};
    warn(line.line, "a key number whose cycle begins behind it isn't read", embedded::WarningKind::doubt);
    return {};
}

PlacedLine Layout::place(const Event& event, const EventLine& line) {
    PlacedLine placed;
    placed.line = &line;
    placed.event = &event;
    placed.source_drop = line.source_drop && rate_.can_drop();
    const std::int64_t source_in = frames(line.source_in, placed.source_drop, line);
    std::int64_t source = frames(line.source_out, placed.source_drop, line) - source_in;
    if (source < 0) source += frames_of_day(rate_, placed.source_drop);
    placed.source_in = source_in;
    placed.key = key_of(line, placed.source_drop, source_in);
    placed.in = frames(line.record_in, tracks_.drop, line);
    placed.out = placed.in + record_length(line, placed.in, frames(line.record_out, tracks_.drop, line), source);
    if (line.speed)
        placed.speed = ratio_of(*line.speed, rate_);
    else if (line.freeze)
        placed.speed = 0;
    check_source_length(placed, source);
    if (line.type == EditType::key_out) placed.out = placed.in + line.frames; // the fade counts, not its record
    // The frame shown first is the last of the stretch.
    if (reverse_from_first_ && placed.speed < Fraction())
        placed.source_in = placed.source_in + placed.speed * Fraction(placed.out - placed.in) + Fraction(1);
    return placed;
}

bool Layout::sound_is_taken(int channel) {
    const auto [owner, fresh] = sound_lists_.try_emplace(channel, list_);
    if (fresh || owner->second == list_) return false;
    if (!told_of_sound_) warn_dropped(0, "its sound is left out where a list before it has that channel");
    told_of_sound_ = true;
    return true;
}

// Throws `BadLine` for a delay that some line of the event would take, before anything of the event is laid.
Delays Layout::delays_of(const Event& event) const {
    const auto frames = [&](const std::optional<Timecode>& delay, NumberSet Channels::*side) {
        const bool taken = std::any_of(event.lines.begin(), event.lines.end(),
                                       [&](const EventLine& line) { return !(line.channels.*side).empty(); });
        return delay && taken ? frames_of(*delay, rate_, false) : 0;
    };
    return {frames(event.picture_delay, &Channels::picture), frames(event.sound_delay, &Channels::sound)};
}

void Layout::delay_clip(Clip& clip, std::int64_t delay) {
    if (delay == 0) return;
    const std::int64_t length = clip.placed.out - clip.placed.in, wait = std::min(delay, length);
    if (wait == length && length > 0)
        leave_out(clip.line(),
                  "its delay is " + std::to_string(delay) + " frames long and it is " + std::to_string(length));
    clip.placed.in += wait;
    // Backward the stretch is left out at its upper end.
    if (clip.placed.speed > Fraction())
        clip.placed.source_in = clip.placed.source_in + clip.placed.speed * Fraction(wait);
}

void Layout::take_from(const TrackPlace& place, Clip& clip) {
    const auto found = from_.find(place);
    if (found == from_.end()) return;
    if (found->second.in == clip.held_from && clip.line().type != EditType::cut)
        clip.from = found->second;
    else
        leave_out(*found->second.line, without_transition);
    from_.erase(found);
}

void Layout::add_clip(const TrackPlace& place, const PlacedLine& placed, std::int64_t delay) {
    Clip clip;
    clip.placed = placed;
    clip.type = placed.line->type;
    clip.frames = placed.line->frames;
    clip.held_from = placed.in;
    clip.name = placed.line->name;
    clip.list = list_;
    const bool before_transition = placed.in == placed.out && placed.line->type != EditType::key_out;
    if (before_transition && placed.line->type == EditType::key) {
        leave_out(*placed.line, "a key without length: its record out is its record in");
        return;
    }
    if (before_transition) {
        from_.insert_or_assign(place, placed);
        return;
    }
    take_from(place, clip);
    delay_clip(clip, delay);
    tracks_.clips[place].push_back(clip);
}

void Layout::add_picture(const PlacedLine& placed, std::int64_t delay) {
    const bool key = placed.line->type == EditType::key || placed.line->type == EditType::key_out;
    for (const int track : placed.line->channels.picture)
        add_clip({picture_channel, list_, track, key}, placed, delay);
}

void Layout::add_sound(const PlacedLine& placed, std::int64_t delay) {
    for (const int channel : placed.line->channels.sound)
        if (!sound_is_taken(channel)) add_clip({sound_channel, 0, channel, false}, placed, delay);
}

void Layout::add_line(const Event& event, const EventLine& line, const Delays& delays) {
    try {
        const PlacedLine placed = place(event, line);
        add_picture(placed, delays.picture);
        if (line.type != EditType::key && line.type != EditType::key_out) add_sound(placed, delays.sound);
    } catch (const BadLine& bad) {
        leave_out(line, bad.reason);
    }
}

void Layout::end_event() {
    for (const auto& [place, placed] : from_)
        leave_out(*placed.line, without_transition);
    from_.clear();
}

// A line without length may carry a number of its own, so it waits for the next event too.
void Layout::add_event(const Event& event) {
    try {
        const Delays delays = delays_of(event);
        for (const EventLine& line : event.lines)
            add_line(event, line, delays);
    } catch (const BadLine& bad) {
        leave_out(event.lines.front(), "its delay: " + bad.reason);
    }
}

void Layout::add_list(std::size_t index) {
    list_ = index;
    path_ = lists_[index].path;
    told_of_sound_ = false;
    for (const Event& event : lists_[index].list.events)
        add_event(event);
    end_event();
}

// A programme that runs over midnight goes on behind it.
void Layout::pass_midnight() {
    if (!over_midnight_) return;
    tracks_.midnight_shift = frames_of_day(rate_, tracks_.drop);
    for (auto& [place, clips] : tracks_.clips)
        for (Clip& clip : clips) {
            if (clip.placed.in >= tracks_.midnight_shift / 2) continue;
            for (std::int64_t* time : {&clip.placed.in, &clip.placed.out, &clip.held_from})
                *time += tracks_.midnight_shift;
        }
}

// Until the delayed clip comes, the one before it goes on.
void Layout::hold_before_split(Clip& before, const Clip& clip) {
    const std::int64_t longer = clip.placed.in - clip.held_from;
    if (longer == 0 || before.placed.out != clip.held_from) return;
    before.placed.out = clip.placed.in;
    if (before.placed.speed < Fraction())
        before.placed.source_in = before.placed.source_in + before.placed.speed * Fraction(longer);
}

// What is recorded later covers the end of what is there. False when nothing is left.
bool Layout::cut_before(Clip& before, const Clip& clip) {
    const std::int64_t over = before.placed.out - clip.placed.in;
    if (over <= 0) return true;
    path_ = lists_[before.list].path;
    warn_dropped(before.line().line, "cut by " + std::to_string(over) + " frames, as line " +
                                         std::to_string(clip.line().line) + " is recorded over its end");
    before.placed.out -= over;
    if (before.type == EditType::key_out) before.frames -= static_cast<int>(over);
    if (before.placed.speed < Fraction())
        before.placed.source_in = before.placed.source_in - before.placed.speed * Fraction(over);
    return before.placed.out > before.placed.in;
}

// Whether what a transition comes from is the film of the clip before, where that ends but for a delay.
bool Layout::goes_on(const Clip& before, const Clip& clip, const PlacedLine& from) {
    const EventLine& line = *from.line;
    if (!ascii::same(line.reel, before.line().reel)) return false;
    if (line.black()) return true;
    if (line.auxiliary() && !line.name.empty() && !before.name.empty() && line.name != before.name) return false;
    const Fraction& speed = before.placed.speed;
    if (line.speed && !(from.speed == speed)) return false;
    const std::int64_t delay = clip.placed.in - clip.held_from;
    Fraction end = before.placed.source_in - speed * Fraction(delay);
    if (!(speed < Fraction())) end = end + speed * Fraction(before.placed.out - before.placed.in);
    Fraction said = from.source_in;
    if (speed < Fraction()) said = said - speed * Fraction(from.out - from.in);
    const bool as_written = !(speed == Fraction(1)) && line.source_in == before.line().source_out;
    const Fraction off = magnitude(said - end);
    if (as_written || within_a_frame(off, 0) || within_a_frame(off, frames_of_day(rate_, from.source_drop)))
        return true;
    path_ = lists_[clip.list].path;
    warn(line.line, "its transition comes from another place of reel " + quoted(line.reel) + " than line " +
                        std::to_string(before.line().line) + " ends at; the later line counts");
    return false;
}

// The line without length before a transition goes on with the clip that is there, and may name it.
void Layout::join(Clip& before, Clip& clip) {
    if (before.placed.out != clip.placed.in) return;
    const PlacedLine* from = clip.from ? &*clip.from : clip.type == EditType::key_out ? &clip.placed : nullptr;
    clip.joined = !from || goes_on(before, clip, *from);
    if (!clip.joined || !clip.from) return;
    if (before.name.empty()) before.name = from->line->name;
    if (!before.placed.key.number && from->key.number) before.placed.key = from->key;
}

void Layout::settle(std::vector<Clip>& clips) {
    const auto earlier = [](const Clip& a, const Clip& b) { return a.placed.in < b.placed.in; };
    if (!std::is_sorted(clips.begin(), clips.end(), earlier)) std::stable_sort(clips.begin(), clips.end(), earlier);
    std::size_t settled = 0;
    for (Clip& clip : clips) {
        if (settled > 0) {
            hold_before_split(clips[settled - 1], clip);
            if (!cut_before(clips[settled - 1], clip)) --settled;
        }
        if (settled > 0) join(clips[settled - 1], clip);
        if (&clips[settled] != &clip) clips[settled] = clip;
        ++settled;
    }
    clips.resize(settled);
}

void Layout::find_start() {
    bool found = false;
    for (const auto& [place, clips] : tracks_.clips) {
        if (clips.empty()) continue;
        const std::int64_t first = clips.front().placed.in;
        tracks_.start = found ? std::min(tracks_.start, first) : first;
        found = true;
    }
}

Tracks Layout::run() {
    for (const NamedList& one : lists_)
        tracks_.drop = tracks_.drop || (one.list.record_drop && rate_.can_drop());
    for (std::size_t i = 0; i < lists_.size(); ++i)
        add_list(i);
    pass_midnight();
    for (auto& [place, clips] : tracks_.clips)
        settle(clips);
    find_start();
    return std::move(tracks_);
}

} // namespace

// It is written as the true rate, cut to a digit, or as the counting.
bool is_normal_speed(const Fraction& frames, const RateInfo& rate) {
    const Fraction cut = Fraction((rate.rate() * Fraction(10)).floor(), 10);
    return cut <= frames && frames <= Fraction(rate.nominal);
}

std::int64_t frames_of_day(const RateInfo& rate, bool drop) {
    constexpr int dropping_minutes = 24 * 60 - 24 * 6;
    const std::int64_t dropped = drop ? dropping_minutes * (rate.nominal / 15) : 0;
    return seconds_of_day * rate.nominal - dropped;
}

// Two labels of 30, four of 60 are left out at each minute but the tenth.
std::int64_t frames_of(const Timecode& time, const RateInfo& rate, bool drop, bool* skipped) {
    if (time.frames >= rate.nominal)
        throw BadLine{"frame " + std::to_string(time.frames) + " doesn't exist at " + rate.name + " a second"};
    const std::int64_t minutes = time.hours * 60 + time.minutes;
    const int left_out = drop ? rate.nominal / 15 : 0;
    int frames = time.frames;
    if (time.seconds == 0 && minutes % 10 != 0 && frames < left_out) {
        frames = left_out;
        if (skipped) *skipped = true;
    }
    return (minutes * 60 + time.seconds) * rate.nominal + frames - left_out * (minutes - minutes / 10);
}

std::int64_t Tracks::record_frames(const Timecode& time, const RateInfo& rate) const {
    const std::int64_t frames = frames_of(time, rate, drop);
    return frames < midnight_shift / 2 ? frames + midnight_shift : frames;
}

std::string place_of(const std::string& path, int line) {
    if (line == 0) return path;
    constexpr std::string_view between = ": line ";
    char digits[16];
    const auto count = static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, line).ptr - digits);
    std::string place;
    place.reserve(path.size() + between.size() + sizeof digits);
    return place.append(path).append(between).append(digits, count);
}

Tracks lay_out_tracks(const std::vector<NamedList>& lists, const RateInfo& rate, bool reverse_from_first) {
    return Layout(lists, rate, reverse_from_first).run();
}

} // namespace formats::edl
