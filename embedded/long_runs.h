#pragma once
// Long runs of the library in this process, for a program that has a watchdog.

namespace embedded {

/// A run is at work, or hangs, while more have begun than ended.
struct LongRuns {
    int begun = 0;
    int ended = 0;
};
const LongRuns& long_runs();

} // namespace embedded
