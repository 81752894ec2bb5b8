// "--lists doubts" of cutlist and print from outside.

#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <utime.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* title = "MISSING AND DOUBTFUL ELEMENTS";

class Doubts : public ToolTest {
protected:
    static std::string example(const std::string& name) { return project_folder() + "/examples/" + name; }
    static std::string worked(const std::string& name) { return project_folder() + "/tests/golden/doubts/" + name; }

    void take_worked_edit() {
        for (const char* name : {"ferry.edl", "titles.edl", "days.csv"})
            write(name, bytes_of_file(worked(name)));
        const utimbuf dated{1790000000, 1790000000};
        for (const char* name : {"ferry.edl", "titles.edl"})
            ::utime(path(name).c_str(), &dated);
        ASSERT_EQ(run({"log", "import", "days.csv", "-o", "days.RDB", "--rate", "24"}).status, 0);
    }
    /// The report of a run that is done.
    std::string listed(std::vector<std::string> line, const std::vector<std::string>& more = {}) {
        line.insert(line.end(), {"-o", "made.txt", "--overwrite", "--quiet"});
        line.insert(line.end(), more.begin(), more.end());
        const ToolResult result = run(line, {{"SOURCE_DATE_EPOCH", "1790000000"}});
        EXPECT_NE(result.status, 1) << result.err;
        EXPECT_NE(result.status, 2) << result.err;
        return read("made.txt");
    }
    const std::vector<std::string> ferry{"cutlist", "ferry.edl", "titles.edl", "--rate", "24", "--log", "days.RDB"};
};

TEST_F(Doubts, AreThoseWorkedOutByHand) {
    take_worked_edit();
    EXPECT_EQ(listed(ferry, {"--lists", "doubts"}), bytes_of_file(worked("ferry.txt")));
    EXPECT_EQ(listed(ferry, {"--lists", "doubts", "--frames"}), bytes_of_file(worked("ferry-frames.txt")));
}

TEST_F(Doubts, StandBehindTheOtherListsWhoseBytesStay) {
    const std::pair<const char*, std::vector<std::string>> edits[] = {
        {"reel/reel.otio", {}},
        {"reel/reel.otio", {"--neg-cut"}},
        {"reel/reel.otio", {"--channel", "A2"}},
        {"16mm/heron.otio", {}},
        {"65mm/desert.otio", {"--neg-cut"}},
        {"opticals/lantern.otio", {}},
        {"3perf/harbour.otio", {}},
        {"29.97df/newsroom.otio", {}},
        {"recut/weir-old-r1.otio", {}},
        {"opticals/lantern.otio", {"--set", "one_page_optical=0"}},
        {"reel/reel.otio", {"--channel", "A1", "--config", "audio_cutlist_by_timecode_test=1"}},
    };
    for (const auto& [edit, more] : edits) {
        std::vector<std::string> all = more, doubts = more;
        all.insert(all.end(), {"--lists", "rolls,pull,assembly,opticals"});
        doubts.insert(doubts.end(), {"--lists", "doubts,rolls,pull,assembly,opticals", "--prove"});
        const std::vector<std::string> line{"cutlist", example(edit)};
        const std::string without = listed(line, all), with = listed(line, doubts);
        ASSERT_THAT(with, StartsWith(without)) << edit;
        const std::string pages = with.substr(without.size());
        const std::string head = without.substr(0, without.find(" TRACK"));
        EXPECT_THAT(pages[0] == '\f' ? pages.substr(2) : pages, StartsWith(head)) << edit;
        EXPECT_THAT(pages, HasSubstr(title)) << edit;
        EXPECT_THAT(pages, EndsWith("_\r\n\f\n")) << edit;
        EXPECT_EQ(with.find(title), with.rfind(title));
    }
}

TEST_F(Doubts, AreOffByDefault) {
    EXPECT_THAT(listed({"cutlist", example("reel/reel.otio")}), Not(HasSubstr(title)));
    EXPECT_THAT(listed({"cutlist", example("reel/reel.otio")}, {"--lists", "rolls"}), Not(HasSubstr(title)));
}

