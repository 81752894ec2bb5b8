#pragma once
// A cut held against the negative, as JSON; docs/conform.schema.json says what the document holds.

#include "film/conform_facts.h"

#include <string>

namespace tool {

std::string conform_document(const film::ConformToTell& told);

} // namespace tool
