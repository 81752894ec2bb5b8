#include "documents/pdf_entry.h"

#include <stdexcept>

void quillbrook_make_pdf(const documents::Document& document, const documents::PdfOptions& options, std::string& bytes,
                         std::string& fault) {
    try {
        bytes = documents::pdf_of(document, options);
    } catch (const std::runtime_error& error) {
        fault = error.what();
    }
}
