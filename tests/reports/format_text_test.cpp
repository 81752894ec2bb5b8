#include "base/format_text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <cstdio>
#include <string>

namespace {

/// What the C library makes of the same.
template <std::size_t Size, class... Values> std::string printed(const char* format, Values... values) {
    char text[Size];
    std::snprintf(text, Size, format, values...);
    return text;
}

template <std::size_t Size, class... Values> std::string formatted(const char* format, Values... values) {
    char text[Size];
    const std::size_t written = format_text(text, format, values...);
    EXPECT_EQ(text[written], '\0');
    return {text, written};
}

template <class... Values> void expect_same(const char* format, Values... values) {
    RC_ASSERT(formatted<400>(format, values...) == printed<400>(format, values...));
    RC_ASSERT(formatted<8>(format, values...) == printed<8>(format, values...));
    RC_ASSERT(formatted<1>(format, values...) == "");
}

int any_number() {
    return *rc::gen::oneOf(rc::gen::arbitrary<int>(), rc::gen::inRange(-12, 12),
                           rc::gen::element(INT_MIN, INT_MAX, 0, 9999, 10000));
}

std::string any_text() { return *rc::gen::container<std::string>(rc::gen::inRange<char>(1, 127)); }

TEST(FormatText, WritesNumbersLikeTheCLibrary) {
    EXPECT_TRUE(rc::check([] {
        const int number = any_number();
        for (const char* format :
             {"%d", "%1d", "%3d", "%12d", "%-4d|", "%-14d|", "%02d", "%03d", "%07d", "%014d", "%-07d|", "%6.6d",
              "%6.1d", "%.3d", "%14.5d|", "%-14.5d|", "%014.5d", "%.0d", "%3.0d|"})
            expect_same(format, number);
    }));
}

TEST(FormatText, WritesTextsLikeTheCLibrary) {
    EXPECT_TRUE(rc::check([] {
        const std::string text = any_text();
        for (const char* format :
             {"%s", "<%s>", "%9s", "%-9s|", "%.9s", "%-9.9s|", "%12.3s|", "%-26.26s|", "%.0s", "100%% %s"})
            expect_same(format, text.c_str());
    }));
}

TEST(FormatText, WritesCharactersAndSeveralValues) {
    EXPECT_TRUE(rc::check([] {
        const std::string a = any_text(), b = any_text();
        const int number = any_number();
        const char c = *rc::gen::inRange<char>(1, 127);
        expect_same("%c%3c%-3c|", c, c, c);
        expect_same("%-4d\t%s\t%-9.9s\t%s%c\n", number, a.c_str(), b.c_str(), "NO KEYKODE", c);
    }));
}

TEST(FormatText, LeavesOtherFormsToTheCLibrary) {
    expect_same("%s took %5.2f seconds, %+d of %lld (%x)", "it", 1.5, 3, 4LL, 255U);
    expect_same("%d and then %*d", 7, 5, 12);
}

} // namespace
