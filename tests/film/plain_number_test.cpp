#include "film/plain_number.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <string>

namespace {

TEST(LeadingNumber, IsThatOfTheCLibraryForWholeNumbers) {
    EXPECT_TRUE(rc::check([](int number) {
        RC_ASSERT(film::leading_number(std::to_string(number).c_str()) == number);
        RC_ASSERT(film::leading_number(("000" + std::to_string(number / 1000)).c_str()) ==
                  std::atoi(("000" + std::to_string(number / 1000)).c_str()));
    }));
}

TEST(LeadingNumber, IsThatOfTheCLibraryForAnyText) {
    EXPECT_TRUE(rc::check([] {
        const std::string text =
            *rc::gen::container<std::string>(rc::gen::element('0', '1', '9', '-', '+', ' ', '\t', '.', 'x'));
        if (text.size() < 19) RC_ASSERT(film::leading_number(text.c_str()) == std::atoi(text.c_str()));
    }));
}

TEST(LeadingNumber, IsNothingWhereThereIsNone) {
    for (const char* text : {"", "-", "x1", "--1"})
        EXPECT_EQ(film::leading_number(text), 0) << text;
    EXPECT_EQ(film::leading_number("-0"), 0);
    EXPECT_EQ(film::leading_number("-12x"), -12);
    EXPECT_EQ(film::leading_number("1234567890"), 1234567890);
}

} // namespace
