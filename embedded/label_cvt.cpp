// The converters between samples and texts, one for each kind of label.

#include "embedded/clamped.h"
#include "embedded/label_kinds.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace embedded {
namespace {

using wide = std::int64_t;

constexpr std::size_t longest_text = 40;
constexpr std::array<std::uint32_t, 7> powers_of_ten = {1, 10, 100, 1000, 10000, 100000, 1000000};
/// Above every count that a sample can reach, and far below where a count times its samples would overflow.
constexpr wide count_limit = 10'000'000'000;

/// Of digits and nothing else; nothing where there are none, or where the number is out of all reach.
std::optional<wide> number_of(std::string_view text) {
    if (text.empty()) return std::nullopt;
    wide number = 0;
    for (const char c : text) {
        if (!ascii::is_digit(c)) return std::nullopt;
        number = number * 10 + (c - '0');
        if (number > count_limit) return std::nullopt;
    }
    return number;
}

constexpr auto make_pairs() {
    std::array<char[2], 100> pairs{};
    for (std::size_t number = 0; number < pairs.size(); ++number) {
        pairs[number][0] = static_cast<char>('0' + number / 10);
        pairs[number][1] = static_cast<char>('0' + number % 10);
    }
    return pairs;
}
constexpr auto pairs_of_digits = make_pairs();

/// Of a number below 100.
void put_two_digits(char* out, std::uint32_t number) { std::memcpy(out, pairs_of_digits[number], 2); }

/// With leading zeros up to `digits`; the end of what it wrote. Much quicker than `printf`, and tables are full of
/// such texts.
char* put_number(char* out, std::uint32_t number, int digits) {
    for (std::uint64_t power = powers_of_ten[static_cast<std::size_t>(digits)]; number >= power; power *= 10)
        ++digits;
    for (int at = digits - 2; at >= 0; at -= 2, number /= 100)
        put_two_digits(out + at, number % 100);
    if (digits % 2 == 1) *out = static_cast<char>('0' + number);
    return out + digits;
}

bool fits_int(wide value) { return value == clamp_to_int(value); }

/// One or two digits and nothing else; -1 for anything else.
int short_number(std::string_view text) {
    if (text.empty() || text.size() > 2) return -1;
    const char tens = text.size() == 2 ? text.front() : '0', ones = text.back();
    return ascii::is_digit(tens) && ascii::is_digit(ones) ? (tens - '0') * 10 + (ones - '0') : -1;
}

wide remainder(wide value, wide divisor) { return ((value % divisor) + divisor) % divisor; }

wide magnitude(int sample) { return std::llabs(wide(sample)); }

/// What all converters share: the figures of their kind.
class kind_cvt : public label_cvt {
public:
    explicit kind_cvt(const LabelKind& kind) : kind_(kind) {}

    label_t label_type() const override { return kind_.type; }
    int prefix_length() const override { return kind_.prefix_length; }
    int count_digits() const override { return kind_.digits; }
    int samples_per_count() const override { return kind_.samples_per_count; }
    int samples_per_frame() const override { return kind_.samples_per_frame; }

    // Of a point without a kind: no text.
    void format(int, const char*, char* out, unsigned size) const override { write(out, size, ""); }
    bool parse(const char*, int&, char*) const override { return false; }

protected:
    static void write(char* out, unsigned size, std::string_view text) {
        if (size > 0) put_text(out, size, text);
    }
    const LabelKind& kind() const { return kind_; }

private:
    const LabelKind& kind_;
};

// Key, ink and foot numbers. A frame's text names the last count whose dot lies in the frame or before it:
//
//      perforations   . . o . | . . . . | . . . . | . . o .      o dot of a count, | frame line
//      frame            +00       +01       +02       +00        dot on perforation 3 of its frame
//
class film_cvt : public kind_cvt {
public:
    using kind_cvt::kind_cvt;

