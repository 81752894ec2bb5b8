// "quillbrook log" from outside.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string heading = "Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\nColumn\n"
                            "Name\tTape\tStart\tEnd\tCamroll\tKN Start\tKN End\n\nData\n";
const std::string first = "1-1\t003\t01:00:00:00\t01:00:10:00\tA7\tKJ 12 3456-1000+00\tKJ123456-1015+00\n";
const std::string second = "1-2\t003\t01:00:10:00\t01:00:20:00\tA7\tKJ 12 3456-1015+00\tKJ123456-1030+00\n";
const std::string bad = "1-3\t003\t01:00:20:00\t01:00:19:00\tA7\tKX65\t\n";

class Logs : public ToolTest {
protected:
    void SetUp() override {
        write("day1.ale", heading + first);
        write("day2.ale", heading + second);
        write("bad.ale", heading + bad);
    }
};

TEST_F(Logs, ImportPutsSeveralFilesIntoOneTable) {
    const ToolResult result = expect_done({"log", "import", "day1.ale", "day2.ale", "-o", "show.RDB"});
    EXPECT_EQ(result.progress, "show.RDB: 2 rows\n");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(read("show.RDB"), StartsWith("%recdb 2\nFILMDB=Rev 16\nlabel_std=24fps\n"));
    EXPECT_THAT(read("show.RDB"), HasSubstr("\tKJ1234561000+00\t"));
    EXPECT_THAT(read("show.RDB"), HasSubstr("\tKJ1234561015+00\t"));
}

TEST_F(Logs, ImportReplacesATableOnlyWhenTold) {
    expect_done({"log", "import", "day1.ale", "-o", "show.RDB"});
    expect_failure({"log", "import", "day2.ale", "-o", "show.RDB"}, 1, "--overwrite");
    expect_done({"log", "import", "day2.ale", "-o", "show.RDB", "--overwrite"});
    EXPECT_THAT(read("show.RDB"), Not(HasSubstr("\n1-1\t")));
}

TEST_F(Logs, BadRowsAreWarningsAndStay) {
    const ToolResult result = expect_done({"log", "import", "bad.ale", "-o", "bad.RDB"});
    EXPECT_EQ(result.err, "warning: bad.ale:10:36: key number \"KX65\" isn't a key number; left out\n");
    EXPECT_THAT(read("bad.RDB"), HasSubstr("\n1-3\t003\t"));
    EXPECT_EQ(expect_done({"log", "import", "bad.ale", "-o", "b.RDB", "--quiet"}).err, "");
}

TEST_F(Logs, CallerCanNameRateReelAndFilm) {
    write("day.csv", "Name,Start,End,Key\n1,01:00:00:00,01:00:10:00,\n");
    expect_failure({"log", "import", "day.csv", "-o", "day.RDB"}, 1,
                   "day.csv:1: no column for the frame rate; name it with --rate");
    expect_done({"log", "import", "day.csv", "-o", "day.RDB", "--rate", "25", "--reel", "R7", "--film", "16mm"});
    EXPECT_THAT(read("day.RDB"), HasSubstr("\nlabel_std=25fps\n"));
    EXPECT_THAT(read("day.RDB"), HasSubstr("\nfilm label_std=16mm-1p\n"));
    EXPECT_THAT(read("day.RDB"), HasSubstr("\n1\tR7\t01:00:00:00\t"));
}

