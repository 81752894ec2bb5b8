// The way from the lab's logs and an edit list to the lists, from outside.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

const fs::path example = QUILLBROOK_SOURCE_DIR "/examples/edl";
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
        EXPECT_EQ(result.err, "");
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

} // namespace
