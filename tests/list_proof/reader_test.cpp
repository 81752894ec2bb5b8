// Reports read back from their text.

#include "film/doubt_list.h"
#include "film/list_arithmetic.h"
#include "film/printed_report.h"
#include "film/report_pages.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <filesystem>

namespace {

using namespace film;

std::vector<std::string> example_reports() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project_folder() + "/examples")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".txt" && name.rfind("changes", 0) != 0) paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string example(const std::string& name) { return bytes_of_file(project_folder() + "/examples/" + name); }

std::string faults_of(const PrintedReport& report) {
    std::string text;
    for (const ReadFault& fault : report.faults)
        text += fault.list + " page " + std::to_string(fault.place.page) + " line " + std::to_string(fault.place.line) +
                ": " + fault.what + "\n";
    return text;
}

TEST(PrintedReports, OfAllExamplesAreReadWhole) {
    const std::vector<std::string> paths = example_reports();
    ASSERT_GE(paths.size(), 20u);
    for (const std::string& path : paths) {
        const std::string bytes = bytes_of_file(path);
        const PrintedReport report = read_report(bytes);
        EXPECT_EQ(faults_of(report), "") << path;
        EXPECT_FALSE(report.pages.lists.empty());
    }
}

TEST(PrintedReports, HaveTheHeadOfTheirFirstList) {
    const std::string bytes = example("reel/expected/reel-neg.txt");
    const std::string head(head_of_report(bytes));
    EXPECT_EQ(head, bytes.substr(0, head.size()));
    EXPECT_EQ(head.substr(0, 13) + head.substr(head.size() - 2), "Edit:        \r\n");
    EXPECT_EQ(bytes.substr(head.size(), 50), "                               LIST OF ROLLS USED\r");
    // On a later sheet.
    EXPECT_EQ(head_of_report("\r\n\f\n" + bytes), "\r\n\f\n" + head);
    EXPECT_EQ(head_of_report("Edit:         \r\n\f\n"), "");
    EXPECT_EQ(head_of_report(""), "");
}

/// The bytes that stand in these columns, told for each by itself.
std::string bytes_between(const std::string& line, int from, int to) {
    std::string between;
    int column = 0;
    for (const char c : line) {
        if (column >= from && (to < 0 || column < to)) between += c;
        if (static_cast<signed char>(c) >= 32) ++column;
    }
    return between;
}

TEST(PrintedReports, CellsHoldTheBytesOfTheirColumns) {
    EXPECT_TRUE(rc::check([](int seed) {
        const auto line = *rc::gen::container<std::string>(rc::gen::element('a', ' ', '9', '\x1B', '\xC3', '\xA9'));
        const int from = seed % 12, to = *rc::gen::inRange(-1, 14);
        RC_ASSERT(raw_cell(line, from, to) == bytes_between(line, from, to));
        const std::string between = bytes_between(line, from, to);
        const std::size_t first = between.find_first_not_of(' ');
        RC_ASSERT(cell(line, from, to) ==
                  (first == std::string::npos ? "" : between.substr(first, between.find_last_not_of(' ') + 1 - first)));
    }));
}

TEST(PrintedReports, TellTheirHeading) {
    const std::string bytes = example("reel/expected/reel-neg.txt");
    const PrintedReport report = read_report(bytes);
    ASSERT_NE(report.heading(), nullptr);
    EXPECT_EQ(report.heading()->edit, "THE LAMPLIGHTER R2");
    EXPECT_EQ(report.heading()->project, "THE LAMPLIGHTER");
    EXPECT_EQ(report.heading()->format, "35mm 4perf");
    EXPECT_FALSE(report.heading()->cutting_copy);
    EXPECT_EQ(report.heading()->sound_track, -1);
    const std::string sound = example("reel/expected/reel-a1.txt");
    EXPECT_EQ(read_report(sound).heading()->sound_track, 4);
}

TEST(PrintedReports, HoldAssemblyEventsWithMarksAndSpeeds) {
    const std::string bytes = example("reel/expected/reel.txt");
    const PrintedReport report = read_report(bytes);
    ASSERT_TRUE(report.assembly);
    const std::vector<AssemblyEntry>& events = report.assembly->events;
    ASSERT_EQ(events.size(), 128u);
    EXPECT_TRUE(events[0].reduced);
    const AssemblyEntry& second = events[1];
    EXPECT_EQ(second.event, 2);
    EXPECT_EQ(second.start, "0000+00");
    EXPECT_EQ(second.length, "8+04");
    EXPECT_EQ(second.roll, "A012");
    EXPECT_EQ(second.shot, "12/3");
    EXPECT_EQ(second.key_in, "KJ2910105870+07");
    EXPECT_EQ(second.key_out, "5878+10");
    EXPECT_EQ(second.ink_in, "AA121003+00");
    EXPECT_EQ(second.ink_out, "1011+03");
    EXPECT_EQ(second.fade_in, 24);
    EXPECT_EQ(second.mark_out.name, "Dissolve");
    EXPECT_EQ(second.mark_out.length, 24);
    EXPECT_EQ(second.mark_out.key, "KJ2910105877+15");
    EXPECT_EQ(second.mark_out.ink, "AA121010+08");
    EXPECT_EQ(events[3].ink_in, "NO INKCODE");
    EXPECT_EQ(events[5].speed, "2");
    EXPECT_EQ(events[7].speed, "0");
    ASSERT_EQ(report.assembly->effects.size(), 5u);
    EXPECT_EQ(report.assembly->effects[0].name, "Superimpose title");
    EXPECT_EQ(report.assembly->effects[0].optical, 2);
    EXPECT_EQ(report.assembly->effects[0].length, 70);
    EXPECT_EQ(report.assembly->effects[0].from, "0015+00");
    EXPECT_FALSE(report.assembly->total.empty());
}

