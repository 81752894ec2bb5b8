#pragma once
// What is in a cut's way on the negative, as lists.

#include "documents/document.h"
#include "film/conform_facts.h"

#include <string>
#include <vector>

namespace documents {

/// Of the lists that the document holds.
std::vector<std::string> conform_list_ids();

/// The conflicts by what is the matter, and what can't be held. `frames`: lengths in frames, in place of feet and
/// frames.
Document conform_lists(const film::ConformToTell& told, bool frames);

} // namespace documents
