// Points and labelled media.

#include "tests/labels/points.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>

namespace {

EditLabel edit_label(int type, int medium = 2) { return EditLabel(kind(type), MediumRollIdent(medium, 1)); }

TEST(Point, AnUntouchedPointIsInvalidAndEmpty) {
    LabelPoint point;
    EXPECT_FALSE(point.is_valid());
    EXPECT_FALSE(point.is_useful());
    EXPECT_EQ(point.type(), label_none);
    EXPECT_STREQ(point.get_string(), "");
    EXPECT_STREQ(point.get_prefix(), "");
    ASSERT_NE(point.cvt(), nullptr);
    EXPECT_EQ(point.cvt()->samples_per_frame(), 1);
    EXPECT_EQ(point.cvt()->label_type(), label_none);
}

TEST(Point, AKindMakesItValidAndASampleUseful) {
    LabelPoint point;
    point.set_type(label_tc_24);
    EXPECT_TRUE(point.is_valid());
    EXPECT_FALSE(point.is_useful());
    point.set_sample("not a timecode");
    EXPECT_FALSE(point.is_useful());
    point.set_sample("00:00:01:00");
    EXPECT_TRUE(point.is_useful());
    EXPECT_EQ(point.sample, 24);

    EXPECT_TRUE(LabelPoint(0, label_tc_24).is_useful());
    EXPECT_TRUE(LabelPoint(0, get_static_label_cvt(label_tc_24)).is_useful());
    EXPECT_FALSE(LabelPoint(0, label_none).is_useful());
    EXPECT_FALSE(LabelPoint(0, static_cast<label_cvt*>(nullptr)).is_valid());
    EXPECT_FALSE(LabelPoint(0, kind(999)).is_valid());
}

TEST(Point, ArithmeticMakesItUseful) {
    LabelPoint added, taken, numbered;
    added.set_type(label_tc_24);
    added += 5;
    taken.set_type(label_tc_24);
    taken -= 5;
    numbered.set_type(label_tc_24);
    numbered.set_sample(0);
    EXPECT_TRUE(added.is_useful() && taken.is_useful() && numbered.is_useful());
    EXPECT_EQ(added.sample, 5);
    EXPECT_EQ(taken.sample, -5);
}

TEST(Point, ArithmeticStaysWithinAnInt) {
    LabelPoint point(INT_MAX, label_key_35mm_4p);
    point += INT_MAX;
    EXPECT_EQ(point.sample, INT_MAX);
    point.set_sample(INT_MIN);
    point -= INT_MAX;
    EXPECT_EQ(point.sample, INT_MIN);
    point.set_sample(0);
    point -= INT_MIN;
    EXPECT_EQ(point.sample, INT_MAX);
}

TEST(Point, ThePrefixIsExactlyAsLongAsTheKinds) {
    LabelPoint key(0, label_key_35mm_4p);
    EXPECT_STREQ(key.get_prefix(), "        ");
    key.set_prefix("NOCODE");
    EXPECT_STREQ(key.get_prefix(), "NOCODE__");
    key.set_prefix("KJ1234567890");
    EXPECT_STREQ(key.get_prefix(), "KJ123456");
    key.set_prefix("__BLACK_");
    EXPECT_STREQ(key.get_string(), "__BLACK_0000+00");
    key.set_prefix("");
    EXPECT_STREQ(key.get_prefix(), "        ");
    key.set_prefix(nullptr);
    EXPECT_STREQ(key.get_prefix(), "        ");

    LabelPoint foot(0, kind(13));
    foot.set_prefix("KJ");
    EXPECT_STREQ(foot.get_prefix(), "");
}

TEST(Point, AnotherKindFitsThePrefix) {
    LabelPoint point(0, label_key_35mm_4p);
    point.set_prefix("KJ123456");
    point.set_type(kind(43));
    EXPECT_STREQ(point.get_prefix(), "KJ12");
    point.set_type(kind(12));
    EXPECT_STREQ(point.get_prefix(), "KJ12____");
    point.set_type(kind(8));
    EXPECT_STREQ(point.get_prefix(), "");
    point.set_type(kind(43));
    EXPECT_STREQ(point.get_prefix(), "    ");
    point.set_type(kind(10));
    EXPECT_STREQ(point.get_prefix(), "        ");
    point.set_prefix("????????");
    point.modify_count_length(6);
    EXPECT_STREQ(point.get_string(), "????????000000+00");
}

TEST(Point, EqualsByKindPrefixAndSample) {
    LabelPoint a(5, label_key_35mm_4p), b(5, label_key_35mm_4p);
    EXPECT_EQ(a, b);
    b.set_prefix("KJ");
    EXPECT_FALSE(a == b);
    a.set_prefix("KJ______");
    EXPECT_EQ(a, b);
    b += 1;
    EXPECT_FALSE(a == b);
    b -= 1;
    b.set_type(kind(21));
    EXPECT_FALSE(a == b);
}

TEST(Point, ItsOwnTextAndPrefixMayBeGivenBackToIt) {
    LabelPoint point(1234, label_key_35mm_4p);
    point.set_prefix("KJ123456");
    const LabelPoint before = point;
    point.set_sample(point.get_string());
    point.set_prefix(point.get_prefix());
    EXPECT_EQ(point, before);
}

TEST(Point, PrintsFramesAsFeetAndFrames) {
    LabelPoint point(0, label_t_to_foot_label_t(label_key_35mm_4p));
    point.set_sample(point.cvt()->samples_per_frame() * 99);
    EXPECT_STREQ(point.get_string(), "0006+03");
}

TEST(InvalidLabel, GivesTheInvalidPoint) {
    const LabelPoint point = get_invalid_label()->get_label_point(0);
    const LabelPoint copy = point;
    EXPECT_EQ(point.is_valid(), 0);
    EXPECT_EQ(copy.is_valid(), 0);
    EXPECT_EQ(copy.is_useful(), 0);
    EXPECT_FALSE(invalid_edit_label()->is_valid());
}

TEST(InvalidLabel, StepsByOneAndIsSafe) {
    EditLabel label;
    EXPECT_EQ(label.posn_step, 1.0);
    EXPECT_STREQ(label.get_string(7), "");
    EXPECT_EQ(label.posn_to_sample(3.5), 3);
    EXPECT_EQ(label.get_sample(4), 4);
    EXPECT_EQ(label.get_abs_posn(4), 4.0);
    label.set_prefix("KJ");
    label.set_start("01:00:00:00");
    label.set_end(10);
    label.modify_count_length(4);
    EXPECT_FALSE(label.get_label_point(2.0).is_valid());
    EXPECT_FALSE(label.is_valid());
    label.set_type(kind(99));
    EXPECT_FALSE(label.is_valid());
    EXPECT_EQ(label.get_MediumRoll(), MediumRollIdent(1, 1));
}

TEST(Steps, FollowTheKind) {
    for (const int type : film_kinds()) {
        const int perforations = get_static_label_cvt(kind(type))->samples_per_frame();
        EXPECT_EQ(edit_label(type).posn_step, 1.0 / perforations) << type;
    }
    EXPECT_EQ(edit_label(8).posn_step, 1.0 / 24);
    EXPECT_EQ(edit_label(4).posn_step, 1.0 / 25);
    EXPECT_EQ(edit_label(7).posn_step, 1.0 / 48);
    EXPECT_EQ(edit_label(9).posn_step, 1.0 / 50);
    for (const int type : {5, 6})
        EXPECT_EQ(edit_label(type).posn_step, 1001.0 / 30000) << type;
    for (const int type : {1, 2})
        EXPECT_EQ(edit_label(type).posn_step, 1001.0 / 60000) << type;
    EXPECT_EQ(edit_label(3).posn_step, 1.0);
    EXPECT_EQ(edit_label(0).posn_step, 1.0);
    EXPECT_EQ(edit_label(99).posn_step, 1.0);
}

TEST(Steps, SettingTheKindResetsTheStepAndAPointKeepsIt) {
    EditLabel label = edit_label(8);
    label.posn_step = 1001.0 / 24000;
    label.set_start(LabelPoint(5, kind(5)));
    EXPECT_EQ(label.type(), 5);
    EXPECT_EQ(label.posn_step, 1001.0 / 24000);
    label.set_type(kind(5));
    EXPECT_EQ(label.posn_step, 1001.0 / 30000);
    EXPECT_EQ(label.get_sample(0), 5);
}

struct Rate {
    int num, den;
};
constexpr Rate ten_rates[] = {{24000, 1001}, {24, 1},       {25, 1}, {30, 1}, {30000, 1001},
                              {48, 1},       {48000, 1001}, {50, 1}, {60, 1}, {60000, 1001}};

TEST(Steps, PositionsOfWholeFramesGiveTheirFrameForMoreThanADay) {
    for (const Rate& rate : ten_rates) {
        EditLabel label = edit_label(8, 8);
        label.posn_step = double(rate.den) / rate.num;
        const int frames = 25 * 3600 * (rate.num / rate.den + 1);
        int wrong = -1;
        for (int n = 0; n <= frames && wrong < 0; ++n) {
            const double posn = double(std::int64_t(n) * rate.den) / rate.num;
            if (label.posn_to_sample(posn) != n || label.posn_to_sample(label.sample_to_posn(n)) != n) wrong = n;
        }
        EXPECT_EQ(wrong, -1) << rate.num;
    }
}

TEST(Positions, RoundDownWithASmallAllowance) {
    const EditLabel label = edit_label(8, 8);
    EXPECT_EQ(label.posn_to_sample(0.0), 0);
    EXPECT_EQ(label.posn_to_sample(0.99 / 24), 0);
    EXPECT_EQ(label.posn_to_sample((1 - 0.5e-6) / 24), 1);
    EXPECT_EQ(label.posn_to_sample((1 - 2e-6) / 24), 0);
    EXPECT_EQ(label.posn_to_sample(-0.5 / 24), -1);
    EXPECT_EQ(edit_label(10).posn_to_sample(2.5), 10);
    EXPECT_EQ(edit_label(12).posn_to_sample(7.0), 21);
}

TEST(Positions, StayWithinAnIntWhateverComes) {
    EditLabel label = edit_label(8, 8);
    EXPECT_EQ(label.posn_to_sample(1e300), INT_MAX);
    EXPECT_EQ(label.posn_to_sample(-std::numeric_limits<double>::infinity()), INT_MIN);
    EXPECT_EQ(label.posn_to_sample(std::nan("")), 0);
    label.posn_step = 0.0;
    EXPECT_EQ(label.posn_to_sample(5.0), 0);
    label.set_start(INT_MAX);
    EXPECT_EQ(label.get_sample(1), INT_MAX);
    EXPECT_EQ(label.get_label_point(INT_MAX).sample, INT_MAX);
    label.set_end(INT_MIN);
    EXPECT_EQ(label.end, INT_MIN);
    EXPECT_EQ(label.get_label_point(-3.0).sample, INT_MAX);
}

TEST(Positions, CountFromTheStartOrFromZero) {
    EditLabel label = edit_label(4, 8);
    label.set_start("01:00:00:00");
    EXPECT_EQ(label.get_sample(5), 90005);
    EXPECT_EQ(label.get_abs_posn(25), 3601.0);
    EXPECT_EQ(label.get_posn(LabelPoint(90050, kind(4))), 2.0);
    EXPECT_EQ(label.sample_to_posn(50), 2.0);
    EXPECT_STREQ(label.get_label_point(1.0).get_string(), "01:00:01:00");
    label.set_start(2.0);
    EXPECT_EQ(label.get_sample(0), 50);
}

TEST(Bounds, HoldOnlyWhereTheEndIsSet) {
    EditLabel label = edit_label(10);
    label.set_start(400);
    EXPECT_EQ(label.get_label_point(1000.0).sample, 4400);
    EXPECT_EQ(label.get_label_point(-1.0).sample, 396);
    label.set_end(440);
    EXPECT_EQ(label.end, 40);
    EXPECT_EQ(label.end_set, 1);
    EXPECT_EQ(label.get_label_point(1000.0).sample, 440);
    EXPECT_EQ(label.get_label_point(-1.0).sample, 400);
    EXPECT_EQ(label.get_label_point(3.0).sample, 412);
    EXPECT_EQ(label.get_unbounded_label_point(1000.0).sample, 4400);
    EXPECT_EQ(label.get_label_point(1000).sample, 1400);
}

TEST(Labels, PrintBareCountsFromZero) {
    EditLabel label = edit_label(6, 8);
    label.set_start(0);
    EXPECT_STREQ(label.get_string(1800), "00:01:00;02");
    EXPECT_STREQ(label.get_string(0), "00:00:00;00");
}

TEST(Labels, StartsTakeThePrefixOfTheirText) {
    EditLabel label = edit_label(10);
    label.set_prefix("NOCODE");
    EXPECT_STREQ(label.get_string(0), "NOCODE__0000+00");
    label.set_start("KJ1234560123+05");
    EXPECT_STREQ(label.get_string(4), "KJ1234560123+06");
    label.set_start("unreadable");
    EXPECT_STREQ(label.get_string(0), "KJ1234560000+00");
    label.modify_count_length(6);
    EXPECT_STREQ(label.get_string(0), "KJ123456000000+00");
    EXPECT_EQ(label.type(), 23);
}

TEST(Labels, CopiesAreTheirOwn) {
    EditLabel label = edit_label(10);
    label.set_start("KJ1234560123+05");
    EditLabel copy = label;
    copy.set_start(0);
    copy.set_MediumRoll(MediumRollIdent(10, 2));
    EXPECT_STREQ(label.get_string(0), "KJ1234560123+05");
    EXPECT_EQ(label.get_MediumRoll(), MediumRollIdent(2, 1));
    EXPECT_EQ(copy.get_MediumRoll(), MediumRollIdent(10, 2));
}

} // namespace
