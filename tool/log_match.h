#pragma once
// Finds the rows of a log by something else than reel and source timecode.
//
// The library looks rows up by reel and timecode. So where others are asked for, a table is put together in the work
// directory, of the rows that belong to each source under a reel of its own, and the edit's sources go by these reels:
//
//     source "A012C003", reel AX              row 7: clip A012C003, reel V012, camera timecode 14:01:02:03
//     source "A012C003", reel A012C003        row 1: reel A012C003, start 14:01:02:03

#include "embedded/edit_recipe.h"
#include "embedded/warning.h"
#include "tool/job_parts.h"

#include <string>
#include <vector>

namespace tool {

/// A table that stands in for a log.
struct MatchedLog {
    std::string path;
    std::vector<int> places; ///< of each of its rows, where it stood in the log, from 0
};

/// The reels of an edit's sources are from now on as `matching` has them, where it names aliases.
void name_by_aliases(const LogMatching& matching);

/// Puts the table together for the sources of an edit; from now on it stands in for the log, and sources are named for
/// it. `warnings` take what matches only loosely, or nothing. Throws `JobError`.
void match_log(const LogMatching& matching, const std::vector<embedded::SourceDescription>& sources,
               embedded::Warnings& warnings);

/// What --match and --log-time take: "reel, tape, clip, ...".
std::vector<std::string> match_names();
std::vector<std::string> log_time_names();
/// What stands in for a log; null where nothing does.
const MatchedLog* matched_log(const std::string& log);

} // namespace tool
