// Standard input and output, pipes and devices in the places of files, and files of earlier runs beside a report.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <thread>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string log_text = "Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\nColumn\n"
                             "Name\tTape\tStart\tEnd\tCamroll\tKN Start\n\nData\n"
                             "1-1\tA001\t00:00:00:00\t00:10:00:00\tA7\tKJ 12 3456-1000+00\n";

class Streams : public ToolTest {
protected:
    void SetUp() override {
        write_edit("cut.otio");
        EXPECT_EQ(run({"cutlist", "cut.otio", "-o", "cut.txt"}).status, 0);
    }
    ToolResult expect_done(const ToolResult& result) {
        EXPECT_EQ(result.status, 0) << result.err;
        return result;
    }
    void expect_refused(const std::vector<std::string>& line, const std::string& text) {
        const std::vector<std::string> before = names();
        const ToolResult result = run(line);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(names(), before);
    }
    /// A pipe in the folder that somebody writes bytes into while `work` goes on.
    template <class Work> void with_pipe(const std::string& name, const std::string& bytes, Work work) {
        ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0);
        std::thread writer([&] { write(name, bytes); });
        work();
        writer.join();
    }
};

TEST_F(Streams, ReportGoesToStandardOutputAndNothingElseDoes) {
    const std::vector<std::string> before = names();
    EXPECT_EQ(expect_done(run({"cutlist", "cut.otio", "-o", "-"})).out, read("cut.txt"));
    EXPECT_EQ(expect_done(run({"cutlist", "cut.otio", "-o", "/dev/stdout"})).out, read("cut.txt"));
    EXPECT_EQ(expect_done(run({"print", "cut.cdb", "-o", "-"})).out, read("cut.txt"));
    EXPECT_EQ(names(), before);
}

TEST_F(Streams, ChangelistAndStepsGoToStandardOutput) {
    const std::vector<std::string> line{"changelist", "--old", "cut.cdb", "--new", "cut.cdb"};
    const auto with = [&](std::initializer_list<std::string> more) {
        std::vector<std::string> all = line;
        all.insert(all.end(), more);
        return all;
    };
    const ToolResult result = expect_done(run(with({"-o", "-", "--prove"})));
    EXPECT_THAT(result.out, HasSubstr("QUILLBROOK CHANGE LIST"));
    EXPECT_THAT(result.out, Not(HasSubstr("proved")));
    EXPECT_THAT(result.progress, HasSubstr("changes: proved"));
    EXPECT_THAT(expect_done(run(with({"-o", "a.txt", "--json", "-"}))).out, StartsWith("{"));
    expect_refused(with({"-o", "-", "--json", "-"}), "standard output: the run makes another file of that name");
}

TEST_F(Streams, StandardInputIsAnyInput) {
    EXPECT_EQ(expect_done(run_with_input(read("cut.otio"), {"cutlist", "-", "-o", "-"})).out.size(),
              read("cut.txt").size());
    EXPECT_EQ(expect_done(run_with_input(read("cut.cdb"), {"print", "-", "-o", "-"})).out, read("cut.txt"));
    EXPECT_THAT(expect_done(run_with_input(read("cut.otio"), {"edit", "show", "-"})).out, HasSubstr("Two shots"));
    EXPECT_THAT(expect_done(run_with_input(log_text, {"log", "show", "-"})).out,
                StartsWith("(standard input): 1 row\n"));
    EXPECT_EQ(expect_done(run_with_input(log_text, {"log", "check", "-"})).out, "1 row, nothing wrong\n");
    const ToolResult table = expect_done(run_with_input(log_text, {"log", "import", "-", "-o", "-"}));
    EXPECT_THAT(table.out, HasSubstr("KJ1234561000+00"));
    EXPECT_EQ(expect_done(run_with_input(table.out, {"log", "merge", "-", "-o", "-"})).out, table.out);
    EXPECT_THAT(
        expect_done(run_with_input(read("cut.cdb"), {"changelist", "--old", "-", "--new", "cut.cdb", "-o", "-"})).out,
        HasSubstr("CHANGE LIST"));
}

TEST_F(Streams, LogOfACutlistMayBeStandardInput) {
    const std::string table = run_with_input(log_text, {"log", "import", "-", "-o", "-"}).out;
    write("log.RDB", table);
    const std::string listed = expect_done(run({"cutlist", "cut.otio", "-o", "-", "--log", "log.RDB"})).out;
    EXPECT_EQ(expect_done(run_with_input(table, {"cutlist", "cut.otio", "-o", "-", "--log", "-"})).out, listed);
}

