#include "embedded/services.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace {

using Path = LightweightString<wchar_t>;

std::wstring stripped(const wchar_t* path) { return std::wstring(stripExtension(path).view()); }
std::wstring joined(const wchar_t* left, const wchar_t* right) {
    return std::wstring(joinPaths(Path(left), Path(right)).view());
}
Path wide(const std::string& path) { return fromUTF8(path.c_str(), -1); }

TEST(Paths, OnlyTheLastExtensionIsStripped) {
    EXPECT_EQ(stripped(L"/lists/reel.one.cdb"), L"/lists/reel.one");
    EXPECT_EQ(stripped(L"reel.cdb"), L"reel");
    EXPECT_EQ(stripped(L"reel."), L"reel");
}

TEST(Paths, APathWithoutAnExtensionStaysAsItIs) {
    for (const wchar_t* path : {L"", L"reel", L"/a.b/reel", L"/a.b/", L"/a/.hidden", L"..", L"/a/.."}) {
        EXPECT_EQ(stripped(path), path);
    }
    EXPECT_EQ(stripped(L".hidden.cdb"), L".hidden");
}

TEST(Paths, JoiningPutsOneSeparatorBetween) {
    EXPECT_EQ(joined(L"/lists", L"old.chg"), L"/lists/old.chg");
    EXPECT_EQ(joined(L"/lists/", L"old.chg"), L"/lists/old.chg");
    EXPECT_EQ(joined(L"", L"old.chg"), L"old.chg");
    EXPECT_EQ(joined(L"/lists", L""), L"/lists");
}

TEST(Paths, TheRecordTableDirectoryEndsWithASeparator) {
    embedded::set_record_table_directory("/tables");
    EXPECT_EQ(getRDBDirectory(iSettings::record_tables).view(), L"/tables/");
    embedded::set_record_table_directory("/tables/");
    EXPECT_EQ(getRDBDirectory(iSettings::record_tables).view(), L"/tables/");
    embedded::set_record_table_directory("");
    EXPECT_EQ(getRDBDirectory(iSettings::record_tables).view(), L"./");
}

TEST(Paths, AnyBytesCanNameADirectory) {
    const std::string name = "/lists/\xFF\xC3\xA9";
    embedded::set_lists_directory(name);
    EXPECT_EQ(toUTF8(getListsDirectory()).view(), name);
    embedded::set_lists_directory("");
}

TEST(Paths, TheWorkDirectoryIsMadeWhenNeeded) {
    const std::string own = embedded::work_directory();
    EXPECT_TRUE(std::filesystem::is_directory(own));
    EXPECT_EQ(toUTF8(getListsDirectory()).view(), own);
    const ScratchDirectory scratch;
    embedded::set_work_directory(scratch.file("a/b"));
    EXPECT_FALSE(std::filesystem::exists(scratch.file("a/b")));
    EXPECT_EQ(embedded::work_directory(), scratch.file("a/b"));
    EXPECT_TRUE(std::filesystem::is_directory(scratch.file("a/b")));
    embedded::set_work_directory("");
    EXPECT_EQ(embedded::work_directory(), own);
}

TEST(Paths, AFileExistsWhereOneStandsAndADirectoryIsNone) {
    const ScratchDirectory scratch;
    put_bytes(scratch.file("\xC3\xA9\xFF.cdb"), "x");
    EXPECT_TRUE(fileExists(wide(scratch.file("\xC3\xA9\xFF.cdb"))));
    EXPECT_FALSE(fileExists(wide(scratch.file("none"))));
    EXPECT_FALSE(fileExists(wide(scratch.path())));
    EXPECT_FALSE(fileExists(Path()));
}

} // namespace
