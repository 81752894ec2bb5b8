// Key, ink and foot numbers as text, and back.

#include "tests/labels/points.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

TEST(FilmText, PrintsPrefixCountAndFrames) {
    EXPECT_EQ(text_of(123 * 64 + 5 * 4, 10, "KJ123456"), "KJ1234560123+05");
    EXPECT_EQ(text_of(123 * 64 + 12 * 3, 12, "KJ123456"), "KJ1234560123+12.1");
    EXPECT_EQ(text_of(12 * 64 + 5 * 4, 13), "0012+05");
    EXPECT_EQ(text_of(7 * 20 + 19, 11, "KZ000001"), "KZ0000010007+19");
    EXPECT_EQ(text_of(7 * 40 + 39, 14), "0007+39");
    EXPECT_EQ(text_of(99 * 64 + 3 * 4, 43, "AB12"), "AB120099+03");
    EXPECT_EQ(text_of(1, 10, "KJ123456"), "KJ1234560000+01.4");
}

TEST(FilmText, ASampleBelowZeroHasAMinusInPlaceOfThePlus) {
    EXPECT_EQ(text_of(-20, 10, "KJ123456"), "KJ1234560000-05");
    EXPECT_EQ(text_of(-64, 13), "0001-00");
    EXPECT_EQ(text_of(-63, 15), "0001-00");
    EXPECT_EQ(text_of(-1, 12, "KJ123456"), "KJ1234560000-01.3");
    EXPECT_EQ(sample_of("KJ1234560000-05", 10), -20);
    EXPECT_EQ(sample_of("0001-00", 13), -64);
}

TEST(FilmText, CountsGrowBeyondTheirDigits) {
    EXPECT_EQ(text_of(9999 * 64, 21, "KJ123456"), "KJ1234569999+00");
    EXPECT_EQ(text_of(10000 * 64, 21, "KJ123456"), "KJ12345610000+00");
    EXPECT_EQ(text_of(123 * 64, 22, "KJ123456"), "KJ12345600123+00");
    EXPECT_EQ(text_of(123 * 64, 23, "KJ123456"), "KJ123456000123+00");
    EXPECT_EQ(sample_of("KJ12345610000+00", 21), 640000);
}

// A frame holds perforations s to s + R - 1. Its count is the last that has a dot before its end, and its
// frames are counted back to the frame that holds this dot.
std::string strip_text(int s, const label_cvt& cvt, bool foot, const std::string& prefix) {
    const int in_count = cvt.samples_per_count();
    const int in_frame = cvt.samples_per_frame();
    int count = 0;
    while ((count + 1) * in_count <= s + in_frame - 1)
        ++count;
    int frames = 0;
    int begins = s;
    while (begins > count * in_count)
        begins -= in_frame, ++frames;
    const int dot = count * in_count - begins + 1;
    int usual = 1;
    if (foot) {
        int line = 0;
        while (line + in_frame <= count * in_count)
            line += in_frame;
        usual = count * in_count - line + 1;
    }
    char text[40];
    std::snprintf(text, sizeof text, "%s%0*d+%02d", prefix.c_str(), cvt.count_digits(), count, frames);
    std::string result = text;
    if ((!foot && in_count % in_frame != 0) || dot != usual) result += "." + std::to_string(dot);
    return result;
}

TEST(FilmText, AgreesWithAStripOfFilmPerforationByPerforation) {
    for (const int type : film_kinds()) {
        const label_cvt& cvt = *get_static_label_cvt(kind(type));
        const bool foot = cvt.prefix_length() == 0;
        const std::string prefix = std::string("KJ123456").substr(0, static_cast<std::size_t>(cvt.prefix_length()));
        LabelPoint point(0, kind(type));
        point.set_prefix(prefix.c_str());
        for (point.sample = 0; point.sample < 3000; ++point.sample) {
            ASSERT_EQ(point.get_string(), strip_text(point.sample, cvt, foot, prefix)) << type;
        }
    }
}

int first_that_comes_back_changed(int type, const char* prefix, int from, int to) {
    LabelPoint point(from, kind(type));
    point.set_prefix(prefix);
    LabelPoint back(0, kind(type));
    for (; point.sample != to; point.sample += from < to ? 1 : -1) {
        back.set_sample(point.get_string());
        if (!(back == point) || !back.is_useful()) return point.sample;
    }
    return to;
}

class EveryFilmKind : public testing::TestWithParam<int> {};

