#pragma once
// One run at a time on one output.

#include "embedded/file_calls.h"

#include <string>

namespace embedded {

/// Holds the name of an output from other runs: a locked file beside it, which goes with this object.
class OutputLock {
public:
    OutputLock() = default;
    ~OutputLock();
    OutputLock(OutputLock&& other) noexcept;
    OutputLock(const OutputLock&) = delete;
    OutputLock& operator=(const OutputLock&) = delete;
    OutputLock& operator=(OutputLock&&) = delete;

    /// Waits for another run, as many seconds as the host-wide setting "wait_for_outputs" says, by default 10. Empty
    /// when the name is held, otherwise why not.
    std::string hold(const std::string& folder, const std::string& name);

private:
    int try_once();

    std::string path_;
    Descriptor file_;
    int slot_ = -1;
};

/// Removes the lock files of dead runs.
void sweep_output_locks(const std::string& folder);

} // namespace embedded
