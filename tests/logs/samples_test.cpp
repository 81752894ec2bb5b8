// Logs of other programs: each gives its rows, or is refused with line and reason.

#include "formats/logs/log_reader.h"
#include "tests/support/project_paths.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

using namespace formats;

namespace {

TEST(LogSamples, EachGivesARowALineOrIsRefusedWithAReason) {
    const std::filesystem::path folder = std::filesystem::path((project_folder() + "/../shared")) / "samples/logs";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "no samples here";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        const Log log = read_log(entry.path());
        if (!log.error.empty()) {
            EXPECT_THAT(log.error, testing::StartsWith(entry.path().string() + ":"));
            continue;
        }
        EXPECT_FALSE(log.rows.empty()) << entry.path();
        for (const LogRow& row : log.rows) {
            EXPECT_TRUE(row.start.is_useful()) << entry.path() << ":" << row.line;
            EXPECT_TRUE(row.end.is_useful()) << entry.path() << ":" << row.line;
            EXPECT_LT(row.start.sample, row.end.sample) << entry.path() << ":" << row.line;
        }
    }
}

} // namespace
