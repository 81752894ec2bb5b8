// The lists of the examples, byte for byte. QUILLBROOK_UPDATE_GOLDEN=1 writes them anew instead; only people set it.

#include "golden_changes.h"
#include "golden_list.h"
#include "text_diff.h"

#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace golden {
namespace {

namespace fs = std::filesystem;

bool is_updating() {
    const char* value = std::getenv("QUILLBROOK_UPDATE_GOLDEN");
    return value && std::string(value) == "1";
}

void update(const std::string& made, const std::string& expected) {
    fs::create_directories(fs::path(expected).parent_path());
    fs::copy_file(made, expected, fs::copy_options::overwrite_existing);
}

void expect_same_file(const std::string& made, const std::string& expected) {
    ASSERT_TRUE(fs::exists(made)) << made;
    ASSERT_TRUE(fs::exists(expected)) << expected;
    EXPECT_EQ(first_difference(bytes_of_file(expected), bytes_of_file(made)), "") << expected;
}

std::string test_name(const testing::TestParamInfo<List>& info) { return test_name_of(info.param); }

class ExampleList : public testing::TestWithParam<List> {};

TEST_P(ExampleList, IsMadeByteForByte) {
    const ScratchDirectory scratch;
    const std::string stem = scratch.file(GetParam().name());
    ASSERT_TRUE(make_list(GetParam(), stem));
    for (const std::string& extension : extensions_of(GetParam())) {
        if (is_updating()) update(stem + extension, expected_stem(GetParam()) + extension);
        expect_same_file(stem + extension, expected_stem(GetParam()) + extension);
    }
}

TEST_P(ExampleList, IsReadWithoutComplaint) { EXPECT_EQ(complaints_about(GetParam()), ""); }

INSTANTIATE_TEST_SUITE_P(Examples, ExampleList, testing::ValuesIn(all_lists()), test_name);

TEST(ExampleEdits, AreWhatTheScriptWrites) {
    if (std::system("python3 -c pass") != 0) GTEST_SKIP() << "no python3 here";
    const ScratchDirectory scratch;
    const std::string script = "python3 '" + examples_folder() + "/make_examples.py' '" + scratch.path() + "'";
    ASSERT_EQ(std::system(script.c_str()), 0);
    for (const List& list : all_lists()) {
        const std::string edit = "/" + list.folder + "/" + list.edit + ".otio";
        expect_same_file(scratch.path() + edit, examples_folder() + edit);
    }
}

TEST(ExampleFolders, HoldNoListThatNobodyMakes) {
    std::vector<std::string> known;
    for (const List& list : all_lists())
        for (const std::string& extension : extensions_of(list))
            known.push_back(fs::path(expected_stem(list) + extension).lexically_normal().string());
    for (const std::vector<Changes>& made : {all_changes(), all_costs()})
        for (const Changes& changes : made)
            known.push_back(fs::path(expected_file(changes)).lexically_normal().string());
    for (const List& list : all_lists())
        for (const auto& entry : fs::directory_iterator(fs::path(expected_stem(list)).parent_path()))
            EXPECT_NE(std::find(known.begin(), known.end(), entry.path().lexically_normal().string()), known.end())
                << entry.path();
}

TEST(TextDifference, IsEmptyForEqualTexts) { EXPECT_EQ(first_difference("a\nb\n", "a\nb\n"), ""); }

TEST(TextDifference, ShowsTheFirstChangeWithItsSurroundings) {
    EXPECT_EQ(first_difference("1\n2\n3\n4\nold\r\n6\n7\n8\n9\n", "1\n2\n3\n4\nnew\r\n6\n7\n8\n9\n"),
              "--- expected\n+++ made\n@@ line 5 @@\n 2\n 3\n 4\n-old<0D>\n+new<0D>\n 6\n 7\n 8\n");
}

TEST(TextDifference, ShowsALineEndThatIsMissing) {
    EXPECT_EQ(first_difference("a\nb\n", "a\nb"), "--- expected\n+++ made\n@@ line 2 @@\n a\n-b\n+b<no line end>\n");
}

} // namespace
} // namespace golden