TEST_F(Doubts, AreTheWholeReportWhereNothingElseIsAsked) {
    const std::string edit = example("recut/weir-old-r1.otio");
    const std::string report = listed({"cutlist", edit}, {"--lists", "doubts", "--prove"});
    EXPECT_THAT(report, StartsWith("Edit:         THE WEIR R1 "));
    EXPECT_THAT(report, HasSubstr("     Nothing is missing or in doubt\r\n"));
}

TEST_F(Doubts, AreProvedWithTheOtherLists) {
    take_worked_edit();
    std::vector<std::string> line = ferry;
    line.insert(line.end(), {"-o", "made.txt", "--lists", "rolls,doubts", "--prove", "--quiet"});
    const ToolResult result = run(line);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "proved: 4 events, 180 frames\n");
}

TEST_F(Doubts, OfTwoChannelsAreOfEachItsOwn) {
    const std::string edit = example("reel/reel.otio");
    const std::string first = listed({"cutlist", edit, "--channel", "A1"}, {"--lists", "doubts"});
    EXPECT_THAT(first, HasSubstr("SOUND TRACK 4\r\n"));
    EXPECT_THAT(first, HasSubstr("Nothing is missing or in doubt"));
    const std::string second = listed({"cutlist", edit, "--channel", "A2"}, {"--lists", "doubts"});
    EXPECT_THAT(second, HasSubstr("SOUND TRACK 5\r\n"));
    EXPECT_THAT(
        second,
        HasSubstr("2    0025+00                                                    tracks/A2/children[3] \"Bell\"\r\n"
                  "     MISSING   48 frames have no media\r\n"));
}

TEST_F(Doubts, OfATableGoByItAlone) {
    take_worked_edit();
    listed(ferry, {"--lists", "rolls"});
    const std::vector<std::string> print{"print", "made.cdb", "-o", "again.txt", "--lists", "doubts", "--prove"};
    const ToolResult result = run(print);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "proved: 4 events, 180 frames\n");
    const std::string report = read("again.txt");
    EXPECT_THAT(report, HasSubstr("***NOTE: by the table alone, without its edit and its log\r\n"));
    EXPECT_THAT(report, HasSubstr("3    0006+00                                                    Gulls\r\n"
                                  "     MISSING   36 frames are listed as __NOSHOT\r\n"));
    EXPECT_THAT(report, Not(HasSubstr("lie outside"))) << "rows of the log are in no table";
    EXPECT_THAT(report, HasSubstr("V2   0001+08  B7                VT2               02:00:30:00   Bell\r\n"));
}

TEST_F(Doubts, OfATableGoByItsEditWhereOneIsNamed) {
    take_worked_edit();
    listed(ferry, {"--lists", "rolls"});
    const ToolResult result = run({"print", "made.cdb", "-o", "again.txt", "--lists", "doubts", "--edit", "ferry.edl",
                                   "titles.edl", "--rate", "24", "--log", "days.RDB"},
                                  {{"SOURCE_DATE_EPOCH", "1790000000"}});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(read("again.txt"), bytes_of_file(worked("ferry.txt")));
}

TEST_F(Doubts, MissInkNumbersOfAllFilmWhereThePullListGoesByThem) {
    write_edit("cut.otio");
    EXPECT_THAT(listed({"cutlist", "cut.otio"}, {"--lists", "doubts"}), HasSubstr("Nothing is missing"));
    EXPECT_THAT(listed({"cutlist", "cut.otio", "--sort-by-key"}, {"--lists", "doubts"}),
                HasSubstr("have no ink number"));
    EXPECT_THAT(listed({"cutlist", "cut.otio", "--sort-by-key", "--neg-cut"}, {"--lists", "doubts"}),
                HasSubstr("Nothing is missing"))
        << "a negative list goes by key numbers";
    const ToolResult checked = run({"check", "cut.otio", "--set", "pull_sort_by_keycode=1"});
    EXPECT_THAT(checked.out, HasSubstr("doubt: no-ink: "));
}

TEST_F(Doubts, GoToAStreamWithTheRest) {
    write_edit("cut.otio");
    const ToolResult result = run({"cutlist", "cut.otio", "-o", "-", "--lists", "rolls,doubts", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("Edit: "));
    EXPECT_THAT(result.out, HasSubstr("Nothing is missing or in doubt"));
}

} // namespace
