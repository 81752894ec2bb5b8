#include "host/edit.h"
#include "tests/recdb/tables.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cstring>
#include <type_traits>

namespace {

using Texts = std::vector<std::string>;

class Table : public testing::Test {
protected:
    Table() : table(three_columns()) {
        append_rows(table, {{"3", "A001", ""}, {"1", "A002", "x"}, {"2", "A001", "y"}});
    }
    recdb table;
};

TEST_F(Table, ColumnsAnswerByNumberAndName) {
    EXPECT_EQ(table.get_num_fields(), 3U);
    EXPECT_STREQ(table.get_fieldname(1), "cam reel");
    EXPECT_EQ(table.get_fieldname(3), nullptr);
    EXPECT_EQ(table.get_fieldnum("CAM Reel"), 1);
    EXPECT_EQ(table.get_fieldnum("reel"), -1);
    EXPECT_EQ(table.get_fieldtype(2), DBFieldTypes::timecode);
    EXPECT_EQ(table.get_field_type(9), DBFieldTypes::none);
    EXPECT_EQ(table.get_fieldsize(1), 4);
    EXPECT_NE(table.get_valid(), 0);
}

TEST_F(Table, ColumnsCanBeRenamedAndRetyped) {
    EXPECT_EQ(table.set_fieldname(0, "number"), 0);
    EXPECT_EQ(table.get_fieldnum("number"), 0);
    EXPECT_EQ(table.set_fieldname(7, "number"), -1);
    EXPECT_EQ(table.set_fieldname(0, ""), -1);
    EXPECT_EQ(table.set_fieldtype(0, DBFieldTypes::timecode), 0);
    EXPECT_EQ(table.get_fieldtype(0), DBFieldTypes::timecode);
    EXPECT_EQ(table.set_fieldtype(0, DBFieldTypes::none), -1);
}

TEST_F(Table, OnePastTheEndIsNoRecord) {
    EXPECT_NE(table.get_record(2), nullptr);
    EXPECT_EQ(table.get_record(3), nullptr);
    EXPECT_EQ(table.get_record(UINT_MAX), nullptr);
    EXPECT_TRUE(table.getField(3, 0).empty());
    EXPECT_EQ(table[3].get_field(0), nullptr);
    EXPECT_STREQ(table[0].get_field(0), "3");
}

TEST_F(Table, AnEmptyFieldIsNullAndLeavesABufferAlone) {
    dbrecord* record = table.get_record(0);
    char buffer[5] = "kept";
    EXPECT_EQ(record->get_field(2), nullptr);
    EXPECT_EQ(record->in_field(2, buffer, 4), 0);
    EXPECT_EQ(record->in_field(-1, buffer, 4), 0);
    EXPECT_EQ(record->in_field(3, buffer, 4), 0);
    EXPECT_STREQ(buffer, "kept");
    EXPECT_EQ(record->set_field(1, "", true), 0);
    EXPECT_EQ(record->get_field(1), nullptr);
}

TEST_F(Table, ABufferTakesAtMostItsLimit) {
    char buffer[4] = "...";
    EXPECT_EQ(table.get_record(0)->in_field(1, buffer, 3), 3);
    EXPECT_STREQ(buffer, "A00");
    EXPECT_EQ(table.get_record(0)->in_field(1, buffer, 0), 0);
    EXPECT_STREQ(buffer, "");
}

TEST_F(Table, FieldsOutsideTheRowAreRefused) {
    dbrecord* record = table.get_record(0);
    EXPECT_EQ(record->set_field(3, 1), -1);
    EXPECT_EQ(record->set_field(-1, "x", true), -1);
    EXPECT_EQ(record->set_field(3, 1.5), -1);
    EXPECT_EQ(table.set_field(9U, 0U, "x"), -1);
}

TEST_F(Table, AFieldCanBeSetFromItself) {
    dbrecord* record = table.get_record(0);
    record->set_field(1, "a text of some length", true);
    record->set_field(1, record->get_field(1) + 2, true);
    EXPECT_STREQ(record->get_field(1), "text of some length");
    record->set_field(0, record->get_field(1), true);
    EXPECT_STREQ(record->get_field(0), "text of some length");
}

TEST_F(Table, TextsOfOtherFieldsStayInTheirPlace) {
    dbrecord* record = table.get_record(0);
    const char* text = record->get_field(1);
    record->set_field(0, std::string(1000, 'x').c_str(), true);
    table.add_records(100);
    table.set_sortfield(0);
    table.sort(1, 0);
    EXPECT_EQ(record->get_field(1), text);
    EXPECT_STREQ(text, "A001");
}

TEST_F(Table, NumbersAreStoredAsTheShortestTextThatReadsBack) {
    dbrecord* record = table.get_record(0);
    record->set_field(0, INT_MIN);
    EXPECT_STREQ(record->get_field(0), "-2147483648");
    for (const auto& [value, text] : std::vector<std::pair<double, const char*>>{{1.0, "1"},
                                                                                 {0.1, "0.1"},
                                                                                 {-2.5, "-2.5"},
                                                                                 {1e300, "1e+300"},
                                                                                 {0.1 + 0.2, "0.30000000000000004"},
                                                                                 {5.0 / 3, "1.6666666666666667"},
                                                                                 {1.1 * 1.1, "1.2100000000000002"}}) {
        EXPECT_EQ(record->set_field(0, value), 0);
        EXPECT_STREQ(record->get_field(0), text);
        double back = 0;
        EXPECT_EQ(table.in_field(0, 0, back), 0);
        EXPECT_EQ(back, value);
    }
    EXPECT_EQ(record->set_field(0, DBL_MIN / 8), 0);
    EXPECT_EQ(std::strtod(record->get_field(0), nullptr), DBL_MIN / 8);
}

TEST_F(Table, FieldsAreReadInEveryForm) {
    EXPECT_EQ(table.set_field(0U, 0U, true), 0);
    EXPECT_EQ(table.set_field(1U, 0U, 12), 0);
    EXPECT_EQ(table.set_field(2U, 0U, 1.5), 0);
    bool truth = false;
    int number = 0;
    double real = 0;
    char buffer[8] = "kept";
    EXPECT_EQ(table.in_field(0, 0, truth), 0);
    EXPECT_EQ(table.in_field(1, 0, number), 0);
    EXPECT_EQ(table.in_field(2, 0, real), 0);
    EXPECT_TRUE(truth);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(real, 1.5);
    EXPECT_EQ(table.in_field(0, 2, truth), -1);
    EXPECT_EQ(table.in_field(0, 2, number), -1);
    EXPECT_EQ(table.in_field(0, 2, real), -1);
    EXPECT_EQ(table.in_field(0, 2, buffer, 7), -1);
    EXPECT_STREQ(buffer, "kept");
    EXPECT_EQ(table.in_field(1, 1, buffer, 7), 0);
    EXPECT_STREQ(buffer, "A002");
}

TEST_F(Table, ACookieIsStoredAsText) {
    const Cookie cookie;
    EXPECT_EQ(table.set_field(1, cookie), 0);
    EXPECT_TRUE(table.getField(0, 1) == cookie.asString(false));
}

TEST_F(Table, NewRecordsStandAtTheEnd) {
    EXPECT_EQ(table.add_records(2), 3);
    EXPECT_EQ(table.get_num_records(), 5U);
    EXPECT_EQ(table.get_record(4)->get_field(0), nullptr);
    EXPECT_EQ(table.add_records(0), 5);
}

TEST_F(Table, RecordsCanBeInsertedAndRemoved) {
    table.insert_records(1, 1);
    EXPECT_EQ(column_of(table, 0), (Texts{"3", "", "1", "2"}));
    EXPECT_EQ(table.baseIndex(1), 3);
    table.delete_records(0, 2);
    EXPECT_EQ(column_of(table, 0), (Texts{"1", "2"}));
    table.delete_records(1, UINT_MAX);
    EXPECT_EQ(column_of(table, 0), (Texts{"1"}));
    table.delete_records(5, 5);
    table.insert_records(9, 1);
    EXPECT_EQ(column_of(table, 0), (Texts{"1", ""}));
}

TEST_F(Table, OnlyTaggedRecordsAreSeenInSortOrder) {
    table.set_tag(0, 1);
    table.set_tag(2, 1);
    table.set_show_tags_only(1);
    table.set_sortfield(0);
    table.sort(1, 0);
    EXPECT_EQ(table.get_num_records(), 2U);
    EXPECT_STREQ(table.get_record(0)->get_field(0), "2");
    EXPECT_STREQ(table.get_record(1)->get_field(0), "3");
    EXPECT_EQ(table.get_record(2), nullptr);
    EXPECT_EQ(table.get_show_tags_only(), 1);
    table.set_tag(0, 0);
    EXPECT_EQ(column_of(table, 0), (Texts{"3"}));
    table.invert_all_tags();
    EXPECT_EQ(column_of(table, 0), (Texts{"1", "2"}));
    table.set_show_tags_only(0);
    EXPECT_EQ(table.get_num_records(), 3U);
    EXPECT_EQ(table.get_num_tags(), 2);
}

TEST_F(Table, TagsOutsideTheTableAreRefusedQuietly) {
    table.set_tag(99, 1);
    table.invert_tag(99);
    EXPECT_EQ(table.get_tag(99), 0);
    EXPECT_EQ(table.get_num_tags(), 0);
    table.invert_tag(1);
    EXPECT_EQ(table.get_tag(1), 1);
    EXPECT_EQ(table.delete_tagged_records(), 1);
    EXPECT_EQ(column_of(table, 0), (Texts{"3", "2"}));
}

TEST_F(Table, EachDifferentValueIsTaggedOnceAtItsFirstRecord) {
    table.set_all_tags(1);
    EXPECT_EQ(table.tag_all_different(1), 2);
    table.set_show_tags_only(1);
    EXPECT_EQ(column_of(table, 0), (Texts{"3", "1"}));
}

TEST(OneValue, InEveryRecordLeavesOneTagged) {
    recdb table(three_columns());
    append_rows(table, Rows(50, {"", "A001", ""}));
    EXPECT_EQ(table.tag_all_different(1), 1);
    table.set_show_tags_only(1);
    EXPECT_EQ(table.get_num_records(), 1U);
}

TEST(Query, AFieldMatchesWhenItBeginsWithTheCriterion) {
    recdb table(three_columns());
    append_rows(table, {{"DU"}, {"I"}, {"DC"}, {"MO"}, {"d"}, {""}});
    dbrecord* query = table.make_dummy_record();
    query->set_field(0, "D", true);
    table.set_query(query);
    EXPECT_EQ(table.tag_matching_records(0), 2);
    query->set_field(0, "MO", true);
    EXPECT_EQ(table.match_record(0), 1);
    table.set_query(query);
    EXPECT_EQ(table.match_record(0), 0);
    EXPECT_EQ(table.tag_matching_records(1), 1);
    table.set_show_tags_only(1);
    EXPECT_EQ(column_of(table, 0), (Texts{"DU", "DC", "MO"}));
    EXPECT_EQ(table.tag_matching_records(0), 1);
    EXPECT_EQ(column_of(table, 0), (Texts{"MO"}));
    EXPECT_EQ(table.match_record(-1), 0);
}

TEST(Query, EveryCriterionHasToMatch) {
    recdb table(three_columns());
    append_rows(table, {{"I", "A001"}, {"I", "B001"}, {"DU", "A002"}});
    dbrecord* query = table.make_dummy_record();
    query->set_field(0, "I", true);
    query->set_field(1, "A", true);
    table.set_query(query);
    EXPECT_EQ(table.tag_matching_records(0), 1);
    EXPECT_EQ(table.get_tag(0), 1);
    table.set_query(nullptr);
    EXPECT_EQ(table.tag_matching_records(0), 3);
}

TEST(Query, AFreeRecordIsEmptyAndOutsideTheTable) {
    recdb table(three_columns());
    dbrecord* first = table.make_dummy_record();
    first->set_field(0, "x", true);
    EXPECT_EQ(table.make_dummy_record()->get_field(0), nullptr);
    EXPECT_STREQ(first->get_field(0), "x");
    EXPECT_EQ(table.get_num_records(), 0U);
}

TEST(Parameters, AreFoundWithoutRegardToCase) {
    recdb table(three_columns());
    EXPECT_EQ(table.add_param("CUTDB", "Rev 22"), 0);
    EXPECT_STREQ(table.get_param_val("cutdb"), "Rev 22");
    EXPECT_EQ(table.get_param_val("cut"), nullptr);
    EXPECT_EQ(table.get_param_val(nullptr), nullptr);
    EXPECT_EQ(table.add_param(nullptr, "x"), -1);
}

TEST(Parameters, TheLaterValueWinsAndEarlierTextsStayPut) {
    recdb table(three_columns());
    table.add_param("first", "1");
    const char* first = table.get_param_val("first");
    for (int i = 0; i < 100; ++i)
        table.add_param(std::to_string(i).c_str(), "x");
    EXPECT_STREQ(first, "1");
    table.add_param("FIRST", "2");
    table.set_param_val("new", nullptr);
    EXPECT_STREQ(table.get_param_val("first"), "2");
    EXPECT_STREQ(table.get_param_val("new"), "");
}

TEST_F(Table, ACopyHoldsTheRowsThatAreShown) {
    table.add_param("title", "Reel");
    table.set_tag(1, 1);
    table.set_tag(2, 1);
    table.set_show_tags_only(1);
    const recdb copy(table, 1);
    EXPECT_EQ(column_of(copy, 0), (Texts{"1", "2"}));
    EXPECT_STREQ(copy.get_param_val("TITLE"), "Reel");
    const recdb bare(table, 0);
    EXPECT_EQ(bare.get_num_records(), 0U);
    EXPECT_EQ(bare.get_num_fields(), 3U);
    EXPECT_STREQ(bare.get_param_val("title"), "Reel");
}

TEST_F(Table, AssigningReplacesEverything) {
    recdb other(three_columns());
    other.add_param("old", "1");
    other = table;
    EXPECT_EQ(rows_of(other), rows_of(table));
    EXPECT_EQ(other.get_param_val("old"), nullptr);
    other.set_field(0U, 0U, "changed");
    EXPECT_STREQ(table.getField(0, 0).c_str(), "3");
    other = *&other;
    EXPECT_EQ(other.get_num_records(), 3U);
}

TEST_F(Table, RecordsOfOneLayoutCanBeAssigned) {
    *table.get_record(0) = *table.get_record(1);
    EXPECT_EQ(rows_of(table)[0], rows_of(table)[1]);
    *table.get_record(1) = *table.make_dummy_record();
    EXPECT_EQ(rows_of(table)[1], (Texts{"", "", ""}));
}

TEST_F(Table, AnotherTableJoinsByColumnName) {
    const DBFieldDesc schema[] = {{"CAM REEL", DBFieldTypes::text},
                                  {"lens", DBFieldTypes::text},
                                  {"Event", DBFieldTypes::text},
                                  {"", DBFieldTypes::none}};
    recdb other(schema);
    append_rows(other, {{"B001", "50mm", "9"}});
    EXPECT_EQ(table.add_recdb(&other), 0);
    EXPECT_EQ(table.get_num_records(), 4U);
    EXPECT_EQ(rows_of(table)[3], (Texts{"9", "B001", ""}));
}

TEST_F(Table, ATableWithoutASharedColumnDoesNotJoin) {
    const DBFieldDesc schema[] = {{"lens", DBFieldTypes::text}, {"", DBFieldTypes::none}};
    recdb other(schema);
    append_rows(other, {{"50mm"}});
    EXPECT_EQ(table.add_recdb(&other), -1);
    EXPECT_EQ(table.add_recdb(nullptr), -1);
    EXPECT_EQ(table.get_num_records(), 3U);
}

TEST_F(Table, ATableCanBeAddedToItself) {
    EXPECT_EQ(table.add_recdb(&table), 0);
    EXPECT_EQ(column_of(table, 0), (Texts{"3", "1", "2", "3", "1", "2"}));
}

TEST(Joining, KeepsBothColumnsOfOneName) {
    const DBFieldDesc schema[] = {{"a", DBFieldTypes::text}, {"a", DBFieldTypes::text}, {"", DBFieldTypes::none}};
    recdb table(schema);
    recdb other(schema);
    append_rows(other, {{"1", "2"}});
    EXPECT_EQ(table.add_recdb(&other), 0);
    EXPECT_EQ(rows_of(table), rows_of(other));
}

TEST_F(Table, TheFirstRecordWithATextIsFound) {
    EXPECT_EQ(table.findFirst("CAM REEL", "A001", 0), 0);
    EXPECT_EQ(table.findFirst("cam reel", "A001", 1), 2);
    EXPECT_EQ(table.findFirst("cam reel", "A00", 0), -1);
    EXPECT_EQ(table.findFirst("cam tc", "", -5), 0);
    EXPECT_EQ(table.findFirst("none", "", 0), -1);
}

// A table is reached as a counted object and as one that notifies, and is one object all the same.
TEST(TableBases, AreThereOnce) {
    static_assert(std::is_convertible_v<recdb*, iVirtual*>);
    static_assert(std::is_convertible_v<recdb*, Qb::InternalRefCount*>);
    recdb table(three_columns());
    iVirtual* const counted = static_cast<RDBBase*>(&table);
    iVirtual* const notifying = static_cast<Notifier*>(&table);
    EXPECT_EQ(counted, notifying);
    EXPECT_EQ(dynamic_cast<recdb*>(counted), &table);
}

} // namespace
