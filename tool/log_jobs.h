#pragma once
// What the command can be asked to do with logs.

#include "tool/jobs.h"

namespace tool {

/// How logs are read: what the caller knows better than the files.
struct LogInput {
    std::vector<std::string> paths;
    const embedded::RateInfo* rate = nullptr; ///< null: what each file says
    std::string reel;                         ///< empty: what each row says
    int film = 0;                             ///< a kind of key numbers; 0: what each file says
};

/// Logs into one table.
struct LogImportJob {
    LogInput logs;
    Output output;
    bool as_keylog = false; ///< by the library's own reader of Keylog files
};

/// Tables into one.
struct LogMergeJob {
    std::vector<std::string> tables;
    Output output;
};

struct LogShowJob {
    LogInput logs;
};

struct LogCheckJob {
    LogInput logs;
    int tolerance = 2; ///< film frames, where there is pulldown
};

/// The exit status; of a check 1 also when it found something.
int run(const LogImportJob& job);
int run(const LogMergeJob& job);
int run(const LogShowJob& job);
int run(const LogCheckJob& job);

} // namespace tool
