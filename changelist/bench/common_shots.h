#pragma once
// What two rows of shots have in common, in order.

#include "host/text.h"

#include <cstdint>

struct ShotPair {
    std::size_t old_shot = 0; ///< indices
    std::size_t new_shot = 0;
};

/// A longest common run of both rows, where the same number stands for the same shot. It is the longest there is
/// where no shot stands in a row very often; otherwise rare shots are matched first, and often ones between them.
/// Takes the time of n log n.
Vector<ShotPair> common_shots(const Vector<std::uint32_t>& old_row, const Vector<std::uint32_t>& new_row);
