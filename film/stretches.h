#pragma once
// Sets of numbers along a strand of film, as stretches in order with something between each two.

#include "film/film_needs.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace film {

/// Rounded down, and up; `b` is above 0.
inline std::int64_t floor_quotient(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }
inline std::int64_t ceiling_quotient(std::int64_t a, std::int64_t b) { return -floor_quotient(-a, b); }

using Stretches = std::vector<FrameRange>;

/// All that any of the ranges holds.
Stretches merged(std::vector<FrameRange> ranges);
/// What of `all` isn't in `gone`.
Stretches without(const Stretches& all, const Stretches& gone);
/// What of `all` lies within the range.
Stretches within(const Stretches& all, const FrameRange& range);
/// The greatest number of `all` below one that isn't among them, and the least one above it; nothing where there is
/// none.
std::optional<std::int64_t> last_below(const Stretches& all, std::int64_t number);
std::optional<std::int64_t> first_above(const Stretches& all, std::int64_t number);
/// How many numbers they hold.
std::int64_t count_of(const Stretches& all);

} // namespace film