TEST_F(Streams, StandardInputIsReadOnce) {
    const ToolResult result = run({"log", "show", "-", "-"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "quillbrook: -: standard input can be read once only\n");
}

TEST_F(Streams, PipesAreReadAsFiles) {
    with_pipe("pipe", read("cut.cdb"), [&] {
        EXPECT_EQ(expect_done(run({"print", "pipe", "-o", "again.txt"})).progress.find("error"), std::string::npos);
    });
    EXPECT_EQ(read("again.txt"), read("cut.txt"));
    with_pipe("pipe.otio", read("cut.otio"), [&] {
        EXPECT_THAT(expect_done(run({"edit", "show", "pipe.otio"})).out, HasSubstr("Two shots"));
    });
}

TEST_F(Streams, DeviceIsAnOutputThatNothingLiesBeside) {
    expect_done(run({"print", "cut.cdb", "-o", "/dev/null"}));
    expect_done(run({"cutlist", "cut.otio", "-o", "/dev/null"}));
    EXPECT_FALSE(std::filesystem::exists("/dev/null.cdb"));
    expect_refused({"cutlist", "cut.otio", "-o", "-", "--single-layer", "1"}, "single-layer lists go beside");
}

TEST_F(Streams, FullDeviceIsNamedWithTheCause) {
    const ToolResult result = run({"print", "cut.cdb", "-o", "/dev/full"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "quillbrook: /dev/full: No space left on device\n");
}

TEST_F(Streams, TableBesideANewReportIsReplacedOnlyWhenAllowed) {
    const std::string before = read("cut.cdb");
    expect_refused({"cutlist", "cut.otio", "-o", "cut.neg", "--neg-cut"}, "cut.cdb: is there already; --overwrite");
    EXPECT_EQ(read("cut.cdb"), before);
    expect_done(run({"cutlist", "cut.otio", "-o", "cut.neg", "--neg-cut", "--overwrite"}));
    EXPECT_THAT(read("cut.cdb"), HasSubstr("cutlist_type=neg-cut"));
}

TEST_F(Streams, ListsOfAnEarlierRunDontStayBesideTheReport) {
    expect_done(run({"cutlist", "cut.otio", "-o", "new.txt", "--single-layer", "3"}));
    std::filesystem::remove(path("new.txt"));
    std::filesystem::remove(path("new.cdb"));
    expect_refused({"cutlist", "cut.otio", "-o", "new.txt"}, "new.sl3: is there already; --overwrite");
    write("new.sl1", "of yesterday\n");
    const ToolResult result =
        expect_done(run({"cutlist", "cut.otio", "-o", "new.txt", "--single-layer", "1", "--overwrite"}));
    EXPECT_FALSE(exists("new.sl1")); // the edit has no optical
    EXPECT_FALSE(exists("new.sl3"));
    EXPECT_THAT(result.progress, Not(HasSubstr("Creating")));
    EXPECT_THAT(run({"cutlist", "cut.otio", "-o", "new.txt", "--single-layer", "3", "--overwrite"}).progress,
                HasSubstr("Creating sl3 file new.sl3\n"));
}

TEST_F(Streams, ReportMayHaveALongName) {
    const std::string name = std::string(251, 'r') + ".txt";
    expect_done(run({"cutlist", "cut.otio", "-o", name}));
    EXPECT_EQ(read(name), read("cut.txt"));
    expect_done(run({"print", "cut.cdb", "-o", std::string(255, 'p')}));
    // No room for the extension of the table beside it.
    expect_refused({"cutlist", "cut.otio", "-o", std::string(255, 'q')},
                   "-o " + std::string(255, 'q') + ": too long a name for the file beside it that ends in .cdb");
}

TEST_F(Streams, TooManyRowsAreRefusedByEachCommand) {
    std::string long_log = log_text;
    for (int i = 0; i < 32000; ++i)
        long_log += "1-1\tA001\t00:00:00:00\t00:10:00:00\tA7\tKJ 12 3456-1000+00\n";
    write("long.ale", long_log);
    for (const std::vector<std::string>& line : {std::vector<std::string>{"log", "import", "long.ale", "-o", "l.RDB"},
                                                 {"log", "check", "long.ale"},
                                                 {"log", "show", "long.ale"}})
        expect_refused(line, "long.ale: makes more than the 32000 rows that a logging table holds");
    const std::string table = run_with_input(log_text, {"log", "import", "-", "-o", "-"}).out;
    const std::size_t row = table.find("\n1-1\t") + 1;
    const std::string one = table.substr(row, table.find('\n', row) + 1 - row);
    std::string rows = "%recdb 1" + table.substr(8, row - 8);
    for (int i = 0; i < 32001; ++i)
        rows += one;
    write("long.RDB", rows);
    for (const std::vector<std::string>& line : {std::vector<std::string>{"log", "merge", "long.RDB", "-o", "l.RDB"},
                                                 {"log", "check", "long.RDB"},
                                                 {"cutlist", "cut.otio", "-o", "l.txt", "--log", "long.RDB"}})
        expect_refused(line, "long.RDB: holds more rows than a logging table can, 32000");
}

TEST_F(Streams, WrongEditsAreToldForWhatTheyAre) {
    write("a.otio", "%PDF-1.7\n");
    expect_refused({"edit", "show", "a.otio"}, "a.otio: is a PDF document; an edit (.otio, .edl, ");
    write("b.xml", "<?xml version=\"1.0\"?>\n<xmeml version=\"5\"/>\n");
    expect_refused({"cutlist", "b.xml", "-o", "b.txt"}, "b.xml: holds no sequence");
    expect_refused({"cutlist", "cut.cdb", "-o", "b.txt"}, "cut.cdb: is a cutlist table; \"quillbrook print\" takes it");
    expect_refused({"log", "show", "cut.otio"}, "cut.otio: is an OpenTimelineIO edit; \"quillbrook cutlist\" takes it");
}

TEST_F(Streams, ShowTellsSourcePositionsInTimecodeAndFrames) {
    write("a.edl", "001  A001 V C 01:00:10:00 01:00:12:00 10:00:00:00 10:00:02:00\n");
    const ToolResult result = expect_done(run({"edit", "show", "a.edl", "--rate", "24"}));
    EXPECT_THAT(result.out, HasSubstr("01:00:10:00 - 01:00:12:00"));
    EXPECT_THAT(run({"edit", "show", "cut.otio"}).out, HasSubstr("         10          58"));
}

TEST_F(Streams, ShowTellsTheEditFrameAndTimecodeOfACue) {
    const ToolResult result = expect_done(run({"edit", "show", project_folder() + "/examples/reel/reel.otio"}));
    EXPECT_THAT(result.out, HasSubstr("      2    40  01:00:01:16  cue     Lamps off     printed\n"));
}

} // namespace
