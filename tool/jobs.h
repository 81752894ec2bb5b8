#pragma once
// What the command can be asked to do. The command line makes one of these; `run` does it.

#include "embedded/rates.h"

#include <map>
#include <string>
#include <vector>

namespace tool {

/// A channel as people name it: "V1" is the first picture channel, "A2" the second sound channel.
struct ChannelName {
    int kind = 1;   ///< 1 picture, 2 sound
    int number = 1; ///< from 1, among the channels of that kind
};

/// Where a job's report goes.
struct Output {
    std::string report;
    bool overwrite = false;
    bool quiet = false; ///< no progress, no warnings
};

/// How an edit file is read.
struct EditInput {
    std::string path;
    const embedded::RateInfo* rate = nullptr; ///< null: what the file says
    bool all_effects = false;
    std::vector<std::string> more; ///< further lists of the same programme, for edit lists only
};

/// Library options and host-wide settings by key, checked.
using Options = std::map<std::string, std::string>;
using Settings = std::map<std::string, int>;

struct CutlistJob {
    EditInput edit;
    Output output;
    ChannelName channel;
    bool neg_cut = false;
    bool frames = false;
    std::string log; ///< the logging table that key numbers come from; empty: the edit's own labels
    Options options; ///< wins over all of the above
    Settings settings;
};

struct PrintJob {
    std::string table;
    Output output;
    Options options;
    Settings settings;
};

struct ShowJob {
    EditInput edit;
};

/// The exit status. A failure that nothing was said of is a `JobError`.
int run(const CutlistJob& job);
int run(const PrintJob& job);
int run(const ShowJob& job);

} // namespace tool
