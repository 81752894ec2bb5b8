#pragma once
// Documents as UTF-8 text in aligned columns, by the width that characters take in a terminal.

#include "documents/document.h"

#include <string>

namespace documents {

/// Lines end in LF, and none has blanks at its end. Columns of words are wrapped, never cut.
std::string plain_text_of(const Document& document);

} // namespace documents
