#include "tests/changelist/moves_fixture.h"

#include <algorithm>
#include <map>

namespace {

class MergeRowsTest : public MovesTest {
protected:
    void merge() { EXPECT_EQ(merge_rows(changes, logger), nullptr); }
    std::string key_out(unsigned row) const { return field(changes, row, hf_keycode_out); }

    ChangeRecord kept(Place old_place, Place new_place, int length, const char* key) const {
        ChangeRecord row = matched(old_place, new_place, length, key);
        put_text(row.record_type, "MO");
        return row;
    }
};

TEST_F(MergeRowsTest, PiecesThatAreNeighboursInBothCutsBecomeOneRow) {
    add(kept({1, 0}, {1, 10}, 20, "KJ1234560100+00"));
    add(kept({1, 20}, {1, 30}, 12, "KJ1234560101+04"));
    merge();
    ASSERT_EQ(kinds(), Lines{"MO 1:0>1:10"});
    EXPECT_EQ(rows()[0].edit_length, 32);
    EXPECT_EQ(field(changes, 0, hf_keycode_in), "KJ1234560100+00");
    EXPECT_EQ(key_out(0), "KJ1234560101+15");
    EXPECT_TRUE(logger.said(toUTF8(resourceStrW(10269)).c_str(), 0));
}

TEST_F(MergeRowsTest, NeighboursInTheOldCutAloneStayTwoRows) {
    add(kept({1, 0}, {1, 10}, 20, "KJ1234560100+00"));
    add(kept({1, 20}, {1, 31}, 12, "KJ1234560101+04"));
    merge();
    EXPECT_EQ(kinds(), (Lines{"MO 1:0>1:10", "MO 1:20>1:31"}));
    EXPECT_EQ(key_out(0), "KJ1234560101+03");
    EXPECT_EQ(key_out(1), "KJ1234560101+15");
}

TEST_F(MergeRowsTest, NeighboursInTheNewCutAloneStayTwoRows) {
    add(kept({1, 0}, {1, 10}, 20, "KJ1234560100+00"));
    add(kept({1, 21}, {1, 30}, 12, "KJ1234560101+04"));
    merge();
    EXPECT_EQ(kinds(), (Lines{"MO 1:0>1:10", "MO 1:21>1:30"}));
}

TEST_F(MergeRowsTest, NeighboursOfOtherKindsStayTwoRows) {
    add(moved("MF", {1, 0}, {1, 10}, 20));
    add(moved("MO", {1, 20}, {1, 30}, 20));
    merge();
    EXPECT_EQ(kinds(), (Lines{"MF 1:0>1:10", "MO 1:20>1:30"}));
}

TEST_F(MergeRowsTest, WhatIsGoneOrNewDoesntPartARun) {
    add(kept({1, 0}, {1, 0}, 20, "KJ1234560100+00"));
    add(gone({1, 5}, 10, "KJ1234560500+00"));
    add(kept({1, 20}, {1, 20}, 20, "KJ1234560101+04"));
    merge();
    EXPECT_EQ(kinds(), (Lines{"DU 1:5>1:0", "MO 1:0>1:0", "DC 1:5>1:0"}));
}

// What is read of it ends behind 14 letters, each time that a row is read and written back.
TEST_F(MergeRowsTest, ATimecodeThatIsLongerThanWhatIsReadOfItChanges) {
    const auto add_as = [&](const ChangeRecord& row) {
        add(row);
        dbrecord& added = *changes.get_record(changes.get_num_records() - 1);
        added.set_field(hf_prim_tc_std, "35mm-4p", true);
        added.set_field(hf_prim_tc_in, "KJ______0001+03", true);
        added.set_field(hf_prim_tc_out, "KJ______0001+10.4", true);
    };
    add_as(kept({1, 0}, {1, 10}, 20, "KJ1234560100+00"));
    add_as(kept({1, 20}, {1, 30}, 12, "KJ1234560101+04"));
    add_as(gone({1, 40}, 10, "KJ1234560200+00"));
    add_as(inserted({1, 50}, 10, "KJ1234560300+00"));
    merge();
    ASSERT_EQ(changes.get_num_records(), 4U);
    std::map<std::string, std::string> codes;
    for (unsigned row = 0; row < 4; ++row)
        codes[field(changes, row, hf_record_type)] =
            field(changes, row, hf_prim_tc_in) + " " + field(changes, row, hf_prim_tc_out);
    EXPECT_EQ(codes["MO"], "KJ______0001+00 KJ______0001+01");
    EXPECT_EQ(codes["I"], "KJ______0001+00 KJ______0001+01");
    EXPECT_EQ(codes["DU"], "KJ______0001+00 KJ______0001+01");
    EXPECT_EQ(codes["DC"], "KJ______0001+00 KJ______0001+00");
}

// Rows come from cuts whose film counts in other digits; what follows sorts them by their texts.
TEST_F(MergeRowsTest, EachRowHasTheFirstNumbersAsTheyAreRead) {
    const auto add_as = [&](const ChangeRecord& row, const char* key) {
        add(row);
        changes.get_record(changes.get_num_records() - 1)->set_field(hf_keycode_in, key, true);
    };
    add_as(kept({1, 0}, {1, 10}, 20, "KJ1234560100+00"), "KJ123456000100+00");
    add_as(gone({1, 30}, 10, "KJ1234560200+00"), "KJ123456000200+00");
    add_as(inserted({1, 40}, 10, "KJ1234560300+00"), "KJ123456000300+00");
    merge();
    ASSERT_EQ(changes.get_num_records(), 4U);
    std::vector<std::string> keys;
    for (unsigned row = 0; row < 4; ++row)
        keys.push_back(field(changes, row, hf_keycode_in));
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(keys,
              (std::vector<std::string>{"KJ1234560100+00", "KJ1234560200+00", "KJ1234560200+00", "KJ1234560300+00"}));
}

TEST_F(MergeRowsTest, AMissingKeyInsideARunShowsInItsOut) {
    ChangeRecord missing = kept({1, 20}, {1, 20}, 12, "KJ1234560101+04");
    missing.keycode_missing = 1;
    add(kept({1, 0}, {1, 0}, 20, "KJ1234560100+00"));
    add(missing);
    merge();
    ASSERT_EQ(kinds(), Lines{"MO 1:0>1:0"});
    EXPECT_EQ(key_out(0), "????????0000+00");
    EXPECT_EQ(field(changes, 0, hf_keycode_in), "KJ1234560100+00");
    EXPECT_EQ(field(changes, 0, hf_keycode_missing), "0");
}

TEST_F(MergeRowsTest, ALoneRowWithAMissingKeyCountsOn) {
    ChangeRecord missing = kept({1, 20}, {1, 20}, 12, "KJ1234560101+04");
    missing.keycode_missing = 1;
    add(missing);
    merge();
    EXPECT_EQ(key_out(0), "KJ1234560101+15");
}

TEST_F(MergeRowsTest, ARunEndsWithTheInkAndTimecodeOfItsLastPiece) {
    const auto with_codes = [](ChangeRecord row, const char* ink, const char* in, const char* out) {
        row.inkcode_in.set_type(label_t_to_ink_label_t(label_key_35mm_4p));
        row.inkcode_in.set_sample(ink);
        for (LabelPoint* point : {&row.prim_tc_in, &row.prim_tc_out})
            point->set_type(label_tc_24);
        row.prim_tc_in.set_sample(in);
        row.prim_tc_out.set_sample(out);
        return row;
    };
    add(with_codes(kept({1, 0}, {1, 0}, 16, "KJ1234560100+00"), "AB120010+00", "01:00:00:00", "01:00:00:16"));
    add(with_codes(kept({1, 16}, {1, 16}, 8, "KJ1234560101+00"), "AB120099+00", "02:00:00:00", "02:00:00:08"));
    merge();
    ASSERT_EQ(changes.get_num_records(), 1u);
    EXPECT_EQ(field(changes, 0, hf_inkcode_in), "AB120010+00");
    EXPECT_EQ(field(changes, 0, hf_inkcode_out), "AB120099+07");
    EXPECT_EQ(field(changes, 0, hf_prim_tc_in), "01:00:00:00");
    EXPECT_EQ(field(changes, 0, hf_prim_tc_out), "02:00:00:08");
}

TEST_F(MergeRowsTest, NewMaterialGetsItsOut) {
    ChangeRecord row = inserted({1, 0}, 17, "KJ1234560100+00");
    row.keycode_out.set_sample("KJ1234569999+00");
    add(row);
    merge();
    EXPECT_EQ(key_out(0), "KJ1234560101+00");
}

TEST_F(MergeRowsTest, TransitionsStayAsTheyAre) {
    ChangeRecord row = matched({1, 0}, {1, 0}, 17);
    put_text(row.record_type, "FX");
    row.keycode_out.set_sample("KJ1234569999+00");
    add(row);
    merge();
    EXPECT_EQ(key_out(0), "KJ1234569999+00");
}

TEST_F(MergeRowsTest, AdjacentGonePiecesMakeOneRowAtTheEndAndStay) {
    add(gone({1, 100}, 10, "KJ1234560100+00"));
    add(gone({1, 110}, 20, "KJ1234560200+00"));
    add(gone({1, 130}, 30, "KJ1234560300+00"));
    add(gone({2, 160}, 5, "KJ1234560400+00"));
    merge();
    EXPECT_EQ(kinds(),
              (Lines{"DU 1:100>1:0", "DU 1:110>1:0", "DU 1:130>1:0", "DU 2:160>2:0", "DC 1:100>1:0", "DC 2:160>2:0"}));
    EXPECT_EQ(rows()[4].edit_length, 60);
    EXPECT_EQ(field(changes, 4, hf_keycode_in), "KJ1234560100+00");
    EXPECT_EQ(key_out(4), "KJ1234560301+13");
    EXPECT_EQ(key_out(5), "KJ1234560400+04");
}

TEST_F(MergeRowsTest, GonePiecesWithAGapBetweenAreTwoSteps) {
    add(gone({1, 100}, 10));
    add(gone({1, 111}, 10));
    merge();
    EXPECT_EQ(kinds(), (Lines{"DU 1:100>1:0", "DU 1:111>1:0", "DC 1:100>1:0", "DC 1:111>1:0"}));
}

TEST_F(MergeRowsTest, AMissingKeyInsideAGapShowsInItsOut) {
    ChangeRecord missing = gone({1, 110}, 12, "KJ1234560101+04");
    missing.keycode_missing = 1;
    add(gone({1, 100}, 10, "KJ1234560100+00"));
    add(missing);
    merge();
    ASSERT_EQ(kinds(), (Lines{"DU 1:100>1:0", "DU 1:110>1:0", "DC 1:100>1:0"}));
    EXPECT_EQ(key_out(1), "KJ1234560101+15");
    EXPECT_EQ(key_out(2), "????????0000+00");
}

} // namespace
