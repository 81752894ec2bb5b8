#pragma once
// From what the line asks for to the exit status.

#include "tool/command_line.h"

namespace tool {

/// Prints a text, or runs a job as one transaction: what one that fails has written is taken back. Throws `UsageError`
/// and `JobError`.
int run_request(const Request& request);

} // namespace tool
