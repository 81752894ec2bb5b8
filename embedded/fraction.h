#pragma once
// Exact fractions for times and rates.

#include <cstdint>
#include <optional>
#include <string>

namespace embedded {

/// A reduced fraction of two 128-bit integers, the denominator above 0. Results that no longer fit are
/// rounded to the nearest fraction that does; times of film work stay far below that.
class Fraction {
public:
    using wide = __int128;

    constexpr Fraction() = default;
    constexpr Fraction(std::int64_t whole) : num_(whole) {}
    /// `den` must not be 0.
    Fraction(wide num, wide den);

    /// The exact value of a finite double; 0 for others.
    static Fraction exactly(double value);

    wide num() const { return num_; }
    wide den() const { return den_; }
    /// The nearest double.
    double to_double() const;
    /// The greatest whole number not above it, and the nearest one (halves upward), kept within 64 bits.
    std::int64_t floor() const;
    std::int64_t nearest() const;

    Fraction operator-() const;
    friend Fraction operator+(const Fraction& a, const Fraction& b);
    friend Fraction operator-(const Fraction& a, const Fraction& b);
    friend Fraction operator*(const Fraction& a, const Fraction& b);
    /// `b` must not be 0.
    friend Fraction operator/(const Fraction& a, const Fraction& b);
    friend bool operator==(const Fraction& a, const Fraction& b) { return a.num_ == b.num_ && a.den_ == b.den_; }
    /// Compares exactly.
    friend bool operator<(const Fraction& a, const Fraction& b);
    friend bool operator>(const Fraction& a, const Fraction& b) { return b < a; }
    friend bool operator<=(const Fraction& a, const Fraction& b) { return !(b < a); }
    friend bool operator>=(const Fraction& a, const Fraction& b) { return !(a < b); }

private:
    wide num_ = 0;
    wide den_ = 1;
};

inline Fraction magnitude(const Fraction& value) { return value < Fraction(0) ? -value : value; }

} // namespace embedded
