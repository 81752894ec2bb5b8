#pragma once
// The two ways in which the command fails. Each carries one line that names the file, key or object.

#include <stdexcept>

namespace tool {

/// Exit statuses of the command.
constexpr int exit_done = 0;
constexpr int exit_failed = 1;
constexpr int exit_wrong_usage = 2;
constexpr int exit_not_proved = 3;

/// The command line asks for something that doesn't exist.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The job can't be done.
struct JobError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tool
