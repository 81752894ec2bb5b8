#pragma once
// Where the messages of a run go: all to standard error, as standard output may be the report.

#include "embedded/warning.h"
#include "host/settings.h"

#include <string>
#include <vector>

namespace tool {

class ToolLogger : public LoggerHandle {
public:
    /// `subject` is named behind each error.
    ToolLogger(std::string subject, bool quiet) : subject_(std::move(subject)), quiet_(quiet) {}

    void message(const LightweightString<wchar_t>& text, int level) override;
    /// A message of the level that ends a run was told.
    bool failed() const { return failed_; }

private:
    std::string subject_;
    bool quiet_;
    bool failed_ = false;
};

/// Tables that are read from now on hold names that can't forge anything; what was wrong with them is told, unless
/// `quiet`.
void receive_tables(bool quiet);
/// Tells each warning in a line of its own, unless `quiet`.
void tell_warnings(const embedded::Warnings& warnings, bool quiet);
/// The text without blanks around it, with signs for control characters, so that a name from a file can't spoil a
/// terminal.
std::string one_line(const std::string& text);

} // namespace tool
