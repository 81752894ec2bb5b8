// What files are and what is in them, for people and for programs.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* edit_list = "TITLE: REEL 1\n"
                                  "001  TK01 V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                  "002  TK02 V C 02:00:00:00 02:00:01:00 10:00:02:00 10:00:03:00\n";
constexpr const char* log = "Heading\nFIELD_DELIM\tTABS\nVIDEO_FORMAT\tPAL\nFPS\t25\n\nColumn\n"
                            "Name\tTape\tStart\tEnd\tCamroll\tKN Start\n\nData\n"
                            "1-1\tTK01\t01:00:00:00\t01:00:10:00\tA012\tKJ 29 1010 5867+00\n"
                            "1-2\tTK01\t01:00:20:00\t01:00:30:00\tA013\t\n";

/// Of its own medium with those fields.
std::string clip_with(const std::string& fields) {
    const char* range =
        R"({"OTIO_SCHEMA":"TimeRange.1","start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":0},)"
        R"("duration":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":24}})";
    return std::string(R"({"OTIO_SCHEMA":"Clip.1","name":"a","source_range":)") + range +
           R"(,"metadata":{"quillbrook":{)" + fields + "}}}";
}

class Describe : public ToolTest {
protected:
    std::string described(const std::vector<std::string>& files, int status) {
        std::vector<std::string> line{"describe", "--json", "files.json", "--overwrite"};
        line.insert(line.end(), files.begin(), files.end());
        const ToolResult result = run(line);
        EXPECT_EQ(result.status, status) << result.err;
        out_ = result.out;
        err_ = result.err;
        return read("files.json");
    }

    std::string out_, err_;
};

TEST_F(Describe, NamesCameraRollsElseTapesAndNoSoundRolls) {
    write("two.otio", R"({"OTIO_SCHEMA":"Timeline.1","name":"Two","metadata":{},"tracks":{"OTIO_SCHEMA":"Stack.1",)"
                      R"("children":[{"OTIO_SCHEMA":"Track.1","kind":"Video","name":"V1","children":[)" +
                          clip_with(R"("reel":"TK01","cam_reel":"A012","snd_reel":"SR04")") + "," +
                          clip_with(R"("reel":"TK02","snd_reel":"SR05")") + "]}]}}");
    const std::string json = described({"two.otio"}, 0);
    EXPECT_THAT(out_, HasSubstr("2 rolls"));
    EXPECT_THAT(json, HasSubstr("\"A012\""));
    EXPECT_THAT(json, HasSubstr("\"TK02\""));
    EXPECT_THAT(json, Not(HasSubstr("SR0")));
    EXPECT_THAT(json, Not(HasSubstr("TK01")));
}

TEST_F(Describe, TellsTracksRateAndRollsOfAnEdit) {
    write_edit("heron.otio");
    const std::string json = described({"heron.otio"}, 0);
    EXPECT_THAT(out_, StartsWith("heron.otio: an OpenTimelineIO edit, "));
    EXPECT_THAT(out_, HasSubstr("2 events on V1, 1 event on A1"));
    EXPECT_THAT(json, HasSubstr("\"format\": \"quillbrook files\","));
    EXPECT_THAT(json, HasSubstr("\"version\": 1,"));
    EXPECT_THAT(json, HasSubstr("\"use\": \"edit\""));
    EXPECT_THAT(json, HasSubstr("\"channel\": \"A1\""));
    EXPECT_THAT(json, HasSubstr("\"project\": \"Heron\""));
    EXPECT_THAT(json, HasSubstr("\"fault\": null"));
}

TEST_F(Describe, AsksForTheRateThatAnEditListDoesntTell) {
    write("reel.edl", edit_list);
    const std::string json = described({"reel.edl"}, 1);
    EXPECT_THAT(json, HasSubstr("\"needs\": \"rate\""));
    EXPECT_THAT(err_, HasSubstr("reel.edl: an edit list doesn't tell its frames a second"));
}

TEST_F(Describe, TakesTheRateForEditLists) {
    write("reel.edl", edit_list);
    const std::string json = described({"reel.edl", "--rate", "25"}, 0);
    EXPECT_THAT(json, HasSubstr("\"needs\": null"));
    EXPECT_THAT(json, HasSubstr("\"frames\": 75"));
    EXPECT_THAT(out_, HasSubstr("2 events on V1, 25fps, 2 rolls"));
}

TEST_F(Describe, CountsRowsAndKeyNumbersOfALog) {
    write("days.ale", log);
    const std::string json = described({"days.ale"}, 0);
    EXPECT_EQ(out_, "days.ale: an ALE log, 2 rows, 1 with a key number, 25fps, 2 rolls\n");
    EXPECT_THAT(json, HasSubstr("\"use\": \"log\""));
    EXPECT_THAT(json, HasSubstr("\"A013\""));
}

TEST_F(Describe, NamesTheEditOfATable) {
    write_edit("heron.otio");
    ASSERT_EQ(run({"cutlist", "heron.otio", "-o", "heron.txt"}).status, 0);
    const std::string json = described({"heron.cdb"}, 0);
    EXPECT_THAT(json, HasSubstr("\"use\": \"cut\""));
    EXPECT_THAT(out_, StartsWith("heron.cdb: a cutlist table, \""));
}

TEST_F(Describe, GoesOnBehindAFileThatNothingReads) {
    write("page.pdf", "%PDF-1.7\n");
    write("days.ale", log);
    const std::string json = described({"page.pdf", "days.ale", "gone.otio"}, 1);
    EXPECT_THAT(err_, HasSubstr("page.pdf: is a PDF document"));
    EXPECT_THAT(err_, HasSubstr("gone.otio: "));
    EXPECT_THAT(out_, StartsWith("days.ale: an ALE log"));
    EXPECT_THAT(json, HasSubstr("\"use\": null"));
}

TEST_F(Describe, GoesOnBehindATableThatIsCutOff) {
    write("cut.cdb", "%recdb 2\nCUTDB=Rev 22\nproject_name=He");
    write("days.ale", log);
    const std::string json = described({"cut.cdb", "days.ale"}, 1);
    EXPECT_THAT(err_, StartsWith("quillbrook: cut.cdb: "));
    EXPECT_THAT(json, HasSubstr("\"fault\": \"cut.cdb: "));
    EXPECT_THAT(out_, StartsWith("days.ale: an ALE log"));
}

TEST_F(Describe, NamesCantForgeLines) {
    write("a\nb.ale", log);
    described({"a\nb.ale"}, 0);
    EXPECT_THAT(out_, Not(StartsWith("a\n")));
}

TEST_F(Describe, ReplacesADocumentOnlyWhenTold) {
    write("days.ale", log);
    write("files.json", "mine");
    EXPECT_EQ(run({"describe", "days.ale", "--json", "files.json"}).status, 1);
    EXPECT_EQ(read("files.json"), "mine");
}

} // namespace
