// Timecode and plain frame counts as text, and back.

#include "tests/labels/points.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <string>

namespace {

constexpr int timecode_kinds[] = {8, 4, 5, 6, 7, 9, 1, 2};

struct Counting {
    int frames;
    int skipped;
};

Counting counting_of(int type) {
    switch (type) {
    case 8:
        return {24, 0};
    case 4:
        return {25, 0};
    case 5:
        return {30, 0};
    case 6:
        return {30, 2};
    case 7:
        return {48, 0};
    case 9:
        return {50, 0};
    case 1:
        return {60, 0};
    default:
        return {60, 4};
    }
}

/// Counts one frame at a time, the way a clock does.
class Counter {
public:
    explicit Counter(Counting counting) : counting_(counting) {}

    void tick() {
        if (++f_ < counting_.frames) return;
        f_ = 0;
        if (++s_ < 60) return;
        s_ = 0;
        if (++m_ == 60) m_ = 0, h_ = (h_ + 1) % 24;
        if (m_ % 10 != 0) f_ = counting_.skipped;
    }
    bool at_midnight() const { return h_ == 0 && m_ == 0 && s_ == 0 && f_ == 0; }

    void write(char (&text)[12]) const {
        const int parts[] = {h_, m_, s_, f_};
        for (int i = 0; i < 4; ++i) {
            text[i * 3] = static_cast<char>('0' + parts[i] / 10);
            text[i * 3 + 1] = static_cast<char>('0' + parts[i] % 10);
            text[i * 3 + 2] = i == 3 ? '\0' : i == 2 && counting_.skipped ? ';' : ':';
        }
    }

private:
    Counting counting_;
    int h_ = 0, m_ = 0, s_ = 0, f_ = 0;
};

class EveryTimecode : public testing::TestWithParam<int> {};

TEST_P(EveryTimecode, AgreesWithACounterAllDay) {
    const label_cvt& cvt = *get_static_label_cvt(kind(GetParam()));
    Counter counter(counting_of(GetParam()));
    int frame = 0;
    std::string trouble;
    do {
        char expected[12], printed[20], prefix[1];
        int back = -1;
        counter.write(expected);
        cvt.format(frame, "", printed, sizeof printed);
        if (std::string_view(printed) != expected || !cvt.parse(printed, back, prefix) || back != frame) {
            trouble = std::string(printed) + " for " + expected + " read as " + std::to_string(back);
        }
        counter.tick();
        ++frame;
    } while (trouble.empty() && !counter.at_midnight());
    EXPECT_EQ(trouble, "");
    EXPECT_EQ(text_of(frame, GetParam()), text_of(0, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryTimecode, testing::ValuesIn(timecode_kinds),
                         [](const auto& each) { return "Kind" + std::to_string(each.param); });

TEST(Timecode, DropFrameSkipsNumbersEachMinuteButTheTenth) {
    EXPECT_EQ(sample_of("00;00;59;29", 6), 1799);
    EXPECT_EQ(sample_of("00;01;00;02", 6), 1800);
    EXPECT_EQ(sample_of("00;09;59;29", 6), 17981);
    EXPECT_EQ(sample_of("00;10;00;00", 6), 17982);
    EXPECT_EQ(sample_of("01;00;00;00", 6), 107892);
    EXPECT_EQ(text_of(2589407, 6), "23:59:59;29");
    EXPECT_EQ(text_of(2589408, 6), "00:00:00;00");
    EXPECT_EQ(sample_of("01;00;00;00", 2), 215784);
    EXPECT_EQ(text_of(3600, 2), "00:01:00;04");
}

TEST(Timecode, ASkippedNumberCountsAsTheNextThatExists) {
    EXPECT_EQ(sample_of("00:01:00:00", 6), 1800);
    EXPECT_EQ(sample_of("00:01:00:01", 6), 1800);
    EXPECT_EQ(sample_of("00:11:00:01", 6), sample_of("00:11:00:02", 6));
    EXPECT_EQ(sample_of("00:01:00:03", 2), 3600);
    EXPECT_EQ(sample_of("00:10:00:01", 6), 17983);
    EXPECT_EQ(sample_of("00:01:01:00", 6), 1828);
    EXPECT_EQ(sample_of("00:01:00:00", 5), 1800);
}

TEST(Timecode, TakesAnySeparatorAndEightDigits) {
    for (const char* text : {"01:02:03:04", "01;02;03;04", "01.02.03.04", "01,02,03,04", "01:02;03.04", "01020304"}) {
        EXPECT_EQ(sample_of(text, 8), ((1 * 60 + 2) * 60 + 3) * 24 + 4) << text;
    }
    EXPECT_EQ(sample_of("01:00:00:00", 6), sample_of("01;00;00;00", 6));
    EXPECT_EQ(sample_of("01;00;00;00", 5), 108000);
}

TEST(Timecode, NegativeCountsStandBehindAMinus) {
    EXPECT_EQ(text_of(-1, 8), "-00:00:00:01");
    EXPECT_EQ(text_of(-1800, 6), "-00:01:00;02");
    EXPECT_EQ(sample_of("-00:01:00;02", 6), -1800);
    EXPECT_EQ(sample_of("-00000001", 8), -1);
}

TEST(Timecode, CountsWrapAtMidnight) {
    EXPECT_EQ(text_of(24 * 86400 + 5, 8), "00:00:00:05");
    EXPECT_EQ(text_of(-24 * 86400 - 5, 8), "-00:00:00:05");
    EXPECT_EQ(text_of(-24 * 86400, 8), "00:00:00:00");
    EXPECT_EQ(sample_of("25:00:00:00", 8), 25 * 3600 * 24);
    EXPECT_EQ(text_of(25 * 3600 * 24, 8), "01:00:00:00");
    for (const int type : timecode_kinds) {
        EXPECT_EQ(text_of(INT_MAX, type).size(), 11U);
        EXPECT_EQ(text_of(INT_MIN, type).size(), 12U);
    }
}

TEST(Timecode, RefusesWhatItCannotRead) {
    for (const char* text : {"",
                             "-",
                             "01:00:00",
                             "01:00:00:24",
                             "01:60:00:00",
                             "01:00:60:00",
                             "1:00:00:00",
                             "01:00:00:0",
                             "01 00 00 00",
                             "01:00:00:00 ",
                             " 01:00:00:00",
                             "0102030",
                             "010203040",
                             "01:02:03:0x",
                             "--01:02:03:04",
                             "+1:02:03:04",
                             "01::2:03:04",
                             "0x:02:03:04",
                             "01:0203:04",
                             "KJ1234560123+05",
                             "01:02:03:-4"}) {
        EXPECT_TRUE(refuses(text, 8)) << text;
    }
    EXPECT_TRUE(refuses("00:00:00:30", 6));
    EXPECT_TRUE(refuses("00:00:00:60", 2));
    EXPECT_EQ(sample_of("00:00:00:59", 2), 59);
}

TEST(Timecode, AnyTextIsReadOrRefused) {
    EXPECT_TRUE(rc::check([] {
        const int type = *rc::gen::elementOf(std::vector<int>(std::begin(timecode_kinds), std::end(timecode_kinds)));
        const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("00112359:;.,- x")));
        LabelPoint point = point_of(text.c_str(), type);
        const std::string printed = point.get_string();
        LabelPoint back = point_of(printed.c_str(), type);
        RC_ASSERT(back.is_useful());
        RC_ASSERT(back.get_string() == printed);
    }));
}

TEST(Frames, PrintsAndReadsPlainNumbers) {
    for (const int sample : {0, 1, 99, 100000, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(text_of(sample, 3), std::to_string(sample));
        EXPECT_EQ(sample_of(std::to_string(sample).c_str(), 3), sample);
    }
    EXPECT_EQ(sample_of("0012", 3), 12);
    for (const char* text : {"", "-", "+5", "1 ", "1.0", "0x1", "2147483648", "-2147483649", "99999999999999999999"}) {
        EXPECT_TRUE(refuses(text, 3)) << text;
    }
}

} // namespace
