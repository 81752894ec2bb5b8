#include "base/number_text.h"

#include "host/ascii_text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>

namespace {

/// The rest of a number of more than a few digits, which may be out of range.
int long_number(const char* text, long value, bool negative) {
    for (; ascii::is_digit(*text); ++text) {
        const int digit = *text - '0';
        if (__builtin_mul_overflow(value, 10, &value) || __builtin_sub_overflow(value, digit, &value))
            return negative ? static_cast<int>(std::numeric_limits<long>::min())
                            : static_cast<int>(std::numeric_limits<long>::max());
    }
    if (!negative && value == std::numeric_limits<long>::min())
        return static_cast<int>(std::numeric_limits<long>::max());
    return static_cast<int>(negative ? value : -value);
}

int number_of_digits(const char* text, bool negative) {
    constexpr int safe = (std::numeric_limits<int>::max() - 9) / 10;
    int value = 0;
    for (; ascii::is_digit(*text); ++text) {
        if (value > safe) return long_number(text, -long{value}, negative);
        value = value * 10 + (*text - '0');
    }
    return negative ? -value : value;
}

} // namespace

// What `strtol` gives, cut to an int, at a fraction of its cost: rows hold their numbers as text.
int decimal_number(const char* text) {
    if (!text) return 0;
    if (ascii::is_digit(*text)) return number_of_digits(text, false);
    while (ascii::is_white(*text))
        ++text;
    const bool negative = *text == '-';
    return number_of_digits(negative || *text == '+' ? text + 1 : text, negative);
}

// A whole number of few digits, as most speeds are, is the same at any rounding.
double floating_number(const char* text) {
    constexpr std::size_t exact_digits = 15;
    std::size_t digits = 0;
    std::int64_t whole = 0;
    for (; digits < exact_digits && ascii::is_digit(text[digits]); ++digits)
        whole = whole * 10 + (text[digits] - '0');
    if (digits > 0 && text[digits] == '\0') return static_cast<double>(whole);
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", locale_t{});
    return strtod_l(text, nullptr, plain);
}

int revision_number(const char* parameter) {
    constexpr std::size_t word_length = 4;
    if (!parameter || std::strlen(parameter) <= word_length) return 0;
    return decimal_number(parameter + word_length);
}
