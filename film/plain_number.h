#pragma once
// Whole numbers as reports print them.

#include <charconv>
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

} // namespace film
