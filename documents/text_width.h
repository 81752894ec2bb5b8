#pragma once
// How wide a text becomes, without a font at hand: from the widths of a broad sans family, so that others fit too.

#include <cstdint>
#include <string>
#include <string_view>

namespace documents {

enum class Letters : unsigned char { sans, bold, mono };

/// In thousandths of the size of the type. Bytes that are no UTF-8 count as a character each.
std::int64_t text_width(std::string_view text, Letters letters);

/// A text of at most that width: what is longer ends in "…", between two characters.
std::string shortened(const std::string& text, Letters letters, std::int64_t width);

} // namespace documents
