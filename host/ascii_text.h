#pragma once
// Letters, digits and blanks of ASCII. Films, files and options are named in these, and a list must come out the same
// in any locale, so neither the library nor its readers ask the C library's `tolower` and its like. All other bytes
// stand for themselves alone, those of UTF-8 among them. Nothing here allocates or raises an exception.

#include <cstddef>
#include <string_view>

namespace ascii {

/// "0" to "9".
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
/// "A" to "Z".
constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
/// "a" to "z".
constexpr bool is_small(char c) { return c >= 'a' && c <= 'z'; }
/// A letter with an accent is none, as its bytes aren't ASCII.
constexpr bool is_letter(char c) { return is_capital(c) || is_small(c); }
/// A blank, a tab, or one of the characters that end a line or a page; of the C library's `isspace` in the plain locale
/// all, and no others.
constexpr bool is_white(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// All but capitals stay.
/// One byte for one, so a text in lower case is as long as before.
constexpr char lower(char c) { return is_capital(c) ? static_cast<char>(c - 'A' + 'a') : c; }
/// All but small letters stay.
constexpr char upper(char c) { return is_small(c) ? static_cast<char>(c - 'a' + 'A') : c; }

/// Of a terminated text, in place.
/// Up to its closing zero; never null.
constexpr void make_lower(char* text) {
    for (; *text; ++text)
        *text = lower(*text);
}
/// The same the other way: reels and prefixes are looked up in this form.
constexpr void make_upper(char* text) {
    for (; *text; ++text)
        *text = upper(*text);
}

/// A copy of any text that holds `char`.
/// The text given stays as it is.
template <class Text> Text lower_case(Text text) {
    for (char& c : text)
        c = lower(c);
    return text;
}
template <class Text> Text upper_case(Text text) {
    for (char& c : text)
        c = upper(c);
    return text;
}

/// The order of two texts in any case: below 0 where `a` comes first, 0 where they are the same, else above. Letters
/// count as small ones, bytes as 0 to 255; a text comes ahead of a longer one that begins with it.
/// How far below or above 0 means nothing. Key numbers and rolls are ordered by this, so it is the same on every
/// machine.
constexpr int compare(std::string_view a, std::string_view b) {
    const std::size_t common = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) continue;
        const int difference = static_cast<unsigned char>(lower(a[i])) - static_cast<unsigned char>(lower(b[i]));
        if (difference != 0) return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

/// The same text but for the case of its letters; of one length, then.
/// Whoever compares rolls by their prefix asks this: "kj" and "KJ" are one roll.
constexpr bool same(std::string_view a, std::string_view b) { return a.size() == b.size() && compare(a, b) == 0; }

/// The text begins with `head` in any case; every text begins with an empty one.
constexpr bool begins(std::string_view text, std::string_view head) { return same(text.substr(0, head.size()), head); }

/// Where `word` first stands in `text` in any case; `std::string_view::npos` where it doesn't.
/// Counted in bytes from 0. An empty word stands at 0.
constexpr std::size_t find(std::string_view text, std::string_view word) {
    for (std::size_t at = 0; at + word.size() <= text.size(); ++at) {
        if (same(text.substr(at, word.size()), word)) return at;
    }
    return std::string_view::npos;
}

/// `word` stands somewhere in `text` in any case.
constexpr bool holds(std::string_view text, std::string_view word) { return find(text, word) != text.npos; }

/// Without white space at its ends; a view into the same text.
/// Good as long as that text is. Empty where there is nothing but white space.
constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_white(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_white(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace ascii
