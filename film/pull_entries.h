#pragma once
// The entries of a pull list or an opticals pull list.

#include "film/report_pages.h"

namespace film {

struct PullEntry {
    Place place;
    int event = 0;         ///< in the pull list
    int optical = 0;       ///< in the opticals pull list
    std::string_view roll; ///< that of the entry above, where none is printed
    bool roll_printed = false;
    std::string_view shot, length;
    bool reused = false; ///< "**"
    std::string_view key_in, key_out, ink_in, ink_out;
};

struct PullEntries {
    std::vector<PullEntry> entries;
    int reuse_cases = -1; ///< what the note at the head says; -1: there is none
    Place note;
};

PullEntries read_pulls(const ListPages& pages, std::vector<ReadFault>& faults);

} // namespace film
