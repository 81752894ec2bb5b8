#include "base/number_text.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <string>

TEST(NumberText, WholeNumbersEndWhereTheirDigitsEnd) {
    EXPECT_EQ(decimal_number(nullptr), 0);
    EXPECT_EQ(decimal_number(""), 0);
    EXPECT_EQ(decimal_number(" \t-12x3"), -12);
    EXPECT_EQ(decimal_number("+7"), 7);
    EXPECT_EQ(decimal_number("- 7"), 0);
    EXPECT_EQ(decimal_number("2147483647"), 2147483647);
    EXPECT_EQ(decimal_number("-2147483648"), -2147483647 - 1);
}

RC_GTEST_PROP(NumberText, FloatingNumbersAreReadAsTheStandardLibraryDoes, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::element(' ', '-', '.', 'e', '0', '1', '9', 'x'));
    const auto digits = *rc::gen::container<std::string>(rc::gen::inRange<char>('0', '9' + 1));
    for (const std::string& number : {text, digits, "-" + digits, digits + ".5", digits + text, digits + digits})
        RC_ASSERT(floating_number(number.c_str()) == std::strtod(number.c_str(), nullptr));
}

RC_GTEST_PROP(NumberText, WholeNumbersAreReadAsTheStandardLibraryDoes, ()) {
    const auto text =
        *rc::gen::container<std::string>(rc::gen::element(' ', '\n', '-', '+', '0', '1', '8', '9', '9', 'a'));
    const auto digits = *rc::gen::container<std::string>(rc::gen::inRange<char>('0', '9' + 1));
    for (const std::string& number : {text, digits, "-" + digits, text + digits})
        RC_ASSERT(decimal_number(number.c_str()) == static_cast<int>(std::strtol(number.c_str(), nullptr, 10)));
}
