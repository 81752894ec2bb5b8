#pragma once
// Looks through an edit and its log for all that `Code` names.

#include "embedded/warning.h"
#include "film/film_uses.h"
#include "film/finding.h"

#include <string>

namespace film {

struct CheckOptions {
    UseOptions uses;
    std::string edit_file, log_file; ///< as messages name them
    int splice_frames = 1;           ///< frames that must lie between two pieces on the negative
    bool ink_needed = false;
    bool edl = false;          ///< the edit is an edit list, so reverse shots may be meant in two ways
    bool low_is_first = false; ///< of those two, the source in was taken for the first frame shown
};

/// All findings, worst first. `warnings` are what the reader of the edit told. Time goes with events and rows times
/// their logarithms.
Findings check_edit(const EditPtr& edit, const CheckOptions& options, const LogRows* log,
                    const embedded::Warnings& warnings);

} // namespace film
