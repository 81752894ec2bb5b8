#pragma once
// What the command can be asked to do with two cuts.

#include "tool/jobs.h"

#include <optional>

namespace tool {

/// The cutlists of an old and a new cut into a changelist.
struct ChangelistJob {
    std::vector<std::string> old_reels, new_reels; ///< tables, one a reel, in order
    std::vector<EditInput> edits;                  ///< that the names in the banner may be taken from
    Output output;
    Options options;                      ///< wins over what the tables say
    std::optional<std::string> lists_dir; ///< of the working files; without it the host's own
    std::optional<std::string> json;      ///< the file of the steps
    bool prove = false;
};

/// The tables of both cuts, the old one's first.
inline std::vector<std::string> tables_of(const ChangelistJob& job) {
    std::vector<std::string> tables = job.old_reels;
    tables.insert(tables.end(), job.new_reels.begin(), job.new_reels.end());
    return tables;
}

/// The exit status; `exit_not_proved` when a proof was asked for and failed.
int run(const ChangelistJob& job);

} // namespace tool
