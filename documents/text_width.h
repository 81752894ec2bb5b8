#pragma once
// How wide a text becomes, without a font at hand: from the widths of a broad sans family, so that others fit too.

#include <cstdint>
#include <string>
#include <string_view>

namespace documents {

enum class Letters : unsigned char { sans, bold, mono };

/// In thousandths of the size of the type. Bytes that are no UTF-8 count as a character each.
std::int64_t text_width(std::string_view text, Letters letters);

/// The next character of a text, which must not be empty, and how many bytes it takes. U+FFFD for what is no UTF-8.
struct Character {
    char32_t code = 0xFFFD;
    std::size_t bytes = 1;
};
Character first_character(std::string_view text);

/// A text of at most that width: what is longer ends in "…", between two characters.
std::string shortened(const std::string& text, Letters letters, std::int64_t width);

} // namespace documents
