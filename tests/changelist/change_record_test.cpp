#include "changelist/change_record.h"

#include "tests/changelist/film_events.h"

#include <gtest/gtest.h>

namespace {

ChangeRecord record(int length, double speed) {
    FilmEvent event{"KJ1234560010+00", length};
    event.speed = speed;
    event.ink = "AA010010+00";
    return record_of(event);
}

TEST(ChangeRecordTest, ANewRecordIsOfTheFilmStandardAndHasNoKeyNumber) {
    const ChangeRecord fresh(label_key_35mm_4p);
    EXPECT_EQ(fresh.keycode_in.type(), label_key_35mm_4p);
    EXPECT_EQ(fresh.bracket_out.type(), label_key_35mm_4p);
    EXPECT_EQ(fresh.inkcode_in.type(), label_t_to_ink_label_t(label_key_35mm_4p));
    EXPECT_FALSE(fresh.prim_tc_in.is_valid());
    EXPECT_EQ(fresh.keycode_missing, 1);
    EXPECT_EQ(fresh.speed, 0);
}

TEST(ChangeRecordTest, TheEndOfANormalEventLiesOnePastItsLastFrame) {
    const ChangeRecord normal = record(10, 1);
    EXPECT_EQ(normal.key_end(), normal.key_in() + normal.key_step() * 10);
    EXPECT_EQ(normal.key_last(), normal.key_in() + normal.key_step() * 9);
    EXPECT_EQ(normal.ink_end(), normal.ink_in() + normal.ink_step() * 10);
    EXPECT_EQ(normal.ink_last(), normal.ink_in() + normal.ink_step() * 9);
}

TEST(ChangeRecordTest, TheEndOfAFastEventCountsItsFilm) {
    const ChangeRecord fast = record(10, 1.5);
    EXPECT_EQ(fast.key_end(), fast.key_in() + fast.key_step() * 15);
    EXPECT_EQ(fast.key_last(), fast.key_in() + fast.key_step() * 15);
}

TEST(ChangeRecordTest, ABackwardEventEndsBelowItsStart) {
    const ChangeRecord backward = record(10, -1);
    EXPECT_EQ(backward.key_end(), backward.key_in() - backward.key_step() * 10);
    EXPECT_LT(backward.ink_end(), backward.ink_in());
}

TEST(ChangeRecordTest, AHeldFrameOverlapsItself) {
    const ChangeRecord held = record(10, 0);
    EXPECT_EQ(held.key_end(), held.key_in() + held.key_step());
    EXPECT_TRUE(overlaps(held, held));
    EXPECT_FALSE(overlaps(record(0, 0), record(0, 0)));
}

TEST(ChangeRecordTest, AnInvalidPointHasNoSamples) {
    ChangeRecord blank = record(10, 1);
    blank.keycode_in = blank.inkcode_in = LabelPoint();
    blank.set_key_in(40);
    blank.set_ink_in(40);
    EXPECT_EQ(blank.key_in(), 0);
    EXPECT_EQ(blank.key_end(), 0);
    EXPECT_EQ(blank.ink_last(), 0);
    EXPECT_EQ(blank.key_step(), 1);
}

TEST(ChangeRecordTest, SpeedsWithinAHundredthAreNormal) {
    EXPECT_FALSE(record(10, 1.005).varispeed());
    EXPECT_FALSE(record(10, 0.995).varispeed());
    EXPECT_TRUE(record(10, 1.012).varispeed());
    EXPECT_TRUE(record(10, -1).varispeed());
}

TEST(ChangeRecordTest, RollsThatDifferInCaseOnlyCompareTheirKeys) {
    ChangeRecord lower = record(10, 1);
    lower.keycode_in.set_prefix("kj123456");
    EXPECT_TRUE(overlaps(lower, record(10, 1)));
    EXPECT_FALSE(same_event(lower, record(10, 1)));
    lower.set_key_in(lower.key_end());
    EXPECT_FALSE(overlaps(lower, record(10, 1)));
}

TEST(ChangeRecordTest, EqualKeysOnDifferentCameraReelsDontOverlap) {
    ChangeRecord other = record(10, 1);
    put_text(other.cam_reel, "B001");
    EXPECT_FALSE(overlaps(other, record(10, 1)));
    EXPECT_FALSE(same_event(other, record(10, 1)));
}

TEST(ChangeRecordTest, OnlyTheFirstRecordsSpeedDecides) {
    EXPECT_TRUE(overlaps(record(10, 1), record(10, 2)));
    EXPECT_FALSE(overlaps(record(10, 2), record(10, 1)));
    EXPECT_TRUE(overlaps(record(10, -1), record(10, -1)));
}

TEST(ChangeRecordTest, AnEmptyInkNumberReadsAsInvalidAndIsLeftAlone) {
    EventTable rows({{"KJ1234560010+00", 10}});
    const ChangeRecord read = read_row(rows.table, 0);
    EXPECT_FALSE(read.inkcode_in.is_valid());
    rows.table.set_field(0, hf_inkcode_in, "left alone");
    read.write(*rows.table.get_record(0));
    EXPECT_EQ(rows.table.getField(0, hf_inkcode_in).view(), "left alone");
}

TEST(ChangeRecordTest, AMissingKeyNumberCountsInFourDigits) {
    EventTable rows;
    const label_t five_digits = edlstr_to_label_type("35mm-4p-5d");
    rows.table.add_param("FILMLAB_STD_", "35mm-4p-5d");
    append(rows.table, record_of({"KJ1234560010+00", 10}));
    EXPECT_EQ(read_row(rows.table, 0).keycode_in.type(), five_digits);
    rows.table.set_field(0, hf_keycode_missing, 1);
    EXPECT_EQ(read_row(rows.table, 0).keycode_in.type(), edlstr_to_label_type("35mm-4p-4d"));
    EXPECT_EQ(read_row(rows.table, 0).bracket_in.type(), five_digits);
}

TEST(ChangeRecordTest, ARowReadsBackAsItWasWritten) {
    FilmEvent event{"KJ1234560010+05", 33, 7, 2, -1.5, "A001", "D", 12, "F", 8, "AA010010+00"};
    event.behind = "KJ1234560001+00";
    event.ahead_of = "KL0000010002+00";
    event.timecode = 86399;
    EventTable rows({event});
    append(rows.table, read_row(rows.table, 0));
    EXPECT_EQ(line_of(rows.table, 1), line_of(rows.table, 0));
    EXPECT_EQ(read_row(rows.table, 1).prim_tc_out.type(), label_tc_24);
}

TEST(ChangeRecordTest, LongTextsAreCutToTheirMembers) {
    EventTable rows({{"KJ1234560010+00", 10}});
    rows.table.set_field(0, hf_cam_reel, "0123456789");
    rows.table.set_field(0, hf_record_type, "DUXY");
    rows.table.set_field(0, hf_scene, std::string(40, 's').c_str());
    rows.table.set_field(0, hf_description, std::string(200, 'd').c_str());
    rows.table.set_field(0, hf_shot_name, std::string(1100, 'n').c_str());
    const ChangeRecord read = read_row(rows.table, 0);
    EXPECT_STREQ(read.cam_reel, "012345678");
    EXPECT_STREQ(read.record_type, "DUX");
    EXPECT_EQ(std::string(read.scene).size(), 29u);
    EXPECT_EQ(std::string(read.description).size(), 139u);
    EXPECT_EQ(read.shot_name.size(), 1023u);
}

} // namespace
