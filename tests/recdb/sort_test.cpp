#include "tests/recdb/tables.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

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
    EXPECT_EQ(sorted({"-8" + large, "-2", "-1" + large, "-9" + large}),
              (Texts{"-9" + large, "-8" + large, "-1" + large, "-2"}));
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

/// The same of texts of any length, which fold where asked to.
int naive_order(std::string a, std::string b, bool fold) {
    const auto kind = [](const std::string& text) {
        const std::string digits = text.substr(text.starts_with('-') ? 1 : 0);
        const bool number = text == "0" || (!digits.empty() && digits.front() != '0' &&
                                            digits.find_first_not_of("0123456789") == std::string::npos);
        return text.empty() ? 0 : number ? 1 : 2;
    };
    if (kind(a) != kind(b)) return kind(a) < kind(b) ? -1 : 1;
    if (kind(a) == 1) {
        const bool negative = a.front() == '-';
        if (negative != (b.front() == '-')) return negative ? -1 : 1;
        const int longer = a.size() < b.size() ? -1 : a.size() > b.size();
        const int size = longer != 0 ? longer : a.compare(b);
        return negative ? -size : size;
    }
    if (!fold) return a.compare(b);
    for (std::string* text : {&a, &b}) {
        for (char& c : *text)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return a.compare(b);
}

/// Texts of which many share their first bytes.
rc::Gen<std::string> any_key() {
    return rc::gen::apply([](std::string head, const std::string& tail) { return head + tail; },
                          rc::gen::element<std::string>("", "", "KJ1234", "KJ12345", "kJ12345", "999999999999999999",
                                                        "-99999999999999999"),
                          rc::gen::resize(4, rc::gen::container<std::string>(rc::gen::element(
                                                 '-', '0', '1', '9', 'a', 'B', 'b', '\1', '\2', '\3', '\4', '\xE9'))));
}

RC_GTEST_PROP(Sort, PutsRowsOfSeveralFieldsInANaiveOrder, ()) {
    const bool ascending = *rc::gen::arbitrary<bool>(), fold = *rc::gen::arbitrary<bool>();
    const auto first = rc::gen::element<std::string>("", "1", "2", "x");
    auto rows = *rc::gen::container<Rows>(rc::gen::mapcat(first, [](const std::string& text) {
        return rc::gen::map(any_key(), [text](const std::string& key) {
            return std::vector<std::string>{text, key, ""};
        });
    }));
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows[row][2] = "row " + std::to_string(row);
    recdb table(three_columns());
    append_rows(table, rows);
    int fields[] = {0, 1, -1};
    table.set_sortfields(fields);
    table.sort(ascending ? 1 : 0, fold ? 1 : 0);
    std::stable_sort(rows.begin(), rows.end(), [&](const auto& a, const auto& b) {
        const int head = naive_order(a[0], b[0], fold);
        const int result = head != 0 ? head : naive_order(a[1], b[1], fold);
        return ascending ? result < 0 : result > 0;
    });
    RC_ASSERT(rows_of(table) == rows);
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