    void format(int sample, const char* prefix, char* out, unsigned size) const override {
        const wide in_count = kind().samples_per_count;
        const wide in_frame = kind().samples_per_frame;
        const wide s = magnitude(sample);
        const wide count = (s + in_frame - 1) / in_count;
        const wide ahead = in_count * count - s; // of the dot, less than a frame; below 0 frames lie between
        const wide frames = ahead < 0 ? (in_frame - 1 - ahead) / in_frame : 0;
        const wide dot = ahead + in_frame * frames + 1;

        char text[longest_text];
        char* end = std::copy_n(prefix, ::strnlen(prefix, longest_prefix), text);
        end = put_number(end, static_cast<std::uint32_t>(count), kind().digits);
        *end++ = sample < 0 ? '-' : '+';
        end = put_number(end, static_cast<std::uint32_t>(frames), 2);
        if (shows_dot(count, dot)) {
            *end++ = '.';
            end = put_number(end, static_cast<std::uint32_t>(dot), 1);
        }
        write(out, size, std::string_view(text, static_cast<std::size_t>(end - text)));
    }

    bool parse(const char* text, int& sample, char* prefix) const override {
        const std::string_view whole(text);
        const Tail tail = read_tail(whole);
        const Head head = read_head(whole.substr(0, tail.begins));
        const std::optional<wide> count = number_of(head.count);
        if (!count) return false;
        const wide dot = tail.dot == no_dot ? usual_dot(*count) : tail.dot;
        if (dot < 1 || dot > kind().samples_per_frame) return false;
        wide value = kind().samples_per_count * *count + wide(kind().samples_per_frame) * tail.frames - (dot - 1);
        if (tail.negative) value = -value;
        if (!fits_int(value)) return false;
        sample = static_cast<int>(value);
        put_text(prefix, static_cast<std::size_t>(kind().prefix_length) + 1, head.prefix);
        return true;
    }

private:
    static constexpr int no_dot = -1;

    /// What stands behind the count: frames, and the perforation of the dot.
    struct Tail {
        std::size_t begins;
        int frames = 0;
        int dot = no_dot;
        bool negative = false;
    };
    struct Head {
        std::string_view prefix;
        std::string_view count;
    };

    /// Where a text doesn't name the dot's perforation. Feet begin on a frame line at 0, so there the dot of
    /// each count has its place; a key number can begin anywhere, and is taken to begin on its dot.
    wide usual_dot(wide count) const {
        if (kind().use != LabelUse::foot) return 1;
        return remainder(kind().samples_per_count * count, kind().samples_per_frame) + 1;
    }
    bool shows_dot(wide count, wide dot) const {
        const bool wanders = kind().samples_per_count % kind().samples_per_frame != 0;
        return (kind().use != LabelUse::foot && wanders) || dot != usual_dot(count);
    }

    static constexpr bool is_sign(char c) { return c == '+' || c == '&' || c == '-'; }

    static Tail read_tail(std::string_view text) {
        const Tail none{text.size()};
        std::size_t sign = text.size(), point = text.size();
        while (sign > 0 && !is_sign(text[sign - 1])) {
            if (text[--sign] == '.') point = sign;
        }
        if (sign-- == 0) return none;
        const bool dotted = point < text.size();
        const int frames = short_number(text.substr(sign + 1, point - sign - 1));
        const int dot = dotted ? short_number(text.substr(point + 1)) : no_dot;
        if (frames < 0 || (dotted && dot < 0)) return none;
        return {sign, frames, dot, text[sign] == '-'};
    }

    Head read_head(std::string_view head) const {
        const auto prefix_size = static_cast<std::size_t>(kind().prefix_length);
        if (head.size() > prefix_size) return {head.substr(0, prefix_size), head.substr(prefix_size)};
        std::size_t begins = head.size();
        const std::size_t most = static_cast<std::size_t>(kind().digits);
        while (begins > 0 && head.size() - begins < most && ascii::is_digit(head[begins - 1]))
            --begins;
        return {head.substr(0, begins), head.substr(begins)};
    }
};

/// A plain count of frames.
class frames_cvt : public kind_cvt {
public:
    using kind_cvt::kind_cvt;

    void format(int sample, const char*, char* out, unsigned size) const override {
        char text[longest_text];
        std::snprintf(text, sizeof text, "%d", sample);
        write(out, size, text);
    }

    bool parse(const char* text, int& sample, char* prefix) const override {
        std::string_view digits(text);
        const bool negative = !digits.empty() && digits.front() == '-';
        if (negative) digits.remove_prefix(1);
        const std::optional<wide> number = number_of(digits);
        if (!number) return false;
        const wide value = negative ? -*number : *number;
        if (!fits_int(value)) return false;
        sample = static_cast<int>(value);
        *prefix = '\0';
        return true;
    }
};

class timecode_cvt : public kind_cvt {
public:
    timecode_cvt(const LabelKind& kind, const TimecodeBase& base) : kind_cvt(kind), base_(base) {}

