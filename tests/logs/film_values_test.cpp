// Key numbers, kinds of film and the other values of logs in the spellings that are about.

#include "formats/logs/film_values.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

using namespace formats;

namespace {

constexpr auto film_16mm = static_cast<label_t>(11);
constexpr auto film_3perf = static_cast<label_t>(12);
constexpr auto film_2perf = static_cast<label_t>(34);
constexpr auto film_8perf = static_cast<label_t>(35);

std::string plain(const std::string& text, label_t kind = label_key_35mm_4p, const std::string& perforation = "") {
    LabelPoint point;
    const FilmNumber outcome = read_key_number(text, perforation, kind, point);
    return outcome == FilmNumber::good ? point.get_string() : "outcome " + std::to_string(static_cast<int>(outcome));
}

FilmNumber outcome_of(const std::string& text, label_t kind, LabelPoint& point, const std::string& perforation = "") {
    return read_key_number(text, perforation, kind, point);
}

TEST(KeyNumbers, EverySpellingComesToThePlainForm) {
    for (const char* text :
         {"KJ 29 1010 5867+07", "KJ291010 5867+07", "KJ291010-5867+07", "kj291010 5867&07", "KJ29 1010 5867-07",
          "KJ2910105867+07", "KJ291010 005867+07", "KJ291010 5867+7", "KJ29 1010 5867&07 A", "KJ 29 1010 5867:07",
          "  KJ291010\xC2\xA0"
          "5867+07 "})
        EXPECT_EQ(plain(text), "KJ2910105867+07") << text;
}

TEST(KeyNumbers, WithoutFramesTheDotsFrameIsMeant) { EXPECT_EQ(plain("eK65 2322 1201"), "EK6523221201+00"); }

TEST(KeyNumbers, PerforationIsReadInEverySpelling) {
    for (const char* text :
         {"KJ 12 1234-3456-10.3", "KJ121234 3456+10(3)", "KJ121234 003456+10 p3", "KJ121234 3456+10,3"})
        EXPECT_EQ(plain(text, film_3perf), "KJ1212343456+10.3") << text;
    EXPECT_EQ(plain("KJ121234 3456+10", film_3perf, "3"), "KJ1212343456+10.3");
    EXPECT_EQ(plain("KJ121234 3456+10.2", film_3perf, "3"), "KJ1212343456+10.2");
}

TEST(KeyNumbers, WhatIsNoneIsBad) {
    LabelPoint point;
    for (const char* text : {"KX65-99", "abc", "1234+05", "KJ12 3456 78X0+00", "+07", "KJ123456 99999999999+00"}) {
        EXPECT_EQ(outcome_of(text, label_key_35mm_4p, point), FilmNumber::bad) << text;
        EXPECT_FALSE(point.is_useful()) << text;
    }
    EXPECT_EQ(outcome_of("  ", label_key_35mm_4p, point), FilmNumber::empty);
}

TEST(KeyNumbers, MidFootMarkCountsPerforations) {
    LabelPoint point;
    EXPECT_EQ(outcome_of("KJ123456 1234+32", label_key_35mm_4p, point), FilmNumber::mid_foot);
    EXPECT_STREQ(point.get_string(), "KJ1234561234+08");
    EXPECT_EQ(outcome_of("KJ123456 1234+32", film_2perf, point), FilmNumber::mid_foot);
    EXPECT_STREQ(point.get_string(), "KJ1234561234+16");
    EXPECT_EQ(outcome_of("KJ123456 1234+32", film_8perf, point), FilmNumber::mid_foot);
    EXPECT_STREQ(point.get_string(), "KJ1234561234+04");
}

TEST(KeyNumbers, FramesBeyondACountCarryAndAreTold) {
    LabelPoint point;
    EXPECT_EQ(outcome_of("KJ123456 1234+16", label_key_35mm_4p, point), FilmNumber::beyond_count);
    EXPECT_STREQ(point.get_string(), "KJ1234561235+00");
    EXPECT_EQ(outcome_of("KJ123456 1234+15", label_key_35mm_4p, point), FilmNumber::good);
    EXPECT_EQ(outcome_of("KJ123456 1234+19", film_16mm, point), FilmNumber::good);
    EXPECT_EQ(outcome_of("KJ123456 1234+20", film_16mm, point), FilmNumber::beyond_count);
    EXPECT_EQ(outcome_of("KJ123456 1234+21.3", film_3perf, point), FilmNumber::good);
}

TEST(KeyNumbers, PerforationThatNoFrameHasIsLeftOut) {
    LabelPoint point;
    EXPECT_EQ(outcome_of("KJ123456 1234+05.4", film_3perf, point), FilmNumber::bad_perforation);
    EXPECT_STREQ(point.get_string(), "KJ1234561234+05.1");
    EXPECT_EQ(outcome_of("KJ123456 1234+05", film_3perf, point, "9"), FilmNumber::bad_perforation);
}

TEST(KeyNumbers, PlainFormReadsBackAsItself) {
    EXPECT_TRUE(rc::check([] {
        const int sample = *rc::gen::inRange(0, 600000);
        const label_t kind = *rc::gen::element(label_key_35mm_4p, film_16mm, film_3perf, film_2perf, film_8perf);
        LabelPoint point(sample, kind);
        point.set_prefix("KJ123456");
        const std::string text = point.get_string();
        LabelPoint back;
        RC_ASSERT(read_key_number(text, "", kind, back) == FilmNumber::good);
        RC_ASSERT(back == point);
    }));
}

TEST(FilmKinds, SpellingsOfLogsAndOurs) {
    const std::pair<const char*, int> spellings[] = {
        {"35mm,4perf", 10}, {"35 mm", 10},   {"35mm, 3 perf", 12}, {"35.3", 12},         {"35", 10},
        {"16mm", 11},       {"16.20", 11},   {"Super 16", 11},     {"35mm 2-perf", 34},  {"VistaVision", 35},
        {"35mm,8perf", 35}, {"65mm,5p", 39}, {"65", 39},           {"65mm 15 perf", 42}, {"35mm-3p", 12},
        {"35mm-3p-ft", 12}, {"3 perf", 12},  {"65mm-8p80", 37}};
    for (const auto& [text, kind] : spellings)
        EXPECT_EQ(film_kind_of_text(text), kind) << text;
    for (const char* text : {"", "video", "8mm", "35mm 5perf", "70"})
        EXPECT_EQ(film_kind_of_text(text), 0) << text;
}

TEST(InkNumbers, PrefixIsFilledUpToFourCharacters) {
    EXPECT_EQ(plain_ink_number("123 4567+08"), "123_4567+08");
    EXPECT_EQ(plain_ink_number("AA 1000"), "AA__1000+00");
    EXPECT_EQ(plain_ink_number("0421234+5"), "042_1234+05");
    EXPECT_EQ(plain_ink_number("1234+05"), "1234+05");
    EXPECT_EQ(plain_ink_number("ABCDE1234+05"), "");
    EXPECT_EQ(plain_ink_number("none"), "");
}

TEST(FilmLengths, FeetAndFramesOrFrames) {
    EXPECT_EQ(film_length("0070+00", label_key_35mm_4p), 1120);
    EXPECT_EQ(film_length("000100+05", label_key_35mm_4p), 1605);
    EXPECT_EQ(film_length("   6+03", label_key_35mm_4p), 99);
    EXPECT_EQ(film_length("1+00", film_16mm), 40);
    EXPECT_EQ(film_length("1120", film_3perf), 1120);
    for (const char* text : {"", "-5", "x", "99999999999"})
        EXPECT_EQ(film_length(text, label_key_35mm_4p), -1) << text;
}

TEST(PulldownPhases, Letters) {
    EXPECT_EQ(pulldown_phase("A"), 0);
    EXPECT_EQ(pulldown_phase("b"), 1);
    EXPECT_EQ(pulldown_phase("X"), 2);
    EXPECT_EQ(pulldown_phase("C1"), 3);
    EXPECT_EQ(pulldown_phase("2D"), 4);
    EXPECT_EQ(pulldown_phase("E"), -1);
    EXPECT_EQ(pulldown_phase(""), -1);
}

} // namespace
