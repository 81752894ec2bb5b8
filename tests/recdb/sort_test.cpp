#include "tests/recdb/tables.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <climits>
#include <regex>

namespace {

using Texts = std::vector<std::string>;

Texts sorted(const Texts& texts, int ascending = 1, int fold_case = 0, int offset = 0) {
    recdb table(three_columns());
    for (const std::string& text : texts)
        append_rows(table, {{text}});
    table.set_sortfield(0);
    table.set_sort_offset(offset);
    table.sort(ascending, fold_case);
    return column_of(table, 0);
}

TEST(Sort, EmptyTextsThenNumbersByValueThenOtherTexts) {
    EXPECT_EQ(sorted({"b", "10", "", "9", "-3", "a", "0", "-20", "007", "-0", "-"}),
              (Texts{"", "-20", "-3", "0", "9", "10", "-", "-0", "007", "a", "b"}));
}

TEST(Sort, NumbersMayHaveAnyLength) {
    const std::string large(60, '9');
    EXPECT_EQ(sorted({large, "-" + large, "1" + large, "2"}), (Texts{"-" + large, "2", large, "1" + large}));
}

TEST(Sort, TextsCompareByBytes) {
    EXPECT_EQ(sorted({"\xC3\xA9", "b", "B", "a"}), (Texts{"B", "a", "b", "\xC3\xA9"}));
    EXPECT_EQ(sorted({"1.5", "1", "1a", "+1"}), (Texts{"1", "+1", "1.5", "1a"}));
}

TEST(Sort, FoldingComparesLowerCaseForms) {
    EXPECT_EQ(sorted({"b", "B", "a", "C", "_"}, 1, 1), (Texts{"_", "a", "b", "B", "C"}));
}

TEST(Sort, TheOffsetAppliesToTexts) {
    EXPECT_EQ(sorted({"xb", "ya", "z"}, 1, 0, 1), (Texts{"z", "ya", "xb"}));
    EXPECT_EQ(sorted({"21", "13"}, 1, 0, 1), (Texts{"13", "21"}));
    EXPECT_EQ(sorted({"b", "a"}, 1, 0, INT_MIN), (Texts{"a", "b"}));
}

TEST(Sort, DescendingTurnsTheOrderRoundAndStaysStable) {
    EXPECT_EQ(sorted({"1", "b", "B", "2"}, 0, 1), (Texts{"b", "B", "2", "1"}));
}

TEST(Sort, SeveralFieldsMostSignificantFirst) {
    recdb table(three_columns());
    append_rows(table, {{"2", "b"}, {"1", "b"}, {"10", "a"}, {"1", "a"}});
    int fields[] = {1, 0, -1};
    table.set_sortfields(fields);
    table.sortPrepare(1, 0);
    table.sort(1, 0);
    EXPECT_EQ(rows_of(table), (Rows{{"1", "a", ""}, {"10", "a", ""}, {"1", "b", ""}, {"2", "b", ""}}));
    EXPECT_EQ(table.baseIndex(0), 3);
    EXPECT_EQ(table.baseIndex(4), -1);
}

TEST(Sort, WithoutFieldsOrWithUnknownOnesNothingMoves) {
    recdb table(three_columns());
    append_rows(table, {{"2"}, {"1"}});
    table.sort(1, 0);
    table.set_sortfield(77);
    table.sort(1, 0);
    EXPECT_EQ(column_of(table, 0), (Texts{"2", "1"}));
}

// The order said in another way: by the kind of a text, then by its value.
bool naive_less(const std::string& a, const std::string& b) {
    static const std::regex number("-?[1-9][0-9]*|0");
    const auto kind = [](const std::string& text) { return text.empty() ? 0 : std::regex_match(text, number) ? 1 : 2; };
    if (kind(a) != kind(b)) return kind(a) < kind(b);
    return kind(a) == 1 ? std::stoll(a) < std::stoll(b) : a < b;
}

TEST(Sort, AgreesWithANaiveOrder) {
    EXPECT_TRUE(rc::check([] {
        const auto characters = rc::gen::element('-', '0', '1', '2', '9', 'a', 'B');
        const auto text = rc::gen::resize(6, rc::gen::container<std::string>(characters));
        Texts texts = *rc::gen::container<Texts>(text);
        const Texts result = sorted(texts);
        std::stable_sort(texts.begin(), texts.end(), naive_less);
        RC_ASSERT(result == texts);
    }));
}

} // namespace
