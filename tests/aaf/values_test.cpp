// Values and objects of AAF files.

#include "formats/aaf/aaf_operations.h"
#include "formats/aaf/aaf_values.h"
#include "tests/aaf/aaf_edits.h"

#include <gmock/gmock.h>

using formats::aaf::Bytes;
using formats::aaf::Fraction;

namespace {

TEST(AafValues, IdsAreWrittenAsTheyAreRead) {
    constexpr auto id = formats::aaf::auid("9d2ea890-0968-11d3-8a38-0050040ef7d2");
    EXPECT_EQ(id.first, 0x9d2ea890u);
    EXPECT_EQ(text_of(id), "9d2ea890-0968-11d3-8a38-0050040ef7d2");
}

TEST(AafValues, NumbersInBothOrdersOfBytes) {
    const std::string bytes("\x01\x02\xFF\xFE", 4);
    EXPECT_EQ(Bytes(bytes, false).number(0, 2), 0x0201u);
    EXPECT_EQ(Bytes(bytes, true).number(0, 2), 0x0102u);
    EXPECT_EQ(Bytes(bytes, false).signed_number(2, 2), -257);
    EXPECT_EQ(Bytes(bytes, true).signed_number(2, 2), -2);
    EXPECT_FALSE(Bytes(bytes, true).number(3, 2));
    EXPECT_FALSE(Bytes(bytes, true).number(9, 1));
}

TEST(AafValues, ARationalOfDenominatorZeroIsNone) {
    const std::string bytes("\x01\0\0\0\0\0\0\0", 8);
    EXPECT_FALSE(Bytes(bytes, false).rational(0));
}

TEST(AafValues, SpeedsBecomeTheirSimplestFractions) {
    using formats::aaf::simple_speed;
    EXPECT_TRUE(simple_speed(Fraction(333333333, 1000000000)) == Fraction(1, 3));
    EXPECT_TRUE(simple_speed(Fraction(-666666667, 1000000000)) == Fraction(-2, 3));
    EXPECT_TRUE(simple_speed(Fraction(1000000, 1111111)) == Fraction(9, 10));
    EXPECT_TRUE(simple_speed(Fraction(1001, 1000)) == Fraction(1001, 1000));
    EXPECT_TRUE(simple_speed(Fraction(0)) == Fraction(0));
    EXPECT_TRUE(simple_speed(Fraction(7)) == Fraction(7));
}

} // namespace
