#include "reports/number_text.h"

#include <cstdlib>
#include <cstring>
#include <locale.h>

int decimal_number(const char* text) { return text ? static_cast<int>(std::strtol(text, nullptr, 10)) : 0; }

double floating_number(const char* text) {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", locale_t{});
    return strtod_l(text, nullptr, plain);
}

int revision_number(const char* parameter) {
    constexpr std::size_t word_length = 4;
    if (!parameter || std::strlen(parameter) <= word_length) return 0;
    return decimal_number(parameter + word_length);
}
