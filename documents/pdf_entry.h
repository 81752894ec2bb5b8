#pragma once
// How the command calls the library of pages, which it loads by name when they are asked for.

#include "documents/pdf.h"

#include <string>

namespace documents {

/// Fills `bytes`, or says in `fault` why the pages can't be made. Raises no exception but that there is no memory.
using PdfEntry = void(const Document& document, const PdfOptions& options, std::string& bytes, std::string& fault);
constexpr const char* pdf_entry_name = "quillbrook_make_pdf";

} // namespace documents

extern "C" documents::PdfEntry quillbrook_make_pdf;
