#include "formats/edl/edl_event.h"

#include "host/ascii_text.h"

namespace formats::edl {
namespace {

constexpr int most_picture_tracks = 32;

bool read_two_digits(std::string_view text, std::size_t at, int& number) {
    number = (text[at] - '0') * 10 + (text[at + 1] - '0');
    return ascii::is_digit(text[at]) && ascii::is_digit(text[at + 1]);
}

/// Reads a channel text from left to right.
class ChannelReader {
public:
    explicit ChannelReader(std::string_view text) : rest_(text) {}

    std::optional<Channels> read() {
        while (!rest_.empty())
            if (!step()) return std::nullopt;
        return channels_;
    }

private:
    bool step() {
        const char letter = ascii::upper(rest_.front());
        rest_.remove_prefix(1);
        switch (letter) {
        case '/':
            return true;
        case 'B':
            channels_.picture.insert(1);
            channels_.sound.insert(1);
            return true;
        case 'V':
            return picture(digits());
        case 'A':
            return sound();
        default:
            return false;
        }
    }

    std::string_view digits() {
        std::size_t count = 0;
        while (count < rest_.size() && ascii::is_digit(rest_[count]))
            ++count;
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    bool picture(std::string_view number) {
        const int track = number.empty() ? 1 : whole_number(number).value_or(0);
        if (track < 1 || track > most_picture_tracks) return false;
        channels_.picture.insert(track);
        return true;
    }

    bool sound() {
        if (!rest_.empty() && (rest_.front() == 'A' || rest_.front() == 'a')) {
            rest_.remove_prefix(1);
            channels_.sound.insert(1);
            channels_.sound.insert(2);
            return true;
        }
        return sound_numbers(digits());
    }

    // "A12" is channel 12, "A34" channels 3 and 4, "A1234" channels 1 to 4.
    bool sound_numbers(std::string_view numbers) {
        if (numbers.empty()) channels_.sound.insert(1);
        const bool one = numbers.size() == 2 && numbers[0] == '1' && numbers[1] <= '6';
        if (one) channels_.sound.insert(*whole_number(numbers));
        for (const char c : one ? std::string_view() : numbers) {
            if (c == '0') return false;
            channels_.sound.insert(c - '0');
        }
        return true;
    }

    std::string_view rest_;
    Channels channels_;
};

bool is_word(const Words& words, std::size_t at, std::string_view text) {
    return at < words.size() && ascii::same(words[at], text);
}

int transition_frames(std::string_view text) {
    const std::optional<int> frames = whole_number(text);
    if (!frames) throw BadLine{quoted(text) + " is no length of a transition"};
    return *frames;
}

struct TypeWord {
    std::string_view word;
    EditType type;
    bool has_length;
};

constexpr TypeWord type_words[] = {
    {"C", EditType::cut, false},     {"D", EditType::dissolve, true}, {"KB", EditType::key_background, false},
    {"KO", EditType::key_out, true}, {"K", EditType::key, true},
};

bool read_wipe(EventLine& event, std::string_view word) {
    if (word.size() < 2 || word.size() > 4 || (word[0] != 'W' && word[0] != 'w')) return false;
    const std::optional<int> code = whole_number(word.substr(1));
    if (!code) return false;
    event.type = EditType::wipe;
    event.wipe_code = *code;
    return true;
}

bool read_type_word(EventLine& event, std::string_view word, bool has_length) {
    if (has_length && read_wipe(event, word)) return true;
    for (const TypeWord& known : type_words) {
        // A key without its length has none; a cut may carry zeros.
        if (!ascii::same(word, known.word)) continue;
        if (known.has_length && !has_length && known.type != EditType::key)
            throw BadLine{"the " + std::string(word) + " has no length"};
        event.type = known.type;
        return true;
    }
    return false;
}

/// Takes the edit type off the end of the words between the number and the timecodes.
void take_type(EventLine& event, Words& words) {
    if (words.empty()) throw BadLine{"too few fields for an event"};
    bool has_length = false;
    if (words.size() > 1 && all_digits(words.back())) {
        event.frames = transition_frames(words.back());
        has_length = true;
        words.pop_back();
    }
    const std::size_t last = words.size() - 1;
    if (last > 0 && is_word(words, last - 1, "K") && (is_word(words, last, "B") || is_word(words, last, "O"))) {
        event.type = is_word(words, last, "B") ? EditType::key_background : EditType::key_out;
        words.resize(last - 1);
        return;
    }
    if (!read_type_word(event, words.back(), has_length))
        throw BadLine{quoted(words.back()) + " is no edit type that is understood"};
    words.pop_back();
}

void take_channels(EventLine& event, Words& words) {
    if (words.empty()) throw BadLine{"an event without channels"};
    const std::optional<Channels> channels = parse_channels(words.back());
    if (!channels) throw BadLine{quoted(words.back()) + " is no channel"};
    event.channels = *channels;
    words.pop_back();
}

std::string joined(const Words& words) {
    std::string text;
    for (const std::string_view word : words) {
        if (!text.empty()) text += ' ';
        text += word;
    }
    return text;
}

bool is_separator(char c) { return c == ':' || c == ';' || c == '.' || c == ','; }

} // namespace

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string result = "\"";
    for (const char c : text.substr(0, longest))
        result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    return result + (text.size() > longest ? "...\"" : "\"");
}

std::optional<Timecode> parse_timecode(std::string_view text) {
    Timecode time;
    const bool digits = text.size() == 11 && read_two_digits(text, 0, time.hours) &&
                        read_two_digits(text, 3, time.minutes) && read_two_digits(text, 6, time.seconds) &&
                        read_two_digits(text, 9, time.frames);
    if (!digits || !is_separator(text[2]) || !is_separator(text[5]) || !is_separator(text[8])) return std::nullopt;
    time.marked_drop = text[2] == ';' || text[5] == ';' || text[8] == ';';
    if (time.hours > 23 || time.minutes > 59 || time.seconds > 59) return std::nullopt;
    return time;
}

std::optional<Channels> parse_channels(std::string_view text) {
    if (ascii::same(text, "NONE")) return Channels{};
    return ChannelReader(text).read();
}

EventLine parse_event_line(const Line& line, Words& words) {
    constexpr std::size_t times = 4;
    if (!all_digits(words.front())) throw BadLine{"not understood: " + quoted(line.text)};
    if (words.size() < times + 3) throw BadLine{"too few fields for an event: " + quoted(line.text)};
    EventLine event;
    event.line = line.number;
    Timecode* const fields[times] = {&event.source_in, &event.source_out, &event.record_in, &event.record_out};
    for (std::size_t i = 0; i < times; ++i) {
        const std::string_view word = words[words.size() - times + i];
        const std::optional<Timecode> time = parse_timecode(word);
        if (!time) throw BadLine{quoted(word) + " is no timecode"};
        *fields[i] = *time;
    }
    words.resize(words.size() - times);
    words.erase(words.begin());
    take_type(event, words);
    take_channels(event, words);
    event.reel = joined(words);
    return event;
}

} // namespace formats::edl
