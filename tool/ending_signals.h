#pragma once
// Signals that end the command.

namespace tool {

/// From here on SIGINT, SIGTERM, SIGHUP and SIGPIPE end the command only once its private files are removed. Those that
/// the caller had ignored stay ignored. A file past the longest that is allowed ends nothing: it can't be written.
void leave_nothing_on_signals();

} // namespace tool
