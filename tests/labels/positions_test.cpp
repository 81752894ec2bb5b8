// Positions carried from one medium to another.

#include "embedded/rates.h"
#include "host/edit.h"
#include "tests/labels/points.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr MediumRollMedium medium(int number) { return static_cast<MediumRollMedium>(number); }
constexpr Qb::FrameRate rate(int number) { return static_cast<Qb::FrameRate>(number); }
const MPosn_Xlate_Params unset(rate(0), rate(0));

EditLabel label_on(int type, int medium_number) { return EditLabel(kind(type), MediumRollIdent(medium_number, 1)); }

TEST(Translation, BetweenMediaOfOneScaleChangesNothing) {
    const EditPtr none;
    for (const int from : {1, 4, 8, 12, 13, 14, 15, 28}) {
        for (const int to : {1, 4, 8, 12, 13, 14, 15, 28}) {
            EXPECT_EQ(mPosn_Xlate(1.23456789, medium(from), medium(to), none), 1.23456789);
        }
    }
    EXPECT_EQ(mPosn_Xlate(1.5, medium_film, medium_ink, none), 1.5);
    EXPECT_EQ(mPosn_Xlate(1.5, medium_ink, medium_film, none), 1.5);
}

TEST(Translation, WithoutAnEditFilmRunsAt24) {
    const EditPtr none;
    EXPECT_EQ(mPosn_Xlate(2.0, medium_edit, medium_film, none), 48.0);
    EXPECT_EQ(mPosn_Xlate(2.03, medium_edit, medium_ink, none), 48.0);
    EXPECT_EQ(mPosn_Xlate(1.0 / 24 * (5 - 0.5e-6), medium_edit, medium_film, none), 5.0);
    EXPECT_EQ(mPosn_Xlate(-0.01, medium_edit, medium_film, none), -1.0);
    EXPECT_EQ(mPosn_Xlate(48.0, medium_film, medium_edit, none), 2.0);
}

TEST(Translation, ALabelNamesItsMedium) {
    const EditPtr none;
    const EditLabel key = label_on(10, 2);
    const EditLabel sound = label_on(8, 4);
    EXPECT_EQ(mPosn_Xlate(2.0, medium_edit, &key, none), 48.0);
    EXPECT_EQ(mPosn_Xlate(2.01, medium_edit, &sound, none), 2.01);
    EXPECT_EQ(mPosn_Xlate(24.0, medium_film, &sound, none), 1.0);
    EXPECT_EQ(mPosn_Xlate(24.0, medium_film, static_cast<const EditLabel*>(nullptr), none), 24.0);
    EXPECT_EQ(mPosn_Xlate(24.0, medium_film, nullptr, unset), 24.0);
}

struct Case {
    int type;
    int film_frames, frames; ///< as many frames of video as of film
};
constexpr Case cases[] = {{8, 1, 1}, {4, 1, 1}, {5, 4, 5}, {6, 4, 5}, {7, 1, 2}, {9, 1, 2}, {1, 2, 5}, {2, 2, 5}};

TEST(Translation, TheLabelsOwnRateDecidesWhereNoneIsSet) {
    for (const Case& c : cases) {
        const EditLabel label = label_on(c.type, 8);
        for (int group = 0; group < 20000; ++group) {
            const double seconds = mPosn_Xlate(group * c.film_frames, medium_film, &label, unset);
            ASSERT_EQ(label.posn_to_sample(seconds), group * c.frames) << c.type;
        }
    }
}

TEST(Translation, ALabelAtAnEditsTrueRateKeepsTheFrames) {
    EditLabel label = label_on(8, 28);
    label.posn_step = 1001.0 / 24000;
    EXPECT_DOUBLE_EQ(mPosn_Xlate(24.0, medium_film, &label, unset), 1.001);
    EXPECT_EQ(label.posn_to_sample(mPosn_Xlate(86399.0, medium_film, &label, unset)), 86399);
}

TEST(Translation, RatesThatAreSetDecide) {
    const EditLabel video = label_on(8, 8);
    EXPECT_DOUBLE_EQ(mPosn_Xlate(25.0, medium_film, &video, MPosn_Xlate_Params(rate(0), rate(3))), 1.0);
    EXPECT_DOUBLE_EQ(mPosn_Xlate(25.0, medium_film, &video, MPosn_Xlate_Params(rate(3), rate(0))), 1.0);
    EXPECT_DOUBLE_EQ(mPosn_Xlate(24.0, medium_film, &video, MPosn_Xlate_Params(rate(3), rate(9))), 1.0);
    const EditLabel film = label_on(10, 2);
    EXPECT_EQ(mPosn_Xlate(1.0, medium_edit, &film, MPosn_Xlate_Params(rate(3), rate(9))), 25.0);
}

TEST(Translation, UnusableLabelsCountAt24) {
    const EditLabel invalid(label_none, MediumRollIdent(8, 1));
    EXPECT_EQ(mPosn_Xlate(24.0, medium_film, &invalid, unset), 1.0);
    EditLabel still = label_on(8, 8);
    still.posn_step = 0.0;
    EXPECT_EQ(mPosn_Xlate(24.0, medium_film, &still, unset), 1.0);
    EXPECT_TRUE(std::isnan(mPosn_Xlate(std::nan(""), medium_film, &still, unset)));
}

} // namespace
