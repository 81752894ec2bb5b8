#pragma once
// The characters of texts from outside: what all emitters make of them before they escape them for their own format.

#include <cstddef>
#include <string>
#include <string_view>

namespace documents {

/// One character of UTF-8. Of bytes that are none each counts by itself and has the code U+FFFD.
struct CodePoint {
    char32_t code = 0xFFFD;
    std::size_t bytes = 1;
};

/// The first character of a text that isn't empty.
CodePoint next_code(std::string_view text);

/// A text as UTF-8 without control characters, on one line: these become the signs for them, and what isn't UTF-8
/// U+FFFD. Marks of direction stay.
std::string clean(std::string_view text);

/// Columns of a terminal or a text editor: 2 for East Asian wide characters, 0 for marks that stand on others and for
/// what isn't seen, 1 for the others.
std::size_t display_width(std::string_view text);
int display_width(char32_t code);

/// Closes what a text left open of embedded directions, so that they end with it.
std::string closed_directions(std::string text);

} // namespace documents