TEST_F(Logs, KeylogFilesAreReadByNamesOrByPlaces) {
    const std::string header =
        "Record#  EVENT CAMROLL SOUNDROLL DOP      SCENE  TAKE VTTC_IN     VTTC_OUT    DURATION NAGRA_IN    VTTC_DROP "
        "NAGRA_DROP KEYIN          KEYOUT         PULLIN PULLOUT FOOTAGE  DESCRIPT                            COMMENTS "
        "DUR_FRAMES PRINTED LOAD LOADED";
    std::string standards(header.size(), ' '), row(header.size(), ' ');
    standards.replace(174, 21, "35   4           PAL ").replace(210, 8, "VTR V003");
    row.replace(0, 1, "1").replace(15, 2, "A7").replace(54, 11, "01:00:00:00").replace(66, 11, "01:00:10:00");
    row.replace(120, 14, "KJ123456123409");
    write("day.ftl", header + "\n" + standards + "\n" + row + "\n");
    expect_done({"log", "import", "day.ftl", "-o", "names.RDB"});
    EXPECT_THAT(read("names.RDB"), HasSubstr("\tA7\tKJ1234561234+09\t"));
    expect_done({"log", "import", "day.ftl", "-o", "places.RDB", "--as-keylog"});
    EXPECT_THAT(read("places.RDB"), HasSubstr("\t+A7\tKJ123456123409\t"));
    EXPECT_THAT(read("places.RDB"), HasSubstr("\n\tV003\t01:00:00:00\t"));

    row.replace(15, 4, "A\x1b|d").replace(42, 3, "7\fX");
    write("odd.ftl", header + "\n" + standards + "\n" + row + "\n");
    const ToolResult odd = run({"log", "import", "odd.ftl", "-o", "odd.RDB", "--as-keylog"});
    EXPECT_EQ(odd.err, "warning: odd.ftl: row 1, name \"7\u240cX-\": control characters are shown by signs in their "
                       "place; 1 more of its texts, too\n");
    EXPECT_THAT(read("odd.RDB"), HasSubstr("\n7\u240cX-\t"));
    EXPECT_THAT(read("odd.RDB"), HasSubstr("\tA\u241b"));
    expect_failure({"log", "import", "day1.ale", "-o", "x.RDB", "--as-keylog", "--quiet"}, 1,
                   "day1.ale: is an ALE log; ");

    expect_done({"log", "import", "odd.ftl", "day.ftl", "-o", "both.RDB", "--as-keylog", "--quiet"});
    EXPECT_THAT(read("both.RDB"), HasSubstr("\tA\u241b"));
    EXPECT_THAT(read("both.RDB"), HasSubstr("\t+A7\tKJ123456123409\t"));
}

// 1-1 is 01:00:00:00 at 1000+00; the event begins 48 frames later, 3 counts of 16.
TEST_F(Logs, IndexOfEventsNamesTheReelsThatEditListsGoBy) {
    write("reel.csv", "#,Reel,V,C,Source In,Source Out,Record In,Record Out,Name,Source FPS\n"
                      "1,A012C1,V1,C,01:00:02:00,01:00:03:00,10:00:00:00,10:00:01:00,1-1,24.000\n");
    write("reel.edl", "TITLE: R\nFCM: NON-DROP FRAME\n\n"
                      "001  A012C1  V  C  01:00:02:00 01:00:03:00 10:00:00:00 10:00:01:00\n");
    expect_done({"log", "import", "reel.csv", "day1.ale", "-o", "show.RDB"});
    EXPECT_THAT(read("show.RDB"), HasSubstr("\n1-1\tA012C1\t01:00:00:00\t01:00:10:00\t"));
    expect_done({"cutlist", "reel.edl", "--rate", "24", "--log", "show.RDB", "-o", "reel.txt", "--neg-cut"});
    EXPECT_THAT(read("reel.txt"), HasSubstr("1003+00"));
}

TEST_F(Logs, MergePutsTablesTogether) {
    expect_done({"log", "import", "day1.ale", "-o", "1.RDB"});
    expect_done({"log", "import", "day2.ale", "-o", "2.RDB"});
    EXPECT_EQ(expect_done({"log", "merge", "1.RDB", "2.RDB", "-o", "show.RDB"}).progress, "show.RDB: 2 rows\n");
    expect_done({"log", "import", "day1.ale", "day2.ale", "-o", "both.RDB"});
    EXPECT_EQ(read("show.RDB"), read("both.RDB"));
    expect_failure({"log", "merge", "1.RDB", "day2.ale", "-o", "x.RDB"}, 1, "day2.ale: is an ALE log; ");
    expect_failure({"log", "merge", "1.RDB", "2.RDB", "-o", "2.RDB", "--overwrite"}, 1,
                   "would replace what it is made from");
}

TEST_F(Logs, MergedRowsOfATableThatNamesNoRateKeepTheirs) {
    const std::string columns =
        "\n\nname\treel\tstart time\tend time\tlabel_std\tcam reel\tstart keycode\tfilm label_std\n"
        "a\ta\tt\tt\ta\ta\ta\ta\nn\t";
    write("25.RDB", "%recdb 1\nFILMDB=Rev 16\nlabel_std=25fps\nfilm label_std=16mm-1p" + columns +
                        "Q\t01:00:00:00\t01:00:10:00\t\tA\tKJ1234561000+00\t\n");
    write("24.RDB", "%recdb 1\nFILMDB=Rev 16" + columns + "R1\t01:00:00:00\t01:00:10:00\t\tA\tKJ1234561000+00\t\n");
    const ToolResult merged = expect_done({"log", "merge", "25.RDB", "24.RDB", "-o", "all.RDB"});
    EXPECT_THAT(merged.err,
                HasSubstr("24.RDB: film is 35mm-4p, and cutlists read all rows as the first one's, 16mm-1p"));
    EXPECT_THAT(read("all.RDB"), HasSubstr("\nn\tR1\t01:00:00:00\t01:00:10:00\t24fps\t"));
}

