// Key numbers in the comments of edit lists.

#include "formats/edl/edl_lines.h"
#include "formats/edl/edl_list.h"
#include "formats/key_number.h"
#include "host/ascii_text.h"
#include "host/labels.h"

#include <algorithm>

namespace formats::edl {
namespace {

using ascii::is_digit;
using ascii::is_letter;

bool is_space(char c) { return c == ' ' || c == '\t'; }

/// Tries the pattern at one place: two letters, two and four digits, a count of four to six, then maybe frames
/// and a perforation. Blanks may part the groups.
class PatternAt {
public:
    PatternAt(std::string_view text, std::size_t at) : text_(text), at_(at) {}

    bool match() {
        const std::size_t start = at_;
        if (start > 0 && (is_letter(text_[start - 1]) || is_digit(text_[start - 1]))) return false;
        if (!letters() || !digits_exactly(2) || !digits_exactly(4)) return false;
        if (!take(is_hyphen)) blanks();
        const std::size_t count = run_of_digits(at_);
        if (count < 4 || count > 6) return false;
        at_ += count;
        return take_frames() && ends_here();
    }

    std::size_t end() const { return at_; }
    bool has_frames() const { return has_frames_; }

private:
    static bool is_hyphen(char c) { return c == '-'; }
    static bool parts_frames(char c) { return c == '+' || c == '&' || c == '-' || c == ':'; }

    template <class Test> bool take(Test test) {
        if (at_ >= text_.size() || !test(text_[at_])) return false;
        ++at_;
        return true;
    }

    void blanks() {
        while (take(is_space)) {
        }
    }

    std::size_t run_of_digits(std::size_t from) const {
        std::size_t end = from;
        while (end < text_.size() && is_digit(text_[end]))
            ++end;
        return end - from;
    }

    bool letters() { return take(is_letter) && take(is_letter); }

    bool digits_exactly(std::size_t count) {
        blanks();
        if (run_of_digits(at_) < count) return false;
        at_ += count;
        return true;
    }

    // Blanks may stand ahead of "+" alone: behind them the others begin something else. False where frames are meant
    // that no foot has: "+005", ".05".
    bool take_frames() {
        const std::size_t before = at_;
        blanks();
        if (at_ > before && !(at_ < text_.size() && text_[at_] == '+')) at_ = before;
        const char sign = at_ < text_.size() ? text_[at_] : ' ';
        const std::size_t digits = parts_frames(sign) ? run_of_digits(at_ + 1) : 0;
        if (digits < 1 || digits > 2) {
            if (digits > 2 ? sign == '+' || sign == '&' : sign == '.' && run_of_digits(at_ + 1) > 0) return false;
            at_ = before;
            return true;
        }
        at_ += 1 + digits;
        has_frames_ = true;
        take_perforation();
        return true;
    }

    // ".c" or "(c)"
    void take_perforation() {
        if (at_ + 1 >= text_.size() || !is_digit(text_[at_ + 1])) return;
        if (text_[at_] == '.') at_ += 1 + std::min<std::size_t>(2, run_of_digits(at_ + 1));
        if (at_ + 2 < text_.size() && text_[at_] == '(' && text_[at_ + 2] == ')') at_ += 3;
    }

    bool ends_here() const { return at_ >= text_.size() || (!is_letter(text_[at_]) && !is_digit(text_[at_])); }

    std::string_view text_;
    std::size_t at_;
    bool has_frames_ = false;
};

struct GaugeWord {
    std::string_view word;
    const char* film;
};

// The first that a comment holds counts.
constexpr GaugeWord gauge_words[] = {
    {"3-perf", "35mm-3p"}, {"3perf", "35mm-3p"},  {"3 perf", "35mm-3p"},  {"35mm-3p", "35mm-3p"}, {"2-perf", "35mm-2p"},
    {"2perf", "35mm-2p"},  {"2 perf", "35mm-2p"}, {"35mm-2p", "35mm-2p"}, {"16mm", "16mm-1p"},    {"16 mm", "16mm-1p"},
};

/// The first word that names a kind of key numbers as edits do: "65mm-5p80".
const char* kind_named_in(std::string_view comment) {
    for (const std::string_view word : words_of(comment)) {
        const label_t kind = edlstr_to_label_type(std::string(word).c_str());
        if (kind != label_none && label_t_to_key_label_t(kind) == kind) return label_type_to_edlstr(kind);
    }
    return nullptr;
}

const char* film_of(std::string_view comment) {
    if (const char* named = kind_named_in(comment)) return named;
    for (const GaugeWord& gauge : gauge_words)
        if (ascii::holds(comment, gauge.word)) return gauge.film;
    return "35mm-4p";
}

} // namespace

std::optional<KeyNumber> find_key_number(std::string_view text, bool strict) {
    for (std::size_t at = 0; at + 12 <= text.size(); ++at) {
        if (!is_letter(text[at])) continue;
        PatternAt pattern(text, at);
        if (pattern.match() && (pattern.has_frames() || !strict))
            return KeyNumber{plain_key_number(text.substr(at, pattern.end() - at)), film_of(text)};
    }
    return std::nullopt;
}

} // namespace formats::edl
