// "quillbrook export" as a process.

#include "tests/tool/tool_process.h"

namespace {

class Export : public ToolTest {
protected:
    Export() { write_edit("reel.otio"); }

    std::string table_of(const std::string& edit) {
        const ToolResult made = run({"cutlist", edit, "-o", "lists.txt", "--overwrite", "--quiet"});
        EXPECT_EQ(made.status, 0) << made.err;
        return read("lists.cdb");
    }
};

TEST_F(Export, WritesAnEditWhoseTableIsTheSame) {
    const ToolResult result = run({"export", "reel.otio", "-o", "again.otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(table_of("again.otio"), table_of("reel.otio"));
}

TEST_F(Export, WritesToStandardOutputOnceTheFormatIsNamed) {
    EXPECT_EQ(run({"export", "reel.otio", "-o", "file.otio"}).status, 0);
    const ToolResult result = run({"export", "reel.otio", "-o", "-", "--as", "otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, read("file.otio"));
    const ToolResult unnamed = run({"export", "reel.otio", "-o", "-"});
    EXPECT_EQ(unnamed.status, 1);
    EXPECT_NE(unnamed.err.find("-: its name tells no format; name one with --as (otio"), std::string::npos)
        << unnamed.err;
}

TEST_F(Export, TellsItsFormatByTheNameInAnyCase) {
    EXPECT_EQ(run({"export", "reel.otio", "-o", "A.OTIO"}).status, 0);
    const ToolResult result = run({"export", "reel.otio", "-o", "reel.mov"});
    EXPECT_EQ(result.status, 1);
    EXPECT_FALSE(exists("reel.mov"));
    EXPECT_EQ(run({"export", "reel.otio", "-o", "reel.mov", "--as", "otio"}).status, 0);
    EXPECT_EQ(run({"export", "reel.otio", "-o", "x.otio", "--as", "mov"}).status, 2);
}

TEST_F(Export, ReplacesAFileOnlyWhereItIsTold) {
    write("there.otio", "mine");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "there.otio"}).status, 1);
    EXPECT_EQ(read("there.otio"), "mine");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "there.otio", "--overwrite"}).status, 0);
    EXPECT_NE(read("there.otio"), "mine");
    const std::string edit = read("reel.otio");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "reel.otio", "--overwrite"}).status, 1);
    EXPECT_EQ(read("reel.otio"), edit);
}

TEST_F(Export, LeavesNoFileOfAnEditThatCantBeRead) {
    write("bad.otio", "{");
    const ToolResult result = run({"export", "bad.otio", "-o", "out.otio"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("bad.otio: line 1"), std::string::npos) << result.err;
    EXPECT_EQ(run({"export", "none.otio", "-o", "out.otio"}).status, 1);
    EXPECT_FALSE(exists("out.otio"));
}

constexpr const char* rendered_edit = R"({"OTIO_SCHEMA": "Track.1", "children": [{"OTIO_SCHEMA": "Clip.1",
  "name": "comp", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
    "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
    "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 48}},
  "metadata": {"quillbrook": {"rendered": true, "rendered_from": {"OTIO_SCHEMA": "Track.1", "children": [
    {"OTIO_SCHEMA": "Clip.1", "name": "inner", "metadata": {"quillbrook": {"keycode": "KJ 12 3456-0100+05"}},
     "source_range": {"OTIO_SCHEMA": "TimeRange.1",
       "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
       "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 48}}}]}}}}]})";

TEST_F(Export, WritesRenderedClipsAsTheListsShowThem) {
    write("rendered.otio", rendered_edit);
    const ToolResult result = run({"export", "rendered.otio", "-o", "again.otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("rendered clips are written as what they were rendered from"), std::string::npos);
    EXPECT_NE(read("again.otio").find("KJ1234560100+05"), std::string::npos);
    EXPECT_EQ(table_of("again.otio"), table_of("rendered.otio"));
    EXPECT_EQ(run({"export", "rendered.otio", "-o", "kept.otio", "--config", "allow_auto_unrender=0"}).err, "");
    EXPECT_EQ(read("kept.otio").find("KJ1234560100+05"), std::string::npos);
}

TEST_F(Export, SaysNothingWhereItIsQuiet) {
    write("rendered.otio", rendered_edit);
    EXPECT_EQ(run({"export", "rendered.otio", "-o", "again.otio", "--quiet"}).err, "");
}

} // namespace
