#pragma once
// One run of the library that turns an edit into a table and a report: what the commands that make tables share.

#include "embedded/services.h"
#include "host/edit.h"
#include "tool/film_check.h"
#include "tool/job_parts.h"

#include <string>

namespace tool {

/// What the table of an edit is made of, besides the edit.
struct TableChoices {
    ChannelName channel;
    bool neg_cut = false;
    bool frames = false;
    std::string log;        ///< the logging table that key numbers come from; empty: the edit's own labels
    LibraryOptions options; ///< wins over all of the above
};

/// The options of a run whose report is made at `report`. Throws `JobError` where the log's path can't be named.
embedded::settings_block table_options(const TableChoices& choices, const EditPtr& edit, const std::string& report);

/// "V1 of reel.otio".
std::string subject_of(const ChannelName& channel, const std::string& edit_file);

/// Makes the table `PATH.cdb` of an edit, and no report. What its check finds is told as by `cutlist`. Throws
/// `JobError` where it can't be made, or is found wrong and `checks` is strict.
EditPtr make_table(const EditInput& input, const TableChoices& choices, const CheckChoices& checks,
                   const std::string& path, bool quiet);

} // namespace tool
