// Spellings of key numbers.

#include "formats/key_number.h"

#include <gtest/gtest.h>

using formats::plain_key_number;

namespace {

TEST(KeyNumber, EverySpellingComesToThePlainForm) {
    EXPECT_EQ(plain_key_number("KJ 29 1234 5678+00"), "KJ2912345678+00");
    EXPECT_EQ(plain_key_number("KX654321-0000+00"), "KX6543210000+00");
    EXPECT_EQ(plain_key_number("KJ 12 1234-3456-10.3"), "KJ1212343456+10.3");
    EXPECT_EQ(plain_key_number("KN24 4675 1234&00 A"), "KN2446751234+00");
    EXPECT_EQ(plain_key_number("KQ123456 7890+12"), "KQ1234567890+12");
    EXPECT_EQ(plain_key_number("KQ123456 1234+00(1)"), "KQ1234561234+00.1");
    EXPECT_EQ(plain_key_number("KU 22 9611 1802+02.3"), "KU2296111802+02.3");
    EXPECT_EQ(plain_key_number("KJ123456 008845+02 p2"), "KJ123456008845+02.2");
    EXPECT_EQ(plain_key_number("KJ123456 7890:05"), "KJ1234567890+05");
}

TEST(KeyNumber, LettersBecomeCapitals) { EXPECT_EQ(plain_key_number("eK65 2322 1201"), "EK6523221201"); }

TEST(KeyNumber, WithoutFramesHyphensGo) {
    EXPECT_EQ(plain_key_number("KX654321-0000"), "KX6543210000");
    EXPECT_EQ(plain_key_number("KX-65-4321-0000"), "KX6543210000");
    EXPECT_EQ(plain_key_number("KX654321-000"), "KX654321000");
}

TEST(KeyNumber, BlanksOfAllSortsGo) {
    EXPECT_EQ(plain_key_number("\tKJ 29\xC2\xA0"
                               "1234 5678 + 1\n"),
              "KJ2912345678+1");
    EXPECT_EQ(plain_key_number("  "), "");
}

TEST(KeyNumber, WhatIsNoneDoesNoHarm) {
    for (const std::string text : {"", "+", "-", ")", "(1)", ".1", "P1", "+1", "A", "1A", "((((", "+1(12)"})
        EXPECT_LE(plain_key_number(text).size(), text.size() + 1) << text;
}

} // namespace