TEST_F(Logs, MergeShowsControlCharactersBySigns) {
    const std::string table = "%recdb 1\nFILMDB=Rev 16\nlabel_std=25fps\nfilm label_std=16mm-1p\n\n"
                              "name\treel\tstart time\tend time\tcam reel\tstart keycode\n"
                              "a\ta\tt\tt\ta\ta\n";
    write("1.RDB", table + "n\tR1\t01:00:00:00\t01:00:10:00\tA\tKJ1234561000+00\n");
    write("2.RDB", table + "n\x1b[2J\tR2\t01:00:00:00\t01:00:10:00\tA\tKJ1234561000+00\n");
    const ToolResult merged = expect_done({"log", "merge", "1.RDB", "2.RDB", "-o", "all.RDB"});
    EXPECT_EQ(merged.err, "warning: 2.RDB: row 1, name \"n\u241b[2J\": control characters are shown by signs in their "
                          "place\n");
    EXPECT_THAT(read("all.RDB"), HasSubstr("\nn\u241b[2J\tR2\t"));
}

TEST_F(Logs, ShowPrintsTheRowsWithTheirLines) {
    expect_done({"log", "import", "day1.ale", "-o", "1.RDB"});
    const ToolResult result = expect_done({"log", "show", "1.RDB", "day2.ale"});
    EXPECT_THAT(result.out, HasSubstr("1.RDB: 1 row\n"));
    EXPECT_THAT(result.out, HasSubstr("KJ1234561000+00"));
    EXPECT_THAT(result.out, HasSubstr("day2.ale: 1 row\n"));
    EXPECT_THAT(result.out, HasSubstr("    10  1-2   003   01:00:10:00  01:00:20:00"));
}

TEST_F(Logs, CheckEndsInStatusOneWhenSomethingIsWrong) {
    EXPECT_EQ(expect_done({"log", "check", "day1.ale", "day2.ale"}).out, "2 rows, nothing wrong\n");
    const ToolResult result = run({"log", "check", "day1.ale", "bad.ale", "day1.ale"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("bad.ale:10: end 01:00:19:00 is before start 01:00:20:00\n"));
    EXPECT_THAT(result.out, HasSubstr("bad.ale:10: key number \"KX65\" can't be read\n"));
    EXPECT_THAT(result.out, HasSubstr("day1.ale:10: the same as line 10\n"));
    EXPECT_THAT(result.out, HasSubstr("3 rows, 3 findings, 1 warning\n"));
}

TEST_F(Logs, CheckOfATableNamesTheLinesOfItsFile) {
    write("twice.ale", heading + first + first);
    expect_done({"log", "import", "twice.ale", "-o", "twice.RDB"});
    const ToolResult result = run({"log", "check", "twice.RDB"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr(": the same as line "));
}

TEST_F(Logs, WrongLinesAreWrongUsage) {
    expect_failure({"log"}, 2, "quillbrook log --help");
    expect_failure({"log", "import", "day1.ale"}, 2, "-o");
    expect_failure({"log", "import", "-o", "x.RDB"}, 2, "LOG");
    expect_failure({"log", "import", "day1.ale", "-o", "x.RDB", "--film", "cloth"}, 2, "--film: \"cloth\"");
    expect_failure({"log", "import", "day1.ale", "-o", "x.RDB", "--rate", "7"}, 2, "--rate: \"7\"");
    expect_failure({"log", "import", "day1.ale", "-o", "x.RDB", "--rate", "25", "--as-keylog"}, 2, "--as-keylog");
    expect_failure({"log", "check", "day1.ale", "--tolerance", "-1"}, 2, "--tolerance");
}

TEST_F(Logs, MissingAndForeignFilesAreNamed) {
    expect_failure({"log", "import", "no.ale", "-o", "x.RDB"}, 1, "no.ale");
    write("x.txt", "nothing of the kind\n");
    expect_failure({"log", "check", "x.txt"}, 1, "x.txt:1: no header row");
}

} // namespace
