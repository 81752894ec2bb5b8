#pragma once
// Runs the command as a process of its own in a folder of its own.

#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

struct ToolResult {
    int status = -1; ///< exit status; -1 where the process didn't end by itself
    std::string out;
    std::string err;      ///< warnings and errors of standard error
    std::string progress; ///< its other lines
};

/// A folder that is empty at the start of a test and goes with it. Names of files are relative to it.
class ToolTest : public testing::Test {
protected:
    ToolTest();
    ~ToolTest() override;

    /// Runs the command in the folder. `environment` is added to a plain one (locale C, time zone UTC,
    /// SOURCE_DATE_EPOCH 0).
    ToolResult run(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment = {}) const;

    /// The same with bytes at standard input; otherwise that is empty.
    ToolResult run_with_input(const std::string& input, const std::vector<std::string>& arguments,
                              const std::map<std::string, std::string>& environment = {}) const;

    /// Runs that should end in status 0, and runs that should end in another one with a single line of error and leave
    /// no new file.
    ToolResult expect_done(const std::vector<std::string>& arguments) const;
    void expect_failure(const std::vector<std::string>& arguments, int status, const std::string& text) const;

    std::string path(const std::string& name) const { return folder_ / name; }
    bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }
    /// The names in the folder, sorted.
    std::vector<std::string> names() const;
    std::string read(const std::string& name) const;
    void write(const std::string& name, const std::string& bytes) const;

    /// Two picture clips with key numbers and one sound clip, in project "Heron".
    void write_edit(const std::string& name) const;

private:
    std::filesystem::path folder_;
};
