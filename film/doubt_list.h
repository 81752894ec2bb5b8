#pragma once
// The list of missing and doubtful elements, which stands behind the other lists of a report.

#include "film/finding.h"
#include "host/labels.h"

#include <string>
#include <string_view>

namespace film {

/// What the list has in common with the others of its report.
struct DoubtStyle {
    std::string_view head;  ///< the first lines of another list, down to its title
    label_t film;           ///< the standard that positions are counted in
    bool in_frames = false; ///< positions in frames in place of feet and frames
    bool by_table = false;  ///< the findings are those of a table without its edit
};

/// Its pages: each finding that is wrong or a doubt, by position; notes aren't listed. They begin on a new sheet and
/// end in a form feed. Each position has one entry, with what is missing or in doubt below it:
///
///     12   0014+04  A012     VT1      01:00:02:00  12/3
///          MISSING   48 frames of tape VT1 from 01:00:02:00 have no key number
std::string doubt_pages(const Findings& findings, const DoubtStyle& style);

/// The first lines of a report's first list, down to its title; empty where there is no list.
std::string_view head_of_report(std::string_view report);

} // namespace film
