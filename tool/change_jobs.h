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

/// The exit status; `exit_not_proved` when a proof was asked for and failed.
int run(const ChangelistJob& job);

} // namespace tool
