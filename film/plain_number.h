#pragma once
// Whole numbers as reports print them.

#include "host/ascii_text.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace film {

/// The number that is the whole of a text: decimal digits, with a minus sign or without.
inline std::optional<int> plain_number(std::string_view text) {
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
    return value;
}

/// What `atoi` gives, without its cost for the short numbers that tables are full of.
inline int leading_number(const char* text) {
    constexpr std::size_t digits_that_fit = 9;
    const bool negative = *text == '-';
    const std::string_view digits(text + (negative ? 1 : 0));
    if (digits.empty() || digits.size() > digits_that_fit) return std::atoi(text);
    int value = 0;
    for (const char c : digits) {
        if (!ascii::is_digit(c)) return std::atoi(text);
        value = value * 10 + (c - '0');
    }
    return negative ? -value : value;
}

} // namespace film
