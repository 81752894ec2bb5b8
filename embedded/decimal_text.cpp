#include "embedded/decimal_text.h"
#include "host/decimal_number.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace embedded {
namespace {

std::string with_digits(double value, int digits) {
    char text[40];
    return std::string(text, decimal::write(text, text + sizeof text, value, digits));
}

} // namespace

int int_of_text(const char* text) { return static_cast<int>(std::strtol(text, nullptr, 10)); }

double double_of_text(const char* text) {
    std::string_view rest(text + std::strspn(text, " \t\n\v\f\r"));
    if (rest.size() > 1 && rest[0] == '+' && rest[1] != '-') rest.remove_prefix(1);
    double value = 0.0;
    decimal::read(rest.data(), rest.data() + rest.size(), value);
    return value;
}

// Most are whole: a speed of 1.
std::string text_of_double(double value) {
    const bool small = value < 1e6 && !std::signbit(value);
    if (small && value == static_cast<int>(value)) return std::to_string(static_cast<int>(value));
    for (int digits = 15; digits < 17; ++digits) {
        const std::string text = with_digits(value, digits);
        if (double_of_text(text.c_str()) == value) return text;
    }
    return with_digits(value, 17);
}

} // namespace embedded
