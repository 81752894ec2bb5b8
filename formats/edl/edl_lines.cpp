#include "formats/edl/edl_lines.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <array>

namespace formats::edl {
namespace {

constexpr std::array<bool, 256> make_blanks() {
    std::array<bool, 256> blanks{};
    for (std::size_t byte = 0; byte < blanks.size(); ++byte)
        blanks[byte] = byte <= ' ' || byte == 0x7F;
    return blanks;
}

constexpr std::array<bool, 256> all_blanks = make_blanks();

bool is_blank(char c) { return all_blanks[static_cast<unsigned char>(c)]; }

struct Head {
    std::string_view text;
    LineKind kind;
    bool whole_word; ///< what follows must be a blank or nothing
};

constexpr Head heads[] = {
    {"TITLE:", LineKind::title, false},
    {"FCM:", LineKind::fcm, false},
    {"SPLIT:", LineKind::split, false},
    {"M2", LineKind::speed, true},
    {"AUD", LineKind::audio, true},
    {"*", LineKind::comment, false},
    {">>>", LineKind::comment, false},
    {"REM", LineKind::comment, true},
    {"EFFECTS NAME IS", LineKind::comment, true},
    {"FINAL CUT PRO REEL:", LineKind::comment, false},
    {"FROM CLIP", LineKind::comment, false},
    {"TO CLIP", LineKind::comment, false},
    {"KEY CLIP", LineKind::comment, false},
    {"SOURCE FILE:", LineKind::comment, false},
    {"FRAME RATE:", LineKind::comment, false},
};

bool begins_with(std::string_view text, const Head& head) {
    if (!ascii::begins(text, head.text)) return false;
    return !head.whole_word || text.size() == head.text.size() || is_blank(text[head.text.size()]);
}

std::string_view without_byte_order_mark(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return bytes.substr(0, mark.size()) == mark ? bytes.substr(mark.size()) : bytes;
}

} // namespace

bool all_digits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), ascii::is_digit);
}

std::optional<int> whole_number(std::string_view text) {
    constexpr std::size_t most_digits = 9;
    if (!all_digits(text) || text.size() > most_digits) return std::nullopt;
    int value = 0;
    for (const char c : text)
        value = value * 10 + (c - '0');
    return value;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

Words words_of(std::string_view text) {
    Words words;
    split_words(text, words);
    return words;
}

void split_words(std::string_view text, Words& words) {
    constexpr std::size_t words_of_an_event = 10;
    words.clear();
    words.reserve(words_of_an_event);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data();;) {
        while (at != end && is_blank(*at))
            ++at;
        if (at == end) return;
        const char* const start = at;
        while (at != end && !is_blank(*at))
            ++at;
        words.emplace_back(start, static_cast<std::size_t>(at - start));
    }
}

std::optional<std::string_view> behind(std::string_view text, std::string_view head) {
    if (!ascii::begins(text, head)) return std::nullopt;
    return trimmed(text.substr(head.size()));
}

LineReader::LineReader(std::string_view bytes) : bytes_(without_byte_order_mark(bytes)), ends_(bytes_) {}

bool LineReader::next(Line& line) {
    if (begin_ >= bytes_.size()) return false;
    const std::size_t end = ends_.end_of_line(begin_);
    line = {++number_, trimmed(bytes_.substr(begin_, end - begin_))};
    begin_ = ends_.behind(end);
    return true;
}

std::vector<Line> split_lines(std::string_view bytes) {
    constexpr std::size_t usual_line = 50;
    std::vector<Line> lines;
    lines.reserve(bytes.size() / usual_line);
    LineReader reader(bytes);
    for (Line line; reader.next(line);)
        lines.push_back(line);
    return lines;
}

LineKind kind_of(std::string_view line) {
    if (line.empty()) return LineKind::blank;
    if (ascii::is_digit(line.front())) return LineKind::event;
    for (const Head& head : heads)
        if (begins_with(line, head)) return head.kind;
    return LineKind::unknown;
}

} // namespace formats::edl
