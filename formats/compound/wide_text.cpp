#include "formats/compound/wide_text.h"

#include <cstdint>

namespace formats::compound {
namespace {

constexpr std::uint32_t replacement = 0xFFFD;

bool is_first_half(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool is_second_half(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void append(std::string& text, std::uint32_t point) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
        tail(0);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | (point >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | (point >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace

std::string utf8_of_wide(std::string_view bytes, bool big_endian) {
    std::string text;
    const auto unit_at = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]), second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(big_endian ? first << 8 | second : second << 8 | first);
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const std::uint32_t unit = unit_at(at);
        if (unit == 0) break;
        const bool paired = is_first_half(unit) && at + 3 < bytes.size() && is_second_half(unit_at(at + 2));
        if (paired) {
            append(text, 0x10000 + ((unit - 0xD800) << 10) + (unit_at(at + 2) - 0xDC00));
            at += 2;
        } else {
            append(text, is_first_half(unit) || is_second_half(unit) ? replacement : unit);
        }
    }
    return text;
}

} // namespace formats::compound
