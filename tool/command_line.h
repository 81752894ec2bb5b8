#pragma once
// The command line: from arguments to what is to be done.

#include <functional>
#include <string>
#include <variant>

namespace tool {

/// What the arguments ask for: a job, whose exit status it returns, or a text such as the help.
using Request = std::variant<std::string, std::function<int()>>;

/// Throws `UsageError`.
Request parse_command_line(int argc, const char* const* argv);

} // namespace tool
