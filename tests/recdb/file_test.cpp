#include "embedded/services.h"
#include "embedded/table_file.h"
#include "tests/recdb/tables.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>

namespace {

const std::string small_table =
    "%recdb 2\nCUTDB=Rev 22\nfilm label_std=a\\tb=c\nk\\=ey\\\\=\n\nevent\tcam reel\tcam tc\n"
    "a\ta\tt\n1\tA\\n001\t\n\t\t\\\\\\r\n%end 2 0059C92F\n";

LightweightString<wchar_t> wide(const std::string& path) { return fromUTF8(path.c_str(), -1); }

class TableFile : public testing::Test {
protected:
    void SetUp() override { embedded::take_write_failure(nullptr); }

    recdb read(const std::string& bytes, int max_records = INT_MAX) {
        put_bytes(path, bytes);
        return recdb(wide(path), max_records, false);
    }
    std::string saved(recdb& table) {
        table.set_filename(wide(path));
        EXPECT_EQ(table.save_text(), 0);
        return bytes_of_file(path);
    }

    ScratchDirectory scratch;
    std::string path = scratch.file("table.cdb");
};

TEST_F(TableFile, IsReadAndWrittenInTheSameForm) {
    recdb table = read(small_table);
    ASSERT_NE(table.get_valid(), 0);
    EXPECT_STREQ(table.get_param_val("cutdb"), "Rev 22");
    EXPECT_STREQ(table.get_param_val("film label_std"), "a\tb=c");
    EXPECT_STREQ(table.get_param_val("k=ey\\"), "");
    EXPECT_EQ(rows_of(table), (Rows{{"1", "A\n001", ""}, {"", "", "\\\r"}}));
    EXPECT_EQ(table.get_fieldtype(2), DBFieldTypes::timecode);
    EXPECT_EQ(saved(table), small_table);
    EXPECT_EQ(toUTF8(table.get_filename()).view(), path);
}

TEST_F(TableFile, AParameterAddedAgainIsSavedOnceInItsPlace) {
    recdb table(three_columns());
    table.add_param("film label_std", "35mm-4p");
    table.add_param("Title", "x");
    table.add_param("FILM label_std", "35mm-3p");
    EXPECT_EQ(saved(table), "%recdb 2\nfilm label_std=35mm-3p\nTitle=x\n\nevent\tcam reel\tcam tc\na\ta\tt\n"
                            "%end 0 EFCA6DFA\n");
}

TEST_F(TableFile, EveryRecordIsSavedInTheSortOrderWhateverIsShown) {
    recdb table(three_columns());
    append_rows(table, {{"2", "b"}, {"1", "a"}});
    table.set_tag(0, 1);
    table.set_sortfield(0);
    table.sort(1, 0);
    table.set_show_tags_only(1);
    table.set_filename(wide(path));
    EXPECT_EQ(table.save_text_without_header(), 0);
    EXPECT_EQ(bytes_of_file(path), "1\ta\t\n2\tb\t\n");
}

TEST_F(TableFile, OneNameMayHeadTwoColumns) {
    recdb table = read("%recdb 1\n\na\ta\t\na\ta\ta\n1\t2\t3\n");
    ASSERT_NE(table.get_valid(), 0);
    EXPECT_EQ(table.get_fieldnum("a"), 0);
    EXPECT_STREQ(table.getField(0, 1).c_str(), "2");
}

TEST_F(TableFile, TheLastLineMayLackItsEnd) {
    const recdb table = read("%recdb 1\n\na\tb\na\ta\n1\t2");
    EXPECT_EQ(rows_of(table), (Rows{{"1", "2"}}));
}

TEST_F(TableFile, ABareCarriageReturnIsACharacterOfItsField) {
    const recdb table = read("%recdb 1\n\na\tb\na\ta\n1\t2\r\n");
    EXPECT_EQ(rows_of(table), (Rows{{"1", "2\r"}}));
}

TEST_F(TableFile, NoMoreRecordsAreReadThanAskedFor) {
    const std::string bytes = "%recdb 1\n\na\na\n1\n2\n3\n";
    EXPECT_EQ(read(bytes, 2).get_num_records(), 2U);
    EXPECT_EQ(read(bytes, 0).get_num_records(), 0U);
    EXPECT_EQ(read(bytes, -1).get_num_records(), 0U);
    EXPECT_NE(read(bytes, 0).get_valid(), 0);
}

TEST_F(TableFile, WhatBreaksTheFormMakesTheTableInvalid) {
    for (const char* bytes : {"",
                              "%recdb 1",
                              "%recdb 2\n\na\na\n",
                              "\xEF\xBB\xBF%recdb 1\n\na\na\n",
                              "%recdb 1\r\n\r\na\r\na\r\n",
                              " %recdb 1\n\na\na\n",
                              "%recdb 1\n",
                              "%recdb 1\n\n",
                              "%recdb 1\n\na\n",
                              "%recdb 1\n\n\na\n",
                              "%recdb 1\nname\n\na\na\n",
                              "%recdb 1\nna\\=me\n\na\na\n",
                              "%recdb 1\nn=\\=\n\na\na\n",
                              "%recdb 1\nn\\x=v\n\na\na\n",
                              "%recdb 1\n\na\\=\na\n",
                              "%recdb 1\n\na\\\na\n",
                              "%recdb 1\n\na\n\n1\n",
                              "%recdb 1\n\na\tb\na\n",
                              "%recdb 1\n\na\naa\n",
                              "%recdb 1\n\na\n1\n",
                              "%recdb 1\n\na\na\ta\n",
                              "%recdb 1\n\na\na\n1\t2\n",
                              "%recdb 1\n\na\tb\na\ta\n\n",
                              "%recdb 1\n\na\na\n\\x\n",
                              "%recdb 1\n\na\na\n1\\\n",
                              "%recdb 1\n\na\na\n\\=\n"}) {
        recdb table = read(bytes);
        EXPECT_EQ(table.get_valid(), 0) << bytes;
        EXPECT_EQ(table.get_num_fields(), 0U) << bytes;
        EXPECT_EQ(table.get_num_records(), 0U) << bytes;
        EXPECT_EQ(table.get_param_val("n"), nullptr) << bytes;
    }
}

TEST_F(TableFile, AnInvalidTableIsSafeToUseAndLeavesItsFileAlone) {
    recdb table = read("no table");
    EXPECT_EQ(table.save_text(), -1);
    EXPECT_EQ(bytes_of_file(path), "no table");
    EXPECT_EQ(table.get_record(0), nullptr);
    EXPECT_EQ(table[0].get_field(0), nullptr);
    EXPECT_EQ(table[0].set_field(0, 1), -1);
    EXPECT_EQ(table.save_tags(), -1);
    table.set_sortfield(0);
    table.sort(1, 0);
    EXPECT_EQ(table.tag_all_different(0), 0);
}

TEST_F(TableFile, AMissingFileOrADirectoryIsInvalid) {
    EXPECT_EQ(recdb(wide(scratch.file("none")), INT_MAX, false).get_valid(), 0);
    EXPECT_EQ(recdb(wide(scratch.path()), INT_MAX, false).get_valid(), 0);
    EXPECT_EQ(recdb(LightweightString<wchar_t>(), INT_MAX, false).get_valid(), 0);
}

TEST_F(TableFile, ATableThatCannotBeSavedSaysSo) {
    recdb table(three_columns());
    table.set_filename(wide(scratch.file("no/such/table")));
    EXPECT_EQ(table.save_text(), -1);
    std::string name;
    EXPECT_TRUE(embedded::take_write_failure(&name));
    EXPECT_EQ(name, scratch.file("no/such/table"));
    EXPECT_EQ(recdb(three_columns()).save_text_without_header(), -1);
}

TEST_F(TableFile, AFileCutAnywhereIsReadOrRefused) {
    for (std::size_t length = 0; length <= small_table.size(); ++length) {
        embedded::TableData table;
        const bool read_well = embedded::read_table(small_table.substr(0, length), INT_MAX, &table);
        EXPECT_EQ(read_well, !table.columns.empty()) << length;
        EXPECT_TRUE(read_well || (table.rows.empty() && table.parameters.empty())) << length;
    }
}

std::string any_text() {
    return *rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::nonZero<char>(), rc::gen::element('\\', '\t', '\n', '\r', '=', 'n')));
}

