// The way from the lab's logs and an edit list to the lists, from outside.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

namespace fs = std::filesystem;

const fs::path example = project_folder() + "/examples/edl";
const std::map<std::string, std::string> surroundings = {{"SOURCE_DATE_EPOCH", "1790000000"}, {"TZ", "UTC"}};

constexpr const char* event = "001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n";

class EditList : public ToolTest {
protected:
    void take_example() {
        for (const char* name : {"ferryman.edl", "days.ale", "night.flx"})
            fs::copy_file(example / name, path(name));
        // The edit's date is that of the file.
        fs::last_write_time(path("ferryman.edl"), fs::file_time_type::clock::from_sys(
                                                      std::chrono::sys_seconds(std::chrono::seconds(1789934400))));
        done({"log", "import", "days.ale", "night.flx", "-o", "show.RDB"});
    }
    void done(const std::vector<std::string>& arguments) {
        const ToolResult result = run(arguments, surroundings);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.err, Not(HasSubstr("wrong: ")));
    }
    /// Holds a file against the example's, or writes that one anew where QUILLBROOK_UPDATE_GOLDEN is 1.
    void expect_as_expected(const std::string& name) {
        const fs::path expected = example / "expected" / name;
        const char* update = std::getenv("QUILLBROOK_UPDATE_GOLDEN");
        if (update && std::string(update) == "1") {
            fs::create_directories(expected.parent_path());
            fs::copy_file(path(name), expected, fs::copy_options::overwrite_existing);
        }
        fs::copy_file(expected, path("expected-" + name));
        EXPECT_TRUE(read(name) == read("expected-" + name)) << name << " differs from " << expected;
    }
};

TEST_F(EditList, ExampleGoesFromTheLabToTheListsByteForByte) {
    take_example();
    done({"cutlist", "ferryman.edl", "--rate", "25", "--log", "show.RDB", "-o", "ferryman.txt"});
    done({"cutlist", "ferryman.edl", "--rate", "25", "--log", "show.RDB", "-o", "ferryman-neg.txt", "--neg-cut"});
    for (const char* name : {"show.RDB", "ferryman.cdb", "ferryman.txt", "ferryman-neg.cdb", "ferryman-neg.txt"})
        expect_as_expected(name);
}

TEST_F(EditList, EveryEventOfTheExampleFindsItsShot) {
    take_example();
    done({"cutlist", "ferryman.edl", "--rate", "25", "--log", "show.RDB", "-o", "ferryman.txt"});
    EXPECT_EQ(read("ferryman.cdb").find("__NOSHOT"), std::string::npos);
    EXPECT_THAT(read("ferryman.cdb"), HasSubstr("KJ2910105871+01\tKJ2910105877+00"));
}

TEST_F(EditList, LogsWithLongPathsAreReadAll) {
    take_example();
    const std::string folder(80, 'f');
    fs::create_directory(path(folder));
    fs::copy_file(path("show.RDB"), path(folder + "/show.RDB"));
    done({"cutlist", "ferryman.edl", "--rate", "25", "--log", "show.RDB", "-o", "short.txt"});
    done({"cutlist", "ferryman.edl", "--rate", "25", "--log", folder + "/show.RDB", "-o", "long.txt"});
    EXPECT_EQ(read("short.cdb"), read("long.cdb"));
}

