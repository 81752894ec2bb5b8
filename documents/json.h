#pragma once
// Documents as JSON: one file a run. docs/lists.schema.json is its schema.

#include "documents/document.h"

#include <string>
#include <string_view>

namespace documents {

/// A text between quotation marks.
std::string json_string(std::string_view text);

std::string json_of(const Document& document);

} // namespace documents
