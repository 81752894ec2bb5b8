#include "host/settings.h"
#include "tests/support/environment.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

std::string named(std::int64_t seconds) {
    date_def date;
    date.convert(seconds);
    return date.get_named_date();
}

TEST(Dates, AreLocalTimeWithoutALeadingZeroOfTheDay) {
    {
        const EnvironmentValue zone("TZ", "UTC0");
        EXPECT_EQ(named(1795268707), "21 November 2026 13:45:07");
        EXPECT_EQ(named(0), "1 January 1970 00:00:00");
        EXPECT_EQ(named(-1), "31 December 1969 23:59:59");
    }
    const EnvironmentValue zone("TZ", "XYZ-2");
    EXPECT_EQ(named(1795268707), "21 November 2026 15:45:07");
}

TEST(Dates, ANewDateIsTheEpoch) {
    const EnvironmentValue zone("TZ", "UTC0");
    EXPECT_STREQ(date_def().get_named_date(), "1 January 1970 00:00:00");
}

TEST(Dates, SecondsOfAnySizeGiveAText) {
    const EnvironmentValue zone("TZ", "UTC0");
    for (const std::int64_t seconds : {INT64_MAX, INT64_MIN, INT64_MAX / 100, INT64_C(1) << 56, -(INT64_C(1) << 56)}) {
        EXPECT_NE(named(seconds), "");
    }
}

TEST(Dates, TimeAsStringHasTheSameForm) {
    const EnvironmentValue zone("TZ", "UTC0");
    EXPECT_STREQ(timeAsString(1795268707U, false).c_str(), "21 November 2026 13:45:07");
    EXPECT_STREQ(timeAsString(1795268707U, true).c_str(), "21 November 2026 13:45:07");
    EXPECT_STREQ(timeAsString(UINT_MAX, false).c_str(), "7 February 2106 06:28:15");
}

TEST(Dates, ThePresentTimeCanBeFixed) {
    const EnvironmentValue fixed("SOURCE_DATE_EPOCH", "1795268707");
    EXPECT_EQ(present_time(), 1795268707);
}

TEST(Dates, AFixedTimeThatIsNoNumberIsPassedOver) {
    for (const char* value : {"", "soon", "12x", "999999999999999999999"}) {
        const EnvironmentValue fixed("SOURCE_DATE_EPOCH", value);
        EXPECT_GT(present_time(), 1600000000) << value;
    }
}

} // namespace
