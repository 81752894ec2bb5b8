#pragma once
// Documents as PDF: pages with heads and feet, bookmarks, links, drawings as vectors, names in any script.

#include "documents/document.h"

#include <cstdint>
#include <optional>
#include <string>

namespace documents {

struct PdfOptions {
    std::optional<std::int64_t> made; ///< seconds since the epoch; unset: now
};

/// The same document gives the same bytes with the same fonts installed. Throws `std::runtime_error` where the pages
/// can't be made.
std::string pdf_of(const Document& document, const PdfOptions& options = {});

} // namespace documents
