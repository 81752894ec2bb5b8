#pragma once
// The entries of an assembly list and of a timecode list.

#include "film/report_pages.h"

namespace film {

/// A transition as it is marked on the film: "MARK FROM".
struct PrintedMark {
    Place place;
    std::string_view name;
    int length = 0; ///< frames; 0: there is none
    std::string_view key, ink;
};

struct AssemblyEntry {
    Place place;
    int event = 0;
    int optical = 0; ///< a piece from the lab; it has a position and a length alone
    bool reduced = false;
    std::string_view start, length, roll, shot;
    std::string_view key_in, key_out, ink_in, ink_out;
    int fade_in = 0; ///< frames
    PrintedMark mark_out;
    std::string_view speed; ///< empty: play-speed; "0" where the shot was frozen
};

/// The heading of an effect that stands between the events of a cutting copy.
struct EffectEntry {
    Place place;
    std::string_view name;
    int optical = 0;
    int length = 0; ///< frames
    std::string_view from;
};

struct AssemblyEntries {
    std::vector<AssemblyEntry> events;
    std::vector<EffectEntry> effects;
    std::string_view total; ///< empty: none was met
    Place total_place;
};

AssemblyEntries read_assembly(const ListPages& pages, std::vector<ReadFault>& faults);

struct TimecodeEntry {
    Place place;
    int event = 0;
    std::string_view edit_in, edit_out, source_in, source_out, reel, shot;
};

std::vector<TimecodeEntry> read_timecodes(const ListPages& pages, std::vector<ReadFault>& faults);

} // namespace film
