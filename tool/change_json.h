#pragma once
// The steps of a changelist as JSON, for scripts. docs/changes.schema.json describes the document.

#include <string>

namespace tool {

/// The steps of the last run, of both lists. `film` is the kind of film that the cutlists name. UTF-8 whatever
/// bytes the cutlists hold.
std::string change_document(const std::string& film);

} // namespace tool
