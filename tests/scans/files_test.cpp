// Sequences by the names of files.

#include "formats/scans/scan_files.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ScanNames : public testing::Test {
protected:
    void touch(const std::string& name) {
        const std::filesystem::path whole = std::filesystem::path(folder()) / name;
        std::filesystem::create_directories(whole.parent_path());
        std::ofstream(whole) << "x";
    }
    std::string folder() const { return scratch_.path(); }
    std::vector<ScanFiles> find() {
        std::string why;
        std::vector<ScanFiles> found = find_scans(folder(), warnings_, why);
        EXPECT_EQ(why, "");
        return found;
    }
    std::vector<std::string> told() const {
        std::vector<std::string> lines;
        for (const std::string& line : warnings_)
            lines.push_back(line.substr(folder().size() + 1));
        return lines;
    }
    static std::vector<std::string> names(const ScanFiles& files) {
        std::vector<std::string> result;
        for (const ScanFile& file : files.files)
            result.push_back(file.name);
        return result;
    }

    ScratchDirectory scratch_;
    embedded::Warnings warnings_;
};

TEST_F(ScanNames, SignBeforeTheNumberEndsTheStem) {
    for (const char* name : {"A012.0001.dpx", "B_0001.dpx", "C-1.dpx", "0001.dpx", "D0001.dpx", "E 1.EXR"})
        touch(name);
    std::vector<std::string> stems;
    for (const ScanFiles& files : find())
        stems.push_back(files.stem);
    EXPECT_THAT(stems, ElementsAre("", "A012", "B", "C", "", "E"));
    EXPECT_THAT(warnings_, IsEmpty());
}

TEST_F(ScanNames, OrderIsByNumberWhateverItsDigits) {
    for (const char* name : {"A.10.dpx", "A.9.dpx", "A.0100.dpx"})
        touch(name);
    const std::vector<ScanFiles> found = find();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_THAT(names(found[0]), ElementsAre("A.9.dpx", "A.10.dpx", "A.0100.dpx"));
    EXPECT_EQ(found[0].files[2].number, 100u);
    EXPECT_EQ(found[0].digits(2), "0100");
}

TEST_F(ScanNames, FoldersKindsAndSpellingsStayApart) {
    for (const char* name : {"r2/A.1.dpx", "r1/A.1.dpx", "r1/A_2.dpx", "r1/A.1.exr", "r1/inner/A.1.dpx"})
        touch(name);
    std::vector<std::string> paths;
    for (const ScanFiles& files : find())
        paths.push_back(files.path(0).substr(folder().size() + 1));
    EXPECT_THAT(paths, ElementsAre("r1/A.1.dpx", "r1/A.1.exr", "r1/A_2.dpx", "r1/inner/A.1.dpx", "r2/A.1.dpx"));
}

TEST_F(ScanNames, WhatCantBeUsedIsToldAndOtherFilesArent) {
    for (const char* name : {"A.1.dpx", "A.01.dpx", "title.dpx", "notes.txt", ".A.2.dpx", "A.1234567890123456789.dpx"})
        touch(name);
    std::filesystem::create_directory(folder() + "/A.7.dpx");
    std::filesystem::create_symlink("nowhere", folder() + "/A.8.dpx");
    const std::vector<ScanFiles> found = find();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_THAT(names(found[0]), ElementsAre("A.01.dpx"));
    EXPECT_THAT(told(), ElementsAre("A.1234567890123456789.dpx: has no frame number in its name; left out",
                                    "A.8.dpx: isn't a plain file; left out",
                                    "title.dpx: has no frame number in its name; left out",
                                    "A.1.dpx: has the number of A.01.dpx; left out"));
}

TEST_F(ScanNames, LinksToFoldersArentFollowed) {
    touch("r1/A.1.dpx");
    std::filesystem::create_directory_symlink("..", folder() + "/r1/back");
    EXPECT_EQ(find().size(), 1u);
    EXPECT_THAT(told(), ElementsAre("r1/back: is a link to a folder, which isn't followed"));
}

TEST_F(ScanNames, FolderThatIsntThereHasAReason) {
    std::string why;
    EXPECT_THAT(find_scans(folder() + "/none", warnings_, why), IsEmpty());
    EXPECT_EQ(why, folder() + "/none: No such file or directory");
}

} // namespace
