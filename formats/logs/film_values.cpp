#include "formats/logs/film_values.h"

#include "formats/key_number.h"
#include "formats/text_lines.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>

namespace formats {
namespace {

constexpr std::size_t ink_prefix_length = 4;
constexpr std::size_t ink_count_length = 4;
constexpr std::size_t fewest_count_digits = 4;
constexpr int mid_foot_perforations = 32;
constexpr int perforations_of_35mm_count = 64;
constexpr int longest_length = 10'000'000; // film frames, for lengths that come as text

using ascii::is_capital;
using ascii::is_digit;

bool is_alphanumeric(char c) { return is_digit(c) || is_capital(c); }

struct FilmKind {
    int gauge; ///< millimetres
    int perforations;
    label_t kind;
};

// The first of each gauge is what the gauge alone means.
constexpr FilmKind film_kinds[] = {
    {35, 4, label_key_35mm_4p},        {35, 3, static_cast<label_t>(12)},  {35, 2, static_cast<label_t>(34)},
    {35, 8, static_cast<label_t>(35)}, {16, 1, static_cast<label_t>(11)},  {65, 5, static_cast<label_t>(39)},
    {65, 8, static_cast<label_t>(40)}, {65, 10, static_cast<label_t>(41)}, {65, 15, static_cast<label_t>(42)},
};

/// The next number of the text from `at` on, which moves behind it; -1 where there is none.
int next_number(std::string_view text, std::size_t& at) {
    while (at < text.size() && !is_digit(text[at]))
        ++at;
    if (at == text.size()) return -1;
    int number = -1;
    const char* end = text.data() + text.size();
    at = static_cast<std::size_t>(std::from_chars(text.data() + at, end, number).ptr - text.data());
    return number;
}

label_t kind_of(int gauge, int perforations) {
    for (const FilmKind& film : film_kinds)
        if (film.gauge == gauge && (perforations == -1 || film.perforations == perforations)) return film.kind;
    return label_none;
}

/// "KJ1234567890+12.1" in its parts. The frames and perforation are empty where the number names none.
struct KeyParts {
    std::string_view head, frames, perforation;
};

KeyParts parts_of(std::string_view plain) {
    const std::size_t sign = plain.find('+');
    if (sign == std::string_view::npos) return {plain, {}, {}};
    const std::size_t dot = std::min(plain.find('.', sign), plain.size());
    return {plain.substr(0, sign), plain.substr(sign + 1, dot - sign - 1),
            plain.substr(std::min(dot + 1, plain.size()))};
}

int number_of(std::string_view digits) {
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

/// Letters and at least as many digits as a count has.
bool is_head(std::string_view head) {
    const auto digits = std::find_if(head.begin(), head.end(), is_digit);
    return digits != head.begin() && static_cast<std::size_t>(head.end() - digits) >= fewest_count_digits &&
           std::all_of(head.begin(), digits, is_capital) && std::all_of(digits, head.end(), is_digit);
}

std::string first_digits(std::string_view text) {
    const auto begin = std::find_if(text.begin(), text.end(), is_digit);
    const auto end = std::find_if_not(begin, text.end(), is_digit);
    return {begin, end};
}

bool read_point(const std::string& text, label_t kind, LabelPoint& point) {
    point = LabelPoint();
    point.set_type(kind);
    point.set_sample(text.c_str());
    return point.is_useful() != 0;
}

/// What the frames behind the count are, once the number has been read.
FilmNumber judge_frames(int frames, const LabelPoint& point, LabelPoint& mid_foot) {
    const int in_count = point.cvt()->samples_per_count();
    const int in_frame = point.cvt()->samples_per_frame();
    const int longest = in_count % in_frame == 0 ? in_count : in_count + in_frame - 1;
    if (frames * in_frame < longest) return FilmNumber::good;
    if (frames != mid_foot_perforations || in_count != perforations_of_35mm_count || frames % in_frame != 0)
        return FilmNumber::beyond_count;
    mid_foot = point;
    mid_foot -= frames * in_frame - frames;
    return FilmNumber::mid_foot;
}

} // namespace

label_t film_kind_of_text(std::string_view text) {
    const std::string plain(without_blanks_around(text));
    if (const label_t known = edlstr_to_label_type(plain.c_str(), user_label_key)) return known;
    std::size_t at = 0;
    const int first = next_number(plain, at);
    if (first == 16) return kind_of(first, -1);
    if (first == 35 || first == 65) return kind_of(first, next_number(plain, at));
    const bool names_perforations = ascii::holds(plain, "perf");
    if (names_perforations) return kind_of(35, first);
    return ascii::same(plain, "vistavision") ? kind_of(35, 8) : label_none;
}

FilmNumber read_key_number(std::string_view text, std::string_view perforation, label_t kind, LabelPoint& point) {
    point = LabelPoint();
    if (without_blanks_around(text).empty()) return FilmNumber::empty;
    const std::string plain = plain_key_number(text);
    const KeyParts parts = parts_of(plain);
    if (!is_head(parts.head)) return FilmNumber::bad;
    const std::string bare = std::string(parts.head) + "+" + (parts.frames.empty() ? "0" : std::string(parts.frames));
    const std::string dot = parts.perforation.empty() ? first_digits(perforation) : std::string(parts.perforation);
    if (!dot.empty() && !read_point(bare + "." + dot, kind, point))
        return read_point(bare, kind, point) ? FilmNumber::bad_perforation : FilmNumber::bad;
    if (dot.empty() && !read_point(bare, kind, point)) return FilmNumber::bad;
    LabelPoint mid_foot = point;
    const FilmNumber outcome = judge_frames(number_of(parts.frames), point, mid_foot);
    point = mid_foot;
    return outcome;
}

std::string plain_ink_number(std::string_view text) {
    const std::string plain = plain_key_number(text);
    const KeyParts parts = parts_of(plain);
    if (!std::all_of(parts.head.begin(), parts.head.end(), is_alphanumeric)) return {};
    const std::size_t letter = parts.head.find_last_not_of("0123456789");
    const std::size_t first_digit = letter == std::string_view::npos ? 0 : letter + 1;
    if (first_digit == parts.head.size()) return {};
    const std::size_t digits = std::min(parts.head.size() - first_digit, ink_count_length);
    std::string prefix(parts.head.substr(0, parts.head.size() - digits));
    if (prefix.size() > ink_prefix_length) return {};
    if (!prefix.empty()) prefix.resize(ink_prefix_length, '_');
    const std::string count(parts.head.substr(parts.head.size() - digits));
    const std::string frames = parts.frames.empty() ? "00" : std::string(parts.frames);
    return prefix + count + (frames.size() < 2 ? "+0" : "+") + frames;
}

int film_length(std::string_view text, label_t kind) {
    const std::string plain(without_blanks_around(text));
    if (plain.empty() || !is_digit(plain.front())) return -1;
    const bool frames_alone = std::all_of(plain.begin(), plain.end(), is_digit);
    if (frames_alone) return plain.size() > 7 ? -1 : number_of(plain);
    LabelPoint length;
    if (!read_point(plain, label_t_to_foot_label_t(kind), length)) return -1;
    const int frames = length.sample / length.cvt()->samples_per_frame();
    return frames < 0 || frames > longest_length ? -1 : frames;
}

int pulldown_phase(std::string_view text) {
    constexpr std::string_view phases = "abxcd";
    for (const char c : lower_case(without_blanks_around(text))) {
        const std::size_t phase = phases.find(c);
        if (phase != std::string_view::npos) return static_cast<int>(phase);
        if (c != '1' && c != '2') return -1;
    }
    return -1;
}

bool says_pulldown(std::string_view text) {
    return !text.empty() && std::string_view("Yy1").find(text[0]) != std::string_view::npos;
}

bool says_no_pulldown(std::string_view text) {
    return !text.empty() && std::string_view("Nn0").find(text[0]) != std::string_view::npos;
}

bool says_nothing(std::string_view text) {
    constexpr std::string_view nothings[] = {"n/a", "na", "none", "nil", "null", "unknown"};
    if (std::all_of(text.begin(), text.end(), [](char c) { return c == '-' || c == '.' || c == '?' || c == '*'; }))
        return true;
    return std::any_of(std::begin(nothings), std::end(nothings),
                       [&](std::string_view nothing) { return ascii::same(text, nothing); });
}

} // namespace formats
