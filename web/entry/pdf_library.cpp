// Pages as PDF aren't made in a browser, which prints pages itself.

#include "tool/pdf_library.h"

#include "tool/tool_error.h"

namespace tool {

std::string loaded_pdf_of(const documents::Document&, const documents::PdfOptions&) {
    throw JobError("pages as PDF can't be made in a browser: print the page to a PDF file");
}

} // namespace tool
