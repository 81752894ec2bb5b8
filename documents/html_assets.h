#pragma once
// The style sheet and the script of a page, which are the same for all documents.

namespace documents {

extern const char* const html_style;
extern const char* const html_script;

} // namespace documents
