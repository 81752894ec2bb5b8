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
#include <sstream>

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

class MadeChanges : public testing::TestWithParam<Changes> {
protected:
    void expect_byte_for_byte(const std::string& file) {
        const std::string expected = expected_file(GetParam());
        update_if_asked(file, expected);
        ASSERT_TRUE(fs::exists(expected)) << expected;
        EXPECT_EQ(first_difference(bytes_of_file(expected), bytes_of_file(file)), "") << expected;
    }
    std::string made() {
        const std::string file = scratch_.file(GetParam().name + ".txt");
        EXPECT_TRUE(make_changes(GetParam(), file));
        return file;
    }

private:
    ScratchDirectory scratch_;
};

class RecutChanges : public MadeChanges {};

TEST_P(RecutChanges, AreMadeByteForByte) { expect_byte_for_byte(made()); }

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

class RecutCosts : public MadeChanges {};

/// The words of a line that tells a cost: of this list, and of deleting and inserting.
std::string cost_in(const std::string& file, const std::string& name) {
    std::string cost;
    for (const std::string& line : lines_of_file(file)) {
        std::istringstream in(line);
        std::string first, planned, simple;
        if (in >> first >> planned >> simple && first == name) cost = planned + ' ' + simple;
    }
    return cost;
}

TEST_P(RecutCosts, AreMadeByteForByteAndProved) {
    const std::string file = made();
    expect_byte_for_byte(file);
    EXPECT_EQ(lines_of_file(file + ".proof").back(), "bench\tproved\t19\t0\t0\t0");
}

TEST_P(RecutCosts, AreWhatWasWorkedOut) {
    const bool splices = GetParam().name == "changes-cost-splices";
    const std::string file = expected_file(GetParam());
    EXPECT_EQ(cost_in(file, "Moves"), splices ? "18 19" : "15 19");
    EXPECT_EQ(cost_in(file, "Splices"), splices ? "21 21" : "34 21");
    EXPECT_EQ(cost_in(file, "Frames"), splices ? "2148 2212" : "716 2212");
    EXPECT_EQ(cost_in(file, "Feet"), splices ? "0134+04 0138+04" : "0044+12 0138+04");
}

INSTANTIATE_TEST_SUITE_P(Recut, RecutCosts, testing::ValuesIn(all_costs()), test_name);

} // namespace
} // namespace golden
