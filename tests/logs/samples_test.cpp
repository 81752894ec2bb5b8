// Logs as other programs write them, below tests/samples: each gives its rows, or is refused with line and reason.

#include "formats/logs/log_reader.h"
#include "tests/support/project_paths.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace formats;

namespace {

std::string sample(const std::string& name) { return project_folder() + "/tests/samples/logs/" + name; }

/// Name, reel, start and key number of each row.
std::vector<std::string> rows_of(const Log& log) {
    std::vector<std::string> rows;
    for (const LogRow& row : log.rows) {
        LabelPoint start = row.start, key = row.key_start;
        rows.push_back(row[LogField::name] + " " + row[LogField::reel] + " " + start.get_string() + " " +
                       key.get_string());
    }
    return rows;
}

using Rows = std::vector<std::string>;

TEST(LogSamples, AnAvidLogWithoutFilmGivesItsTimecodes) {
    const Log log = read_log(sample("no_film.ale"));
    EXPECT_EQ(log.error, "");
    EXPECT_EQ(rows_of(log), (Rows{"A012C004 A012 14:02:00:00 ", "A012C005 A012 14:04:00:00 "}));
}

TEST(LogSamples, KeyNumbersWithBlanksAndOnePrefixOfInk) {
    const Log log = read_log(sample("keys.ale"));
    EXPECT_EQ(log.error, "");
    EXPECT_EQ(rows_of(log), (Rows{"7-1 003 03:00:00:00 KK8800421200+00", "7-2 003 03:01:00:00 KK8800421300+08"}));
}

TEST(LogSamples, ATransferOfOneShot) {
    EXPECT_EQ(rows_of(read_log(sample("transfer.flx"))), (Rows{"9-2 V044 04:00:10:00 EJ9033114400+00"}));
}

TEST(LogSamples, AReportInColumnsWithALineThatEndsEarly) {
    EXPECT_EQ(rows_of(read_log(sample("telecine.txt"))),
              (Rows{"17-2 022 02:00:00:00 KJ1230001000+00", "17-3 022 02:01:00:00 KJ1230001040+00"}));
}

TEST(LogSamples, ATableThatSaysNoRateIsReadAtTheOneGiven) {
    LogOptions options;
    EXPECT_EQ(read_log(sample("day3.csv")).error,
              sample("day3.csv") + ":2: no column for the frame rate; name it with --rate");
    options.rate = embedded::nearest_rate(25);
    const Log log = read_log(sample("day3.csv"), options);
    EXPECT_EQ(log.error, "");
    EXPECT_EQ(rows_of(log), (Rows{"31-1 D3 10:00:00:00 KJ5512341000+00", "31-2 D3 10:01:00:00 KJ5512341030+04",
                                  "32, pick-up-1 D3 10:02:00:00 "}));
}

TEST(LogSamples, WhatIsNoLogIsRefusedWithAReason) {
    EXPECT_EQ(read_log(sample("letter.txt")).error,
              sample("letter.txt") + ":1: no header row that names a start, such as \"Start\" or \"start time\"");
    EXPECT_EQ(read_log(sample("wide.ale")).error, sample("wide.ale") + ": is 16-bit text; save it as UTF-8");
}

TEST(LogSamples, EachGivesARowALineOrIsRefusedWithAReason) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(sample(""))) {
        ++count;
        const Log log = read_log(entry.path());
        if (!log.error.empty()) {
            EXPECT_THAT(log.error, testing::StartsWith(entry.path().string() + ":"));
            continue;
        }
        EXPECT_FALSE(log.rows.empty()) << entry.path();
        for (const LogRow& row : log.rows)
            EXPECT_LT(row.start.sample, row.end.sample) << entry.path() << ":" << row.line;
    }
    EXPECT_EQ(count, 7);
}

} // namespace
