// Rows of logs found by clip, file and roll, by other timecodes, and by what reels are called in the log.

#include "tests/tool/tool_process.h"
#include "tool/log_match.h"
#include "tool/reel_aliases.h"
#include "tool/tool_error.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::HasSubstr;
using testing::Not;

namespace {

/// Two shots of one clip name each; the log knows them by tape, by clip and by camera roll.
class LogMatch : public ToolTest {
protected:
    LogMatch() {
        write("log.ale",
              "Heading\nFIELD_DELIM\tTABS\nFPS\t24\n\n"
              "Column\nName\tTape\tStart\tEnd\tKN Start\tCamroll\tFilm TC\tSound TC\n\nData\n"
              "A012C001\tV012\t01:00:00:00\t01:00:10:00\tKJ 12 3456-0000+00\tA012\t14:00:00:00\t02:00:00:00\n"
              "A012C002\tV012\t01:00:10:00\t01:00:20:00\tKJ 12 3456-0015+00\tA012\t15:00:00:00\t03:00:00:00\n"
              "A013C001\tV013\t01:00:00:00\t01:00:10:00\tKN 44 6677-0100+00\tA013\t16:00:00:00\t04:00:00:00\n");
        EXPECT_EQ(run({"log", "import", "log.ale", "-o", "log.RDB"}).status, 0);
    }

    /// One event from one second into a shot, which begins at that hour.
    void write_list(const std::string& reel, const std::string& name, const std::string& file,
                    const std::string& hour = "01") {
        write("cut.edl", "TITLE: Cut\n001  " + reel + "  V  C  " + hour + ":00:01:00 " + hour +
                             ":00:02:00 00:00:00:00 00:00:01:00\n* FROM CLIP NAME: " + name + "\n" +
                             (file.empty() ? "" : "* SOURCE FILE: " + file + "\n"));
    }

