#pragma once
// Arithmetic on samples that may come from anywhere: worked out wide and kept within an int.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace embedded {

inline int clamp_to_int(std::int64_t value) {
    constexpr std::int64_t lowest = std::numeric_limits<int>::min();
    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}

/// Positions are doubles of exact fractions; this share of a sample or frame makes up for their rounding.
constexpr double rounding_allowance = 1e-6;

/// The greatest whole number not above `value` but for the allowance.
inline double floor_of_position(double value) { return std::floor(value + rounding_allowance); }

/// The same as an int, kept within its range; 0 for what isn't a number.
inline int floor_to_int(double value) {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(floor_of_position(value), lowest, highest));
}

} // namespace embedded
