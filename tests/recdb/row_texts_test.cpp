// A row's texts, whatever is set in which order, and wherever the row came from.

#include "embedded/table_file.h"
#include "host/recdb.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

constexpr int columns = 6;

struct Schema {
    DBFieldDesc fields[columns + 1];

    Schema() {
        for (int column = 0; column < columns; ++column)
            fields[column] = {("c" + std::to_string(column)).c_str(), DBFieldTypes::text};
    }
};

std::string any_text() {
    // Many short ones, and some that fill a row's room at once.
    const int length = *rc::gen::element(0, 1, 3, 10, 40, 200, 500);
    return std::string(static_cast<std::size_t>(length), *rc::gen::inRange('a', 'z'));
}

using Texts = std::array<std::string, columns>;

Texts texts_of(const dbrecord& row) {
    Texts texts;
    for (unsigned short column = 0; column < columns; ++column)
        texts[column] = row.get_field(column) ? row.get_field(column) : "";
    return texts;
}

} // namespace

RC_GTEST_PROP(RowTexts, AreWhatWasSetLastAndStayInPlaceWhileOthersAreSet, ()) {
    recdb table(Schema().fields);
    dbrecord& row = *table.get_record(static_cast<unsigned>(table.add_records(1)));
    Texts expected;
    for (int changes = *rc::gen::inRange(0, 60); changes > 0; --changes) {
        const auto column = static_cast<unsigned short>(*rc::gen::inRange(0, columns));
        std::array<const char*, columns> before{};
        for (unsigned short other = 0; other < columns; ++other)
            before[other] = row.get_field(other);
        expected[column] = any_text();
        row.set_field(column, expected[column].c_str(), true);
        for (unsigned short other = 0; other < columns; ++other)
            RC_ASSERT(other == column || row.get_field(other) == before[other]);
        RC_ASSERT(texts_of(row) == expected);
    }
}

RC_GTEST_PROP(RowTexts, AreCopiedWholeAndApartFromEachOther, ()) {
    recdb table(Schema().fields);
    table.add_records(2);
    dbrecord& from = *table.get_record(0);
    dbrecord& to = *table.get_record(1);
    for (int changes = *rc::gen::inRange(0, 20); changes > 0; --changes) {
        dbrecord& changed = *rc::gen::arbitrary<bool>() ? from : to;
        changed.set_field(*rc::gen::inRange(0, columns), any_text().c_str(), true);
    }
    const Texts copied = texts_of(from);
    to = from;
    RC_ASSERT(texts_of(to) == copied);
    from.set_field(0, "another", true);
    dbrecord& itself = to;
    to = itself;
    RC_ASSERT(texts_of(to) == copied);
    to.set_field(1, std::string(300, 'x').c_str(), true);
    RC_ASSERT(texts_of(to)[1] == std::string(300, 'x'));
    RC_ASSERT(texts_of(from)[1] == copied[1]);
}

namespace {

/// Any but a zero, with many of those that a file escapes.
std::string any_special_text() {
    const auto character = rc::gen::weightedOneOf<char>({{3, rc::gen::inRange('a', 'e')},
                                                         {1, rc::gen::element('\\', '\t', '\n', '\r', '=', 't')},
                                                         {1, rc::gen::nonZero<char>()}});
    return *rc::gen::resize(*rc::gen::element(0, 2, 40), rc::gen::container<std::string>(character));
}

using Row = std::array<std::string, columns>;

std::vector<Row> any_rows() {
    std::vector<Row> rows(*rc::gen::inRange<std::size_t>(0, 12));
    for (Row& row : rows) {
        for (std::string& text : row)
            text = any_special_text();
    }
    return rows;
}

std::vector<Row> rows_of(const embedded::TableData& table) {
    std::vector<Row> rows;
    for (const embedded::Row* row : table.rows) {
        rows.emplace_back();
        for (std::size_t column = 0; column < columns; ++column)
            rows.back()[column] = row->fields.get(column) ? row->fields.get(column) : "";
    }
    return rows;
}

embedded::TableData made_of(const std::vector<Row>& rows) {
    embedded::TableData table;
    for (int column = 0; column < columns; ++column)
        table.columns.push_back({"c" + std::to_string(column), 'a'});
    table.insert_rows(0, rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns; ++column)
            table.rows[row]->fields.set(column, rows[row][column]);
    }
    return table;
}

} // namespace

RC_GTEST_PROP(RowTexts, ComeBackFromAFileAndAreSetThereAsAnyOthers, ()) {
    std::vector<Row> rows = any_rows();
    embedded::TableData table;
    RC_ASSERT(embedded::read_table(embedded::table_text(made_of(rows)), SIZE_MAX, &table));
    RC_ASSERT(rows_of(table) == rows);
    for (int changes = rows.empty() ? 0 : *rc::gen::inRange(0, 40); changes > 0; --changes) {
        const auto row = *rc::gen::inRange<std::size_t>(0, rows.size());
        const auto column = *rc::gen::inRange<std::size_t>(0, columns);
        rows[row][column] = *rc::gen::arbitrary<bool>() ? rows[row][column] + 'x' : any_special_text();
        table.rows[row]->fields.set(column, rows[row][column]);
    }
    RC_ASSERT(rows_of(table) == rows);
}

RC_GTEST_PROP(RowTexts, StayWhileOtherRowsComeAndGo, ()) {
    std::vector<Row> rows = any_rows();
    embedded::TableData table = made_of(rows);
    for (int changes = *rc::gen::inRange(0, 20); changes > 0; --changes) {
        const auto at = *rc::gen::inRange<std::size_t>(0, rows.size() + 1);
        const auto count = *rc::gen::inRange<std::size_t>(0, 3);
        const auto place = rows.begin() + static_cast<std::ptrdiff_t>(at);
        if (*rc::gen::arbitrary<bool>()) {
            table.insert_rows(at, count);
            rows.insert(place, count, Row{});
        } else {
            table.remove_shown(at, count);
            rows.erase(place, place + static_cast<std::ptrdiff_t>(std::min(count, rows.size() - at)));
        }
        if (at == rows.size()) continue;
        const auto column = *rc::gen::inRange<std::size_t>(0, columns);
        rows[at][column] = any_special_text();
        table.rows[at]->fields.set(column, rows[at][column]);
        table.set_tag(at, true);
    }
    RC_ASSERT(rows_of(table) == rows);
    const std::size_t tagged = table.count_tagged();
    RC_ASSERT(table.remove_tagged() == tagged);
    table.insert_rows(0, tagged);
    RC_ASSERT(table.count_tagged() == 0U);
    RC_ASSERT(table.rows.size() == rows.size());
    for (std::size_t row = 0; row < tagged; ++row)
        RC_ASSERT(rows_of(table)[row] == Row{});
}