    ToolResult list(std::vector<std::string> options) {
        std::vector<std::string> line{"cutlist", "cut.edl",     "--rate", "24",     "-o",
                                      "out.txt", "--overwrite", "--log",  "log.RDB"};
        line.insert(line.end(), options.begin(), options.end());
        return run(line);
    }
    /// The key number of the only event, as `explain` tells it.
    std::string explained(std::vector<std::string> options) {
        std::vector<std::string> line{"explain", "cut.edl", "--rate", "24", "--log", "log.RDB", "--at", "0"};
        line.insert(line.end(), options.begin(), options.end());
        const ToolResult result = run(line);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }
};

TEST_F(LogMatch, FindsRowsByClip) {
    write_list("AX", "A013C001", "");
    EXPECT_THAT(list({}).err, HasSubstr("no-log-row"));
    const ToolResult result = list({"--match", "clip", "--prove"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, Not(HasSubstr("no-log-row")));
    EXPECT_THAT(read("out.txt"), HasSubstr("A013"));
    EXPECT_THAT(read("out.txt"), HasSubstr("0101+08"));
    EXPECT_THAT(explained({"--match", "clip"}), HasSubstr("KN4466770101+08"));
}

TEST_F(LogMatch, FindsRowsByFile) {
    write_list("AX", "Slate 7", "/scans/A013C001.mov");
    EXPECT_THAT(explained({"--match", "file"}), HasSubstr("KN4466770101+08"));
    EXPECT_THAT(list({"--match", "clip"}).err, HasSubstr("log.RDB: no row has clip \"Slate 7\""));
}

TEST_F(LogMatch, FindsRowsOfATableWhoseColumnsStandInAnotherOrder) {
    write("log.RDB", "%recdb 1\nFILMDB=Rev 16\nlabel_std=24fps\nfilm label_std=35mm-4p\n\n"
                     "reel\tname\tstart time\tend time\tcam reel\tstart keycode\na\ta\tt\tt\ta\ta\n"
                     "V013\tA013C001\t01:00:00:00\t01:00:10:00\tA013\tKN4466770100+00\n");
    write_list("AX", "A013C001", "");
    EXPECT_THAT(explained({"--match", "clip"}), HasSubstr("KN4466770101+08"));
}

TEST_F(LogMatch, FindsRowsByNameWhereAShotHasNoFile) {
    write_list("AX", "A013C001", "");
    EXPECT_THAT(explained({"--match", "file"}), HasSubstr("KN4466770101+08"));
}

TEST_F(LogMatch, FindsRowsByTheBeginningOfANameAndSaysSo) {
    write_list("AX", "A013C001_150101_R1XY", "");
    EXPECT_THAT(explained({"--match", "clip"}), HasSubstr("KN4466770101+08"));
    EXPECT_THAT(list({"--match", "clip"}).err,
                HasSubstr("no row has clip \"A013C001_150101_R1XY\"; rows of \"A013C001\" are taken"));
    write_list("AX", "A013", "");
    EXPECT_THAT(list({"--match", "clip"}).err, HasSubstr("rows of \"A013C001\" are taken"));
}

TEST_F(LogMatch, FindsRowsByCameraRollAndItsTimecode) {
    write_list("A012", "Slate 7", "", "15");
    EXPECT_THAT(list({"--match", "camera-roll"}).err, HasSubstr("no-log-row"));
    const std::vector<std::string> options{"--match", "camera-roll", "--log-time", "camera"};
    EXPECT_THAT(explained(options), HasSubstr("KJ1234560016+08"));
    EXPECT_EQ(list(options).status, 0);
    EXPECT_THAT(read("out.txt"), HasSubstr("0016+08"));
}

TEST_F(LogMatch, FindsRowsByReelAndSoundTimecode) {
    write_list("V012", "Slate 7", "", "03");
    EXPECT_THAT(explained({"--log-time", "sound"}), HasSubstr("KJ1234560016+08"));
}

TEST_F(LogMatch, NamesTheLinesOfTheUsersLog) {
    write_list("AX", "A013C001", "");
    const std::string without_header = read("log.RDB").substr(0, read("log.RDB").find("A013C001"));
    const auto line = 1 + std::count(without_header.begin(), without_header.end(), '\n');
    EXPECT_THAT(explained({"--match", "clip"}), HasSubstr("line " + std::to_string(line)));
}

TEST_F(LogMatch, TakesNoOtherRowsWhereNoneHasTheKey) {
    write_list("V012", "Slate 7", "");
    EXPECT_THAT(explained({}), HasSubstr("KJ1234560001+08"));
    const ToolResult result = list({"--match", "clip"});
    EXPECT_THAT(result.err, HasSubstr("no row has clip \"Slate 7\""));
    EXPECT_THAT(result.err, HasSubstr("no-log-row"));
    EXPECT_THAT(read("out.txt"), Not(HasSubstr("A012")));
}

TEST_F(LogMatch, LeavesTheListsAsTheyAreWithoutItsOptions) {
    write_list("V012", "A012C001", "");
    EXPECT_EQ(list({}).status, 0);
    const std::string plain = read("out.cdb");
    EXPECT_EQ(list({"--match", "reel", "--log-time", "source"}).status, 0);
    EXPECT_EQ(read("out.cdb"), plain);
}

TEST_F(LogMatch, IsRefusedForWhatIsNoKeyAndWithoutALog) {
    write_list("AX", "A013C001", "");
    EXPECT_EQ(list({"--match", "name"}).status, 2);
    EXPECT_EQ(list({"--match", "reel, tape"}).status, 2);
    EXPECT_EQ(list({"--log-time", "film"}).status, 2);
    const ToolResult result = run({"check", "cut.edl", "--rate", "24", "--match", "clip"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("--match and --log-time need --log"));
}

TEST_F(LogMatch, GivesReelsTheNamesThatTheLogHas) {
    write_list("TAPE 12", "Slate 7", "");
    write("names.txt", "# of the transfer house\n\ntape 12 = V012\n");
    EXPECT_THAT(explained({"--aliases", "names.txt"}), HasSubstr("KJ1234560001+08"));
    EXPECT_EQ(list({"--aliases", "names.txt"}).status, 0);
    EXPECT_THAT(run({"edit", "show", "cut.edl", "--rate", "24"}).out, HasSubstr("TAPE 12"));
    EXPECT_EQ(
        run({"cutlist", "cut.edl", "--rate", "24", "-o", "names.txt", "--overwrite", "--aliases", "names.txt"}).status,
        1);
    EXPECT_EQ(read("names.txt"), "# of the transfer house\n\ntape 12 = V012\n");
    write("names.txt", "tape 12 = V012\nV012\n");
    const ToolResult result = list({"--aliases", "names.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("names.txt: line 2: \"V012\" is no pair of reels"));
    EXPECT_EQ(list({"--aliases", "none.txt"}).status, 1);
}

TEST_F(LogMatch, FindsRowsByTheNamesThatReelsTakeOn) {
    write_list("TAPE 13", "Slate 7", "");
    write("names.txt", "tape 13 = V013\n");
    EXPECT_THAT(explained({"--aliases", "names.txt", "--match", "reel"}), HasSubstr("KN4466770101+08"));
}

TEST_F(LogMatch, SuggestsAReelThatIsWrittenNearlyAlike) {
    write_list("V-12", "Slate 7", "");
    EXPECT_THAT(list({}).err, HasSubstr("did you mean reel \"V012\" of log.RDB line "));
    write_list("Q99", "Slate 7", "");
    EXPECT_THAT(list({}).err, Not(HasSubstr("did you mean")));
    write_list("V-12", "Slate 7", "", "09");
    EXPECT_THAT(list({}).err, Not(HasSubstr("did you mean"))) << "no row of that reel holds the frames";
}

// The library takes a reel for another that begins it, of fifteen characters.
TEST_F(LogMatch, KeepsClipsApartWhoseNamesBeginAlike) {
    const std::string head = "A LONG NAME OF A CLIP, ";
    std::string log = "Heading\nFIELD_DELIM\tTABS\nFPS\t24\n\nColumn\nName\tTape\tStart\tEnd\tKN Start\n\nData\n";
    std::string events = "TITLE: Cut\n";
    const std::vector<std::string> names{"A1", "A12", head + "1", head + "2"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string digit = std::to_string(i + 1);
        log += names[i] + "\tV1\t01:00:00:00\t01:00:10:00\tKJ 12 3456-" + digit + "000+00\n";
        events += "00" + digit + "  AX  V  C  01:00:01:00 01:00:02:00 00:00:0" + std::to_string(i) + ":00 00:00:0" +
                  digit + ":00\n* FROM CLIP NAME: " + names[i] + "\n";
    }
    write("log.ale", log);
    write("cut.edl", events);
    ASSERT_EQ(run({"log", "import", "log.ale", "-o", "log.RDB", "--overwrite"}).status, 0);
    const ToolResult made = this->list({"--match", "clip", "--prove"});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_THAT(made.err, Not(HasSubstr("reel-prefix")));
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_THAT(read("out.txt"), HasSubstr(std::to_string(i + 1) + "001+08"));
    for (const char* reel : {"A1(2)", "A12", "A LONG N"})
        EXPECT_THAT(read("out.cdb"), HasSubstr("\t" + std::string(reel) + "\t"))
            << "as much as the column holds, and the text first";
}

/// The first key number of a table.
std::string key_of(const std::string& table) {
    const std::size_t at = table.find("\tKJ");
    return at == std::string::npos ? table : table.substr(at + 1, table.find('\t', at + 1) - at - 1);
}

TEST_F(LogMatch, CountsPulldownFromTheSameFrameByEitherTimecode) {
    write("log.ale", "Heading\nFIELD_DELIM\tTABS\nFPS\t29.97\n\n"
                     "Column\nName\tTape\tStart\tEnd\tKN Start\tCamroll\tFilm TC\tPullin\n\nData\n"
                     "A012C001\tV012\t01:00:00:00\t01:00:10:00\tKJ 12 3456-0000+00\tA012\t14:00:00:02\tB\n");
    ASSERT_EQ(run({"log", "import", "log.ale", "-o", "log.RDB", "--overwrite"}).status, 0);
    const auto key_at = [&](const std::string& in, const std::string& out, const std::string& time) {
        write("cut.edl",
              "TITLE: Cut\nFCM: NON-DROP FRAME\n001  V012  V  C  " + in + " " + out + " 00:00:00:00 00:00:00:20\n");
        EXPECT_EQ(run({"cutlist", "cut.edl", "--rate", "29.97", "--log", "log.RDB", "-o", "out.txt", "--overwrite",
                       "--log-time", time})
                      .status,
                  0);
        return key_of(read("out.cdb"));
    };
    for (int frame = 10; frame < 15; ++frame) {
        const std::string source = key_at("01:00:00:" + std::to_string(frame), "01:00:01:00", "source");
        const std::string camera = key_at("14:00:00:" + std::to_string(frame + 2), "14:00:01:00", "camera");
        EXPECT_EQ(source.substr(0, 11), "KJ123456000");
        EXPECT_EQ(camera, source) << frame;
    }
}

// 300 frames of video are 240 of film, and as many of its own timecode.
TEST_F(LogMatch, TakesRowsAsLongOnFilmWhereTheOtherTimecodeCountsOtherwise) {
    write("log.tsv", "Name\tTape\tStart\tEnd\tFPS\tKN Start\tFilm TC\n"
                     "A012C001\tV012\t01:00:00:00\t01:00:10:00\t29.97\tKJ 12 3456-0000+00\t14:00:00:00\n");
    ASSERT_EQ(run({"log", "import", "log.tsv", "-o", "log.RDB", "--overwrite"}).status, 0);
    std::string table = read("log.RDB");
    const auto set = [&](const std::string& column, const std::string& value) {
        std::istringstream lines(table.substr(table.find("\n\n") + 2));
        std::string head, types, row, cell;
        std::getline(lines, head);
        std::getline(lines, types);
        std::getline(lines, row);
        std::istringstream columns(head);
        std::size_t at = table.find(row);
        while (std::getline(columns, cell, '\t') && cell != column)
            at = table.find('\t', at) + 1;
        table.replace(at, table.find('\t', at) - at, value);
    };
    set("cam label_std", "24fps");
    write("log.RDB", table.substr(0, table.find("%end")));
    const auto list_at = [&](const std::string& in, const std::string& out) {
        write("cut.edl", "TITLE: Cut\n001  V012  V  C  " + in + " " + out + " 00:00:00:00 00:00:01:00\n");
        return list({"--log-time", "camera", "--force"});
    };
    EXPECT_THAT(list_at("14:00:08:12", "14:00:09:12").err,
                Not(testing::AnyOf(HasSubstr("log-overrun"), HasSubstr("rate:"))));
    EXPECT_THAT(read("out.txt"), HasSubstr("0012+12"));
    EXPECT_THAT(list_at("14:00:09:12", "14:00:10:12").err, HasSubstr("log-overrun"));
}

TEST(ReelAliases, MayBePartedByEqualsTabOrBlank) {
    EXPECT_THAT(tool::parse_aliases("A 1 = B 1\nA2\tB 2\r\n A3   B3 \n#x=y\n", "f"),
                testing::UnorderedElementsAre(testing::Pair("a 1", "B 1"), testing::Pair("a2", "B 2"),
                                              testing::Pair("a3", "B3")));
    EXPECT_THAT(tool::parse_aliases("a = B\nA = B\n", "f"), testing::ElementsAre(testing::Pair("a", "B")));
}

TEST(ReelAliases, AreRefusedWithTheirLine) {
    const auto error_of = [](const std::string& text) -> std::string {
        try {
            tool::parse_aliases(text, "f");
        } catch (const tool::JobError& error) {
            return error.what();
        }
        return "none";
    };
    EXPECT_EQ(error_of("a = b\n\na = c\n"), "f: line 3: reel \"a\" is \"b\" in a line above");
    EXPECT_EQ(error_of("= b"), "f: line 1: \"= b\" is no pair of reels, as \"A12 = A012\"");
    EXPECT_EQ(error_of("a b c"), "f: line 1: \"a b c\" is no pair of reels, as \"A12 = A012\"");
    EXPECT_EQ(error_of("a ="), "f: line 1: \"a =\" is no pair of reels, as \"A12 = A012\"");
}

} // namespace
