#pragma once
// The entries of a list of missing and doubtful elements.

#include "film/report_pages.h"

namespace film {

/// A place of the reel with what is the matter there.
struct DoubtEntry {
    Place place;
    int event = 0;            ///< 0: the assembly doesn't show it
    std::string_view channel; ///< "V2", where there is no event
    std::string_view position;
    bool in_no_list = false; ///< no other list shows its film
    int findings = 0;
};

struct DoubtEntries {
    std::vector<DoubtEntry> entries;
    int of_whole_edit = 0; ///< findings that have no place
    bool by_table = false;
    bool none = false; ///< the list says that there are none
};

DoubtEntries read_doubts(const ListPages& pages, std::vector<ReadFault>& faults);

} // namespace film
