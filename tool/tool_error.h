#pragma once
// The two ways in which the command fails. Each carries one line that names the file, key or object.

#include <stdexcept>

namespace tool {

/// Exit statuses of the command.
constexpr int exit_done = 0;
constexpr int exit_failed = 1;
constexpr int exit_wrong_usage = 2;
constexpr int exit_not_proved = 3;

/// How a job ended that threw nothing: its exit status, and whether the files that it wrote stay.
struct JobResult {
    int status;
    bool keeps_files;

    /// A job that failed leaves no files.
    JobResult(int exit_status) : status(exit_status), keeps_files(exit_status != exit_failed) {}
    /// What was looked for was found; the status is that of a failure, and what was written of it stays.
    static JobResult found() {
        JobResult result(exit_failed);
        result.keeps_files = true;
        return result;
    }
};

/// The command line asks for something that doesn't exist.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The job can't be done.
struct JobError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tool
