#pragma once
// Documents as one HTML file that needs nothing else: no network, no fonts, and to be read no script.

#include "documents/document.h"

#include <string>

namespace documents {

/// On screen rows are lines of a grid, so that those out of sight cost nothing; printed they are a table whose heads
/// repeat. With scripts ticks stay in the browser, rows can be filtered, columns hidden, and a row shows its film in
/// the drawing.
std::string html_of(const Document& document);

} // namespace documents
