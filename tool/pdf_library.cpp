#include "tool/pdf_library.h"

#include "documents/pdf_entry.h"
#include "tool/tool_error.h"

#include <dlfcn.h>

namespace tool {
namespace {

// It stays loaded: what draws fonts can't be taken out of a program again.
documents::PdfEntry* load_entry() {
    void* library = dlopen(QUILLBROOK_PDF_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (!library) throw JobError(std::string("pages as PDF can't be made: ") + dlerror());
    void* entry = dlsym(library, documents::pdf_entry_name);
    if (!entry) throw JobError(std::string("pages as PDF can't be made: ") + dlerror());
    return reinterpret_cast<documents::PdfEntry*>(entry);
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
