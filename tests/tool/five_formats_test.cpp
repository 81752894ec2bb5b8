// One reel in the formats of five kinds of programs: the table is the same but for what a format can't say.

#include "tests/support/crossing_aaf.h"
#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>

namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr std::size_t key_column = 17, effect_column = 30, cookie_column = 32, scene_column = 47, take_column = 48;

std::vector<std::string> parted(const std::string& text, char at) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, at);)
        parts.push_back(part);
    return parts;
}

/// A table without what tells one file from another.
struct Table {
    std::vector<std::string> head;
    Rows rows;
};

Table table_of(const std::string& bytes) {
    const std::set<std::string> of_the_file{"edit_cookie", "edit_name", "edit_date", "project_name",
                                            "modification_time"};
    Table table;
    for (const std::string& line : parted(bytes, '\n')) {
        if (line.find('\t') != std::string::npos && line[0] >= '0' && line[0] <= '9') {
            table.rows.push_back(parted(line + "\t.", '\t'));
            table.rows.back()[cookie_column].clear();
        } else if (line[0] != '%' && !of_the_file.count(line.substr(0, line.find('=')))) {
            table.head.push_back(line);
        }
    }
    return table;
}

class FiveFormats : public ToolTest {
protected:
    static std::string example(const std::string& name) { return project_folder() + "/examples/formats/" + name; }

    void SetUp() override {
        ASSERT_EQ(run({"log", "import", example("crossing.ale"), "-o", "crossing.RDB"}).status, 0);
    }
    Table made(const std::string& extension) {
        const ToolResult result = run({"cutlist", example("crossing." + extension), "--rate", "24", "--log",
                                       "crossing.RDB", "-o", extension + ".txt", "--prove"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, "proved: 6 events, 280 frames\n");
        return table_of(read(extension + ".cdb"));
    }
};

TEST_F(FiveFormats, NameTheSameFilm) {
    const Table table = made("otio");
    ASSERT_EQ(table.rows.size(), 7U); // six events, and a row that the table ends with
    EXPECT_EQ(table.rows[0][key_column], "KJ4520011015+00");
    EXPECT_EQ(table.rows[0][scene_column], "1");
    for (const char* extension : {"xml", "fcpxml", "aaf"}) {
        const Table other = made(extension);
        EXPECT_EQ(other.head, table.head) << extension;
        EXPECT_EQ(other.rows, table.rows) << extension;
    }
}

TEST_F(FiveFormats, AnEditListKnowsNoScenesTakesAndNamesOfDissolves) {
    Table table = made("otio");
    const Table list = made("edl");
    EXPECT_EQ(table.rows[1][effect_column], "Cross Dissolve");
    table.rows[1][effect_column] = "SMPTE_Dissolve";
    for (std::vector<std::string>& row : table.rows)
        for (const std::size_t column : {scene_column, take_column})
            row[column].clear();
    EXPECT_EQ(list.head, table.head);
    EXPECT_EQ(list.rows, table.rows);
}

TEST_F(FiveFormats, TheAafIsThatOfItsMaker) {
    std::ifstream file(example("crossing.aaf"), std::ios::binary);
    const std::string kept{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(kept == aaf_writer::written(crossing::aaf())) << "fuzz/make_aaf_seeds makes it";
}

} // namespace
