// The model itself: what stands behind a row, and what of it is chosen.

#include "documents/document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace documents;
using testing::ElementsAre;

namespace {

List two_columns() {
    List list;
    list.columns = {{"event", "Event", Align::right, Wrap::none, {{"event"}}},
                    {"film", "First / last frame", Align::left, Wrap::none, {{"key_first"}, {"key_last"}}}};
    Row row;
    row.cells = {cell(mono("3"), std::int64_t{3}), {{{mono("KJ 29 1010 5867+05")}}, {Value("a"), Value("b")}}};
    list.parts = {Part{}};
    list.parts[0].rows = {row};
    return list;
}

} // namespace

TEST(Document, HasOneValueForEachFieldOfItsColumns) {
    List list = two_columns();
    EXPECT_THAT(values_of(list, list.parts[0].rows[0]), ElementsAre(Value(std::int64_t{3}), Value("a"), Value("b")));
    Row shorter;
    shorter.cells = {cell(mono("3"), std::int64_t{3})};
    EXPECT_THAT(values_of(list, shorter), ElementsAre(Value(std::int64_t{3}), Value(), Value()));
}

TEST(Document, ChoosesColumnsInTheOrderOfTheWords) {
    List list = two_columns();
    choose_columns(list, {"film", "nonsense", "event"});
    ASSERT_EQ(list.columns.size(), 2U);
    EXPECT_STREQ(list.columns[0].key, "film");
    EXPECT_THAT(values_of(list, list.parts[0].rows[0]), ElementsAre(Value("a"), Value("b"), Value(std::int64_t{3})));
    choose_columns(list, {"nonsense"});
    EXPECT_EQ(list.columns.size(), 2U);
}

TEST(Document, GathersTheMarksOfARowAndOfItsNotesOnce) {
    Row row;
    row.marks = {Mark::speed, Mark::doubt};
    row.notes = {{Mark::doubt, "Inexact", "", "", ""}, {Mark::missing, "No key number", "", "", ""}};
    EXPECT_THAT(marks_of(row), ElementsAre(Mark::missing, Mark::doubt, Mark::speed));
    EXPECT_STREQ(name_of(Mark::fresh), "new");
}

TEST(Document, PutsNotesWhereWordsStand) {
    List list = two_columns();
    list.columns.push_back({"shot", "Shot", Align::left, Wrap::words, {{"shot"}}});
    EXPECT_EQ(column_of_notes(list), 2);
    list.columns[1].notes = true;
    EXPECT_EQ(column_of_notes(list), 1);
    list.columns[1].title = "";
    EXPECT_EQ(column_of_notes(list), 2) << "pages don't show a column without a title";
}
