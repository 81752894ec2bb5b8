// A row's texts, whatever is set in which order.

#include "host/recdb.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <array>
#include <string>

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