TEST(PrintedReports, HoldPulledFilmUnderTheRollNamedAbove) {
    const std::string bytes = example("reel/expected/reel.txt");
    const PrintedReport report = read_report(bytes);
    ASSERT_TRUE(report.pulls);
    EXPECT_EQ(report.pulls->reuse_cases, 10);
    const std::vector<PullEntry>& entries = report.pulls->entries;
    EXPECT_EQ(entries[0].roll, "");
    EXPECT_EQ(entries[0].key_in, "NO KEYKODE");
    EXPECT_EQ(entries[1].roll, "A012");
    EXPECT_TRUE(entries[1].roll_printed);
    EXPECT_EQ(entries[2].roll, "A012");
    EXPECT_FALSE(entries[2].roll_printed);
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), [](const PullEntry& entry) { return entry.reused; }));
}

TEST(PrintedReports, ReadNamesOfManyBytesAsThePagesCountThem) {
    const std::string bytes = example("reel/expected/reel.txt");
    const PrintedReport report = read_report(bytes);
    const auto found = std::find_if(report.pulls->entries.begin(), report.pulls->entries.end(),
                                    [](const PullEntry& entry) { return entry.event == 51; });
    ASSERT_NE(found, report.pulls->entries.end());
    EXPECT_EQ(found->shot, "灯台 14B/1");
    EXPECT_EQ(found->length, "2+06");
    EXPECT_EQ(found->key_in, "FN77001310000+04");
    EXPECT_EQ(found->key_out, "10002+09");
    EXPECT_TRUE(found->reused);
}

TEST(PrintedReports, HoldDrawingsRollByRoll) {
    const std::string bytes = example("opticals/expected/lantern.txt");
    const PrintedReport report = read_report(bytes);
    ASSERT_TRUE(report.opticals);
    const OpticalEntry& first = report.opticals->opticals[0];
    EXPECT_EQ(first.number, 1);
    EXPECT_EQ(first.name, "single-layer effect");
    EXPECT_EQ(first.length, 198);
    ASSERT_EQ(first.layers.size(), 1u);
    const DrawnLayer& layer = first.layers[0];
    ASSERT_EQ(layer.shots.size(), 3u);
    EXPECT_EQ(layer.shots[0].begin.key, "KJ5120401403+00");
    EXPECT_EQ(layer.shots[0].full_out.position, "0007+07");
    EXPECT_EQ(layer.shots[1].start_in.key, "KN6270012203+04");
    EXPECT_EQ(layer.shots[2].end.key, "2606+11");
    EXPECT_EQ(layer.rolls[1].front().spacer, 48);
    ASSERT_EQ(layer.transitions.size(), 2u);
    EXPECT_EQ(layer.transitions[1].name, "Wipe");
    EXPECT_EQ(layer.transitions[1].length, 16);
    EXPECT_EQ(report.opticals->opticals[2].layers.size(), 3u);
    EXPECT_EQ(report.opticals->opticals[2].effects.size(), 2u);
}

TEST(ReelUnits, ReadLengthsOfFewerAndOfMoreDigitsThanPositionsHave) {
    const ReelUnits units(label_key_35mm_4p);
    EXPECT_EQ(units.length_of("1+15"), 31);
    EXPECT_EQ(units.length_of("1001+15"), 16031);
    EXPECT_EQ(units.length_of("10001+15"), 160031);
    EXPECT_EQ(units.length_of("31"), 31);
}

TEST(PrintedReports, TellWhereTheyCanNotBeRead) {
    std::string bytes = example("16mm/expected/heron.txt");
    bytes.replace(bytes.find("0001+20  ", bytes.find("ASSEMBLY LIST")) - 5, 1, "x");
    const PrintedReport report = read_report(bytes);
    ASSERT_FALSE(report.faults.empty());
    EXPECT_EQ(report.faults[0].list, "assembly list");
    EXPECT_EQ(report.faults[0].place.page, 1);
    EXPECT_GT(report.faults[0].place.line, 50);
}

TEST(PrintedReports, MissAPage) {
    std::string bytes = example("reel/expected/reel.txt");
    const std::size_t first = bytes.find("\f", bytes.find("PULL LIST         ")) + 1;
    bytes.erase(first, bytes.find("\f", first) + 1 - first);
    EXPECT_NE(faults_of(read_report(bytes)), "");
}

TEST(PrintedReports, SurviveAnyDamage) {
    const std::string whole = example("opticals/expected/lantern-neg.txt");
    EXPECT_TRUE(rc::check([&whole] {
        std::string bytes = whole;
        for (int hits = *rc::gen::inRange(1, 12); hits > 0; --hits) {
            const auto at = static_cast<std::size_t>(*rc::gen::inRange(0, static_cast<int>(bytes.size())));
            const auto count = static_cast<std::size_t>(*rc::gen::inRange(0, 200));
            bytes.replace(at, count, *rc::gen::container<std::string>(rc::gen::arbitrary<char>()));
        }
        const PrintedReport report = read_report(bytes);
        for (const ReadFault& fault : report.faults)
            RC_ASSERT(!fault.what.empty() && fault.place.line >= 1);
    }));
}

} // namespace
