// The kinds of labels, their texts and how they belong together.

#include "tests/labels/points.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

struct Row {
    int type;
    const char* text;
    int frame, count, digits, prefix;
    int foot, key, ink;
};

constexpr Row rows[] = {
    {10, "35mm-4p", 4, 64, 4, 8, 13, 10, 43},     {21, "35mm-4p-4d", 4, 64, 4, 8, 13, 21, 43},
    {22, "35mm-4p-5d", 4, 64, 5, 8, 13, 22, 43},  {23, "35mm-4p-6d", 4, 64, 6, 8, 13, 23, 43},
    {11, "16mm-1p", 1, 20, 4, 8, 14, 11, 44},     {24, "16mm-1p-4d", 1, 20, 4, 8, 14, 24, 44},
    {25, "16mm-1p-5d", 1, 20, 5, 8, 14, 25, 44},  {26, "16mm-1p-6d", 1, 20, 6, 8, 14, 26, 44},
    {12, "35mm-3p", 3, 64, 4, 8, 15, 12, 45},     {27, "35mm-3p-4d", 3, 64, 4, 8, 15, 27, 45},
    {28, "35mm-3p-5d", 3, 64, 5, 8, 15, 28, 45},  {29, "35mm-3p-6d", 3, 64, 6, 8, 15, 29, 45},
    {34, "35mm-2p", 2, 64, 4, 8, 16, 34, 46},     {35, "35mm-8p", 8, 64, 4, 8, 17, 35, 47},
    {36, "65mm-5p80", 5, 80, 4, 8, 3, 36, 0},     {37, "65mm-8p80", 8, 80, 4, 8, 3, 37, 0},
    {38, "65mm-10p80", 10, 80, 4, 8, 3, 38, 0},   {39, "65mm-5p120", 5, 120, 4, 8, 3, 39, 0},
    {40, "65mm-8p120", 8, 120, 4, 8, 3, 40, 0},   {41, "65mm-10p120", 10, 120, 4, 8, 3, 41, 0},
    {42, "65mm-15p120", 15, 120, 4, 8, 3, 42, 0}, {13, "35mm-4p-ft", 4, 64, 4, 0, 13, 10, 43},
    {14, "16mm-1p-ft", 1, 40, 4, 0, 14, 11, 44},  {15, "35mm-3p-ft", 3, 64, 4, 0, 15, 12, 45},
    {16, "35mm-2p-ft", 2, 64, 4, 0, 16, 34, 46},  {17, "35mm-8p-ft", 8, 64, 4, 0, 17, 35, 47},
    {43, "35mm-4p-ink", 4, 64, 4, 4, 13, 10, 43}, {44, "16mm-1p-ink", 1, 40, 4, 4, 14, 11, 44},
    {45, "35mm-3p-ink", 3, 64, 4, 4, 15, 12, 45}, {46, "35mm-2p-ink", 2, 64, 4, 4, 16, 34, 46},
    {47, "35mm-8p-ink", 8, 64, 4, 4, 17, 35, 47},
};

struct PlainRow {
    int type;
    const char* text;
};
constexpr PlainRow plain_rows[] = {{3, "frames"}, {8, "24fps"}, {4, "25fps"}, {5, "30fps"}, {6, "30df"},
                                   {7, "48fps"},  {9, "50fps"}, {1, "60fps"}, {2, "60df"}};

TEST(Kinds, FilmKindsHaveTheirFiguresAndRelations) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const label_cvt* cvt = get_static_label_cvt(kind(row.type));
        EXPECT_EQ(cvt->label_type(), row.type);
        EXPECT_EQ(cvt->samples_per_frame(), row.frame);
        EXPECT_EQ(cvt->samples_per_count(), row.count);
        EXPECT_EQ(cvt->count_digits(), row.digits);
        EXPECT_EQ(cvt->prefix_length(), row.prefix);
        EXPECT_EQ(label_t_to_foot_label_t(kind(row.type)), row.foot);
        EXPECT_EQ(label_t_to_key_label_t(kind(row.type)), row.key);
        EXPECT_EQ(label_t_to_ink_label_t(kind(row.type)), row.ink);
        EXPECT_STREQ(label_type_to_edlstr(kind(row.type)), row.text);
        EXPECT_EQ(edlstr_to_label_type(row.text), row.type);
        EXPECT_EQ(edlstr_to_label_type(row.text, user_label_key), row.key);
        EXPECT_EQ(edlstr_to_label_type(row.text, user_label_ink), row.ink);
    }
}

