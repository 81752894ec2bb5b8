// Rates, standards and gauges.

#include "embedded/rates.h"
#include "tests/labels/points.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr Qb::FrameRate rate(int number) { return static_cast<Qb::FrameRate>(number); }
constexpr film_gauge gauge(int number) { return static_cast<film_gauge>(number); }

struct Standard {
    int code;
    int plain, drop;
    const char* text;
    const char* drop_text;
    int film_num, film_den;
};

constexpr Standard standards[] = {
    {1, 8, 8, "23.976fps", "23.976df", 24000, 1001},
    {2, 8, 8, "24fps", "24df", 24, 1},
    {3, 4, 4, "25fps", "25df", 25, 1},
    {4, 5, 6, "30fps", "30df", 24, 1},
    {5, 5, 6, "29.97fps", "29.97df", 24000, 1001},
    {6, 7, 7, "48fps", "48df", 24, 1},
    {7, 7, 7, "47.952fps", "47.952df", 24000, 1001},
    {8, 9, 9, "50fps", "50df", 25, 1},
    {9, 1, 2, "60fps", "60df", 24, 1},
    {10, 1, 2, "59.94fps", "59.94df", 24000, 1001},
};

TEST(Standards, HaveTheirKindsAndTexts) {
    for (const Standard& standard : standards) {
        SCOPED_TRACE(standard.text);
        const TCInf plain{rate(standard.code), 0};
        const TCInf drop{rate(standard.code), 7};
        EXPECT_EQ(TvStd_to_label_type(plain), standard.plain);
        EXPECT_EQ(TvStd_to_label_type(drop), standard.drop);
        EXPECT_STREQ(tv_standard_to_edlstr(plain), standard.text);
        EXPECT_STREQ(tv_standard_to_edlstr(drop), standard.drop_text);
        EXPECT_EQ(edlstr_to_tv_standard(standard.text).rate, standard.code);
        EXPECT_EQ(edlstr_to_tv_standard(standard.text).drop, 0);
        EXPECT_EQ(edlstr_to_tv_standard(standard.drop_text).rate, standard.code);
        EXPECT_EQ(edlstr_to_tv_standard(standard.drop_text).drop, 1);
    }
}

TEST(Standards, UnknownOnesAreUnset) {
    for (const char* text : {"", "fps", "24", "24FPS", "24fps ", "29.97DF", "23.98fps"}) {
        EXPECT_EQ(edlstr_to_tv_standard(text).rate, 0) << text;
        EXPECT_EQ(edlstr_to_tv_standard(text).drop, 0) << text;
    }
    EXPECT_EQ(edlstr_to_tv_standard(nullptr).rate, 0);
    for (const int code : {0, 11, -1}) {
        EXPECT_STREQ(tv_standard_to_edlstr({rate(code), 1}), "") << code;
        EXPECT_EQ(TvStd_to_label_type({rate(code), 1}), 0) << code;
        EXPECT_EQ(embedded::rate_info(rate(code)), nullptr) << code;
    }
}

TEST(Rates, FilmRunsFrameForFrameOrThroughAPulldown) {
    for (const Standard& standard : standards) {
        const embedded::RateInfo* info = embedded::rate_info(rate(standard.code));
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(embedded::film_rate_of(*info), embedded::Fraction(standard.film_num, standard.film_den))
            << standard.text;
    }
}

TEST(Rates, TheNearestWithinAHundredthIsFound) {
    const auto nearest = [](double value) {
        const embedded::RateInfo* info = embedded::nearest_rate(value);
        return info ? static_cast<int>(info->code) : 0;
    };
    EXPECT_EQ(nearest(24.0), 2);
    EXPECT_EQ(nearest(23.976), 1);
    EXPECT_EQ(nearest(23.98), 1);
    EXPECT_EQ(nearest(24000.0 / 1001), 1);
    EXPECT_EQ(nearest(29.97), 5);
    EXPECT_EQ(nearest(30.0), 4);
    EXPECT_EQ(nearest(47.95), 7);
    EXPECT_EQ(nearest(59.94), 10);
    EXPECT_EQ(nearest(59.95), 10);
    EXPECT_EQ(nearest(60.005), 9);
    for (const double none : {0.0, -24.0, 23.99, 29.985, 24.02, 1e300, double(NAN)})
        EXPECT_EQ(nearest(none), 0);
}

