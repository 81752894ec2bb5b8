#include "formats/text_lines.h"

#include "embedded/limits.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view no_break_space = "\xC2\xA0";

bool continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Bytes of the character that begins with `first`; 0 where none begins so.
std::size_t length_of_character(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

std::string from_latin(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

bool is_sixteen_bit(std::string_view bytes) {
    return bytes.substr(0, 2) == "\xFF\xFE" || bytes.substr(0, 2) == "\xFE\xFF";
}

} // namespace

TextLines::TextLines(std::string_view bytes) {
    if (is_sixteen_bit(bytes)) {
        trouble_ = "is 16-bit text; save it as UTF-8";
    } else if (bytes.find('\0') != std::string_view::npos) {
        trouble_ = "isn't text";
    }
    if (trouble_.empty()) trouble_ = fault_of_lines(bytes);
    if (!trouble_.empty()) return;
    if (bytes.substr(0, byte_order_mark.size()) == byte_order_mark) bytes.remove_prefix(byte_order_mark.size());
    was_latin_ = !is_utf8(bytes);
    text_ = was_latin_ ? from_latin(bytes) : std::string(bytes);
    split();
}

std::string fault_of_lines(std::string_view bytes) {
    const std::size_t longest = embedded::limits().line_bytes;
    LineEnds ends(bytes);
    std::size_t line = 1;
    for (std::size_t begin = 0; begin < bytes.size(); ++line) {
        const std::size_t end = ends.end_of_line(begin);
        if (end - begin > longest)
            return "line " + std::to_string(line) + " is longer than " + std::to_string(longest) +
                   " bytes, the most that is read; --max-line takes more";
        begin = ends.behind(end);
    }
    return {};
}

void TextLines::split() {
    const std::string_view text = text_;
    LineEnds ends(text);
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = ends.end_of_line(begin);
        lines_.push_back(text.substr(begin, end - begin));
        begin = ends.behind(end);
    }
}

bool is_utf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = length_of_character(static_cast<unsigned char>(text[i]));
        if (length == 0 || text.size() - i < length) return false;
        for (std::size_t k = 1; k < length; ++k)
            if (!continues(text[i + k])) return false;
        i += length;
    }
    return true;
}

std::size_t characters_of(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !continues(c); }));
}

std::string_view without_blanks_around(std::string_view text) {
    for (;;) {
        if (text.substr(0, 2) == no_break_space) {
            text.remove_prefix(2);
        } else if (text.size() >= 2 && text.substr(text.size() - 2) == no_break_space) {
            text.remove_suffix(2);
        } else if (!text.empty() && ascii::is_white(text.front())) {
            text.remove_prefix(1);
        } else if (!text.empty() && ascii::is_white(text.back())) {
            text.remove_suffix(1);
        } else {
            return text;
        }
    }
}

std::string lower_case(std::string_view text) { return ascii::lower_case(std::string(text)); }

} // namespace formats
