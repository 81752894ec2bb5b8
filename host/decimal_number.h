#pragma once
// Numbers with a fraction to decimal text and back, the same in every locale, with the outcome of `std::to_chars` and
// `std::from_chars`. Some C++ libraries have these for whole numbers only; there the forms of `portable` stand in,
// which ask the C library and count on its plain locale. Nothing else in the sources converts such numbers.

#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

namespace decimal {

/// Room for any number that `write` makes, and for a closing zero.
constexpr std::size_t most_bytes = 400;

namespace portable {

/// Copies text to [first, last) if it fits; the end of what was written, or `first`.
inline char* put(char* first, char* last, const char* text, int length) {
    if (length < 0 || length > last - first) return first;
    std::memcpy(first, text, static_cast<std::size_t>(length));
    return first + length;
}

/// With so many significant digits, as `printf` writes with %g.
inline char* write(char* first, char* last, double number, int digits) {
    char text[most_bytes];
    return put(first, last, text, std::snprintf(text, sizeof text, "%.*g", digits, number));
}

/// The fewest digits that read back to the number, as "d.ddde+xx". The nearest such text may miss beside a power of
/// two, where the numbers below lie closer than those above: then it is the next text up.
inline int write_shortest_scientific(char (&text)[most_bytes], double number) {
    for (int digits = 0; digits < std::numeric_limits<double>::max_digits10; ++digits) {
        const int length = std::snprintf(text, sizeof text, "%.*e", digits, number);
        if (std::strtod(text, nullptr) == number) return length;
        char* last_digit = std::strchr(text, 'e') - 1;
        if (*last_digit < '0' || *last_digit >= '9') continue;
        ++*last_digit;
        if (std::strtod(text, nullptr) == number) return length;
    }
    return static_cast<int>(std::strlen(text));
}

/// Which of both notations is shorter; where they are equal, that without an exponent.
inline char* write(char* first, char* last, double number) {
    char scientific[most_bytes], fixed[most_bytes];
    if (!std::isfinite(number)) return write(first, last, number, 6);
    const int length = write_shortest_scientific(scientific, number);
    const char* exponent = std::strchr(scientific, 'e');
    const int digits = static_cast<int>(exponent - scientific) - (std::signbit(number) ? 1 : 0) -
                       (std::memchr(scientific, '.', static_cast<std::size_t>(length)) ? 1 : 0);
    const int behind_point = digits - 1 - std::atoi(exponent + 1);
    const int fixed_length = std::snprintf(fixed, sizeof fixed, "%.*f", behind_point < 0 ? 0 : behind_point, number);
    return fixed_length <= length ? put(first, last, fixed, fixed_length) : put(first, last, scientific, length);
}

inline const char* behind_digits(const char* at, const char* last) {
    while (at != last && ascii::is_digit(*at))
        ++at;
    return at;
}

/// Behind a word in letters of either case, or `at` where another one stands.
inline const char* behind_word(const char* at, const char* last, std::string_view small) {
    if (last - at < static_cast<std::ptrdiff_t>(small.size())) return at;
    for (std::size_t i = 0; i < small.size(); ++i)
        if (ascii::lower(at[i]) != small[i]) return at;
    return at + small.size();
}

/// Where "inf", "infinity", "nan" or "nan(LETTERS)" ends, or `at`.
inline const char* end_of_named(const char* at, const char* last) {
    if (const char* end = behind_word(at, last, "infinity"); end != at) return end;
    if (const char* end = behind_word(at, last, "inf"); end != at) return end;
    const char* nan = behind_word(at, last, "nan");
    if (nan == at || nan == last || *nan != '(') return nan;
    const char* end = nan + 1;
    while (end != last && (ascii::is_letter(*end) || ascii::is_digit(*end) || *end == '_'))
        ++end;
    return end != last && *end == ')' ? end + 1 : nan;
}

/// Where the number at `first` ends, and `first` where there is none. A sign other than '-' doesn't belong to it.
inline const char* end_of_number(const char* first, const char* last) {
    const char* at = first != last && *first == '-' ? first + 1 : first;
    if (const char* named = end_of_named(at, last); named != at) return named;
    const char* point = behind_digits(at, last);
    const char* end = point != last && *point == '.' ? behind_digits(point + 1, last) : point;
    if (end - at == (end != point)) return first;
    if (end == last || (*end != 'e' && *end != 'E')) return end;
    const char* sign = end + 1;
    const char* exponent = sign != last && (*sign == '-' || *sign == '+') ? sign + 1 : sign;
    const char* behind = behind_digits(exponent, last);
    return behind == exponent ? end : behind;
}

/// Reads the longest decimal number at `first`. One that is too large or too small to be told from zero leaves `number`
/// as it is and gives `result_out_of_range`.
inline std::from_chars_result read(const char* first, const char* last, double& number) {
    const char* end = end_of_number(first, last);
    if (end == first) return {first, std::errc::invalid_argument};
    const std::string text(first, end);
    const double value = std::strtod(text.c_str(), nullptr);
    const bool has_digits = text.find_first_of("123456789") < std::min(text.find_first_of("eE"), text.size());
    if (has_digits && (std::isinf(value) || value == 0)) return {end, std::errc::result_out_of_range};
    number = value;
    return {end, std::errc()};
}

} // namespace portable

#ifdef __cpp_lib_to_chars
/// Both write to [first, last), without a closing zero, and give the end of it; `first` where there isn't room.
inline char* write(char* first, char* last, double number, int digits) {
    const auto [end, error] = std::to_chars(first, last, number, std::chars_format::general, digits);
    return error == std::errc() ? end : first;
}
inline char* write(char* first, char* last, double number) {
    const auto [end, error] = std::to_chars(first, last, number);
    return error == std::errc() ? end : first;
}
inline std::from_chars_result read(const char* first, const char* last, double& number) {
    return std::from_chars(first, last, number);
}
#else
using portable::read;
using portable::write;
#endif

/// Whole numbers, which every library reads, for readers of both kinds.
template <std::integral Whole> std::from_chars_result read(const char* first, const char* last, Whole& number) {
    return std::from_chars(first, last, number);
}

} // namespace decimal
