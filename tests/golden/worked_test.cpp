// The events that were worked out by hand, against the tables: examples/*/worked.tsv holds table, event, column
// and value, one field a line.

#include "golden_list.h"
#include "table_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace golden {
namespace {

struct WorkedField {
    std::string table, event, column, value;
};

/// The worked fields of one list.
std::vector<WorkedField> worked_fields(const List& list) {
    std::vector<WorkedField> fields;
    for (const std::string& line : lines_of_file(examples_folder() + "/" + list.folder + "/worked.tsv")) {
        const Fields parts = split_tabs(line);
        if (parts.size() == 4 && parts[0] == list.name()) fields.push_back({parts[0], parts[1], parts[2], parts[3]});
    }
    return fields;
}

std::string test_name(const testing::TestParamInfo<List>& info) { return test_name_of(info.param); }

class WorkedEvents : public testing::TestWithParam<List> {};
class WorkedEdits : public testing::TestWithParam<List> {};

TEST_P(WorkedEvents, StandInTheTableAsWorkedOut) {
    const SavedTable table(expected_stem(GetParam()) + ".cdb");
    for (const WorkedField& worked : worked_fields(GetParam())) {
        const std::vector<Fields> rows = table.rows_of(worked.event);
        ASSERT_EQ(rows.size(), 1u) << worked.event;
        EXPECT_EQ(table.field(rows[0], worked.column), worked.value) << worked.event << " " << worked.column;
    }
}

TEST_P(WorkedEdits, HaveTenWorkedEventsOrAll) {
    const SavedTable table(expected_stem(GetParam()) + ".cdb");
    std::set<std::string> events;
    for (const WorkedField& worked : worked_fields(GetParam()))
        if (worked.event.rfind("event:", 0) == 0) events.insert(worked.event);
    const auto shots = std::count_if(table.rows.begin(), table.rows.end(),
                                     [&](const Fields& row) { return table.field(row, "track") == "1"; });
    EXPECT_GT(shots, 0);
    EXPECT_GE(events.size(), std::min<std::size_t>(10, static_cast<std::size_t>(shots)));
}

template <class Test> std::vector<List> lists_that(Test test) {
    std::vector<List> lists;
    for (const List& list : all_lists())
        if (test(list)) lists.push_back(list);
    return lists;
}

bool has_worked_events(const List& list) { return !worked_fields(list).empty(); }
bool is_plain(const List& list) { return list.suffix.empty(); }

INSTANTIATE_TEST_SUITE_P(Examples, WorkedEvents, testing::ValuesIn(lists_that(has_worked_events)), test_name);
INSTANTIATE_TEST_SUITE_P(Examples, WorkedEdits, testing::ValuesIn(lists_that(is_plain)), test_name);

} // namespace
} // namespace golden
