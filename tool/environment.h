#pragma once
// What the environment says to the command.

namespace tool {

/// Throws `UsageError` where a variable that the command reads holds what can't be read.
void check_environment();

} // namespace tool
