// "quillbrook changelist" of edits: it makes the tables itself.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class ChangelistEdits : public ToolTest {
protected:
    static std::string recut(const std::string& name) { return project_folder() + "/examples/recut/" + name; }
    static std::string expected(const std::string& name) { return recut("expected/" + name); }

    ToolResult changes(const std::vector<std::string>& more) {
        std::vector<std::string> line{"changelist", "-o", "out.txt", "--overwrite"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
    std::string report(const std::vector<std::string>& more) {
        const ToolResult result = changes(more);
        EXPECT_EQ(result.status, 0) << result.err;
        return read("out.txt");
    }
    /// The whole of the named file, wherever it stands.
    static std::string bytes_of(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(ChangelistEdits, GiveTheReportOfTheirTables) {
    const std::string of_tables =
        report({"--old", expected("weir-old-r1.cdb"), expected("weir-old-r2.cdb"), "--new", expected("weir-new-r1.cdb"),
                expected("weir-new-r2.cdb"), "--edits", recut("weir-old-r1.otio"), recut("weir-new-r1.otio")});
    EXPECT_EQ(report({"--old", recut("weir-old-r1.otio"), recut("weir-old-r2.otio"), "--new", recut("weir-new-r1.otio"),
                      recut("weir-new-r2.otio")}),
              of_tables);
    EXPECT_THAT(names(), ElementsAre("out.txt"));
}

TEST_F(ChangelistEdits, MixWithTables) {
    EXPECT_EQ(report({"--old", recut("weir-old-r1.otio"), "--new", expected("weir-new-r1.cdb"), "--edits",
                      recut("weir-new-r1.otio")}),
              report({"--old", expected("weir-old-r1.cdb"), "--new", recut("weir-new-r1.otio"), "--edits",
                      recut("weir-old-r1.otio")}));
}

TEST_F(ChangelistEdits, LeaveTheirTablesInTheFolderOfTheWorkingFiles) {
    std::filesystem::create_directory(path("kept"));
    report({"--old", recut("weir-old-r1.otio"), "--new", recut("weir-new-r1.otio"), "--lists-dir", "kept"});
    EXPECT_EQ(read("kept/old1-weir-old-r1.cdb"), bytes_of(expected("weir-old-r1.cdb")));
    EXPECT_EQ(read("kept/new1-weir-new-r1.cdb"), bytes_of(expected("weir-new-r1.cdb")));
    EXPECT_FALSE(exists("kept/old1-weir-old-r1.txt"));
}

TEST_F(ChangelistEdits, TellWhatTheirCheckFinds) {
    const ToolResult result = changes({"--old", recut("weir-old-r1.otio"), "--new", recut("weir-new-r1.otio")});
    EXPECT_THAT(result.err, HasSubstr("doubt: too-close: "));
    const ToolResult strict =
        changes({"--old", recut("weir-old-r1.otio"), "--new", recut("weir-new-r1.otio"), "--strict", "--quiet"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_THAT(strict.err, HasSubstr("V1 of " + recut("weir-new-r1.otio") + ": is in doubt"));
}

TEST_F(ChangelistEdits, OfAChannelThatIsntThereFail) {
    const ToolResult result =
        changes({"--old", recut("weir-old-r1.otio"), "--new", recut("weir-new-r1.otio"), "--channel", "V9"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("V9 of " + recut("weir-old-r1.otio") + ": no table could be made"));
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ChangelistEdits, TakeTheirSequencesByName) {
    write_edit("cut.otio");
    const ToolResult result =
        changes({"--old", "cut.otio", "--new", "cut.otio", "--old-sequence", "Heron", "--new-sequence", "Monday"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("cut.otio: holds no sequence \""));
}

TEST_F(ChangelistEdits, TakeOptionsOfTheCutlist) {
    std::filesystem::create_directory(path("kept"));
    report({"--old", recut("weir-old-r1.otio"), "--new", recut("weir-new-r1.otio"), "--lists-dir", "kept", "--cut-set",
            "proj_name=Heron", "--set", "chg_summary_list=0"});
    EXPECT_THAT(read("kept/old1-weir-old-r1.cdb"), HasSubstr("project_name=Heron\n"));
    EXPECT_THAT(read("out.txt"), Not(HasSubstr("SUMMARY OF CHANGES:")));
}

} // namespace
