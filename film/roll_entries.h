#pragma once
// The entries of the list of rolls and of the re-use report.

#include "film/report_pages.h"

namespace film {

struct RollEntry {
    Place place;
    std::string_view roll;
};

std::vector<RollEntry> read_rolls(const ListPages& pages, std::vector<ReadFault>& faults);

/// Film that two events want, or where they meet.
struct ReuseEntry {
    Place place;
    std::string_view roll, shot;
    bool butt = false;       ///< they meet; then only `from` is there
    bool unnumbered = false; ///< film without key numbers
    std::string_view from, to;
};

std::vector<ReuseEntry> read_reuse(const ListPages& pages, std::vector<ReadFault>& faults);

} // namespace film
