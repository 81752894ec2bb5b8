#pragma once
// De-rendered copies of edits whose files don't tell what their rendered material was made of.

#include "embedded/edit_builder.h"

#include <functional>
#include <string>
#include <string_view>

namespace formats::timeline {

/// A copy is stored as the same bytes and read from them again: all that is rendered stays so. `read` makes the edit,
/// with an identity of its own; nothing is told of it a second time.
embedded::EditBuilder::Unrender copies_as_they_are(std::string_view bytes,
                                                   std::function<EditPtr(const std::string& bytes)> read);

} // namespace formats::timeline
