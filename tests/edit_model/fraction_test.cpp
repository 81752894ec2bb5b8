#include "embedded/fraction.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

using embedded::Fraction;

namespace {

using wide = Fraction::wide;

constexpr std::int64_t max64 = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t min64 = std::numeric_limits<std::int64_t>::min();
constexpr wide max_wide = static_cast<wide>(~static_cast<unsigned __int128>(0) >> 1);

Fraction drawn_fraction() {
    const auto num = *rc::gen::arbitrary<std::int64_t>();
    const auto den = *rc::gen::inRange<std::int64_t>(1, std::int64_t{1} << 40);
    return {num, den};
}

// The error of `value` against the exact fraction, without a sign.
Fraction error_of(const Fraction& exact, double value) {
    const Fraction error = Fraction::exactly(value) - exact;
    return error < 0 ? -error : error;
}

} // namespace

TEST(Fraction, IsReducedWithItsSignAbove) {
    const Fraction f(6, -4);
    EXPECT_TRUE(f.num() == -3 && f.den() == 2);
    EXPECT_TRUE(Fraction(0, -7) == Fraction(0));
}

TEST(Fraction, SumsAndProductsMatchLongArithmetic) {
    EXPECT_TRUE(rc::check([] {
        const auto a = *rc::gen::arbitrary<int>(), b = *rc::gen::arbitrary<int>();
        const auto c = *rc::gen::inRange(1, 1 << 30), d = *rc::gen::inRange(1, 1 << 30);
        const wide sum = wide{a} * d + wide{b} * c, below = wide{c} * d;
        RC_ASSERT(Fraction(a, c) + Fraction(b, d) == Fraction(sum, below));
        RC_ASSERT(Fraction(a, c) * Fraction(b, d) == Fraction(wide{a} * b, below));
        RC_ASSERT((Fraction(a, c) < Fraction(b, d)) == (wide{a} * d < wide{b} * c));
    }));
}

// Numbers of 64 bits are reckoned with in a short way; these lie where it begins.
TEST(Fraction, NumbersAtTheEdgeOf64BitsMatchLongArithmetic) {
    const auto reduced = [](wide num, wide den) {
        wide a = num < 0 ? -num : num, b = den;
        while (b != 0)
            a = std::exchange(b, a % b);
        return std::pair<wide, wide>(num / a, den / a);
    };
    const auto parts = [](const Fraction& f) { return std::pair<wide, wide>(f.num(), f.den()); };
    EXPECT_TRUE(rc::check([&] {
        const auto drawn = [](wide least) {
            const wide far = *rc::gen::elementOf(std::vector<std::int64_t>{0, 0, 4, 1 << 20, max64 / 3, max64});
            return std::max(far + *rc::gen::inRange(-3, 4), least);
        };
        const auto numerator = [&] { return drawn(min64) * (*rc::gen::arbitrary<bool>() ? -1 : 1); };
        const auto [a, c] = reduced(numerator(), drawn(1));
        const auto [b, d] = reduced(numerator(), drawn(1));
        const Fraction x(a, c), y(b, d);
        wide left = 0, right = 0, sum = 0, product = 0, below = 0;
        const bool fits = !__builtin_mul_overflow(a, d, &left) && !__builtin_mul_overflow(b, c, &right) &&
                          !__builtin_mul_overflow(c, d, &below) && !__builtin_mul_overflow(a, b, &product);
        RC_PRE(fits);
        if (!__builtin_add_overflow(left, right, &sum)) RC_ASSERT(parts(x + y) == reduced(sum, below));
        if (!__builtin_sub_overflow(left, right, &sum)) RC_ASSERT(parts(x - y) == reduced(sum, below));
        RC_ASSERT(parts(x * y) == reduced(product, below));
        if (b != 0) RC_ASSERT(parts(x / y) == reduced(b < 0 ? -left : left, b < 0 ? -right : right));
        RC_ASSERT((x < y) == (left < right));
    }));
}

TEST(Fraction, TheGreatestWholeNumberBelowIsThatOfLongDivision) {
    EXPECT_TRUE(rc::check([] {
        const Fraction f = drawn_fraction();
        wide below = f.num() / f.den();
        if (below * f.den() > f.num()) --below;
        RC_ASSERT(f.floor() == static_cast<std::int64_t>(below));
        RC_ASSERT(f.nearest() ==
                  static_cast<std::int64_t>(2 * (f.num() - below * f.den()) >= f.den() ? below + 1 : below));
    }));
}

TEST(Fraction, WhatIsAddedCanBeTakenAway) {
    EXPECT_TRUE(rc::check([] {
        const Fraction a = drawn_fraction(), b = drawn_fraction();
        RC_ASSERT(a + b - b == a);
        if (!(b == 0)) RC_ASSERT(a * b / b == a);
    }));
}

