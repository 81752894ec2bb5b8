#pragma once
// What a mistyped word was likely meant to be.

#include "embedded/edit_distance.h"

#include <string>
#include <vector>

namespace tool {

using embedded::edit_distance;

/// "; did you mean \"cutlist\"?" of the nearest known word; empty where none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& known);

} // namespace tool
