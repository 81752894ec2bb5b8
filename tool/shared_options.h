#pragma once
// Options that several commands have, each in one place. What differs between the commands is the help.

#include "tool/job_parts.h"
#include "tool/option_table.h"

#include <map>
#include <string>
#include <vector>

namespace tool {

/// EDIT, --sequence, --rate, --all-effects, --edl-reverse.
void add_edit_input(OptionTable& options, EditInput& edit);
/// The same without EDIT.
void add_edit_reading(OptionTable& options, EditInput& edit);
/// LOG, --rate, --film, --reel.
void add_log_input(OptionTable& options, LogInput& logs, const char* what);
/// --lists to --sort-by-key, --set, --config: what the cutlist's reports hold. `doubts`: as of `printed_lists_option`.
void add_report_options(OptionTable& options, LibraryOptions& library, Settings& settings, bool& doubts);

Option output_file(Output& output, const char* what);
Option overwrite(Output& output, const char* what);
Option quiet(Output& output);
/// --force, for `read_in_spite_of_seals`.
Option force(bool& force);
Option no_progress(Output& output);
/// --config.
Option host_setting(Settings& settings);
/// --log.
Option log_table(std::string& log);
/// --channel, --log.
void add_channel_and_log(OptionTable& options, ChannelName& channel, std::string& log);

/// --match, --log-time, --aliases, for the log that `log` names.
void add_log_matching(OptionTable& options, EditInput& edit, const std::string& log);

Option rate(const embedded::RateInfo*& rate, const char* what);
/// A switch that sets an option of the library to `value`.
Option library_switch(const char* name, LibraryOptions& library, const char* key, const char* value, const char* what);
/// Frames, 0 or above, for an option of the library.
Option library_frames(const char* name, LibraryOptions& library, const char* key, const char* what);

using PairsParser = std::map<std::string, std::string> (*)(const std::vector<std::string>& pairs);
/// --set, for the options of the library that `parse` knows.
Option library_set(LibraryOptions& library, PairsParser parse);

} // namespace tool
