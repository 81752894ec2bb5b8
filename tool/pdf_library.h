#pragma once
// Documents as PDF, by a library of their own that is loaded when the first one is made.

#include "documents/pdf.h"

#include <string>

namespace tool {

/// Throws `JobError` where the library isn't there or the pages can't be made.
std::string loaded_pdf_of(const documents::Document& document, const documents::PdfOptions& options);

} // namespace tool
