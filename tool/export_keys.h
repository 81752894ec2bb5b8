#pragma once
// Key numbers for edits that are written for other programs.

#include "film/log_rows.h"
#include "formats/key_lookup.h"

namespace tool {

/// By the rows of a log; null where there is none. `log` outlives it.
formats::LogLookup lookup_in(const film::LogRows* log);

} // namespace tool
