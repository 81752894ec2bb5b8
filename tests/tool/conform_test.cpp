// "quillbrook conform" from outside, and the orders of the same cuts. The working is examples/versions/WORKED.md.

#include "tests/support/json_schema.h"
#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

using testing::HasSubstr;

namespace {

using Words = std::vector<std::string>;

std::string example(const std::string& name) { return project_folder() + "/examples/" + name; }

/// The reels of a cut of The Weir.
Words cut(int number, const std::string& extension = ".otio") {
    const char* names[] = {"recut/weir-old", "recut/weir-new", "versions/weir-5", "versions/weir-6"};
    const std::string name = example(names[number - 3]);
    return {name + "-r1" + extension, name + "-r2" + extension};
}

/// A file of examples/versions/expected.
std::string expected(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(example("versions/expected/" + name)).rdbuf();
    return text.str();
}

/// With files named from the project's folder.
std::string from_project(std::string text) {
    const std::string folder = project_folder() + "/";
    for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;)
        text.erase(at, folder.size());
    return text;
}

class Conforming : public ToolTest {
protected:
    ToolResult conform(const Words& reels, const std::vector<Words>& cuts, const Words& more = {}) {
        Words line{"conform"};
        line.insert(line.end(), reels.begin(), reels.end());
        for (const Words& one : cuts) {
            line.emplace_back("--cut");
            line.insert(line.end(), one.begin(), one.end());
        }
        line.emplace_back("--quiet");
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
    /// The order of a cut after others, by the names of their documents.
    std::string ordered(int number, const Words& had) {
        const std::string name = "order-" + std::to_string(number);
        Words line{"order"};
        for (const std::string& reel : cut(number))
            line.push_back(reel);
        const Words more{"-o", name + ".list", "--json", name + ".json", "--handles", "8", "--prove", "--quiet"};
        line.insert(line.end(), more.begin(), more.end());
        if (!had.empty()) line.emplace_back("--had");
        line.insert(line.end(), had.begin(), had.end());
        EXPECT_EQ(run(line).status, 0) << name;
        return from_project(read(name + ".list"));
    }
};

TEST_F(Conforming, BeforeTheFirstCutNothingIsWrongWhereFilmIsUsedOnce) {
    const ToolResult result = conform(cut(3), {});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(from_project(result.out), expected("conform-3.list"));
}

TEST_F(Conforming, AgainstACutTellsWhatItSpentAndWhatMendsThat) {
    const ToolResult result = conform(cut(4), {cut(3)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(from_project(result.out), expected("conform-4.list"));
}

TEST_F(Conforming, OfACutThatWasMendedHolds) {
    const ToolResult result = conform(cut(5), {cut(3)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(from_project(result.out), expected("conform-5.list"));
}

TEST_F(Conforming, AgainstSeveralCutsAddsUpWhatTheySpent) {
    const ToolResult result = conform(cut(6), {cut(3), cut(5)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(from_project(result.out), expected("conform-6.list"));
}

TEST_F(Conforming, OrdersOfTheSameCutsLackOnlyWhatWasNotHad) {
    EXPECT_EQ(ordered(3, {}), expected("order-3.list"));
    EXPECT_EQ(ordered(4, {"order-3.json"}), expected("order-4.list"));
    EXPECT_EQ(ordered(5, {"order-3.json", "order-4.json"}), expected("order-5.list"));
    EXPECT_EQ(ordered(6, {"order-3.json", "order-4.json", "order-5.json"}), expected("order-6.list"));
}

TEST_F(Conforming, OfTablesIsThatOfTheirEdits) {
    const auto behind_head = [](const std::string& text) { return text.substr(text.find("Method: ")); };
    const auto recut = [](int number) {
        const std::string name = example(number == 3 ? "recut/expected/weir-old" : "recut/expected/weir-new");
        return Words{name + "-r1.cdb", name + "-r2.cdb"};
    };
    for (const char* method : {"ab", "single"}) {
        const Words more{"--method", method};
        const std::string of_tables = conform(recut(4), {recut(3)}, more).out;
        EXPECT_EQ(behind_head(of_tables), behind_head(conform(cut(4), {cut(3)}, more).out));
    }
    EXPECT_NE(conform(cut(4), {cut(3)}).out, conform(cut(4), {cut(3)}, {"--method", "single"}).out);
}

TEST_F(Conforming, WritesADocumentThatKeepsToItsSchema) {
    EXPECT_EQ(conform(cut(6), {cut(3), cut(5)}, {"-o", "c.txt", "--json", "c.json"}).status, 1);
    EXPECT_EQ(from_project(read("c.txt")), expected("conform-6.list"));
    const std::string document = read("c.json");
    EXPECT_EQ(fault_by_schema(document, "conform.schema.json"), "");
    EXPECT_THAT(document, HasSubstr("\"conforms\": 0"));
    EXPECT_THAT(document, HasSubstr("\"first\": \"KJ1020011007+00\""));
    EXPECT_THAT(document, HasSubstr("\"first_perforation\": 64448,\n   \"last_perforation\": 64449"))
        << "half of frame 1007+00, which cut 5's splice spent";
    EXPECT_THAT(document, HasSubstr("\"side\": \"head\"")) << "of event 4 of reel 2, which is too close to event 2";
    EXPECT_EQ(document.find("\"side\": \"tail\""), std::string::npos);
    std::string wrong = document;
    wrong.replace(wrong.find("\"trouble\": \"gone\""), 17, "\"trouble\": \"lost\"");
    EXPECT_NE(fault_by_schema(wrong, "conform.schema.json"), "");
}

TEST_F(Conforming, IsGivenAsPagesAndTablesToo) {
    const ToolResult result = conform(
        cut(6), {cut(3), cut(5)}, {"--html", "c.html", "--csv", ".", "--lists-json", "lists.json", "--text", "c.text"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(from_project(result.out), expected("conform-6.list"));
    EXPECT_EQ(fault_by_schema(read("lists.json"), "lists.schema.json"), "");
    EXPECT_THAT(
        read("conform.csv"),
        HasSubstr("\nconform-5,Gone,5,gone,R1 event 8,624,113,A003,KN6300443001+15,KN6300443008+15,1,7/1,,,"
                  "missing,\"Gone. 1 frame is gone, at its head: KN6300443001+15. Shorten R1 event 8 by 1 frame "
                  "at its head (624 of reel 1); or "));
    EXPECT_THAT(read("c.text"), HasSubstr("\nUsed twice\n[ ]   9  R1 event 11  "));
    EXPECT_THAT(read("c.html"), HasSubstr("KN6300443206+15"));
    EXPECT_EQ(conform(cut(3), {}, {"--text", "first.text"}).status, 0);
    EXPECT_THAT(read("first.text"), HasSubstr("The negative holds all that the cut needs."));
}

TEST_F(Conforming, IsOfPicturesAlone) {
    const ToolResult result = conform({example("reel/expected/reel-a1.cdb")}, {});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("reel-a1.cdb: is a table of sound, and only picture negative is cut"));
}

TEST_F(Conforming, TakesTheLabsOwnFigure) {
    EXPECT_THAT(conform(cut(5), {cut(3)}, {"--splice-loss", "1"}).out,
                HasSubstr("Splices in 35mm-4p: 1 frame on either side (as given)\n"));
    EXPECT_EQ(conform(cut(5), {cut(3)}, {"--splice-loss", "1"}).status, 1) << "one frame between, and each needs one";
    EXPECT_EQ(conform(cut(5), {cut(3)}, {"--splice-loss", "0p"}).status, 0);
    EXPECT_EQ(conform(cut(5), {}, {"--splice-loss", "two"}).status, 2);
    EXPECT_EQ(conform(cut(5), {}, {"--method", "tape"}).status, 2);
}

constexpr const char* lost_film =
    R"({"OTIO_SCHEMA": "Track.1", "kind": "Video", "children": [{"OTIO_SCHEMA": "Clip.1", "name": "Lost",
        "source_range": {"OTIO_SCHEMA": "TimeRange.1",
          "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
          "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 10}}}]})";

TEST_F(Conforming, NamesFilmThatItCantHold) {
    write("none.otio", lost_film);
    const ToolResult result = conform({"none.otio"}, {{"none.otio"}}, {"--json", "none.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("CAN'T BE HELD: no numbers that tell its film frame by frame\n"
                                      "  reel 1, children[0] \"Lost\": frames 0 to 9\n"));
    EXPECT_THAT(result.out, HasSubstr("NOT COUNTED: what these splices spent, as no numbers tell their film\n"
                                      "  cut 1, reel 1, children[0] \"Lost\": frames 0 to 9\n"));
    EXPECT_EQ(fault_by_schema(read("none.json"), "conform.schema.json"), "");
}

TEST_F(Conforming, RefusesWhatIsNoCut) {
    write("notes.txt", "nothing");
    const ToolResult result = conform(cut(3), {{"notes.txt"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("notes.txt: "));
    EXPECT_EQ(conform({"missing.otio"}, {}).status, 1);
    write("c.txt", "");
    EXPECT_THAT(conform(cut(3), {}, {"-o", "c.txt"}).err,
                HasSubstr("c.txt: is there already; --overwrite replaces it"));
}

TEST_F(Conforming, ListsFilmThatItCantHoldOnPagesToo) {
    write("none.otio", lost_film);
    EXPECT_EQ(conform({"none.otio"}, {{"none.otio"}}, {"--text", "c.text", "--csv", "."}).status, 0);
    EXPECT_THAT(read("conform-unheld.csv"), HasSubstr("\nconform-unheld-1,,,1,0,10,"));
    EXPECT_THAT(read("conform-unheld.csv"), HasSubstr("\nconform-unheld-2,,1,1,0,10,"));
    EXPECT_THAT(read("c.text"), HasSubstr("Can't be held"));
}

} // namespace