    void format(int sample, const char*, char* out, unsigned size) const override {
        const int signed_frame = sample % base_.day();
        const int frame = std::abs(signed_frame);
        const auto number = static_cast<std::uint32_t>(frame + skipped_before(frame));
        const auto count = static_cast<std::uint32_t>(base_.count);
        const std::uint32_t seconds = number / count;
        char text[] = "-HH:MM:SS:FF";
        const std::string_view written(text, sizeof text - 1);
        put_two_digits(text + 1, seconds / 3600);
        put_two_digits(text + 4, seconds / 60 % 60);
        put_two_digits(text + 7, seconds % 60);
        if (base_.skipped) text[9] = ';';
        put_two_digits(text + 10, number % count);
        write(out, size, signed_frame < 0 ? written : written.substr(1));
    }

    bool parse(const char* text, int& sample, char* prefix) const override {
        std::string_view figures(text);
        const bool negative = !figures.empty() && figures.front() == '-';
        if (negative) figures.remove_prefix(1);
        int parts[4];
        if (!read_parts(figures, parts)) return false;
        const int frame = frame_of(parts);
        sample = negative ? -frame : frame;
        *prefix = '\0';
        return true;
    }

private:
    /// Numbers that the count leaves out up to a frame of the day.
    int skipped_before(int frame) const {
        const int rest = frame % base_.ten_minutes();
        const int minutes = rest < base_.plain_minute() ? 0 : 1 + (rest - base_.plain_minute()) / base_.minute();
        return base_.skipped * (9 * (frame / base_.ten_minutes()) + minutes);
    }

    static bool is_separator(char c) { return c == ':' || c == '.' || c == ';' || c == ','; }

    /// Four parts of two digits, with separators or as eight digits.
    bool read_parts(std::string_view text, int (&parts)[4]) const {
        if (text.size() != 8 && text.size() != 11) return false;
        const std::size_t pitch = text.size() == 11 ? 3 : 2;
        for (std::size_t i = 0; i < 4; ++i) {
            const char tens = text[i * pitch], ones = text[i * pitch + 1];
            if (!ascii::is_digit(tens) || !ascii::is_digit(ones)) return false;
            if (pitch == 3 && i > 0 && !is_separator(text[i * 3 - 1])) return false;
            parts[i] = (tens - '0') * 10 + (ones - '0');
        }
        return parts[1] < 60 && parts[2] < 60 && parts[3] < base_.count;
    }

    int frame_of(const int (&parts)[4]) const {
        const int minutes = parts[0] * 60 + parts[1];
        const bool skips = minutes % 10 != 0 && parts[2] == 0;
        const int frames = skips ? std::max(parts[3], base_.skipped) : parts[3];
        return (minutes * 60 + parts[2]) * base_.count + frames - base_.skipped * (minutes - minutes / 10);
    }

    const TimecodeBase& base_;
};

std::unique_ptr<label_cvt> make_converter(const LabelKind& kind) {
    switch (kind.use) {
    case LabelUse::none:
        break;
    case LabelUse::key:
    case LabelUse::foot:
    case LabelUse::ink:
        return std::make_unique<film_cvt>(kind);
    case LabelUse::frames:
        return std::make_unique<frames_cvt>(kind);
    case LabelUse::timecode:
        return std::make_unique<timecode_cvt>(kind, *timecode_base(kind.type));
    }
    return std::make_unique<kind_cvt>(kind);
}

using Converters = std::array<label_cvt*, kind_numbers>;

/// By number. Those that name no kind share the converter of none. Not made part of the look-up, which every text of a
/// label goes through.
[[gnu::noinline]] Converters make_converters() {
    Converters converters{};
    for (std::size_t number = 0; number < converters.size(); ++number) {
        const LabelKind& kind = label_kind(static_cast<label_t>(number));
        const bool known = static_cast<std::size_t>(kind.type) == number;
        converters[number] = known ? make_converter(kind).release() : converters.front();
    }
    return converters;
}

} // namespace
} // namespace embedded

label_cvt* get_static_label_cvt(label_t type) {
    // Never given back: labels of static life still ask for their converter at the end of the process.
    static const embedded::Converters converters = embedded::make_converters();
    const auto number = static_cast<std::size_t>(type);
    return number < converters.size() ? converters[number] : converters.front();
}
