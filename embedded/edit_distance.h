#pragma once
// How far two words are from each other.

#include <cstddef>
#include <string>

namespace embedded {

/// Letters to put in, take out, replace or swap with their neighbour to get from one word to the other.
std::size_t edit_distance(const std::string& a, const std::string& b);

} // namespace embedded
