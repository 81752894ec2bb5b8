#include "tool/pdf_library.h"

#include "documents/pdf_entry.h"
#include "tool/loaded_library.h"
#include "tool/tool_error.h"

namespace tool {
namespace {

// It stays loaded: what draws fonts can't be taken out of a program again.
documents::PdfEntry* load_entry() {
    return reinterpret_cast<documents::PdfEntry*>(
        loaded_entry(QUILLBROOK_PDF_LIBRARY, documents::pdf_entry_name, "pages as PDF can't be made"));
}

} // namespace

std::string loaded_pdf_of(const documents::Document& document, const documents::PdfOptions& options) {
    static documents::PdfEntry* const make = load_entry();
    std::string bytes, fault;
    make(document, options, bytes, fault);
    if (!fault.empty()) throw JobError("the pages couldn't be made: " + fault);
    return bytes;
}

} // namespace tool
