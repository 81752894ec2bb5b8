#pragma once
// What the environment says to the command.

namespace tool {

/// Throws `UsageError` where a variable that the command reads holds what can't be read.
void check_environment();
/// Warns of variables that begin with QUILLBROOK_ and that nothing reads, such as mistyped ones.
void tell_unknown_variables();

} // namespace tool
