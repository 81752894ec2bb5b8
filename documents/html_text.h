#pragma once
// The doors through which texts come into a page.

#include <string>
#include <string_view>

namespace documents {

/// As text between tags, or as a value between double quotes.
std::string html_text(std::string_view text);
/// The same behind what `out` holds.
void put_html_text(std::string& out, std::string_view text);

/// A string of a style sheet, between quotation marks.
std::string css_string(std::string_view text);

/// Letters, digits and hyphens: what ids and class names are made of. All else becomes a hyphen.
std::string html_name(std::string_view text);

} // namespace documents
