#pragma once
// Looks through an edit and its log for all that `Code` names.

#include "embedded/warning.h"
#include "film/film_uses.h"
#include "film/finding.h"

#include <string>

namespace film {

/// What the lists do with ink numbers, and so whether film without one is in doubt.
enum class InkNeed : unsigned char {
    none,       ///< they print none
    where_used, ///< they print them: film needs one where other film of its roll has one
    all,        ///< they go by them
};

struct CheckOptions {
    UseOptions uses;
    std::string edit_file, log_file; ///< as messages name them
    int splice_frames = 1;           ///< frames that must lie between two pieces on the negative
    InkNeed ink = InkNeed::none;
    bool edl = false;          ///< the edit is an edit list, so reverse shots may be meant in two ways
    bool low_is_first = false; ///< of those two, the source in was taken for the first frame shown
};

/// All findings, worst first. `warnings` are what the reader of the edit told. Time goes with events and rows times
/// their logarithms.
Findings check_edit(const EditPtr& edit, const CheckOptions& options, const LogRows* log,
                    const embedded::Warnings& warnings);

/// What of that a saved cutlist table tells without its edit and log. Positions have no timecode of the edit.
Findings check_table(const recdb& table, const CheckOptions& options);

} // namespace film
