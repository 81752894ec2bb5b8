// Edits that aren't texts: AAF, and bundles.

#include "tests/support/aaf_samples.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::HasSubstr;

namespace {

class OtherEdits : public ToolTest {};

TEST_F(OtherEdits, ATableOfAnAafHasTheRollsAndKeyNumbersOfItsFilm) {
    write("reel.aaf", aaf_writer::written(aaf_samples::long_cut(5)));
    const ToolResult result = run({"cutlist", "reel.aaf", "-o", "a.txt", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("a.cdb"), HasSubstr("\tTK01\t"));
    EXPECT_THAT(read("a.cdb"), HasSubstr("KJ291010"));
    EXPECT_THAT(read("a.cdb"), HasSubstr("\tA012\t"));
}

TEST_F(OtherEdits, ACompositionOfAnAafIsNamed) {
    aaf_writer::Made made = aaf_samples::long_cut(5);
    made.mobs.push_back(aaf_writer::composition(7, "Short", {aaf_writer::slot(1, {24}, aaf_writer::filler(10))}));
    write("reel.aaf", aaf_writer::written(made));
    const ToolResult several = run({"edit", "show", "reel.aaf"});
    EXPECT_EQ(several.status, 1);
    EXPECT_THAT(several.err,
                HasSubstr("\"Long\" (composition 1), \"Short\" (composition 2); name one with --sequence"));
    EXPECT_THAT(run({"edit", "show", "reel.aaf", "--sequence", "Short"}).out, HasSubstr("Edit \"Short\""));
    EXPECT_THAT(run({"edit", "show", "reel.aaf", "--sequences"}).out, HasSubstr("Short"));
}

TEST_F(OtherEdits, ABundleInAFolderGivesTheTableOfItsEdit) {
    write_edit("cut.otio");
    std::filesystem::create_directory(path("cut.otiod"));
    write("cut.otiod/content.otio", read("cut.otio"));
    EXPECT_EQ(run({"cutlist", "cut.otio", "-o", "file.txt", "--quiet"}).status, 0);
    const ToolResult result = run({"cutlist", "cut.otiod", "-o", "folder.txt", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_GT(read("folder.cdb").size(), 100u);
    EXPECT_EQ(read("folder.txt").substr(0, 200), read("file.txt").substr(0, 200));
}

} // namespace
