// "quillbrook check" and "quillbrook explain", and what "cutlist" tells of findings, from outside.

#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class Check : public ToolTest {
protected:
    void SetUp() override {
        write("reel.edl", "TITLE: Ferry\n"
                          "001  T1   V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                          "002  T10  V C 01:00:00:00 01:00:02:00 10:00:02:00 10:00:04:00\n"
                          "003  T1   V C 01:00:59:00 01:01:01:00 10:00:04:00 10:00:06:00\n");
        write("log.csv", "Name,Reel,Start,End,Key,Camroll\n"
                         "1,T1,01:00:00:00,01:01:00:00,KJ 12 3456-1000+00,A1\n"
                         "2,T1,01:01:00:00,01:02:00:00,KJ 65 4321-1000+00,A2\n"
                         "3,T10,01:00:00:00,01:01:00:00,KJ 11 1111-1000+00,A10\n");
        EXPECT_EQ(run({"log", "import", "log.csv", "-o", "log.RDB", "--rate", "24"}).status, 0);
    }
    ToolResult check(std::vector<std::string> more = {}) {
        std::vector<std::string> line{"check", "reel.edl", "--rate", "24", "--log", "log.RDB"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
};

TEST_F(Check, PrintsTheWorstFirstWithATally) {
    const ToolResult result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(
        result.out,
        StartsWith("wrong: reel-prefix: reel.edl: line 3: event 2 of V1 at frame 48 (10:00:02:00), \"T10\": reel "
                   "\"T10\" is listed with the film of log.RDB line "));
    EXPECT_THAT(result.out,
                HasSubstr("wrong: log-overrun: reel.edl: line 4: event 3 of V1 at frame 120 (10:00:05:00)"));
    EXPECT_THAT(result.out, HasSubstr("24 of 48 frames lie outside log.RDB line "));
    EXPECT_THAT(result.out, HasSubstr("3 wrong, 0 doubts, 0 notes\n"));
}

TEST_F(Check, NothingWrongEndsInStatusNought) {
    write("good.edl", "001  T1   V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n");
    const ToolResult result = run({"check", "good.edl", "--rate", "24", "--log", "log.RDB", "--strict"});
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(result.out, "0 wrong, 0 doubts, 0 notes\n");
}

TEST_F(Check, DoubtsFailOnlyStrictRuns) {
    const std::vector<std::string> line{"check", "reel.edl", "--rate", "24"};
    const ToolResult plain = run(line);
    EXPECT_EQ(plain.status, 0);
    EXPECT_THAT(plain.out, HasSubstr("doubt: no-key: "));
    EXPECT_THAT(plain.out, HasSubstr("0 wrong, 6 doubts, 0 notes\n"));
    EXPECT_EQ(run({"check", "reel.edl", "--rate", "24", "--strict"}).status, 1);
}

TEST_F(Check, FindingsAreADocumentToo) {
    EXPECT_EQ(check({"--json", "f.json"}).status, 1);
    const std::string document = read("f.json");
    EXPECT_THAT(document, StartsWith("{\n \"format\": \"quillbrook findings\",\n \"version\": 1,\n \"findings\": [\n"));
    EXPECT_THAT(document,
                HasSubstr("\"code\": \"reel-prefix\",\n   \"severity\": \"wrong\",\n   \"file\": \"reel.edl\",\n"
                          "   \"where\": \"reel.edl: line 3\",\n   \"channel\": \"V1\",\n   \"event\": 2,\n"
                          "   \"frame\": 48,\n   \"timecode\": \"10:00:02:00\",\n   \"name\": \"T10\",\n"));
    EXPECT_EQ(check({"--json", "reel.edl"}).status, 1);
    EXPECT_THAT(read("reel.edl"), StartsWith("TITLE"));
}

TEST_F(Check, CutlistTellsALineForEachKind) {
    const ToolResult result = run({"cutlist", "reel.edl", "--rate", "24", "-o", "a.txt", "--frames"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("doubt: no-key: reel.edl: line 2: event 1 of V1 at frame 0 "));
    EXPECT_THAT(result.err, HasSubstr(" (2 more)\n"));
    EXPECT_THAT(result.progress, HasSubstr("Analysing track V1\n"));
}

TEST_F(Check, QuietNeverSilencesWhatIsWrong) {
    const std::vector<std::string> line{"cutlist", "reel.edl", "--rate", "24", "--log", "log.RDB", "-o", "a.txt"};
    std::vector<std::string> quiet = line, silent = line;
    quiet.emplace_back("--quiet");
    const ToolResult wrong = run(quiet);
    EXPECT_EQ(wrong.status, 0);
    EXPECT_EQ(wrong.out, "");
    EXPECT_THAT(wrong.err, StartsWith("wrong: reel-prefix: "));
    const ToolResult doubts = run({"cutlist", "reel.edl", "--rate", "24", "-o", "b.txt", "--quiet"});
    EXPECT_EQ(doubts.err, "");
    const ToolResult warned = run({"cutlist", "reel.edl", "--rate", "24", "-o", "c.txt", "--no-progress"});
    EXPECT_EQ(warned.out, "");
    EXPECT_THAT(warned.err, HasSubstr("doubt: no-key: "));
}

TEST_F(Check, AStrictRunFailsBeforeAnythingIsWritten) {
    const ToolResult result = run({"cutlist", "reel.edl", "--rate", "24", "-o", "a.txt", "--strict"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("doubt: no-key: "));
    EXPECT_THAT(names(), ElementsAre("log.RDB", "log.csv", "reel.edl"));
}

TEST_F(Check, ExplainTellsEachStep) {
    const ToolResult result = run({"explain", "reel.edl", "--rate", "24", "--log", "log.RDB", "--at", "10:00:05:12"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("edit: film frame 132, timecode 10:00:05:12, at 24 film frames a second\n"
                                       "event: event 3 of V1, \"T1\", frames 120 to 143 as cut, reel.edl: line 4\n"
                                       "source: frame "));
    EXPECT_THAT(result.out, HasSubstr("timecode: reel \"T1\" at 01:01:00:12 (24fps)\n"));
    EXPECT_THAT(result.out, HasSubstr("frame 12 of 1440\nlists: they take log.RDB line "));
    EXPECT_THAT(result.out, HasSubstr("film: roll A2, KJ6543211000+12\n"));
}

TEST_F(Check, ExplainFindsEventsByNumber) {
    const ToolResult result = run({"explain", "reel.edl", "--rate", "24", "--log", "log.RDB", "--event", "2"});
    EXPECT_THAT(result.out, HasSubstr("event: event 2 of V1, \"T10\", frames 48 to 95 as cut"));
    EXPECT_THAT(result.out, HasSubstr("film: roll A10, KJ1111111000+00\n"));
    EXPECT_EQ(run({"explain", "reel.edl", "--rate", "24", "--event", "9"}).status, 1);
    EXPECT_THAT(run({"explain", "reel.edl", "--rate", "24"}).out, StartsWith("edit: film frame 0, "));
    EXPECT_EQ(run({"explain", "reel.edl", "--rate", "24", "--at", "0", "--event", "1"}).status, 2);
    EXPECT_EQ(run({"explain", "reel.edl", "--rate", "24", "--at", "x"}).status, 1);
}

TEST_F(Check, FilmWithoutANumberIsNoKeyInChanges) {
    write("new.edl", "TITLE: Ferry\n"
                     "001  T10  V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                     "002  T9   V C 01:00:00:00 01:00:03:00 10:00:02:00 10:00:05:00\n");
    EXPECT_EQ(run({"cutlist", "reel.edl", "--rate", "24", "-o", "old.txt"}).status, 0);
    EXPECT_EQ(run({"cutlist", "new.edl", "--rate", "24", "-o", "new.txt"}).status, 0);
    const ToolResult result = run(
        {"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "c.txt", "--lists", "bench", "--json", "c.json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("warning: old.cdb: 3 events have no key number; "));
    EXPECT_THAT(result.err, HasSubstr("warning: new.cdb: 2 events have no key number; "));
    const std::string list = read("c.txt");
    int told = 0;
    for (std::size_t at = list.find("no key"); at != std::string::npos; at = list.find("no key", at + 1))
        ++told;
    EXPECT_EQ(told, 6) << "first and last of three steps";
    EXPECT_THAT(read("c.json"), HasSubstr("\"first_key\": null"));
    EXPECT_THAT(read("c.json"), Not(HasSubstr("\"first_key\": \"")));
}

/// A row of docs/findings.md: the edit, the code and the places.
std::string told_row(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '|');)
        cells.push_back(cell);
    if (cells.size() < 5) return {};
    std::string row = cells[1] + cells[2] + cells[3];
    row.erase(std::remove(row.begin(), row.end(), '`'), row.end());
    return row;
}

std::vector<std::string> rows_in_docs() {
    const std::string docs = bytes_of_file(project_folder() + "/docs/findings.md");
    std::istringstream section(docs.substr(docs.find("\n## The examples")));
    std::vector<std::string> rows;
    std::string line;
    while (std::getline(section, line) && line.find("## Files of") == std::string::npos)
        if (line.rfind("| `", 0) == 0) rows.push_back(told_row(line));
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// The rows that the lines of a check make: "V1 0, 48, V2 24" for each code.
std::vector<std::string> rows_of(const std::string& name, const std::string& out) {
    static const std::regex form("[a-z]+: ([a-z0-9-]+): .*?(?:event [0-9]+ of )?([VA][0-9]+) at frame ([0-9]+) .*");
    std::map<std::string, std::pair<std::string, std::string>> places;
    std::istringstream stream(out);
    std::smatch found;
    for (std::string line; std::getline(stream, line);) {
        if (!std::regex_match(line, found, form)) continue;
        auto& [text, channel] = places[found[1]];
        text += (text.empty() ? "" : ", ") + (channel == found[2] ? "" : found[2].str() + " ") + found[3].str();
        channel = found[2];
    }
    std::vector<std::string> rows;
    for (const auto& [code, place] : places)
        rows.push_back(" " + name + "  " + code + "  " + place.first + " ");
    return rows;
}

TEST_F(Check, FindsInTheExamplesWhatTheDocsExplain) {
    namespace fs = std::filesystem;
    const fs::path examples = project_folder() + "/examples";
    std::vector<std::string> rows;
    const auto add = [&](const fs::path& edit, std::vector<std::string> line) {
        line.insert(line.begin(), {"check", edit.string()});
        const std::vector<std::string> more = rows_of(fs::relative(edit, examples).string(), run(line).out);
        rows.insert(rows.end(), more.begin(), more.end());
    };
    for (const auto& file : fs::recursive_directory_iterator(examples))
        if (file.path().extension() == ".otio") add(file.path(), {});
    const fs::path edl = examples / "edl";
    EXPECT_EQ(run({"log", "import", edl / "days.ale", edl / "night.flx", "-o", "show.RDB"}).status, 0);
    add(edl / "ferryman.edl", {"--rate", "25", "--log", "show.RDB"});
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, rows_in_docs());
}

} // namespace
