#include "host/fixed_text.h"
#include "host/recdb.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <memory>
#include <string>

namespace {

class CutRecord : public testing::Test {
protected:
    dbrecord& row() { return *table.get_record(0); }
    void set(int field, const char* text) { row().set_field(field, text, true); }
    std::string field(int number) {
        const char* text = row().get_field(static_cast<unsigned short>(number));
        return text ? text : "<null>";
    }
    cut_s read() {
        cut_s cut;
        cut.from_record(row());
        return cut;
    }

    static LabelPoint key(const char* text, int kind = 10) {
        LabelPoint point(0, static_cast<label_t>(kind));
        point.set_sample(text);
        return point;
    }

    RecordingLogger logger;
    cutdb table{&logger};
    const int first = table.add_records(1);
};

TEST_F(CutRecord, ANewOneIsBlank) {
    const cut_s cut;
    EXPECT_EQ(cut.event, 0);
    EXPECT_EQ(cut.edit_out, 0);
    EXPECT_EQ(cut.direction, 1);
    EXPECT_EQ(cut.speed, 1.0);
    EXPECT_FALSE(cut.keycode_in.is_valid());
    EXPECT_FALSE(cut.inkcode_out.is_valid());
    EXPECT_FALSE(cut.prim_tc.is_valid());
    EXPECT_EQ(cut.prim_tc.get_MediumRoll(), invalid_edit_label()->get_MediumRoll());
    EXPECT_STREQ(cut.cam_reel, "");
}

TEST_F(CutRecord, ANewOneForPrintingEndsAtFrameOne) { EXPECT_EQ(cut_report().edit_out, 1); }

TEST_F(CutRecord, InvalidPointsLeaveTheirFieldsEmpty) {
    EXPECT_EQ(cut_s().to_record(row()), 0);
    for (const int number : {17, 18, 20, 21, 22, 23, 34})
        EXPECT_EQ(field(number), "<null>") << number;
    EXPECT_EQ(field(cf_speed), "1");
    EXPECT_EQ(field(cf_edit_out), "0");
}

TEST_F(CutRecord, TheKindIsWrittenWithTheInPointAlone) {
    cut_s cut;
    cut.keycode_out = key("KJ1234560123+05");
    cut.to_record(row());
    EXPECT_EQ(field(cf_keycode_out), "KJ1234560123+05");
    EXPECT_EQ(field(cf_keylabeltype), "<null>");
    cut.keycode_in = cut.keycode_out;
    cut.to_record(row());
    EXPECT_EQ(field(cf_keylabeltype), "35mm-4p");
}

TEST_F(CutRecord, ReadsAKeyRunningBackward) {
    set(cf_keylabeltype, "35mm-4p");
    set(cf_keycode_in, "KJ1234560010+00");
    set(cf_keycode_out, "KJ1234560009+00");
    EXPECT_EQ(read().direction, -1);
    set(cf_keycode_out, "");
    EXPECT_EQ(read().direction, 1);
    EXPECT_FALSE(read().keycode_out.is_valid());
}

TEST_F(CutRecord, DirectionIsTakenAnewForEachRow) {
    set(cf_keylabeltype, "35mm-4p");
    set(cf_keycode_in, "KJ1234560010+00");
    set(cf_keycode_out, "KJ1234560009+00");
    cut_s cut = read();
    set(cf_keycode_in, "");
    cut.from_record(row());
    EXPECT_EQ(cut.direction, 1);
}

TEST_F(CutRecord, AFieldWithoutTextLeavesItsMember) {
    cut_s cut;
    cut.event = 7;
    cut.speed = 2.0;
    put_text(cut.cam_reel, "A001");
    cut.shot_name = fromUTF8("before", -1);
    cut.from_record(row());
    EXPECT_EQ(cut.event, 7);
    EXPECT_EQ(cut.speed, 2.0);
    EXPECT_STREQ(cut.cam_reel, "A001");
    EXPECT_TRUE(cut.shot_name.empty()) << "the name goes through a buffer that is empty before";
}

TEST_F(CutRecord, TextsAreCutToTheirMembers) {
    const std::string endless(2000, 'x');
    for (int number = 0; number < cf_count; ++number)
        set(number, endless.c_str());
    const cut_s cut = read();
    EXPECT_EQ(std::string(cut.optical_name).size(), 30U);
    EXPECT_EQ(std::string(cut.src_reelid).size(), 8U);
    EXPECT_EQ(std::string(cut.cam_reel).size(), 8U);
    EXPECT_EQ(std::string(cut.fx_op_in).size(), 2U);
    EXPECT_EQ(std::string(cut.fx_mod_out).size(), 5U);
    EXPECT_EQ(std::string(cut.fx_name_out).size(), 30U);
    EXPECT_EQ(std::string(cut.scene).size(), 23U);
    EXPECT_EQ(std::string(cut.description).size(), 127U);
    EXPECT_EQ(cut.shot_name.size(), 1023U);
    EXPECT_EQ(cut.event, 0);
    EXPECT_EQ(cut.speed, 0.0);
}

TEST_F(CutRecord, OnlyThePrimaryTimecodeTakesItsMediumFromTheTable) {
    for (const int number : {cf_prim_tc_medium, cf_aud_tc_medium, cf_src24P_tc_medium})
        set(number, "99");
    const cut_s cut = read();
    EXPECT_EQ(cut.prim_tc.get_MediumRoll(), MediumRollIdent(99, 2));
    EXPECT_EQ(cut.aud_tc.get_MediumRoll(), MediumRollIdent(4, 3));
    EXPECT_EQ(cut.src24P_tc.get_MediumRoll(), MediumRollIdent(13, 1));
}

TEST_F(CutRecord, TheSoundTimecodeLiesInItsNeighboursColumns) {
    set(39, "01:00:00:00");
    set(40, "01:00:10:00");
    set(41, "24fps");
    const cut_s cut = read();
    EXPECT_STREQ(cut.aud_tc.get_string(0), "01:00:00:00");
    EXPECT_EQ(cut.aud_tc.end, 240);
    EXPECT_STREQ(cut.aud_tc.get_string(cut.aud_tc.end), "01:00:10:00");
}

TEST_F(CutRecord, TimecodesAreWrittenWithTheirEnds) {
    cut_s cut;
    cut.prim_tc.set_type(label_tc_24);
    cut.prim_tc.set_MediumRoll(MediumRollIdent(8, 2));
    cut.prim_tc.set_start("10:00:00:00");
    cut.prim_tc.end = 48;
    cut.to_record(row());
    EXPECT_EQ(field(cf_prim_tc_in), "10:00:00:00");
    EXPECT_EQ(field(cf_prim_tc_out), "10:00:02:00");
    EXPECT_EQ(field(cf_prim_tc_std), "24fps");
    EXPECT_EQ(field(cf_prim_tc_medium), "8");
    EXPECT_EQ(field(cf_aud_tc_in), "<null>");
}

TEST_F(CutRecord, WritingOneForPrintingStoresTheEndOneHigher) {
    cut_report cut;
    cut.edit_out = 10;
    cut.utr_fx_present = 1;
    EXPECT_EQ(cut.to_record(row()), 0);
    EXPECT_EQ(field(cf_edit_out), "11");
    EXPECT_EQ(cut.edit_out, 10);
}

TEST_F(CutRecord, TheFlagColumnIsNeitherReadNorWritten) {
    set(cf_flags, "T");
    cut_s cut = read();
    cut.to_record(row());
    EXPECT_EQ(field(cf_flags), "T");
}

TEST_F(CutRecord, SpeedReadsWhatTheCLocaleReads) {
    const std::pair<const char*, double> speeds[] = {{"0.5", 0.5},   {" -1.25x", -1.25}, {"0x1p-1", 0.5},
                                                     {"1e2", 100.0}, {"1,5", 1.0},       {"fast", 0.0}};
    for (const auto& [text, speed] : speeds) {
        set(cf_speed, text);
        EXPECT_EQ(read().speed, speed) << text;
    }
}

TEST_F(CutRecord, FilmThatStandsStillRunsForward) {
    cut_s cut;
    cut.keycode_in = cut.keycode_out = key("KJ1234560010+00");
    cut.to_record(row());
    EXPECT_EQ(read().direction, 1);
    cut.keycode_out.set_sample(cut.keycode_in.sample - 1);
    cut.to_record(row());
    EXPECT_EQ(read().direction, -1);
}

TEST_F(CutRecord, AWholeRecordComesBackFromItsRow) {
    EXPECT_TRUE(rc::check([this](int event, int edit_in, int length, double speed, int key_start) {
        cut_s cut;
        cut.event = event;
        cut.edit_in = edit_in;
        cut.fx_len_out = length;
        cut.speed = speed;
        cut.keycode_in = key("AB1234560000+00", 22);
        cut.keycode_in.set_sample(key_start % 1000000);
        cut.keycode_out = cut.keycode_in;
        put_text(cut.description, "two doors, one key");
        cut.shot_name = fromUTF8("caf\xC3\xA9", -1);
        cut.to_record(row());
        const cut_s again = read();
        RC_ASSERT(again.event == event);
        RC_ASSERT(again.edit_in == edit_in);
        RC_ASSERT(again.fx_len_out == length);
        RC_ASSERT(again.speed == speed);
        RC_ASSERT(again.keycode_in == cut.keycode_in);
        RC_ASSERT(again.keycode_out == cut.keycode_out);
        RC_ASSERT(std::string(again.description) == cut.description);
        RC_ASSERT(again.shot_name == cut.shot_name);
    }));
}

/// Any text of up to so many bytes, for a field of which a record may take fewer.
std::string any_text(int most) {
    return *rc::gen::resize(most, rc::gen::container<std::string>(rc::gen::element('K', 'J', '_', '0', '7', '+', '.',
                                                                                   ' ', '\xC3', '\xA9', '\xED')));
}

int any_sample() { return *rc::gen::oneOf(rc::gen::arbitrary<int>(), rc::gen::inRange(-500, 1000000)); }

/// Two points of one label, or blank ones.
void choose_points(LabelPoint& in, LabelPoint& out) {
    if (*rc::gen::element(0, 0, 1)) return;
    in = LabelPoint(any_sample(), static_cast<label_t>(*rc::gen::inRange(0, 48)));
    in.set_prefix(any_text(8).c_str());
    out = in;
    out.set_sample(any_sample());
}

void choose_timecode(EditLabel& label) {
    label.set_MediumRoll(MediumRollIdent(*rc::gen::inRange(1, 30), *rc::gen::inRange(1, 4)));
    label.set_type(static_cast<label_t>(*rc::gen::inRange(0, 48)));
    label.set_start(*rc::gen::inRange(-100, 3000000));
    label.end = *rc::gen::inRange(-100, 3000000);
    label.end_set = 1;
}

/// A record as it might be made of any edit.
cut_s any_record() {
    cut_s cut;
    for (std::int32_t* number :
         {&cut.event, &cut.optical_ref, &cut.edit_in, &cut.edit_out, &cut.fx_len_in, &cut.special})
        *number = *rc::gen::arbitrary<std::int32_t>();
    cut.speed = *rc::gen::arbitrary<double>();
    put_text(cut.cam_reel, any_text(9));
    put_text(cut.fx_op_out, any_text(3));
    put_text(cut.description, any_text(200));
    cut.shot_name = fromUTF8(any_text(*rc::gen::element(9, 9, 1200)).c_str(), -1);
    choose_points(cut.keycode_in, cut.keycode_out);
    choose_points(cut.inkcode_in, cut.inkcode_out);
    for (EditLabel* label : {&cut.prim_tc, &cut.aud_tc, &cut.src24P_tc})
        if (*rc::gen::arbitrary<bool>()) choose_timecode(*label);
    return cut;
}

std::string fields_of(const dbrecord& row) {
    std::string all;
    for (unsigned short number = 0; number < cf_count; ++number) {
        const char* text = row.get_field(number);
        all += text ? text : "<null>";
        all += '\n';
    }
    return all;
}

TEST_F(CutRecord, ARowThatIsRewrittenIsAsIfItWereReadAndWritten) {
    table.add_records(1);
    EXPECT_TRUE(rc::check([this] {
        dbrecord& other = *table.get_record(1);
        const std::unique_ptr<recdb> blank(new cutdb(&logger));
        blank->add_records(1);
        other = row() = *blank->get_record(0);
        any_record().to_record(row());
        other = row();
        cut_s again;
        again.from_record(row());
        again.to_record(row());
        rewrite_record(other);
        RC_ASSERT(fields_of(other) == fields_of(row()));
    }));
}

TEST_F(CutRecord, WhatListsReadIsWhatAWholeReadGives) {
    EXPECT_TRUE(rc::check([this] {
        any_record().to_record(row());
        const cut_s whole = read();
        cut_s listed = whole, film = whole;
        listed.read_listed(row());
        film.read_film(row());
        cut_s fresh;
        fresh.read_listed(row());
        for (const cut_s* cut : {&listed, &fresh, &film}) {
            RC_ASSERT(cut->keycode_in == whole.keycode_in);
            RC_ASSERT(cut->keycode_out == whole.keycode_out);
            RC_ASSERT(cut->direction == whole.direction);
            RC_ASSERT(cut->edit_out == whole.edit_out);
            RC_ASSERT(cut->special == whole.special);
            RC_ASSERT(cut->speed == whole.speed || whole.speed != whole.speed);
        }
        RC_ASSERT(fresh.inkcode_out == whole.inkcode_out);
        RC_ASSERT(fresh.shot_name == whole.shot_name);
        RC_ASSERT(std::string(fresh.cam_reel) == whole.cam_reel);
        RC_ASSERT(std::string(fresh.fx_op_out) == whole.fx_op_out);
        RC_ASSERT(fresh.event == whole.event);
        RC_ASSERT(!fresh.prim_tc.is_valid());
    }));
}

} // namespace
