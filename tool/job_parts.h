#pragma once
// What the jobs of several commands are made of. tool/shared_options.h lists the options that fill them.

#include "embedded/rates.h"
#include "tool/channels.h"

#include <map>
#include <string>
#include <vector>

namespace tool {

/// Where a job's report goes.
struct Output {
    std::string report;
    bool overwrite = false;
    bool quiet = false;       ///< no progress, no warnings; what is wrong is told all the same
    bool no_progress = false; ///< warnings, but no progress
};

/// How rows of a log are found, where not by reel and source timecode. Empty: that way.
struct LogMatching {
    std::string log;     ///< the logging table
    std::string key;     ///< "reel", "clip" and the like
    std::string time;    ///< which timecode of the rows: "source", "camera", "sound"
    std::string aliases; ///< a file of names of reels

    bool asks_for_rows() const { return !log.empty() && (!key.empty() || !time.empty()); }
};

/// How an edit is read.
struct EditInput {
    std::vector<std::string> paths;           ///< one; several only of the edit lists of one programme
    const embedded::RateInfo* rate = nullptr; ///< null: what the file says
    bool all_effects = false;
    std::string sequence{};          ///< of a file that holds several; empty: the only one
    bool reverse_from_first = false; ///< of reverse shots in edit lists the source in is the frame shown first
    LogMatching matching{};          ///< also what its reels are called
};

/// How logs are read: what the caller knows better than the files.
struct LogInput {
    std::vector<std::string> paths;
    const embedded::RateInfo* rate = nullptr; ///< null: what each file says
    std::string reel;                         ///< empty: what each row says
    int film = 0;                             ///< a kind of key numbers; 0: what each file says
    bool force = false;                       ///< read tables that don't fit their seal
};

/// Host-wide settings by key, checked.
using Settings = std::map<std::string, int>;

/// Options of the library that the line sets, by key, checked.
struct LibraryOptions {
    std::map<std::string, std::string> switches; ///< by switches of the command
    std::map<std::string, std::string> set;      ///< by --set, which wins

    /// Empty where the line doesn't set it.
    std::string value(const std::string& key) const {
        const auto wins = set.find(key);
        const auto found = wins == set.end() ? switches.find(key) : wins;
        return wins == set.end() && found == switches.end() ? "" : found->second;
    }
    bool is_on(const std::string& key) const { return !value(key).empty() && value(key) != "0"; }
};

} // namespace tool
