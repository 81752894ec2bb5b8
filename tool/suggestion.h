#pragma once
// What a mistyped word was likely meant to be.

#include <string>
#include <vector>

namespace tool {

/// Letters to put in, take out, replace or swap with their neighbour to get from one word to the other.
std::size_t edit_distance(const std::string& a, const std::string& b);

/// "; did you mean \"cutlist\"?" of the nearest known word; empty where none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& known);

} // namespace tool
