#pragma once
// The command line: from arguments to a job.

#include "tool/change_jobs.h"
#include "tool/jobs.h"
#include "tool/log_jobs.h"

#include <variant>

namespace tool {

/// What the arguments ask for: a job, or a text such as the help.
using Request = std::variant<std::string, CutlistJob, PrintJob, ChangelistJob, ShowJob, LogImportJob, LogMergeJob,
                             LogShowJob, LogCheckJob>;

/// Throws `UsageError`.
Request parse_command_line(int argc, const char* const* argv);

} // namespace tool
