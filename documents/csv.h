#pragma once
// Documents as CSV (RFC 4180): one file a list, in UTF-8 with a header row and CR LF behind each row.

#include "documents/document.h"

#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct NamedFile {
    std::string name; ///< "assembly.csv"
    std::string bytes;
};

/// A field as it stands between commas. Text that a spreadsheet would take for a formula gets an apostrophe ahead of
/// it.
std::string csv_field(std::string_view text);

/// The columns are "row", "part", the fields of the list, "marks" and "notes"; a row for each item, no totals.
std::string csv_of(const List& list);

std::vector<NamedFile> csv_files(const Document& document);

} // namespace documents
