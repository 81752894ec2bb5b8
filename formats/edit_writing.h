#pragma once
// What all writers of edits give.

#include "embedded/warning.h"

#include <string>

namespace formats {

/// `text` is empty and `error` set where nothing can be written. Warnings say what the format can't hold, one line for
/// each event or source.
struct Written {
    std::string text;
    embedded::Warnings warnings;
    std::string error;
};

} // namespace formats
