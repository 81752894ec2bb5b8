#pragma once
// The list of missing and doubtful elements behind the other lists of a report.

#include "embedded/services.h"
#include "film/finding.h"
#include "tool/job_parts.h"

#include <string>

namespace tool {

class CutlistTable;

/// A report that was printed, and what it was printed by.
struct PrintedFrom {
    std::string report, table;
    const CutlistTable& head; ///< of the table
    const embedded::settings_block& options;
    bool in_frames = false; ///< positions in frames, where the line says so
};

/// Adds its pages to the report. `by_table` says that the findings are those of the table alone. Throws `JobError`.
void add_doubts(const PrintedFrom& printed, const film::Findings& findings, bool by_table);

/// Whether the line asks for positions in frames; `otherwise` where no option of the library says.
bool asks_for_frames(const LibraryOptions& options, bool otherwise);

} // namespace tool
