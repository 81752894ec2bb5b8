#pragma once
// What all readers of edits take and give.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "host/edit.h"

#include <string>

namespace formats {

struct ReadOptions {
    const embedded::RateInfo* rate = nullptr; ///< wins over the file's own; null leaves that
    bool all_effects = false;                 ///< every effect is the lab's
    bool reverse_from_first =
        false;             ///< an edit list's source in of a reverse shot is the frame shown first, not the lowest
    bool unrender = false; ///< rendered clips as what they were rendered from
};

/// `edit` is empty and `error` set when the file can't be read. Messages name the file, the line and byte or the
/// object, and what is wrong.
struct ReadResult {
    EditPtr edit;
    embedded::Warnings warnings;
    std::string error;
    bool rate_missing = false; ///< the error is that nothing tells the rate and the options don't either
};

} // namespace formats
