#pragma once
// The command line: from arguments to what is to be done.

#include "tool/tool_error.h"

#include <functional>
#include <string>
#include <variant>

namespace tool {

/// What the arguments ask for: a job, which tells how it ended, or a text such as the help.
using Request = std::variant<std::string, std::function<JobResult()>>;

/// Throws `UsageError`.
Request parse_command_line(int argc, const char* const* argv);

} // namespace tool
