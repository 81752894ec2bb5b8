#pragma once
// Arithmetic on frames and samples out of files. Any number may stand there, so sums wrap and doubles clamp.

#include <cstdint>
#include <limits>

constexpr int wrapped(std::int64_t value) { return static_cast<int>(static_cast<std::uint32_t>(value)); }

constexpr int frame_sum(int a, int b) { return wrapped(std::int64_t{a} + b); }
constexpr int frame_difference(int a, int b) { return wrapped(std::int64_t{a} - b); }
constexpr int frame_product(int a, int b) { return wrapped(std::int64_t{a} * b); }

/// Cut toward zero, kept within the range of an int; 0 for what isn't a number.
constexpr int whole_part(double value) {
    if (value != value) return 0;
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}