TEST_F(EditList, LogIsNamedByItsOwnSwitch) {
    write("a.edl", event);
    EXPECT_EQ(run({"cutlist", "a.edl", "--rate", "24", "-o", "a.txt", "--set", "log_file=x"}).status, 2);
    const ToolResult missing = run({"cutlist", "a.edl", "--rate", "24", "-o", "a.txt", "--log", "no.RDB"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr("no.RDB: "));
    EXPECT_THAT(names(), ElementsAre("a.edl"));
}

TEST_F(EditList, LogMustBeALoggingTable) {
    write("a.edl", event);
    write("a.ale", "Heading\nFPS\t24\n");
    const ToolResult log = run({"cutlist", "a.edl", "--rate", "24", "-o", "a.txt", "--log", "a.ale"});
    EXPECT_EQ(log.status, 1);
    EXPECT_EQ(
        log.err,
        "quillbrook: a.ale: is an ALE log; \"quillbrook log import\" takes it; a logging table (.RDB) is wanted\n");
    const ToolResult empty = run({"cutlist", "a.edl", "--rate", "24", "-o", "a.txt", "--log", ""});
    EXPECT_EQ(empty.status, 2);
    EXPECT_THAT(empty.err, HasSubstr("--log"));
    EXPECT_THAT(names(), ElementsAre("a.ale", "a.edl"));
}

TEST_F(EditList, EventsWithoutARowAndOtherCountingsAreWarnedOf) {
    const std::string columns = "Name,Reel,Start,End,Key\n";
    write("a.edl", std::string(event) + "002  B7 V C 01:00:00:00 01:00:01:00 10:00:01:00 10:00:02:00\n");
    write("a.csv", columns + "1-1,A,1:00:00:00,1:00:10:00,KJ 12 3456-1000+00\n");
    done({"log", "import", "a.csv", "-o", "24.RDB", "--rate", "24"});
    done({"log", "import", "a.csv", "-o", "25.RDB", "--rate", "25"});
    const ToolResult same = run({"cutlist", "a.edl", "--rate", "23.976", "--log", "24.RDB", "-o", "a.txt"});
    EXPECT_THAT(same.err,
                HasSubstr("doubt: no-log-row: a.edl: line 2: event 2 of V1 at frame 24 (10:00:01:00), \"B7\": no row "
                          "of the log fits reel \"B7\" from 01:00:00:00 for 24 frames; "));
    EXPECT_THAT(read("a.cdb"), HasSubstr("KJ1234561000+00\tKJ1234561001+08"));
    const ToolResult other = run({"cutlist", "a.edl", "--rate", "24", "--log", "25.RDB", "-o", "b.txt"});
    EXPECT_EQ(other.status, 0);
    EXPECT_THAT(
        other.err,
        HasSubstr("rate: a.edl: line 1: event 1 of V1 at frame 0 (10:00:00:00), \"A\": reel \"A\" counts 24fps in "
                  "the edit and 25fps in 25.RDB line "));
    write("df.csv", columns + "1-1,A,01;00;00;00,01;00;10;00,KJ 12 3456-1000+00\n");
    done({"log", "import", "df.csv", "-o", "df.RDB", "--rate", "29.97"});
    EXPECT_THAT(
        run({"cutlist", "a.edl", "--rate", "29.97", "--log", "df.RDB", "-o", "d.txt"}).err,
        HasSubstr(
            "wrong: rate: a.edl: line 1: event 1 of V1 at frame 0 (10:00:00:00), \"A\": reel \"A\" counts 30fps in "
            "the edit and 30df in df.RDB line "));
    EXPECT_EQ(run({"cutlist", "a.edl", "--rate", "24", "--log", "25.RDB", "-o", "c.txt", "--quiet"}).err, "");
}

// The table is at fault, in its head or its first row, and not the edit.
TEST_F(EditList, AKindOfFilmThatIsUnknownIsLaidToTheLog) {
    write("a.edl", event);
    write("a.csv", "Name,Reel,Start,End,Key\n1-1,A,1:00:00:00,1:00:10:00,KJ 12 3456-1000+00\n");
    done({"log", "import", "a.csv", "-o", "a.RDB", "--rate", "24"});
    std::string table = read("a.RDB");
    table.replace(0, table.find('\n'), "%recdb 1");
    if (const std::size_t seal = table.find("%end "); seal != std::string::npos) table.erase(seal);
    const std::size_t film = table.find("film label_std=\n");
    ASSERT_NE(film, std::string::npos);
    write("nitrate.RDB", table.insert(table.find('\n', film), "nitrate"));
    const ToolResult result = run({"cutlist", "a.edl", "--rate", "24", "--log", "nitrate.RDB", "-o", "a.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err,
                HasSubstr("quillbrook: nitrate.RDB: \"nitrate\" of \"film label_std\" is no kind of film\n"));
    EXPECT_EQ(result.err.find("holds nothing"), std::string::npos);
}

TEST_F(EditList, SourcePointsOfAReverseShotAreTakenTheWayThatIsAskedFor) {
    write("a.edl", "001  A V C 01:00:10:00 01:00:11:00 10:00:00:00 10:00:01:00\n"
                   "M2   A   -024.0  01:00:10:00\n");
    const auto shown_first = [this](const std::vector<std::string>& more) {
        std::vector<std::string> line{"explain", "a.edl", "--rate", "24", "--at", "0"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line).out;
    };
    EXPECT_THAT(shown_first({}), HasSubstr("timecode: reel \"A\" at 01:00:10:23 (24fps)\n"));
    EXPECT_THAT(shown_first({"--edl-reverse", "low"}), HasSubstr("at 01:00:10:23 (24fps)\n"));
    EXPECT_THAT(shown_first({"--edl-reverse", "first"}), HasSubstr("at 01:00:10:00 (24fps)\n"));
    EXPECT_EQ(run({"check", "a.edl", "--rate", "24", "--edl-reverse", "last"}).status, 2);
}

TEST_F(EditList, RateIsAskedFor) {
    write("a.edl", event);
    const ToolResult result = run({"edit", "show", "a.edl"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("a.edl: an edit list doesn't tell its frames a second"));
    EXPECT_THAT(result.err, HasSubstr("give it with --rate"));
}

TEST_F(EditList, IsKnownByItsLinesWhereTheNameSaysNothing) {
    write("reel.txt", event);
    EXPECT_EQ(run({"edit", "show", "reel.txt", "--rate", "24"}).status, 0);
}

TEST_F(EditList, SeveralMakeOneEdit) {
    write("a.edl", event);
    write("b.edl", event);
    const ToolResult result = run({"edit", "show", "a.edl", "b.edl", "--rate", "24"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("V2: picture, track 1"));
    write_edit("c.otio");
    EXPECT_THAT(run({"edit", "show", "a.edl", "c.otio", "--rate", "24"}).err, HasSubstr("c.otio: several files"));
}

TEST_F(EditList, LinesThatArentUnderstoodAreWarnedOf) {
    write("a.edl", std::string(event) + "GPI 3\n");
    const ToolResult result = run({"edit", "show", "a.edl", "--rate", "24"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("warning: a.edl: line 2: not understood: \"GPI 3\""));
}

std::string timecode(int frame) {
    char text[40];
    std::snprintf(text, sizeof text, "01:00:%02d:%02d", frame / 30, frame % 30);
    return text;
}

/// Film frames since key number 0 of each event's first frame, from the table's records.
std::vector<int> film_frames(const std::string& table) {
    constexpr std::string_view prefix = "KJ123456";
    std::vector<int> frames;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = line.find(prefix);
        if (at == std::string::npos) continue;
        frames.push_back(std::stoi(line.substr(at + 8, 4)) * 16 + std::stoi(line.substr(at + 13, 2)));
    }
    return frames;
}

TEST_F(EditList, NumbersThroughALogFollowTheCadenceOfItsTape) {
    std::string list;
    for (int v = 0; v < 60; ++v)
        list += "001  T1 V C " + timecode(v) + ' ' + timecode(v + 1) + ' ' + timecode(v) + ' ' + timecode(v + 1) + '\n';
    write("a.edl", list);
    write("a.ale", "Heading\nFIELD_DELIM\tTABS\nVIDEO_FORMAT\tNTSC\nFILM_FORMAT\t35mm,4perf\nFPS\t29.97\n\nColumn\n"
                   "Name\tTracks\tStart\tEnd\tTape\tKN Start\tCamroll\n\nData\n"
                   "1-1\tV\t01:00:00:00\t01:00:10:00\tT1\tKJ 12 3456-0000+00\tA1\n");
    done({"log", "import", "a.ale", "-o", "a.RDB"});
    done({"cutlist", "a.edl", "--rate", "29.97", "--log", "a.RDB", "-o", "a.txt"});
    const std::vector<int> counted = film_frames(read("a.cdb"));
    ASSERT_EQ(counted.size(), 60U);
    // A2 B3 C2 D3: what the two fields of each video frame show.
    const int first[] = {0, 1, 1, 2, 3}, second[] = {0, 1, 2, 3, 3};
    for (std::size_t v = 0; v < counted.size(); ++v) {
        EXPECT_GE(counted[v], static_cast<int>(v / 5) * 4 + first[v % 5]) << v;
        EXPECT_LE(counted[v], static_cast<int>(v / 5) * 4 + second[v % 5]) << v;
    }
}

/// A clip of 48 frames at 24, from frame `from` of the day, as an .otio file says it.
std::string clip(int from, const std::string& effects = "") {
    const auto range = [](int start, int length) {
        return R"({"OTIO_SCHEMA": "TimeRange.1", "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": )" +
               std::to_string(start) + R"(}, "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": )" +
               std::to_string(length) + "}}";
    };
    return R"({"OTIO_SCHEMA": "Clip.1", "name": "1-1", "source_range": )" + range(from, 48) + R"(, "effects": [)" +
           effects + R"(], "media_reference": {"OTIO_SCHEMA": "ExternalReference.1", "name": "1-1", )" +
           R"("target_url": "1-1", "available_range": )" + range(86400, 1440) +
           R"(, "metadata": {"quillbrook": {"reel": "A"}}}})";
}

/// The table's records without their cookies.
std::vector<std::string> records_without_cookies(const std::string& table) {
    constexpr int cookie_field = 32;
    std::vector<std::string> records;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string record, field;
        for (int i = 0; std::getline(fields, field, '\t'); ++i)
            if (i != cookie_field) record += field + '|';
        if (line.find('\t') != std::string::npos) records.push_back(record);
    }
    return records;
}

// 1-1 from 01:00:10:00, a dissolve of a second to it at 01:00:20:00, and it again from 01:00:30:00 run backward.
TEST_F(EditList, SameCutAsAnOtherKindOfFileGivesTheSameRecords) {
    const std::string rest = R"(, "metadata": {}, "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [)"
                             R"({"OTIO_SCHEMA": "Track.1", "kind": "Video", "children": [)";
    const std::string dissolve =
        R"(, {"OTIO_SCHEMA": "Transition.1", "name": "X", "transition_type": "SMPTE_Dissolve", "in_offset": )"
        R"({"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0}, "out_offset": )"
        R"({"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 24}}, )";
    write("a.otio", R"({"OTIO_SCHEMA": "Timeline.1", "name": "a", "global_start_time": )"
                    R"({"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 864000})" +
                        rest + clip(86640) + dissolve + clip(86880) + ", " +
                        clip(87120, R"({"OTIO_SCHEMA": "LinearTimeWarp.1", "time_scalar": -1})") + "]}]}}");
    write("b.edl", "001  A V C     01:00:10:00 01:00:12:00 10:00:00:00 10:00:02:00\n* FROM CLIP NAME: 1-1\n"
                   "002  A V C     01:00:12:00 01:00:12:00 10:00:02:00 10:00:02:00\n"
                   "002  A V D 024 01:00:20:00 01:00:22:00 10:00:02:00 10:00:04:00\n* EFFECT NAME: X\n"
                   "* FROM CLIP NAME: 1-1\n* TO CLIP NAME: 1-1\n"
                   "003  A V C     01:00:30:00 01:00:32:00 10:00:04:00 10:00:06:00\n* FROM CLIP NAME: 1-1\n"
                   "M2   A  -024.0  01:00:30:00\n");
    write("a.csv", "Name,Reel,Start,End,Key\n1-1,A,01:00:00:00,01:01:00:00,KJ 12 3456-1000+00\n");
    done({"log", "import", "a.csv", "-o", "a.RDB", "--rate", "24"});
    done({"cutlist", "a.otio", "--log", "a.RDB", "-o", "a.txt"});
    done({"cutlist", "b.edl", "--rate", "24", "--log", "a.RDB", "-o", "b.txt"});
    EXPECT_EQ(records_without_cookies(read("a.cdb")), records_without_cookies(read("b.cdb")));
    // 240 frames are 15 numbers; 21 seconds 504 frames, 31 numbers and 8; 31:23 767, 47 and 15.
    for (const char* numbers :
         {"KJ1234561015+00\tKJ1234561018+00", "KJ1234561031+08\tKJ1234561033+00", "KJ1234561047+15\tKJ1234561044+15"})
        EXPECT_THAT(read("b.cdb"), HasSubstr(numbers));
}

} // namespace
