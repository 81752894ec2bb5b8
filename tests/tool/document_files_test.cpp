// Lists as pages and as tables for scripts, beside the report of "quillbrook cutlist" and "quillbrook print".

#include "tests/tool/cut_table.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class DocumentFiles : public ToolTest {
protected:
    DocumentFiles() {
        write_edit("heron.otio");
        std::filesystem::create_directory(path("csv"));
    }

    ToolResult cutlist(const std::vector<std::string>& more) const {
        std::vector<std::string> line = {"cutlist", "heron.otio", "-o", "r.txt"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
};

} // namespace

TEST_F(DocumentFiles, StandBesideTheReport) {
    const ToolResult result =
        cutlist({"--html", "r.html", "--json", "r.json", "--text", "lists.txt", "--csv", "csv", "--set", "pgm_id=R7"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("r.html"),
                AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("Assembly, cutting copy"), HasSubstr("Reel R7")));
    EXPECT_THAT(read("r.json"), HasSubstr("\"format\": \"quillbrook lists\""));
    EXPECT_THAT(read("lists.txt"), StartsWith("Assembly, cutting copy\n"));
    EXPECT_THAT(read("csv/assembly.csv"), StartsWith("row,part,event,start,length,"));
    EXPECT_TRUE(exists("csv/doubts.csv"));
    EXPECT_TRUE(exists("r.cdb"));
}

