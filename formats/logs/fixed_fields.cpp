#include "formats/logs/fixed_fields.h"

#include "formats/text_lines.h"

#include <algorithm>

namespace formats {
namespace {

constexpr std::size_t tab_width = 8;

bool continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

} // namespace

PlacedLine::PlacedLine(std::string_view line) {
    text_.reserve(line.size());
    for (const char c : line) {
        if (c == '\t') {
            do {
                begins_.push_back(text_.size());
                text_ += ' ';
            } while (begins_.size() % tab_width != 0);
            continue;
        }
        if (!continues(c)) begins_.push_back(text_.size());
        text_ += c;
    }
}

LogCell PlacedLine::cell(std::size_t from, std::size_t to) const {
    const std::string_view all = text_;
    const std::size_t begin = byte_of(from);
    const std::string_view whole = all.substr(begin, std::max(byte_of(to), begin) - begin);
    const std::string_view trimmed = without_blanks_around(whole);
    const std::size_t leading = trimmed.empty() ? 0 : static_cast<std::size_t>(trimmed.data() - whole.data());
    return {trimmed, static_cast<int>(from + characters_of(whole.substr(0, leading))) + 1};
}

bool PlacedLine::stands_alone(std::size_t place, std::size_t width) const {
    const auto blank_at = [&](std::size_t at) { return at >= begins_.size() || text_[byte_of(at)] == ' '; };
    return (place == 0 || blank_at(place - 1)) && blank_at(place + width);
}

std::size_t PlacedLine::find_word(std::string_view word, std::size_t expected, std::size_t reach) const {
    const auto stands_at = [&](std::size_t place) {
        return place < length() && std::string_view(text_).substr(byte_of(place), word.size()) == word &&
               stands_alone(place, word.size());
    };
    for (std::size_t distance = 0; distance <= reach; ++distance) {
        if (stands_at(expected + distance)) return expected + distance;
        if (distance <= expected && stands_at(expected - distance)) return expected - distance;
    }
    return std::string::npos;
}

} // namespace formats
