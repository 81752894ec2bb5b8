#pragma once
// What the jobs that write reports have in common.

#include "embedded/services.h"
#include "tool/job_parts.h"

namespace tool {

void apply_settings(const Settings& settings);
/// Puts the options of the line over what the block holds.
void apply_options(const LibraryOptions& options, embedded::settings_block& block);

} // namespace tool
