#pragma once
// Standard input, output and error, as the caller leaves them.

namespace tool {

/// Puts something in the place of those that the caller closed on which reading and writing fails: a file of the run
/// would get their number otherwise, and then what is told. To be called before any file is opened.
void hold_closed_streams();

} // namespace tool
