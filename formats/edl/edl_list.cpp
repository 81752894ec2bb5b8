#include "formats/edl/edl_list.h"

#include "host/ascii_text.h"
#include "host/decimal_number.h"

#include <algorithm>
#include <utility>

namespace formats::edl {
namespace {

using embedded::Fraction;

/// "047.6", "-25.0" or "25" as an exact number.
std::optional<Fraction> parse_speed(std::string_view text) {
    constexpr std::size_t most_decimals = 6;
    bool backward = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        backward = text.front() == '-';
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::optional<int> whole = whole_number(text.substr(0, point));
    std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    if (!whole || decimals.size() > most_decimals || (point < text.size() && !all_digits(decimals)))
        return std::nullopt;
    Fraction speed(*whole);
    Fraction unit(1);
    for (const char c : decimals) {
        unit = unit * Fraction(1, 10);
        speed = speed + unit * Fraction(c - '0');
    }
    return backward ? -speed : speed;
}

enum class Part { from, to, key };

/// What a comment says of a clip by the words that it begins with.
enum class Note { clip_name, file, effect, locator, freeze, reel, rate, key };

struct NoteHead {
    std::string_view text;
    Note note;
    std::optional<Part> part; ///< nothing: the clip that was named last
};

constexpr NoteHead note_heads[] = {
    {"FROM CLIP NAME:", Note::clip_name, Part::from}, {"TO CLIP NAME:", Note::clip_name, Part::to},
    {"KEY CLIP NAME:", Note::clip_name, Part::key},   {"SOURCE FILE:", Note::file, std::nullopt},
    {"FROM FILE:", Note::file, Part::from},           {"TO FILE:", Note::file, Part::to},
    {"FROM CLIP:", Note::file, Part::from},           {"TO CLIP:", Note::file, Part::to},
    {"EFFECT NAME:", Note::effect, std::nullopt},     {"EFFECTS NAME IS", Note::effect, std::nullopt},
    {"AVX2 EFFECT,", Note::effect, std::nullopt},     {"LOC:", Note::locator, std::nullopt},
    {"FREEZE FRAME", Note::freeze, std::nullopt},     {"FINAL CUT PRO REEL:", Note::reel, std::nullopt},
    {"FRAME RATE:", Note::rate, std::nullopt},        {"KEY NUMBER:", Note::key, std::nullopt},
};

std::string_view without_stars(std::string_view text) {
    while (!text.empty() && text.front() == '*')
        text = trimmed(text.substr(1));
    return text;
}

bool reels_agree(std::string_view shorter, std::string_view longer) {
    if (shorter.size() > longer.size()) std::swap(shorter, longer);
    return !shorter.empty() && ascii::begins(longer, shorter);
}

Part part_of(const Event& event, const EventLine& line) {
    if (line.type == EditType::key || line.type == EditType::key_out) return Part::key;
    return line.transition() && event.lines.size() > 1 ? Part::to : Part::from;
}

class ListParser {
public:
    explicit ListParser(EventList& list) : list_(list) {}

    void read(const Line& line);
    void finish();

private:
    using Lines = std::vector<EventLine*>;

    void warn(int line, std::string text, embedded::WarningKind kind = embedded::WarningKind::dropped) {
        list_.warnings.push_back({line, std::move(text), kind});
    }
    void not_understood(const Line& line) { warn(line.number, "not understood: " + quoted(line.text)); }
    Event* event() { return open_ ? &list_.events.back() : nullptr; }

    void read_title(const Line& line);
    void read_frame_code(const Line& line);
    void read_split(const Line& line);
    void read_event(const Line& line);
    void read_speed(const Line& line);
    void read_sound_channels(const Line& line);
    void read_comment(const Line& line);

    void note_timecodes(EventLine& made);
    void take_split(Event& event);
    Lines lines_for_speed(std::string_view reel, const std::optional<Timecode>& at);
    // Each good until the next is asked for.
    const Lines& lines_of(Part part, bool unnamed_only);
    const Lines& to_name(Part part);
    const Lines& spoken_of(const std::optional<Part>& part);
    void take_note(const NoteHead& head, std::string_view text, const Line& line);
    void name_clip(Part part, std::string_view name);
    void take_effect(std::string_view name);
    void take_locator(std::string_view text, const Line& line);
    void take_real_reel(std::string_view text, const Line& line);
    void take_rate(std::string_view text, const Line& line);
    void take_key_number(std::string_view text, bool strict);
    void take_cycled_key(std::string_view text, const Line& line);
    void take_key(const KeyNumber& key);

