#pragma once
// Fields at fixed places of a line, counted in characters.

#include "formats/logs/log_row.h"

#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// A line with its tabs expanded to every eighth place, whose places are characters.
class PlacedLine {
public:
    explicit PlacedLine(std::string_view line);
    PlacedLine(const PlacedLine&) = delete;
    PlacedLine& operator=(const PlacedLine&) = delete;

    std::size_t length() const { return begins_.size(); }
    /// What stands from a place up to another, without blanks at its ends; empty behind the end of the line.
    LogCell cell(std::size_t from, std::size_t to) const;
    /// The place of a word that stands by itself, the nearest to `expected` within `reach`; npos without one.
    std::size_t find_word(std::string_view word, std::size_t expected, std::size_t reach) const;
    std::string_view text() const { return text_; }

private:
    std::size_t byte_of(std::size_t place) const { return place < begins_.size() ? begins_[place] : text_.size(); }
    bool stands_alone(std::size_t place, std::size_t width) const;

    std::string text_;
    std::vector<std::size_t> begins_; ///< of each character, in bytes
};

} // namespace formats
