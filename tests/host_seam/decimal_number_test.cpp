// The forms that stand in where the standard library lacks numbers with a fraction, held against the library's own.

#include "host/decimal_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace {

using decimal::most_bytes;

std::string shortest(double number) {
    char text[most_bytes];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

std::string stand_in_shortest(double number) {
    char text[most_bytes];
    return {text, decimal::portable::write(text, text + sizeof text, number)};
}

std::string with_digits(double number, int digits) {
    char text[most_bytes];
    return {text, std::to_chars(text, text + sizeof text, number, std::chars_format::general, digits).ptr};
}

std::string stand_in_digits(double number, int digits) {
    char text[most_bytes];
    return {text, decimal::portable::write(text, text + sizeof text, number, digits)};
}

struct Read {
    std::ptrdiff_t length;
    std::errc error;
    std::uint64_t bits; ///< of the number, which was 7 before

    bool operator==(const Read&) const = default;
};

void PrintTo(const Read& read, std::ostream* out) {
    *out << read.length << " bytes, error " << static_cast<int>(read.error) << ", " << std::bit_cast<double>(read.bits);
}

template <class Reader> Read read_with(Reader reader, const std::string& text) {
    double number = 7;
    const char* const last = text.data() + text.size();
    const auto [end, error] = reader(text.data(), last, number);
    return {end - text.data(), error, std::bit_cast<std::uint64_t>(number)};
}

Read library_read(const std::string& text) {
    return read_with([](const char* a, const char* b, double& c) { return std::from_chars(a, b, c); }, text);
}

Read stand_in_read(const std::string& text) {
    return read_with([](const char* a, const char* b, double& c) { return decimal::portable::read(a, b, c); }, text);
}

void expect_same(double number) {
    EXPECT_EQ(stand_in_shortest(number), shortest(number));
    for (const int digits : {2, 6, 15, 16, 17}) {
        const std::string text = with_digits(number, digits);
        EXPECT_EQ(stand_in_digits(number, digits), text) << digits;
        EXPECT_EQ(stand_in_read(text), library_read(text)) << text;
    }
}

TEST(DecimalNumber, WritesAndReadsAsTheLibraryDoesForRandomNumbers) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 4000; ++i) {
        const std::uint64_t bits = random();
        expect_same(std::bit_cast<double>(bits));
        expect_same(static_cast<double>(random() % 100'000'000) / static_cast<double>(1 + random() % 1001));
        expect_same(static_cast<double>(static_cast<std::int64_t>(random() >> (bits % 64))));
        if (HasFailure()) FAIL() << "at " << i;
    }
}

// Beside these the numbers below lie closer than those above.
TEST(DecimalNumber, WritesAndReadsPowersOfTwoAndTheirNeighbours) {
    for (int exponent = -1074; exponent < 1024; ++exponent) {
        expect_same(std::ldexp(1, exponent));
        expect_same(-std::nextafter(std::ldexp(1, exponent), 0));
    }
}

TEST(DecimalNumber, WritesNumbersThatAreNotFinite) {
    for (const double number : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(), 0.0, -0.0})
        expect_same(number);
}

TEST(DecimalNumber, ReadsAsFarAsTheLibraryDoes) {
    for (const char* text : {"",
                             "-",
                             "+1",
                             ".",
                             "-.5",
                             "5.",
                             ".e1",
                             "1e",
                             "1e+",
                             "1e+5x",
                             "0x10",
                             " 1",
                             "1 ",
                             "00012.50",
                             "1e400",
                             "-1e999",
                             "1e-400",
                             "0e999",
                             "inf",
                             "-INF",
                             "infinity",
                             "infinit",
                             "-infinityx",
                             "nan",
                             "NaN(12_x)",
                             "nan(1",
                             "nan(-)",
                             "na",
                             "-nan",
                             "23.976fps",
                             "179769313486231580793728971405301e276",
                             "4.9406564584124654e-324"})
        EXPECT_EQ(stand_in_read(text), library_read(text)) << text;
}

TEST(DecimalNumber, ReadsRandomTextsAsTheLibraryDoes) {
    constexpr std::string_view letters = "0019.-+eE5ainf xX";
    std::mt19937_64 random(2);
    for (int i = 0; i < 60000; ++i) {
        std::string text;
        for (std::uint64_t left = random() % 12; left > 0; --left)
            text += letters[random() % letters.size()];
        ASSERT_EQ(stand_in_read(text), library_read(text)) << '"' << text << '"';
    }
}

TEST(DecimalNumber, WritesNothingWhereThereIsNoRoom) {
    char text[8];
    EXPECT_EQ(decimal::write(text, text + 3, 23.976, 6), text);
    EXPECT_EQ(decimal::portable::write(text, text + 3, 23.976, 6), text);
    EXPECT_EQ(decimal::portable::write(text, text + 3, 23.976), text);
    EXPECT_EQ(decimal::portable::write(text, text + 6, 23.976), text + 6);
}

} // namespace