TEST_P(EveryFilmKind, ReadsItsOwnTextBack) {
    EXPECT_EQ(first_that_comes_back_changed(GetParam(), "KJ+23-_9", 0, 100000), 100000);
    EXPECT_EQ(first_that_comes_back_changed(GetParam(), "", -1, -20000), -20000);
    const int samples[] = {INT_MAX, INT_MAX - 1, INT_MIN, INT_MIN + 1, 64 * 10000, 64 * 1000000 - 1};
    for (const int sample : samples) {
        LabelPoint point(sample, kind(GetParam()));
        LabelPoint back(0, kind(GetParam()));
        back.set_sample(point.get_string());
        EXPECT_EQ(back, point) << point.get_string();
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryFilmKind, testing::ValuesIn(film_kinds()),
                         [](const auto& each) { return "Kind" + std::to_string(each.param); });

// Lengths of the counts as frames are stepped through from a dot on the head perforation.
std::vector<int> count_lengths(int type, int frames_of_walk) {
    const label_cvt& cvt = *get_static_label_cvt(kind(type));
    std::vector<int> lengths;
    std::string last;
    for (int frame = 0; frame < frames_of_walk; ++frame) {
        const std::string text = text_of(frame * cvt.samples_per_frame(), type, "KJ123456");
        const std::string count = text.substr(0, text.find('+'));
        if (count != last) lengths.push_back(0);
        ++lengths.back();
        last = count;
    }
    return lengths;
}

TEST(FilmText, CountsOfThreePerforationFilmAre21And21And22FramesLong) {
    for (const int type : {12, 15, 27, 45}) {
        EXPECT_EQ(count_lengths(type, 128), (std::vector<int>{21, 21, 22, 21, 21, 22})) << type;
    }
}

TEST(FilmText, TheDotOfThreePerforationFilmWandersThroughTheFrame) {
    EXPECT_EQ(text_of(0, 12, "K"), "K_______0000+00.1");
    EXPECT_EQ(text_of(63, 12, "K"), "K_______0001+00.2");
    EXPECT_EQ(text_of(126, 12, "K"), "K_______0002+00.3");
    EXPECT_EQ(text_of(189, 12, "K"), "K_______0002+21.3");
    EXPECT_EQ(text_of(192, 12, "K"), "K_______0003+00.1");
}

TEST(FilmText, FeetOfThreePerforationFilmNeedNoDot) {
    EXPECT_EQ(text_of(0, 15), "0000+00");
    EXPECT_EQ(text_of(63, 15), "0001+00");
    EXPECT_EQ(text_of(126, 15), "0002+00");
    EXPECT_EQ(text_of(64, 15), "0001+00.1");
    EXPECT_EQ(sample_of("0001+00", 15), 63);
    EXPECT_EQ(sample_of("0002+05", 15), 141);
    EXPECT_EQ(sample_of("0001+00.1", 15), 64);
}

TEST(FilmText, KeysWithoutADotAreReadWithItOnTheFirstPerforation) {
    EXPECT_EQ(sample_of("KJ1234560001+00", 12), 64);
    EXPECT_EQ(sample_of("KJ1234560001+00.2", 12), 63);
    EXPECT_EQ(sample_of("AB120001+00", 45), 64);
}

TEST(FilmText, TheDotOfGaugesThatDivideStaysPut) {
    for (const int type : {10, 34, 35, 36, 37, 38, 39, 40, 41, 42}) {
        const int frame = get_static_label_cvt(kind(type))->samples_per_frame();
        for (int i = 0; i < 200; ++i) {
            ASSERT_EQ(text_of(i * frame, type, "K").find('.'), std::string::npos) << type << " frame " << i;
        }
    }
    EXPECT_EQ(count_lengths(42, 16), (std::vector<int>{8, 8}));
    EXPECT_EQ(count_lengths(36, 32), (std::vector<int>{16, 16}));
    EXPECT_EQ(count_lengths(11, 40), (std::vector<int>{20, 20}));
}

TEST(FilmText, FramesBeyondThoseOfACountCarry) {
    EXPECT_EQ(sample_of("KJ1234560001+20", 10), 64 + 80);
    EXPECT_EQ(text_of(64 + 80, 10, "KJ123456"), "KJ1234560002+04");
    EXPECT_EQ(sample_of("0000+99", 13), 396);
}

TEST(FilmText, PlusAmpersandAndMinusEndTheHead) {
    EXPECT_EQ(sample_of("KJ1234560123+5", 10), 123 * 64 + 20);
    EXPECT_EQ(sample_of("KJ1234560123&05", 10), 123 * 64 + 20);
    EXPECT_EQ(sample_of("KJ1234560123-05", 10), -(123 * 64 + 20));
    EXPECT_EQ(sample_of("KJ1234560123+05.02", 10), 123 * 64 + 19);
    EXPECT_EQ(sample_of("KJ1234560123", 10), 123 * 64);
}

TEST(FilmText, ShortHeadsEndInTheCount) {
    EXPECT_EQ(sample_of("123+05", 10), 123 * 64 + 20);
    EXPECT_STREQ(point_of("123+05", 10).get_prefix(), "        ");
    EXPECT_EQ(sample_of("KJ0123+05", 10), 123 * 64 + 20);
    EXPECT_STREQ(point_of("KJ0123+05", 10).get_prefix(), "KJ______");
    EXPECT_EQ(sample_of("12345678", 10), 5678 * 64);
    EXPECT_STREQ(point_of("12345678", 10).get_prefix(), "1234____");
    EXPECT_EQ(sample_of("12345678", 23), 345678 * 64);
    EXPECT_STREQ(point_of("12345678", 23).get_prefix(), "12______");
    EXPECT_EQ(sample_of("KJ123456+05", 10), 3456 * 64 + 20);
    EXPECT_STREQ(point_of("KJ123456+05", 10).get_prefix(), "KJ12____");
    EXPECT_EQ(sample_of("AB125", 43), 5 * 64);
    EXPECT_EQ(sample_of("1+00", 13), 64);
}

TEST(FilmText, RefusesWhatItCannotRead) {
    for (const char* text : {"", "+05", "KJ12345A+05", "KJ12345601x3+05", "KJ1234560123+05.0", "KJ1234560123+05.5",
                             "KJ1234560123+005", "KJ1234560123+05.123", "KJ1234560123+", "KJ1234560123+05 ",
                             "KJ1234560123+05.", "KJ123456 123+05", "KX654321-0000+00", "KJ123456-0123", "NOCODE",
                             "KJ12345699999999999999999999+00", "KJ12345633554432+00", "KJ1234560123+12(1)"}) {
        EXPECT_TRUE(refuses(text, 10)) << text;
    }
    EXPECT_TRUE(refuses("0012+05.2", 14));
    EXPECT_TRUE(refuses("x0012+05", 13));
    EXPECT_TRUE(refuses("01:00:00:00", 13));
}

TEST(FilmText, ARefusedTextLeavesThePrefix) {
    LabelPoint point(77, kind(10));
    point.set_prefix("KJ123456");
    point.set_sample("nothing here+x");
    EXPECT_EQ(point.sample, 0);
    EXPECT_FALSE(point.is_useful());
    EXPECT_TRUE(point.is_valid());
    EXPECT_STREQ(point.get_prefix(), "KJ123456");
    point.set_sample(static_cast<const char*>(nullptr));
    EXPECT_FALSE(point.is_useful());
    EXPECT_STREQ(point.get_prefix(), "KJ123456");
}

TEST(FilmText, AnyTextIsReadOrRefusedAndWhatIsReadComesBack) {
    EXPECT_TRUE(rc::check([] {
        const int type = *rc::gen::elementOf(film_kinds());
        const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("KJ0129+-&. _\x80")));
        LabelPoint point = point_of(text.c_str(), type);
        if (!point.is_useful()) {
            RC_ASSERT(point.sample == 0);
        } else {
            RC_ASSERT(point_of(point.get_string(), type) == point);
        }
    }));
}

TEST(FilmText, AnySampleAndPrefixComeBack) {
    EXPECT_TRUE(rc::check([](int sample, const std::string& prefix) {
        const int type = *rc::gen::elementOf(film_kinds());
        LabelPoint point(sample, kind(type));
        point.set_prefix(prefix.c_str());
        RC_ASSERT(static_cast<int>(std::strlen(point.get_prefix())) == point.cvt()->prefix_length());
        RC_ASSERT(point_of(point.get_string(), type) == point);
    }));
}

TEST(FilmText, AConverterNeverWritesBeyondItsRoom) {
    for (unsigned size = 0; size <= 16; ++size) {
        char out[17];
        std::memset(out, '#', sizeof out);
        get_static_label_cvt(kind(10))->format(123 * 64 + 20, "KJ123456", out, size);
        const std::string full = "KJ1234560123+05";
        for (unsigned i = size; i < sizeof out; ++i)
            EXPECT_EQ(out[i], '#');
        if (size > 0) {
            EXPECT_EQ(out, full.substr(0, size - 1));
        }
    }
}

} // namespace
