// The changelists of examples/recut: byte for byte, and line for line against what was worked out by hand.
// QUILLBROOK_UPDATE_GOLDEN=1 writes the files anew instead; only people set it.

#include "golden_changes.h"
#include "golden_list.h"
#include "table_file.h"
#include "text_diff.h"

#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace golden {
namespace {

namespace fs = std::filesystem;

struct PrintedList {
    const char* title;
    std::size_t lines; ///< a row stands on
};

constexpr PrintedList printed_lists[] = {{"SUMMARY OF CHANGES", 1},
                                         {"NEW MATERIAL", 2},
                                         {"DETAILED LIST OF CHANGES", 2},
                                         {"TRANSITIONS IN NEW SEQUENCE", 3},
                                         {"BENCH LIST", 2}};

/// worked-lists.tsv holds report, list, row and words, a row a line.
std::vector<std::string> worked_rows(const std::string& report, const std::string& title) {
    std::vector<std::string> rows;
    for (const std::string& line : lines_of_file(recut_folder() + "/worked-lists.tsv")) {
        const Fields parts = split_tabs(line);
        if (parts.size() == 4 && parts[0] == report && parts[1] == title) rows.push_back(parts[3]);
    }
    return rows;
}

void update_if_asked(const std::string& made, const std::string& expected) {
    const char* value = std::getenv("QUILLBROOK_UPDATE_GOLDEN");
    if (!value || std::string(value) != "1") return;
    fs::copy_file(made, expected, fs::copy_options::overwrite_existing);
}

std::string test_name(const testing::TestParamInfo<Changes>& info) { return test_name_of(info.param); }

class RecutChanges : public testing::TestWithParam<Changes> {
protected:
    std::string made() {
        const std::string file = scratch_.file(GetParam().name + ".txt");
        EXPECT_TRUE(make_changes(GetParam(), file));
        return file;
    }

private:
    ScratchDirectory scratch_;
};

TEST_P(RecutChanges, AreMadeByteForByte) {
    const std::string file = made(), expected = expected_file(GetParam());
    update_if_asked(file, expected);
    ASSERT_TRUE(fs::exists(expected)) << expected;
    EXPECT_EQ(first_difference(bytes_of_file(expected), bytes_of_file(file)), "") << expected;
}

TEST_P(RecutChanges, SayWhatWasWorkedOut) {
    for (const PrintedList& list : printed_lists)
        EXPECT_EQ(rows_of_list(expected_file(GetParam()), list.title, list.lines),
                  worked_rows(GetParam().name, list.title))
            << list.title;
    EXPECT_EQ(worked_rows(GetParam().name, "DETAILED LIST OF CHANGES").size(), 20u);
}

TEST_P(RecutChanges, AreProvedByTheBenchListWhileTheOtherPartsAtTheLateArrival) {
    const Fields proofs = lines_of_file(made() + ".proof");
    ASSERT_EQ(proofs.size(), 2u);
    EXPECT_EQ(proofs[0], "changes\tparts\t20\t20\t1\t680");
    EXPECT_EQ(proofs[1], "bench\tproved\t19\t0\t0\t0");
}

INSTANTIATE_TEST_SUITE_P(Recut, RecutChanges, testing::ValuesIn(all_changes()), test_name);

} // namespace
} // namespace golden
