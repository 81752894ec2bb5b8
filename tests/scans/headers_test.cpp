// Headers of DPX and OpenEXR pictures.

#include "formats/scans/dpx_header.h"
#include "formats/scans/exr_header.h"
#include "tests/support/scan_writer.h"

#include <gtest/gtest.h>

using namespace formats;
using namespace scan_writer;

namespace {

ScanHeader dpx(const Dpx& sample) {
    const HeaderReading reading = read_dpx_header(bytes_of(sample));
    EXPECT_EQ(reading.trouble, nullptr);
    EXPECT_EQ(reading.wanted, 0u);
    return reading.header;
}

ScanHeader exr(const std::vector<ExrAttribute>& attributes) {
    const HeaderReading reading = read_exr_header(exr_bytes(attributes));
    EXPECT_EQ(reading.trouble, nullptr);
    EXPECT_EQ(reading.wanted, 0u);
    return reading.header;
}

void expect_key(const ScanHeader& header, const char* film, const char* prefix, int count, int offset) {
    EXPECT_FALSE(header.key_faulty);
    ASSERT_TRUE(header.key);
    EXPECT_EQ(header.key->film, film);
    EXPECT_EQ(header.key->prefix, prefix);
    EXPECT_EQ(header.key->count, count);
    EXPECT_EQ(header.key->offset, offset);
}

using Parts = std::array<int, 4>;

TEST(DpxHeader, BothOrdersOfBytesSayTheSame) {
    for (const bool big_end_first : {true, false}) {
        Dpx sample;
        sample.big_end_first = big_end_first;
        sample.offset = "56";
        sample.position = 17;
        sample.timecode = 0x01020312;
        sample.slate = "12A-3";
        sample.format = "35mm,4perf";
        const ScanHeader header = dpx(sample);
        expect_key(header, "0274", "291010", 5867, 56);
        ASSERT_TRUE(header.time);
        EXPECT_EQ(header.time->parts, (Parts{1, 2, 3, 12}));
        EXPECT_EQ(header.position, 17u);
        ASSERT_TRUE(header.rate);
        EXPECT_EQ(header.rate->nominal, 24);
        EXPECT_EQ(header.slate, "12A-3");
        EXPECT_EQ(header.film_format, "35mm,4perf");
    }
}

TEST(DpxHeader, UnsetFieldsSayNothing) {
    for (const char filler : {'\0', '\xFF', ' '}) {
        Dpx sample;
        sample.filler = filler;
        sample.maker = sample.stock = sample.offset = sample.prefix = sample.count = "";
        sample.film_rate = std::bit_cast<float>(0xFFFFFFFF);
        const ScanHeader header = dpx(sample);
        EXPECT_FALSE(header.key);
        EXPECT_FALSE(header.key_faulty);
        EXPECT_FALSE(header.time);
        EXPECT_FALSE(header.time_faulty);
        EXPECT_FALSE(header.position);
        EXPECT_EQ(header.rate, nullptr);
        EXPECT_EQ(header.slate, "");
    }
}

TEST(DpxHeader, KeyNumbersOfZerosSayNothing) {
    Dpx sample;
    sample.maker = sample.stock = sample.offset = "00";
    sample.prefix = "000000";
    sample.count = "0000";
    EXPECT_FALSE(dpx(sample).key);
    EXPECT_FALSE(dpx(sample).key_faulty);
}

TEST(DpxHeader, LettersOfMakerAndStockAreTakenAndShortNumbersFilledUp) {
    Dpx sample;
    sample.maker = "k";
    sample.stock = "J";
    sample.prefix = "1010";
    sample.count = " 867";
    expect_key(dpx(sample), "KJ", "001010", 867, 0);
    sample.maker = "2";
    sample.stock = "74";
    expect_key(dpx(sample), "0274", "001010", 867, 0);
}

TEST(DpxHeader, KeyNumbersThatCantBeReadAreFaulty) {
    Dpx good;
    for (std::string Dpx::*field : {&Dpx::maker, &Dpx::stock, &Dpx::offset, &Dpx::prefix, &Dpx::count}) {
        Dpx sample = good;
        sample.*field = "?1";
        EXPECT_TRUE(dpx(sample).key_faulty);
        EXPECT_FALSE(dpx(sample).key);
    }
    for (std::string Dpx::*field : {&Dpx::offset, &Dpx::prefix, &Dpx::count}) {
        Dpx sample = good;
        sample.*field = "";
        EXPECT_TRUE(dpx(sample).key_faulty);
    }
    good.maker = "K";
    EXPECT_TRUE(dpx(good).key_faulty) << "a letter beside digits";
}

TEST(DpxHeader, RateOfVideoCountsWhereThatOfFilmIsUnset) {
    Dpx sample;
    sample.video_rate = 25;
    EXPECT_EQ(dpx(sample).rate->nominal, 24);
    sample.film_rate = 0;
    EXPECT_EQ(dpx(sample).rate->nominal, 25);
}

TEST(DpxHeader, TimecodeThatIsNoDigitsIsFaulty) {
    Dpx sample;
    sample.timecode = 0x0A000000;
    EXPECT_TRUE(dpx(sample).time_faulty);
    EXPECT_FALSE(dpx(sample).time);
    sample.timecode = 0x00B00000;
    EXPECT_TRUE(dpx(sample).time_faulty);
}

TEST(DpxHeader, PicturesThatBeginEarlyHaveNoFilmOrVideoHeader) {
    Dpx sample;
    sample.timecode = 0x01000000;
    sample.image = 1664;
    EXPECT_FALSE(dpx(sample).key);
    EXPECT_FALSE(dpx(sample).time);
    sample.image = 1920;
    EXPECT_TRUE(dpx(sample).key);
    EXPECT_FALSE(dpx(sample).time);
    sample.image = 2048;
    EXPECT_TRUE(dpx(sample).time);
}

TEST(DpxHeader, ShortAndForeignFilesAreRefusedAtEveryLength) {
    const std::string bytes = bytes_of({});
    for (std::size_t size = 0; size < 1664; ++size)
        ASSERT_NE(read_dpx_header(std::string_view(bytes).substr(0, size)).trouble, nullptr) << size;
    EXPECT_STREQ(read_dpx_header("GIF89a").trouble, "isn't a DPX picture");
    EXPECT_STREQ(read_dpx_header("SDPX").trouble, "ends inside its header");
    EXPECT_EQ(read_dpx_header(bytes).trouble, nullptr);
}

TEST(ExrHeader, AttributesAreFoundAmongOthers) {
    const ScanHeader header = exr({{"channels", "chlist", "R"},
                                   frames_per_second(24000, 1001),
                                   key_code({2, 74, 291010, 5867, 56, 4, 64}),
                                   reel_name("A012"),
                                   time_code(0x01020312)});
    expect_key(header, "0274", "291010", 5867, 56);
    EXPECT_EQ(header.frame_perforations, 4);
    EXPECT_EQ(header.count_perforations, 64);
    ASSERT_TRUE(header.time);
    EXPECT_EQ(header.time->parts, (Parts{1, 2, 3, 12}));
    EXPECT_FALSE(header.time->drop);
    EXPECT_EQ(header.reel, "A012");
    ASSERT_TRUE(header.rate);
    EXPECT_EQ(header.rate->num, 24000);
}

TEST(ExrHeader, FlagsOfTimecodeAreNoDigits) {
    const ScanHeader header = exr({time_code(0xC1828352)});
    ASSERT_TRUE(header.time);
    EXPECT_EQ(header.time->parts, (Parts{1, 2, 3, 12}));
    EXPECT_TRUE(header.time->drop);
}

TEST(ExrHeader, ValuesOutsideTheirLimitsAreFaulty) {
    const std::vector<int> good{2, 74, 291010, 5867, 56, 4, 64};
    for (std::size_t i = 0; i < 5; ++i) {
        for (const int value : {-1, 1'000'000}) {
            std::vector<int> numbers = good;
            numbers[i] = value;
            EXPECT_TRUE(exr({key_code(numbers)}).key_faulty) << i;
        }
    }
    const int most[] = {99, 99, 999'999, 9999, 119};
    for (std::size_t i = 0; i < 5; ++i) {
        std::vector<int> numbers = good;
        numbers[i] = most[i];
        EXPECT_FALSE(exr({key_code(numbers)}).key_faulty) << i;
        ++numbers[i];
        EXPECT_TRUE(exr({key_code(numbers)}).key_faulty) << i;
    }
    EXPECT_FALSE(exr({key_code({0, 0, 0, 0, 0, 4, 64})}).key) << "what a program writes that knows none";
    EXPECT_TRUE(exr({time_code(0x0000000F)}).time_faulty);
    EXPECT_EQ(exr({frames_per_second(24, 0)}).rate, nullptr);
    EXPECT_EQ(exr({frames_per_second(-24, 1)}).rate, nullptr);
}

TEST(ExrHeader, OfAnAttributeThatStandsTwiceTheLastCounts) {
    const ExrAttribute good = key_code({2, 74, 291010, 5867, 56, 4, 64}), bad = key_code({-1, 0, 0, 0, 0, 0, 0});
    EXPECT_FALSE(exr({good, bad}).key);
    EXPECT_TRUE(exr({good, bad}).key_faulty);
    expect_key(exr({bad, good}), "0274", "291010", 5867, 56);
    const ExrAttribute time = time_code(0x01020312), no_time = time_code(0x0000000F);
    EXPECT_FALSE(exr({time, no_time}).time);
    EXPECT_TRUE(exr({no_time, time}).time);
    EXPECT_FALSE(exr({no_time, time}).time_faulty);
}

TEST(ExrHeader, AttributesOfOtherTypesOrTooFewBytesSayNothing) {
    ExrAttribute short_key = key_code({2, 74, 291010, 5867, 56, 4});
    ExrAttribute text_key = key_code({2, 74, 291010, 5867, 56, 4, 64});
    text_key.type = "string";
    EXPECT_FALSE(exr({short_key}).key);
    EXPECT_FALSE(exr({text_key}).key);
}

TEST(ExrHeader, AsksForMoreUntilTheListEnds) {
    const std::string bytes = exr_bytes({preview(50'000), time_code(0x01000000)}) + std::string(5000, 'x');
    std::size_t have = 4096;
    int calls = 0;
    HeaderReading reading;
    for (; calls < 5; ++calls) {
        reading = read_exr_header(std::string_view(bytes).substr(0, have));
        if (reading.wanted == 0) break;
        ASSERT_GT(reading.wanted, have);
        have = reading.wanted;
    }
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(reading.header.time);
    EXPECT_LT(have, 53'000u);
}

TEST(ExrHeader, CutOffAtAnyPlaceItWantsMoreAndNeverLess) {
    const std::string bytes = exr_bytes({frames_per_second(24, 1), time_code(0x01000000)});
    EXPECT_NE(read_exr_header("").trouble, nullptr);
    for (std::size_t size = 1; size < bytes.size(); ++size) {
        const HeaderReading reading = read_exr_header(std::string_view(bytes).substr(0, size));
        ASSERT_EQ(reading.trouble, nullptr) << size;
        ASSERT_GT(reading.wanted, size);
    }
}

TEST(ExrHeader, HostileSizesAndNamesAreRefused) {
    ExrAttribute huge{"a", "b", ""};
    std::string bytes = exr_bytes({huge});
    bytes.replace(bytes.size() - 5, 4, "\xFF\xFF\xFF\x7F");
    EXPECT_STREQ(read_exr_header(bytes).trouble, "has a header of more than 1 MiB");
    EXPECT_STREQ(read_exr_header(exr_bytes({{std::string(300, 'n'), "t", ""}})).trouble,
                 "has a header that can't be read");
    EXPECT_STREQ(read_exr_header("GIF89a").trouble, "isn't an OpenEXR picture");
}

} // namespace
