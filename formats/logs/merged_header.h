#pragma once
// Headers of logging tables that become one: what rows left to the header of their own table.

#include "embedded/warning.h"
#include "host/recdb.h"

#include <string>

namespace formats {

/// For rows from `first` on that were appended from `other`, the file `path`: what they left to their own header, and
/// the header of `table` says otherwise, is written into them. What they can't say in `table` is told.
embedded::Warnings keep_header_of(const recdb& other, const std::string& path, recdb& table, unsigned first);

} // namespace formats
