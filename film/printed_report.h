#pragma once
// A printed report, read back as text.

#include "film/assembly_entries.h"
#include "film/doubt_entries.h"
#include "film/optical_entries.h"
#include "film/pull_entries.h"
#include "film/roll_entries.h"

#include <optional>

namespace film {

/// The lists that a report holds, entry by entry. The views look into the report's bytes.
struct PrintedReport {
    ReportPages pages;
    std::optional<std::vector<RollEntry>> rolls;
    std::optional<PullEntries> pulls;
    std::optional<PullEntries> optical_pulls;
    std::optional<std::vector<ReuseEntry>> reuse;
    std::optional<AssemblyEntries> assembly;
    std::optional<std::vector<TimecodeEntry>> timecodes;
    std::optional<OpticalEntries> opticals;
    std::optional<DoubtEntries> doubts;
    std::vector<ReadFault> faults; ///< what can't be read, in the order of the report's parts

    /// The heading of the first list; null where there is none.
    const ListHeading* heading() const { return pages.lists.empty() ? nullptr : &pages.lists.front().heading; }
};

/// Reads any bytes. Nothing that they hold makes it fail.
PrintedReport read_report(std::string_view bytes);

} // namespace film