TEST_F(TableFile, AnyTextsComeBackAsTheyWere) {
    EXPECT_TRUE(rc::check([this] {
        recdb table(three_columns());
        Rows rows(*rc::gen::inRange<std::size_t>(0, 8));
        for (auto& row : rows)
            row = {any_text(), any_text(), any_text()};
        append_rows(table, rows);
        const std::string name = any_text();
        const std::string value = any_text();
        table.add_param(name.c_str(), value.c_str());
        const std::string bytes = saved(table);
        recdb back(wide(path), INT_MAX, false);
        RC_ASSERT(back.get_valid() != 0);
        RC_ASSERT(rows_of(back) == rows);
        RC_ASSERT(std::string(back.get_param_val(name.c_str())) == value);
        RC_ASSERT(saved(back) == bytes);
    }));
}

TEST_F(TableFile, RowsThatWereReadCanBeChanged) {
    recdb table = read("%recdb 1\n\na\tb\na\ta\nlong text\tshort\n");
    dbrecord* record = table.get_record(0);
    record->set_field(0, "x", true);
    record->set_field(1, "a good deal longer", true);
    record->set_field(1, "longer", true);
    EXPECT_EQ(rows_of(table), (Rows{{"x", "longer"}}));
    record->set_field(0, "", true);
    record->set_field(0, "again", true);
    EXPECT_EQ(rows_of(table), (Rows{{"again", "longer"}}));
}

} // namespace
