#pragma once
// Times of FCPXML: seconds as fractions, never rounded.

#include "embedded/fraction.h"

#include <optional>
#include <string_view>

namespace formats::fcpxml {

using embedded::Fraction;

/// Times beyond ten years are none: no film is that long, and sums stay exact.
constexpr std::int64_t longest_time = std::int64_t{10} * 366 * 86400;

/// "1001/30000s", "5s", "-2.5s" in seconds; nothing for any other text.
std::optional<Fraction> parse_time(std::string_view text);

/// Frames a second, exactly, of the rates that are written rounded: "23.98" is 24000/1001. Nothing for what isn't a
/// rate.
std::optional<Fraction> parse_rate(std::string_view text);

} // namespace formats::fcpxml