TEST(Kinds, FramesAndTimecodesAreNoFilm) {
    for (const PlainRow& row : plain_rows) {
        SCOPED_TRACE(row.text);
        const label_cvt* cvt = get_static_label_cvt(kind(row.type));
        EXPECT_EQ(cvt->label_type(), row.type);
        EXPECT_EQ(cvt->samples_per_frame(), 1);
        EXPECT_EQ(cvt->prefix_length(), 0);
        EXPECT_EQ(label_t_to_foot_label_t(kind(row.type)), 0);
        EXPECT_EQ(label_t_to_key_label_t(kind(row.type)), 0);
        EXPECT_EQ(label_t_to_ink_label_t(kind(row.type)), 0);
        EXPECT_STREQ(label_type_to_edlstr(kind(row.type)), row.text);
        EXPECT_EQ(edlstr_to_label_type(row.text), row.type);
    }
}

TEST(Kinds, EveryTextFitsElevenCharacters) {
    for (int number = -2; number < 100; ++number) {
        const char* text = label_type_to_edlstr(kind(number));
        EXPECT_LE(std::strlen(text), 11U) << number;
        if (*text) {
            EXPECT_EQ(edlstr_to_label_type(text), number);
        }
    }
}

TEST(Kinds, TextsAreReadWithoutRegardToCase) {
    EXPECT_EQ(edlstr_to_label_type("35MM-4P-INK"), 43);
    EXPECT_EQ(edlstr_to_label_type("Frames"), 3);
    EXPECT_EQ(edlstr_to_label_type("30DF"), 6);
    EXPECT_EQ(edlstr_to_label_type("35MM-4P-6D", user_label_ink), 43);
}

TEST(Kinds, UnknownTextsAndNumbersHaveNoKind) {
    for (const char* text : {"", " ", "35mm", "35mm-4p ", "35mm-4p-7d", "24", "fps", "\xff\xfe"}) {
        EXPECT_EQ(edlstr_to_label_type(text), 0) << text;
        EXPECT_EQ(edlstr_to_label_type(text, user_label_key), 0) << text;
    }
    EXPECT_EQ(edlstr_to_label_type(nullptr), 0);
    EXPECT_EQ(edlstr_to_label_type(nullptr, user_label_ink), 0);
    for (const int number : {0, 18, 20, 30, 33, 48, -1, INT_MAX, INT_MIN}) {
        EXPECT_STREQ(label_type_to_edlstr(kind(number)), "") << number;
        EXPECT_EQ(label_t_to_foot_label_t(kind(number)), 0) << number;
        EXPECT_EQ(label_t_to_key_label_t(kind(number)), 0) << number;
        EXPECT_EQ(label_t_to_ink_label_t(kind(number)), 0) << number;
        EXPECT_EQ(get_static_label_cvt(kind(number))->label_type(), 0) << number;
        EXPECT_EQ(get_static_label_cvt(kind(number))->samples_per_frame(), 1) << number;
    }
}

TEST(Kinds, TheTimecodeFormOfAFilmTextIsItself) {
    EXPECT_EQ(edlstr_to_label_type("35mm-4p-6d", user_label_timecode), 23);
}

int with_digits(int type, int digits) {
    LabelPoint point(0, kind(type));
    point.modify_count_length(digits);
    return point.type();
}

TEST(Kinds, TheCountLengthPicksTheKindOfTheFamily) {
    const int families[][4] = {{10, 21, 22, 23}, {11, 24, 25, 26}, {12, 27, 28, 29}};
    for (const auto& family : families) {
        for (const int type : family) {
            for (int digits = 4; digits <= 6; ++digits)
                EXPECT_EQ(with_digits(type, digits), family[digits - 3]);
        }
    }
}

TEST(Kinds, OtherCountLengthsAndKindsStayAsTheyAre) {
    for (const int digits : {INT_MIN, -1, 0, 3, 7, INT_MAX})
        EXPECT_EQ(with_digits(22, digits), 22) << digits;
    for (const int type : {0, 3, 8, 6, 13, 14, 15, 34, 35, 36, 42, 43, 44, 45}) {
        for (int digits = 4; digits <= 6; ++digits)
            EXPECT_EQ(with_digits(type, digits), type) << type;
    }
}

} // namespace