    EventList& list_;
    Words words_;           ///< of the event's line in hand
    Lines lines_;           ///< those that were asked for last
    bool open_ = false;     ///< comments still belong to the last event
    bool going_on_ = false; ///< so does a line of its number, behind a split too
    bool drop_ = false;     ///< the frame code mode in force
    bool titled_ = false;
    int split_line_ = 0; ///< of a split that waits for its event
    std::optional<Timecode> picture_delay_, sound_delay_;
    std::optional<Part> named_; ///< what the last naming comment spoke of
};

void ListParser::read(const Line& line) {
    try {
        switch (kind_of(line.text)) {
        case LineKind::blank:
            return;
        case LineKind::title:
            return read_title(line);
        case LineKind::fcm:
            return read_frame_code(line);
        case LineKind::split:
            return read_split(line);
        case LineKind::event:
            return read_event(line);
        case LineKind::speed:
            return read_speed(line);
        case LineKind::audio:
            return read_sound_channels(line);
        case LineKind::comment:
            return read_comment(line);
        case LineKind::unknown:
            return not_understood(line);
        }
    } catch (const BadLine& bad) {
        warn(line.number, bad.reason);
    }
}

void ListParser::finish() {
    if (split_line_ != 0) warn(split_line_, "a split that no event follows");
}

void ListParser::read_title(const Line& line) {
    const std::string_view title = *behind(line.text, "TITLE:");
    if (titled_) return warn(line.number, "a second title, left out: " + quoted(title));
    titled_ = true;
    list_.title = title;
}

void ListParser::read_frame_code(const Line& line) {
    const std::string_view mode = *behind(line.text, "FCM:");
    const bool off = ascii::begins(mode, "NON") || ascii::same(mode, "NDF");
    const bool on = !off && (ascii::begins(mode, "DROP") || ascii::same(mode, "DF"));
    if (!on && !off) return not_understood(line);
    drop_ = on;
    if (on && list_.drop_line == 0) list_.drop_line = line.number;
    if (list_.events.empty()) list_.record_drop = on;
}

void ListParser::read_split(const Line& line) {
    bool understood = false;
    const std::pair<const char*, std::optional<Timecode>*> delays[] = {{"AUDIO DELAY=", &sound_delay_},
                                                                       {"VIDEO DELAY=", &picture_delay_}};
    for (const auto& [head, delay] : delays) {
        const std::size_t at = ascii::find(line.text, head);
        if (at == std::string_view::npos) continue;
        const Words words = words_of(line.text.substr(at + std::string_view(head).size()));
        if (!words.empty()) *delay = parse_timecode(words.front());
        understood = delay->has_value();
        if (understood) list_.largest_frames = std::max(list_.largest_frames, (*delay)->frames);
    }
    if (!understood) return not_understood(line);
    split_line_ = line.number;
    open_ = false;
}

void ListParser::note_timecodes(EventLine& made) {
    made.source_drop = drop_ || made.source_in.marked_drop || made.source_out.marked_drop;
    const bool record_marked = made.record_in.marked_drop || made.record_out.marked_drop;
    if (record_marked) list_.record_drop = true;
    if ((made.source_drop || record_marked) && list_.drop_line == 0) list_.drop_line = made.line;
    for (const Timecode* time : {&made.source_in, &made.source_out, &made.record_in, &made.record_out})
        list_.largest_frames = std::max(list_.largest_frames, time->frames);
}

// A split may stand between the lines of its event.
void ListParser::take_split(Event& event) {
    if (picture_delay_) event.picture_delay = std::exchange(picture_delay_, std::nullopt);
    if (sound_delay_) event.sound_delay = std::exchange(sound_delay_, std::nullopt);
    split_line_ = 0;
}

// A line that can't be read closes the event before it too: the comments below aren't that one's.
void ListParser::read_event(const Line& line) {
    split_words(line.text, words_);
    const std::string_view number = words_.front();
    const bool same = going_on_ && list_.events.back().number == number;
    named_.reset();
    open_ = going_on_ = false;
    EventLine made = parse_event_line(line, words_);
    note_timecodes(made);
    if (!same) list_.events.emplace_back().number = number;
    take_split(list_.events.back());
    open_ = going_on_ = true;
    list_.events.back().lines.push_back(std::move(made));
}

ListParser::Lines ListParser::lines_for_speed(std::string_view reel, const std::optional<Timecode>& at) {
    Lines exact, same_reel, alike;
    for (EventLine& line : event()->lines) {
        const bool same = ascii::same(line.reel, reel);
        if (same && at && line.source_in == *at) exact.push_back(&line);
        if (same) same_reel.push_back(&line);
        if (reels_agree(line.reel, reel)) alike.push_back(&line);
    }
    // Two lines from one place have a speed each, in their order.
    if (std::all_of(exact.begin(), exact.end(), [](const EventLine* line) { return line->speed.has_value(); }))
        exact.erase(exact.begin(), exact.end() - std::min<std::ptrdiff_t>(1, std::ssize(exact)));
    return !exact.empty() ? exact : !same_reel.empty() ? same_reel : alike;
}

void ListParser::read_speed(const Line& line) {
    Words words = words_of(line.text);
    std::optional<Timecode> at;
    if (words.size() > 2) at = parse_timecode(words.back());
    if (at) words.pop_back();
    std::optional<Fraction> speed = words.size() > 1 ? parse_speed(words.back()) : std::nullopt;
    if (!speed) return not_understood(line);
    const std::string_view sign = words.size() > 3 ? words[words.size() - 2] : "";
    if (sign == "-" || sign == "+") {
        if (sign == "-") speed = -*speed;
        words.erase(words.end() - 2);
    }
    if (!event()) return warn(line.number, "a speed that belongs to no event: " + quoted(line.text));
    std::string reel;
    for (std::size_t i = 1; i + 1 < words.size(); ++i)
        reel += (reel.empty() ? "" : " ") + std::string(words[i]);
    const Lines lines = lines_for_speed(reel, at);
    if (lines.empty()) return warn(line.number, "a speed for reel " + quoted(reel) + ", which the event doesn't use");
    for (EventLine* one : lines)
        one->speed = *speed;
    if (at && !(lines.front()->source_in == *at))
        warn(line.number, "a speed from another timecode than the event's source in, which counts",
             embedded::WarningKind::doubt);
}

void ListParser::read_sound_channels(const Line& line) {
    constexpr int most_channels = 64;
    if (!event()) return warn(line.number, "sound channels that belong to no event");
    const Words words = words_of(line.text);
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::optional<int> channel = whole_number(words[i]);
        if (!channel || *channel < 1 || *channel > most_channels)
            throw BadLine{quoted(words[i]) + " is no sound channel"};
        for (EventLine& one : event()->lines)
            one.channels.sound.insert(*channel);
    }
}

void ListParser::read_comment(const Line& line) {
    const std::string_view text = without_stars(line.text);
    for (const NoteHead& head : note_heads)
        if (const auto rest = behind(text, head.text)) return take_note(head, *rest, line);
    take_key_number(text, false);
}

const ListParser::Lines& ListParser::lines_of(Part part, bool unnamed_only) {
    lines_.clear();
    if (!event()) return lines_;
    for (EventLine& line : event()->lines)
        if (part_of(*event(), line) == part && (!unnamed_only || line.name.empty())) lines_.push_back(&line);
    return lines_;
}

// The only line of an event may be what it goes to as well as what it comes from.
const ListParser::Lines& ListParser::to_name(Part part) {
    if (lines_of(part, true).empty()) lines_of(part, false);
    if (lines_.empty() && event() && part != Part::from && event()->lines.size() == 1)
        lines_.push_back(&event()->lines.back());
    return lines_;
}

const ListParser::Lines& ListParser::spoken_of(const std::optional<Part>& part) {
    const std::optional<Part> asked = part ? part : named_;
    lines_.clear();
    if (!event()) return lines_;
    if (asked)
        lines_of(*asked, false);
    else
        lines_.push_back(&event()->lines.back());
    if (lines_.empty() && event()->lines.size() == 1) lines_.push_back(&event()->lines.back());
    return lines_;
}

void ListParser::take_note(const NoteHead& head, std::string_view text, const Line& line) {
    if (head.note == Note::rate) return take_rate(text, line);
    if (!event()) return;
    switch (head.note) {
    case Note::clip_name:
        return name_clip(*head.part, text);
    case Note::file:
        for (EventLine* one : spoken_of(head.part))
            if (!text.empty()) one->file = text;
        return;
    case Note::effect:
        return take_effect(text);
    case Note::locator:
        return take_locator(text, line);
    case Note::freeze:
        for (EventLine* one : spoken_of(std::nullopt))
            one->freeze = true;
        return;
    case Note::reel:
        return take_real_reel(text, line);
    case Note::key:
        return take_cycled_key(text, line);
    case Note::rate:
        return;
    }
}

void ListParser::name_clip(Part part, std::string_view name) {
    named_ = part;
    if (name.empty()) return;
    for (EventLine* line : to_name(part))
        line->name = name;
    take_key_number(name, true);
}

void ListParser::take_effect(std::string_view name) {
    if (name.empty()) return;
    EventLine& last = event()->lines.back();
    const auto moves = [](const EventLine& line) { return line.transition(); };
    if (std::any_of(event()->lines.begin(), event()->lines.end(), moves))
        event()->transition_name = name;
    else
        last.effects.emplace_back(name);
}

// "01:00:01:14 RED     TEXT"; a mark without a text goes by its colour.
void ListParser::take_locator(std::string_view text, const Line& line) {
    const Words words = words_of(text);
    const std::optional<Timecode> at = words.empty() ? std::nullopt : parse_timecode(words.front());
    if (!at) return not_understood(line);
    list_.largest_frames = std::max(list_.largest_frames, at->frames);
    std::string_view rest = trimmed(text.substr(words.front().size()));
    if (words.size() > 2) rest = trimmed(rest.substr(words[1].size()));
    event()->locators.push_back({line.number, *at, std::string(rest)});
    const bool of_first_frame = std::any_of(event()->lines.begin(), event()->lines.end(),
                                            [&](const EventLine& one) { return one.record_in == *at; });
    if (of_first_frame)
        take_key_number(rest, false);
    else if (find_key_number(rest, false))
        warn(line.number, "a key number of a frame inside of the event isn't read", embedded::WarningKind::doubt);
}

// "A001C002_long REPLACED BY: A001C002"
void ListParser::take_real_reel(std::string_view text, const Line& line) {
    constexpr std::string_view parting = "REPLACED BY:";
    const std::size_t at = ascii::find(text, parting);
    if (at == std::string_view::npos) return;
    const std::string_view real = trimmed(text.substr(0, at));
    const std::string_view used = trimmed(text.substr(at + parting.size()));
    bool known = false;
    for (EventLine& one : event()->lines) {
        if (!ascii::same(one.reel, used) || real.empty()) continue;
        one.real_reel = real;
        known = true;
    }
    if (!known) warn(line.number, "reel " + quoted(used) + " isn't one of the event's; its full name isn't taken");
}

void ListParser::take_rate(std::string_view text, const Line& line) {
    const Words words = words_of(text);
    double rate = 0;
    if (!words.empty()) decimal::read(words[0].data(), words[0].data() + words[0].size(), rate);
    if (!(rate > 0)) return not_understood(line);
    if (!list_.rate) list_.rate = rate;
}

void ListParser::take_key_number(std::string_view text, bool strict) {
    if (const std::optional<KeyNumber> key = find_key_number(text, strict)) take_key(*key);
}

// "KJ1234560100+05 35mm-4p CYCLE FROM 01:00:02:08"
void ListParser::take_cycled_key(std::string_view text, const Line& line) {
    std::optional<KeyNumber> key = find_key_number(text, false);
    if (!key) return;
    const Words words = words_of(text);
    const std::size_t count = words.size();
    if (count > 3 && ascii::same(words[count - 3], "CYCLE") && ascii::same(words[count - 2], "FROM")) {
        key->cycle = parse_timecode(words.back());
        if (!key->cycle) return not_understood(line);
        list_.largest_frames = std::max(list_.largest_frames, key->cycle->frames);
    }
    take_key(*key);
}

void ListParser::take_key(const KeyNumber& key) {
    if (!event()) return;
    for (EventLine* line : spoken_of(std::nullopt))
        if (!line->key) line->key = key;
}

} // namespace

EventList parse_list(std::string_view bytes) {
    EventList list;
    ListParser parser(list);
    const std::vector<Line> lines = split_lines(bytes);
    // Most events have a line of their own and one that names them.
    constexpr std::size_t most_reserved = 10000;
    list.events.reserve(std::min(lines.size() / 2, most_reserved));
    for (const Line& line : lines)
        parser.read(line);
    parser.finish();
    return list;
}

} // namespace formats::edl