TEST(Rates, OnlyTheCyclesOf24Are25Long) {
    for (int code = -1; code <= 11; ++code)
        EXPECT_EQ(pd_cycle_size(rate(code)), code == 2 ? 25 : 5) << code;
}

TEST(Rates, OutputTimecodeIsVideo) {
    EXPECT_EQ(getMediumRollfromOutputDetails(Qb::Image::scan_unset, rate(0)), medium_video);
    EXPECT_EQ(getMediumRollfromOutputDetails(static_cast<Qb::Image::ScanMode>(2), rate(3)), medium_video);
}

TEST(Times, OfATimecodeTextGiveItsFramesAgain) {
    for (const Standard& standard : standards) {
        for (const std::uint8_t drop : {std::uint8_t(0), std::uint8_t(1)}) {
            const TCInf std_rate{rate(standard.code), drop};
            const int type = TvStd_to_label_type(std_rate);
            for (int sample = 0; sample < 2'000'000; sample += 997) {
                const std::string text = text_of(sample, type);
                ASSERT_EQ(tc_to_frames(string_to_tc(text.c_str(), std_rate), std_rate.rate, 0, 0), sample) << text;
            }
        }
    }
}

TEST(Times, AreTrueSeconds) {
    EXPECT_DOUBLE_EQ(string_to_tc("01:00:00:00", {rate(3), 0}), 3600.0);
    EXPECT_DOUBLE_EQ(string_to_tc("01:00:00:00", {rate(1), 0}), 3603.6);
    EXPECT_DOUBLE_EQ(string_to_tc("01:00:00;00", {rate(5), 1}), 107892 * 1001.0 / 30000);
}

TEST(Times, OfWhatCannotBeReadAreNought) {
    EXPECT_EQ(string_to_tc("rubbish", {rate(3), 0}), 0.0);
    EXPECT_EQ(string_to_tc("", {rate(3), 0}), 0.0);
    EXPECT_EQ(string_to_tc(nullptr, {rate(3), 0}), 0.0);
    EXPECT_EQ(string_to_tc("01:00:00:00", {rate(0), 0}), 0.0);
    EXPECT_EQ(tc_to_frames(10.0, rate(0), 0, 0), 0);
    EXPECT_EQ(tc_to_frames(std::numeric_limits<double>::infinity(), rate(3), 0, 0), std::numeric_limits<int>::max());
    EXPECT_EQ(tc_to_frames(double(NAN), rate(3), 0, 0), 0);
}

TEST(Gauges, HaveTheTextsOfTheirKinds) {
    const struct {
        int number;
        const char* text;
    } gauges[] = {{1, "35mm-4p"},     {2, "16mm-1p"},     {3, "35mm-3p"},      {5, "35mm-2p"},
                  {6, "35mm-8p"},     {7, "65mm-5p80"},   {8, "65mm-8p80"},    {9, "65mm-10p80"},
                  {10, "65mm-5p120"}, {11, "65mm-8p120"}, {12, "65mm-10p120"}, {13, "65mm-15p120"}};
    for (const auto& known : gauges) {
        EXPECT_STREQ(film_gauge_to_edlstr(gauge(known.number)), known.text);
        EXPECT_EQ(edlstr_to_film_gauge(known.text), known.number);
    }
}

TEST(Gauges, UnknownOnesAreNotSet) {
    for (const int number : {0, 4, 14, -1})
        EXPECT_STREQ(film_gauge_to_edlstr(gauge(number)), "") << number;
    for (const char* text : {"", "35MM-4P", "35mm-4p-4d", "35mm", "frames"}) {
        EXPECT_EQ(edlstr_to_film_gauge(text), gauge_unset) << text;
    }
    EXPECT_EQ(edlstr_to_film_gauge(nullptr), gauge_unset);
}

TEST(Gauges, OfAFilmWidth) {
    EXPECT_EQ(int_to_film_gauge(35), 1);
    EXPECT_EQ(int_to_film_gauge(16), 2);
    EXPECT_EQ(int_to_film_gauge(65), 10);
    for (const int width : {0, 8, 70, -35, 3500})
        EXPECT_EQ(int_to_film_gauge(width), 4) << width;
}

} // namespace
