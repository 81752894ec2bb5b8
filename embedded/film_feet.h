#pragma once
// Film measured in feet.

#include "host/labels.h"

#include <cstdint>
#include <string>

namespace embedded {

/// Perforations in a foot of a kind of key numbers; 0 for other kinds.
int perforations_of_foot(label_t key_kind);

/// So many whole frames as "0012+03"; empty for film that no kind counts in feet, as 65mm.
std::string feet_text(label_t kind, std::int64_t frames);

} // namespace embedded