TEST(Fraction, TheDoubleIsTheNearestOne) {
    EXPECT_TRUE(rc::check([] {
        const Fraction f = drawn_fraction();
        const double value = f.to_double();
        const Fraction error = error_of(f, value);
        RC_ASSERT(!(error_of(f, std::nextafter(value, INFINITY)) < error));
        RC_ASSERT(!(error_of(f, std::nextafter(value, -INFINITY)) < error));
    }));
}

TEST(Fraction, ATieBetweenTwoDoublesGoesToTheEvenOne) {
    const wide two53 = wide{1} << 53;
    EXPECT_EQ(Fraction(two53 + 1, 1).to_double(), 9007199254740992.0);
    EXPECT_EQ(Fraction(two53 + 3, 1).to_double(), 9007199254740996.0);
    EXPECT_EQ(Fraction((two53 + 1) * 1000000 + 1, 1000000).to_double(), 9007199254740994.0);
    EXPECT_EQ(Fraction(-(two53 + 1), 1).to_double(), -9007199254740992.0);
    EXPECT_EQ(Fraction(max_wide, 1).to_double(), std::ldexp(1.0, 127));
    EXPECT_EQ(Fraction(1, max_wide).to_double(), std::ldexp(1.0, -127));
}

TEST(Fraction, ADoubleComesBackUnchanged) {
    EXPECT_TRUE(rc::check([] {
        const double value = static_cast<double>(*rc::gen::arbitrary<std::int64_t>()) / 1048576.0;
        RC_ASSERT(Fraction::exactly(value).to_double() == value);
    }));
    EXPECT_TRUE(Fraction::exactly(0.5) == Fraction(1, 2));
    EXPECT_TRUE(Fraction::exactly(NAN) == 0);
    EXPECT_TRUE(Fraction::exactly(-INFINITY) == 0);
}

TEST(Fraction, DoublesOutsideItsReachGoToItsEnds) {
    EXPECT_TRUE(Fraction::exactly(1e300).num() == max_wide);
    EXPECT_TRUE(Fraction::exactly(-1e300).num() == -max_wide);
    EXPECT_TRUE(Fraction::exactly(std::numeric_limits<double>::denorm_min()) == 0);
    EXPECT_NEAR(Fraction::exactly(1e-38).to_double(), 1e-38, 1e-47);
}

TEST(Fraction, ResultsThatDoNotFitAreRounded) {
    const Fraction big(max_wide, 3);
    EXPECT_DOUBLE_EQ((big * Fraction(7, 5)).to_double(), big.to_double() * 1.4);
    EXPECT_TRUE((Fraction(max_wide, 1) + Fraction(max_wide, 1)).num() == max_wide);
    EXPECT_TRUE((Fraction(1, max_wide) - Fraction(1, max_wide - 1)).to_double() <= 0.0);
    EXPECT_TRUE(Fraction(max_wide, max_wide - 1) < Fraction(max_wide - 1, max_wide - 2));
}

TEST(Fraction, TheLowestNumberHasNoOppositeAndIsRounded) {
    const double greatest = std::ldexp(1.0, 127);
    EXPECT_DOUBLE_EQ(Fraction(-max_wide - 1, 3).to_double(), -greatest / 3);
    EXPECT_DOUBLE_EQ(Fraction(3, -max_wide - 1).to_double(), -3 / greatest);
}

TEST(Fraction, HostileValuesStayWithinAHairOfWhatDoublesGive) {
    EXPECT_TRUE(rc::check([] {
        const auto wide_value = [] {
            const auto high = *rc::gen::arbitrary<std::int64_t>(), low = *rc::gen::arbitrary<std::int64_t>();
            return (wide{high} << 56) + low;
        };
        const wide below = wide_value();
        const Fraction a(wide_value(), below == 0 ? 1 : below), b(wide_value(), 7);
        const double product = a.to_double() * b.to_double(), sum = a.to_double() + b.to_double();
        if (std::fabs(product) > 1e-20 && std::fabs(product) < 1e38)
            RC_ASSERT(std::fabs((a * b).to_double() - product) <= 1e-14 * std::fabs(product));
        const double largest = std::max(std::fabs(a.to_double()), std::fabs(b.to_double()));
        if (largest < 8e37) RC_ASSERT(std::fabs((a + b).to_double() - sum) <= 1e-14 * largest + 1e-30);
        RC_ASSERT((a < b) == !(b <= a));
        if (a.to_double() < b.to_double()) RC_ASSERT(a < b);
    }));
}

TEST(Fraction, FloorGoesDownAndNearestTakesHalvesUpward) {
    EXPECT_EQ(Fraction(-1, 2).floor(), -1);
    EXPECT_EQ(Fraction(7, 2).floor(), 3);
    EXPECT_EQ(Fraction(-1, 2).nearest(), 0);
    EXPECT_EQ(Fraction(5, 2).nearest(), 3);
    EXPECT_EQ(Fraction(-8, 3).nearest(), -3);
    EXPECT_EQ(Fraction(max_wide, 1).nearest(), max64);
    EXPECT_EQ(Fraction(-max_wide, 1).floor(), min64);
}
