#pragma once
// Reads and checks the values of the command line. All throw `UsageError`.

#include "tool/job_parts.h"

namespace tool {

/// The keys of host-wide settings.
extern const std::vector<std::string> setting_keys;

/// "V1", "A2": a kind and a number from 1.
ChannelName parse_channel(const std::string& text);
/// One of the listed frame rates.
const embedded::RateInfo* parse_rate(const std::string& text);
/// A whole number of frames from 0 to 10,000, as an option takes it.
std::string parse_frames(const char* option, const std::string& text);
/// KEY=VALUE pairs for keys of the library's options, the last of a key winning.
std::map<std::string, std::string> parse_options(const std::vector<std::string>& pairs);
/// The same for keys of the changelist's options.
std::map<std::string, std::string> parse_change_options(const std::vector<std::string>& pairs);
/// KEY=VALUE pairs for host-wide settings.
Settings parse_settings(const std::vector<std::string>& pairs);

} // namespace tool
