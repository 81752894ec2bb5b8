#pragma once
// A cut held against the negative, as aligned text.

#include "film/conform_facts.h"

#include <string>

namespace tool {

std::string conform_text(const film::ConformToTell& told);

} // namespace tool