// A table keeps one roll of each event, and no others.
TEST_F(DocumentFiles, AreTheSameOfTheTableAlone) {
    const std::string columns = "event,shot,film_length,key,tape,length,start,speed";
    ASSERT_EQ(cutlist({"--csv", "csv", "--columns", columns}).status, 0);
    const std::string of_edit = read("csv/pull-roll.csv");
    const ToolResult result =
        run({"print", "r.cdb", "-o", "again.txt", "--csv", "csv", "--columns", columns, "--overwrite"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(read("csv/pull-roll.csv"), of_edit);
}

TEST_F(DocumentFiles, OfARunThatFailsThereAreNone) {
    write("r.html", "old");
    const ToolResult result = cutlist({"--html", "r.html", "--json", "r.json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("r.html: is there already"));
    EXPECT_EQ(read("r.html"), "old");
    EXPECT_FALSE(exists("r.json"));
    EXPECT_FALSE(exists("r.txt"));
}

TEST_F(DocumentFiles, NeverTakeEachOthersPlace) {
    EXPECT_THAT(cutlist({"--html", "r.txt"}).err, HasSubstr("r.txt: the run makes another file of that name"));
    EXPECT_THAT(cutlist({"--html", "r.cdb"}).err, HasSubstr("another file of that name"));
    EXPECT_THAT(cutlist({"--html", "a", "--json", "./a"}).err, HasSubstr("another file of that name"));
    EXPECT_THAT(cutlist({"--html", "heron.otio", "--overwrite"}).err, HasSubstr("would replace"));
    EXPECT_THAT(cutlist({"--csv", "nowhere"}).err, HasSubstr("nowhere: no such directory"));
}

TEST_F(DocumentFiles, AreChosenByProfile) {
    ASSERT_EQ(cutlist({"--csv", "csv", "--for", "lab"}).status, 0);
    EXPECT_TRUE(exists("csv/pull-key.csv"));
    EXPECT_FALSE(exists("csv/assembly.csv"));
    EXPECT_EQ(cutlist({"--for", "nobody"}).status, 2);
    EXPECT_EQ(cutlist({"--for", "lab", "--profile", "p"}).status, 2);
}

TEST_F(DocumentFiles, TakeAProfileOfOnesOwn) {
    write("p.txt", "lists = rolls\nunits = frames\n");
    ASSERT_EQ(cutlist({"--text", "t.txt", "--profile", "p.txt"}).status, 0);
    EXPECT_THAT(read("t.txt"), AllOf(StartsWith("Rolls\n"), Not(HasSubstr("Assembly")), HasSubstr("in frames")));
    ASSERT_EQ(cutlist({"--text", "t.txt", "--profile", "p.txt", "--feet", "--overwrite"}).status, 0);
    EXPECT_THAT(read("t.txt"), HasSubstr("Feet + frames, 16 frames a foot."));
    write("p.txt", "lists = nonsense");
    EXPECT_THAT(cutlist({"--text", "t2.txt", "--profile", "p.txt"}).err, HasSubstr("p.txt: line 1: there is no list"));
}

TEST_F(DocumentFiles, HaveTheColumnsThatTheLineNames) {
    ASSERT_EQ(cutlist({"--csv", "csv", "--columns", "shot, event"}).status, 0);
    EXPECT_THAT(read("csv/assembly.csv"), StartsWith("row,part,shot,scene,take,event,marks,notes\r\n"));
}

TEST_F(DocumentFiles, ArePrintedOnThePaperThatTheLineNames) {
    ASSERT_EQ(cutlist({"--html", "r.html", "--paper", "letter"}).status, 0);
    EXPECT_THAT(read("r.html"), HasSubstr("size: letter"));
    EXPECT_EQ(cutlist({"--paper", "a0"}).status, 2);
    EXPECT_EQ(cutlist({"--feet", "--frames"}).status, 2);
}

TEST_F(DocumentFiles, GoToStandardOutputToo) {
    const ToolResult result = cutlist({"--json", "-", "--quiet"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("{"));
}

TEST_F(DocumentFiles, ArePagesAndDrawingsToo) {
    std::filesystem::create_directory(path("svg"));
    const ToolResult result = cutlist({"--pdf", "r.pdf", "--svg", "svg"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("r.pdf"), StartsWith("%PDF-"));
    EXPECT_THAT(read("svg/reel.svg"), AllOf(HasSubstr("<svg"), HasSubstr("data-film=\"event-1\"")));
}

TEST_F(DocumentFiles, ReplaceDrawingsOnlyWhereTheyMay) {
    std::filesystem::create_directory(path("svg"));
    write("svg/reel.svg", "mine");
    const ToolResult refused = cutlist({"--svg", "svg"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("svg/reel.svg: is there already"));
    EXPECT_EQ(read("svg/reel.svg"), "mine");
    EXPECT_EQ(cutlist({"--svg", "svg", "--overwrite"}).status, 0);
    EXPECT_THAT(read("svg/reel.svg"), HasSubstr("<svg"));
}

TEST_F(DocumentFiles, AreTheSameBytesAtTheSameTime) {
    std::string bytes[2];
    for (std::string& made : bytes) {
        ASSERT_EQ(run({"cutlist", "heron.otio", "-o", "r.txt", "--pdf", "r.pdf", "--overwrite"}).status, 0);
        made = read("r.pdf");
    }
    EXPECT_EQ(bytes[0], bytes[1]);
}

namespace {

const CutShot lamp{"KJ123456", 1600, 48, "Lamp", "12", "3"};
const CutShot wick{"KJ654321", 3200, 36, "Wick", "12A", "1"};
const CutShot street{"KN111111", 160, 24, "Street", "13", "2"};

} // namespace

TEST_F(DocumentFiles, OfARecutHoldItsSteps) {
    write("old.cdb", cut_table({lamp, wick}));
    write("new.cdb", cut_table({lamp, street}));
    const ToolResult result = run({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "c.txt", "--csv", "csv",
                                   "--html", "c.html", "--lists-json", "lists.json", "--json", "steps.json", "--feet"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("csv/bench.csv"), AllOf(HasSubstr(",insert,"), HasSubstr("KN1111110010+00,KN1111110011+07")));
    EXPECT_THAT(read("csv/change-pull.csv"),
                AllOf(HasSubstr("Street"), HasSubstr(",new,\r\n"), Not(HasSubstr("Wick"))));
    EXPECT_THAT(read("csv/discard.csv"), AllOf(HasSubstr("KJ6543210200+00,KJ6543210202+03"), HasSubstr(",out,\r\n")));
    EXPECT_THAT(read("csv/reels.csv"), HasSubstr(",72,"));
    EXPECT_FALSE(exists("csv/assembly.csv"));
    EXPECT_THAT(read("steps.json"), HasSubstr("quillbrook changes"));
    EXPECT_THAT(read("lists.json"), HasSubstr("quillbrook lists"));
    EXPECT_THAT(read("c.html"), AllOf(HasSubstr("KN 11 1111 "), HasSubstr("Insert new"), HasSubstr("4+08")));
}
