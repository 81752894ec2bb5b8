#include "embedded/fraction.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace embedded {

namespace {

using wide = Fraction::wide;
using uwide = unsigned __int128;

constexpr uwide greatest = ~uwide{0} >> 1;

uwide magnitude(wide value) { return value < 0 ? uwide{0} - static_cast<uwide>(value) : static_cast<uwide>(value); }

wide with_sign(uwide value, bool negative) {
    const auto positive = static_cast<wide>(value);
    return negative ? -positive : positive;
}

// Products of such numbers, and sums of two of these, fit into 127 bits.
bool is_short(wide value) { return value == static_cast<std::int64_t>(value); }

bool are_short(wide a, wide b, wide c, wide d) { return is_short(a) && is_short(b) && is_short(c) && is_short(d); }

bool is_one(const Fraction& value) { return value.num() == 1 && value.den() == 1; }

// Rates and times divide each other within a few steps.
std::uint64_t common_divisor_64(std::uint64_t a, std::uint64_t b) {
    while (b != 0) {
        const std::uint64_t rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

bool fits_64(uwide value) { return value <= std::numeric_limits<std::uint64_t>::max(); }

uwide common_divisor(uwide a, uwide b) {
    while (b != 0 && !(fits_64(a) && fits_64(b))) {
        const uwide rest = a % b;
        a = b;
        b = rest;
    }
    if (b == 0) return a;
    return common_divisor_64(static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b));
}

int bits_of(uwide value) {
    const auto high = static_cast<std::uint64_t>(value >> 64);
    const auto low = static_cast<std::uint64_t>(value);
    if (high != 0) return 128 - __builtin_clzll(high);
    return low != 0 ? 64 - __builtin_clzll(low) : 0;
}

// 256 bits without a sign, for products of two numerators.
struct Huge {
    uwide high = 0;
    uwide low = 0;

    bool zero() const { return high == 0 && low == 0; }
};

bool less(const Huge& a, const Huge& b) { return a.high != b.high ? a.high < b.high : a.low < b.low; }

Huge minus(const Huge& a, const Huge& b) { return {a.high - b.high - (a.low < b.low ? 1U : 0U), a.low - b.low}; }

Huge plus(const Huge& a, const Huge& b) {
    const uwide low = a.low + b.low;
    return {a.high + b.high + (low < a.low ? 1U : 0U), low};
}

Huge times(uwide a, uwide b) {
    const uwide half = std::numeric_limits<std::uint64_t>::max();
    const uwide a0 = a & half, a1 = a >> 64, b0 = b & half, b1 = b >> 64;
    const uwide low = a0 * b0;
    const uwide middle = a1 * b0 + (low >> 64);
    const uwide other = a0 * b1 + (middle & half);
    return {a1 * b1 + (middle >> 64) + (other >> 64), (other << 64) | (low & half)};
}

Huge shifted(const Huge& a, int bits) {
    if (bits == 0) return a;
    if (bits >= 128) return {a.low << (bits - 128), 0};
    return {(a.high << bits) | (a.low >> (128 - bits)), a.low << bits};
}

int bits_of(const Huge& a) { return a.high != 0 ? 128 + bits_of(a.high) : bits_of(a.low); }

struct Division {
    Huge quotient;
    Huge rest;
};

Division divide(const Huge& a, const Huge& b) {
    Division result{{}, a};
    for (int step = bits_of(a) - bits_of(b); step >= 0; --step) {
        const Huge part = shifted(b, step);
        result.quotient = shifted(result.quotient, 1);
        if (less(result.rest, part)) continue;
        result.rest = minus(result.rest, part);
        result.quotient.low |= 1;
    }
    return result;
}

bool multiply_add(uwide factor, uwide a, uwide b, uwide* result) {
    return !__builtin_mul_overflow(factor, a, result) && !__builtin_add_overflow(*result, b, result) &&
           *result <= greatest;
}

// How often `step` can be added to `base` within the limit.
uwide room_for(uwide base, uwide step) { return step == 0 ? greatest : (greatest - base) / step; }

// The nearest fraction of 127 bits to num / den, by the convergents of its continued fraction.
Fraction nearest_fit(Huge num, Huge den, bool negative) {
    uwide h0 = 0, k0 = 1, h1 = 1, k1 = 0;
    while (!den.zero()) {
        const Division step = divide(num, den);
        uwide h = 0, k = 0;
        const bool fits = step.quotient.high == 0 && multiply_add(step.quotient.low, h1, h0, &h) &&
                          multiply_add(step.quotient.low, k1, k0, &k);
        if (!fits) {
            const uwide room = std::min(room_for(h0, h1), room_for(k0, k1));
            const Huge twice{0, room * 2};
            if (k1 == 0 || less(step.quotient, twice)) {
                h1 = room * h1 + h0;
                k1 = room * k1 + k0;
            }
            break;
        }
        h0 = h1, h1 = h;
        k0 = k1, k1 = k;
        num = den;
        den = step.rest;
    }
    return {with_sign(h1, negative), static_cast<wide>(k1)};
}

// The 53 bits of a quotient with `sticky` for what was cut off below it, halves to even.
double rounded(uwide quotient, bool sticky, int exponent) {
    const int drop = bits_of(quotient) - 53;
    if (drop <= 0) return std::ldexp(static_cast<double>(static_cast<std::uint64_t>(quotient)), exponent);
    auto kept = static_cast<std::uint64_t>(quotient >> drop);
    const uwide cut = quotient & ((uwide{1} << drop) - 1);
    const uwide half = uwide{1} << (drop - 1);
    if (cut > half || (cut == half && (sticky || (kept & 1) != 0))) ++kept;
    return std::ldexp(static_cast<double>(kept), exponent + drop);
}

std::int64_t within_64_bits(wide value) {
    constexpr std::int64_t low = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t high = std::numeric_limits<std::int64_t>::max();
    return value < low ? low : value > high ? high : static_cast<std::int64_t>(value);
}

wide whole_part(wide num, wide den) {
    if (den == 1) return num;
    if (is_short(num) && is_short(den)) {
        const auto n = static_cast<std::int64_t>(num), d = static_cast<std::int64_t>(den);
        return n / d - (n % d < 0 ? 1 : 0);
    }
    const wide quotient = num / den;
    return quotient * den > num ? quotient - 1 : quotient;
}

} // namespace

// Whole numbers, which most are, need no division.
Fraction::Fraction(wide num, wide den) {
    if (den == 1 && magnitude(num) <= greatest) {
        num_ = num;
        return;
    }
    if (num == 0 && den != 0) return;
    const bool negative = (num < 0) != (den < 0);
    const uwide n = magnitude(num), d = magnitude(den);
    if (fits_64(n) && fits_64(d)) {
        const auto n64 = static_cast<std::uint64_t>(n), d64 = static_cast<std::uint64_t>(d);
        const std::uint64_t common = common_divisor_64(n64, d64);
        num_ = with_sign(n64 / common, negative);
        den_ = d64 / common;
        return;
    }
    const uwide divisor = common_divisor(n, d);
    if (n / divisor > greatest || d / divisor > greatest) {
        *this = nearest_fit({0, n}, {0, d}, negative);
        return;
    }
    num_ = with_sign(n / divisor, negative);
    den_ = static_cast<wide>(d / divisor);
}

Fraction Fraction::exactly(double value) {
    constexpr double whole_limit = 9007199254740992.0;
    if (std::fabs(value) <= whole_limit && value == std::trunc(value)) return static_cast<std::int64_t>(value);
    if (!std::isfinite(value)) return {};
    int exponent = 0;
    const double part = std::frexp(std::fabs(value), &exponent);
    const Huge digits{0, static_cast<std::uint64_t>(std::ldexp(part, 53))};
    exponent -= 53;
    if (exponent < -255) return {};
    const Huge one{0, 1};
    if (exponent < 0) return nearest_fit(digits, shifted(one, -exponent), value < 0);
    return nearest_fit(shifted(digits, std::min(exponent, 128)), one, value < 0);
}

double Fraction::to_double() const {
    constexpr std::int64_t exact = std::int64_t{1} << 53;
    const auto short_num = static_cast<std::int64_t>(num_), short_den = static_cast<std::int64_t>(den_);
    if (is_short(num_) && is_short(den_) && short_num >= -exact && short_num <= exact && short_den <= exact)
        return static_cast<double>(short_num) / static_cast<double>(short_den);
    const uwide n = magnitude(num_), d = magnitude(den_);
    const int shift = std::max(0, 56 - (bits_of(n) - bits_of(d)));
    const Division result = divide(shifted({0, n}, shift), {0, d});
    const double size = rounded(result.quotient.low, !result.rest.zero(), -shift);
    return num_ < 0 ? -size : size;
}

std::int64_t Fraction::floor() const { return within_64_bits(whole_part(num_, den_)); }

std::int64_t Fraction::nearest() const {
    const wide below = whole_part(num_, den_);
    const wide rest = num_ - below * den_;
    return within_64_bits(rest >= den_ - rest ? below + 1 : below);
}

Fraction Fraction::operator-() const {
    Fraction result = *this;
    result.num_ = -num_;
    return result;
}

Fraction operator+(const Fraction& a, const Fraction& b) {
    if (a.num_ == 0) return b;
    if (b.num_ == 0) return a;
    wide left = 0, right = 0, num = 0, den = 0;
    if (are_short(a.num_, a.den_, b.num_, b.den_)) {
        if (a.den_ == b.den_) return {a.num_ + b.num_, a.den_};
        Fraction sum;
        sum.num_ = a.num_ * b.den_ + b.num_ * a.den_;
        sum.den_ = a.den_ * b.den_;
        const bool beside_whole = a.den_ == 1 || b.den_ == 1; // then nothing is left to reduce
        return beside_whole ? sum : Fraction(sum.num_, sum.den_);
    }
    if (a.den_ == b.den_ && !__builtin_add_overflow(a.num_, b.num_, &num)) return {num, a.den_};
    if (!__builtin_mul_overflow(a.num_, b.den_, &left) && !__builtin_mul_overflow(b.num_, a.den_, &right) &&
        !__builtin_add_overflow(left, right, &num) && !__builtin_mul_overflow(a.den_, b.den_, &den))
        return {num, den};
    const Huge x = times(magnitude(a.num_), magnitude(b.den_)), y = times(magnitude(b.num_), magnitude(a.den_));
    const Huge below = times(magnitude(a.den_), magnitude(b.den_));
    const bool a_negative = a.num_ < 0, b_negative = b.num_ < 0;
    if (a_negative == b_negative) return nearest_fit(plus(x, y), below, a_negative);
    return less(x, y) ? nearest_fit(minus(y, x), below, b_negative) : nearest_fit(minus(x, y), below, a_negative);
}

Fraction operator-(const Fraction& a, const Fraction& b) { return a + -b; }

Fraction operator*(const Fraction& a, const Fraction& b) {
    if (is_one(a)) return b;
    if (is_one(b)) return a;
    wide num = 0, den = 0;
    if (are_short(a.num_, a.den_, b.num_, b.den_)) return {a.num_ * b.num_, a.den_ * b.den_};
    if (!__builtin_mul_overflow(a.num_, b.num_, &num) && !__builtin_mul_overflow(a.den_, b.den_, &den))
        return {num, den};
    return nearest_fit(times(magnitude(a.num_), magnitude(b.num_)), times(magnitude(a.den_), magnitude(b.den_)),
                       (a.num_ < 0) != (b.num_ < 0));
}

Fraction operator/(const Fraction& a, const Fraction& b) {
    const bool negative = b.num_ < 0;
    Fraction turned;
    turned.num_ = negative ? -b.den_ : b.den_;
    turned.den_ = negative ? -b.num_ : b.num_;
    return a * turned;
}

bool operator<(const Fraction& a, const Fraction& b) {
    if (a.den_ == b.den_) return a.num_ < b.num_;
    if (are_short(a.num_, a.den_, b.num_, b.den_)) return a.num_ * b.den_ < b.num_ * a.den_;
    if ((a.num_ < 0) != (b.num_ < 0)) return a.num_ < 0;
    const Huge x = times(magnitude(a.num_), magnitude(b.den_)), y = times(magnitude(b.num_), magnitude(a.den_));
    return a.num_ < 0 ? less(y, x) : less(x, y);
}

} // namespace embedded
