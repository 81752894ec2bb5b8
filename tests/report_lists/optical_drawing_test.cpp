#include "reports/optical_drawing.h"
#include "tests/report_lists/drawing_text.h"
#include "tests/reports/list_fixture.h"

namespace {

/// Draws on rolls whose state a test sets and reads.
class OpticalDrawing : public ListTest {
protected:
    /// A shot of 32 frames from frame 16 on.
    static cut_report plain(const char* name = "1A") {
        cut_report cut;
        cut.edit_in = 16;
        cut.edit_out = 48;
        cut.shot_name = fromUTF8(name, -1);
        put_text(cut.cam_reel, "A001");
        cut.cut_key_in = key("KJ1234560010+00");
        cut.cut_key_out = key("KJ1234560012+00");
        return cut;
    }
    /// Dissolves out over its last 8 frames.
    static cut_report outgoing() {
        cut_report cut = plain("1A");
        put_text(cut.fx_op_out, "D");
        put_text(cut.fx_name_out, "Dissolve");
        cut.fx_len_out = 8;
        return cut;
    }
    /// Comes in over its first 8 frames, beside the end of `outgoing`.
    static cut_report incoming() {
        cut_report cut = plain("2B");
        cut.edit_in = 40;
        cut.edit_out = 80;
        put_text(cut.cam_reel, "B002");
        cut.cut_key_in = key("KK7777770100+00");
        cut.cut_key_out = key("KK7777770102+08");
        put_text(cut.fx_op_in, "D");
        cut.fx_len_in = 8;
        return cut;
    }

    std::string draw(cut_report cut) {
        return printed([&](report& out) {
            print_optical_shot(out, cut, side, left_end, right_end, first_on_layer, layer, more_on_track);
        });
    }
    std::string draw(cut_report from, cut_report to) {
        return printed([&](report& out) {
            print_optical_transition(out, from, to, side, left_end, right_end, first_on_layer, layer);
        });
    }

    int side = 0;
    int left_end = 16;
    int right_end = 16;
    int first_on_layer = 0;
    int layer = 1;
    int more_on_track = 0;
};

const std::string left_spacer_32 = "     -----SPACER 32 FRAMES-----";
const std::string right_spacer_32 = "      -----SPACER 32 FRAMES-----";

TEST_F(OpticalDrawing, TheFirstShotPrintsTheRollHeadsAndAloneHasAColonBesideIt) {
    first_on_layer = 1;
    EXPECT_EQ(draw(plain()), roll_heads('A', 'B') + row("SHOT: 1A roll: A001", right_colon) +
                                 row("length: 32", right_colon) + row("begin: 0001+00   KJ1234560010+00", right_colon) +
                                 row("end:   0002+15           0011+15", right_colon));
    EXPECT_EQ(side, 1);
    EXPECT_EQ(left_end, 48);
    EXPECT_EQ(right_end, 16);
}

TEST_F(OpticalDrawing, IsTwoColumnsOfText) {
    first_on_layer = 1;
    EXPECT_EQ(draw(plain()), "               A-ROLL                                    B-ROLL\n"
                             "-----------------------------------          ----------------------------------\n"
                             "\n"
                             "SHOT: 1A roll: A001                                        :\n"
                             "length: 32                                                 :\n"
                             "begin: 0001+00   KJ1234560010+00                           :\n"
                             "end:   0002+15           0011+15                           :\n");
}

TEST_F(OpticalDrawing, TheFirstShotHasASpacerBesideItIfMoreFollows) {
    first_on_layer = more_on_track = 1;
    EXPECT_NE(draw(plain()).find(row("SHOT: 1A roll: A001", right_spacer_32)), std::string::npos);
    EXPECT_EQ(right_end, 48);
}

TEST_F(OpticalDrawing, ALaterShotOnTheLeftStandsBelowColons) {
    EXPECT_EQ(draw(plain()), colons() + colons() + row("SHOT: 1A roll: A001", right_spacer_32) +
                                 row("length: 32", right_colon) + row("begin: 0001+00   KJ1234560010+00", right_colon) +
                                 row("end:   0002+15           0011+15", right_colon));
    EXPECT_EQ(side, 1);
    EXPECT_EQ(left_end, 48);
    EXPECT_EQ(right_end, 48);
}

TEST_F(OpticalDrawing, ALaterShotOnTheRightStandsBelowColons) {
    side = 1;
    EXPECT_EQ(draw(plain()), colons() + colons() + row(left_spacer_32, "  SHOT: 1A roll: A001") +
                                 row(left_colon, "  length: 32") +
                                 row(left_colon, "  begin: 0001+00   KJ1234560010+00") +
                                 row(left_colon, "  end:   0002+15           0011+15"));
    EXPECT_EQ(side, 0);
    EXPECT_EQ(left_end, 48);
    EXPECT_EQ(right_end, 48);
}

TEST_F(OpticalDrawing, AGapOnTheShotsOwnRollIsASpacer) {
    left_end = 10;
    EXPECT_EQ(draw(plain()).substr(0, 200), (colons() + row("     -----SPACER 6 FRAMES-----", right_colon) + colons() +
                                             row("SHOT: 1A roll: A001", right_spacer_32))
                                                .substr(0, 200));
    side = 1;
    left_end = 16;
    right_end = 15;
    EXPECT_EQ(draw(plain()).find(colons() + row(left_colon, "      -----SPACER 1 FRAMES-----") + colons()), 0u);
}

TEST_F(OpticalDrawing, NoGapIsNeverASpacer) {
    left_end = 17;
    EXPECT_EQ(draw(plain()).find(colons() + colons() + "SHOT"), 0u);
    side = 1;
    right_end = 1000;
    EXPECT_EQ(draw(plain()).find(colons() + colons() + "     -----SPACER"), 0u);
}

TEST_F(OpticalDrawing, AFirstShotOnTheRightFillsTheLeftRollAllTheSame) {
    first_on_layer = side = 1;
    EXPECT_EQ(draw(plain()), roll_heads('A', 'B') + row(left_colon, "  SHOT: 1A roll: A001") +
                                 row(left_colon, "  length: 32") +
                                 row(left_colon, "  begin: 0001+00   KJ1234560010+00") +
                                 row(left_colon, "  end:   0002+15           0011+15"));
    EXPECT_EQ(left_end, 48);
    EXPECT_EQ(right_end, 16);
    side = more_on_track = 1;
    EXPECT_NE(draw(plain()).find(row("     -----SPACER 0 FRAMES-----", "  SHOT: 1A roll: A001")), std::string::npos);
}

TEST_F(OpticalDrawing, ClipEffectsAndSpeedsStandBelowTheirShot) {
    cut_report cut = plain();
    cut.speed = 1.5;
    cut.utr_fx_present = 1;
    put_text(cut.utr_fx_name, "A name of more than 25 bytes");
    EXPECT_NE(draw(cut).find(row("length: 32  **SPEED 150%**", right_colon) +
                             row("** clip FX: A name of more than 25 by **", right_colon) + "begin: "),
              std::string::npos);
    side = 1;
    EXPECT_NE(draw(cut).find(row(left_colon, "  length: 32  **SPEED 150%**") +
                             row(left_colon, "  ** clip FX: A name of more than 25 by **")),
              std::string::npos);
}

TEST_F(OpticalDrawing, ASpeedThatIsHardlyOffIsNotShown) {
    cut_report cut = plain();
    cut.speed = 1.0000005;
    EXPECT_EQ(draw(cut).find("SPEED"), std::string::npos);
    cut.speed = 0.999998;
    EXPECT_NE(draw(cut).find("length: 32  **SPEED 99%**"), std::string::npos);
    cut.speed = 0.0;
    EXPECT_NE(draw(cut).find("length: 32  **SPEED 0%**"), std::string::npos);
}

TEST_F(OpticalDrawing, AMissingKeyIsSaid) {
    cut_report cut = plain();
    cut.keycode_missing = 1;
    EXPECT_NE(draw(cut).find(row("begin: 0001+00   NO KEYKODE", right_colon) +
                             row("end:   0002+15   NO KEYKODE", right_colon)),
              std::string::npos);
}

TEST_F(OpticalDrawing, InFramesPositionsHaveSixDigits) {
    options().edit_units = 1;
    EXPECT_NE(draw(plain()).find(row("begin:  000016   KJ1234560010+00", right_colon) +
                                 row("end:    000047           0011+15", right_colon)),
              std::string::npos);
}

TEST_F(OpticalDrawing, LongNamesAndRollsAreCut) {
    cut_report cut = plain("A name of many letters");
    first_on_layer = 1;
    EXPECT_NE(draw(cut).find(row("SHOT: A name of m roll: A001", right_colon)), std::string::npos);
}

TEST_F(OpticalDrawing, ABarBehindALeftShotsRollTakesNothingOfTheOtherColumn) {
    cut_report cut = plain();
    put_text(cut.cam_reel, "A00|");
    first_on_layer = 1;
    EXPECT_NE(draw(cut).find(row("SHOT: 1A roll: A00", right_colon)), std::string::npos);
}

TEST_F(OpticalDrawing, TheSecondLayerHasRollsOfItsOwn) {
    first_on_layer = 1;
    layer = 2;
    EXPECT_EQ(draw(plain()).find(roll_heads('C', 'D')), 0u);
}

const std::string left_key_lines = row("start OUT:0002+08 KJ1234560011+08", "  start IN:0002+08 KK7777770100+00") +
                                   row("full  OUT:0002+15         0011+15", "  full  IN:0002+15         0100+07");
const std::string right_key_lines = row("start IN:0002+08 KK7777770100+00", "  start OUT:0002+08 KJ1234560011+08") +
                                    row("full  IN:0002+15         0100+07", "  full  OUT:0002+15         0011+15");
const std::string fx_block = row(left_vee, right_vee) + "   *Dissolve*  FX start 0002+08   FX end 0002+15   FX len 8\n"
                                                        "                         ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n";

TEST_F(OpticalDrawing, ATransitionRunsTheColumnsTogether) {
    first_on_layer = 1;
    EXPECT_EQ(draw(outgoing(), incoming()),
              "               A-ROLL                                    B-ROLL\n"
              "-----------------------------------          ----------------------------------\n"
              "\n"
              "SHOT: 1A roll: A001                           -----SPACER 24 FRAMES-----\n"
              "length: 32                                                 :\n"
              "begin:    0001+00 KJ1234560010+00                          :\n"
              "                  V                                        :\n"
              "                  V                       SHOT: 2B roll: B002\n"
              "                  V                       length: 40\n"
              "                  V                                        V\n"
              "   *Dissolve*  FX start 0002+08   FX end 0002+15   FX len 8\n"
              "                         ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n"
              "start OUT:0002+08 KJ1234560011+08         start IN:0002+08 KK7777770100+00\n"
              "full  OUT:0002+15         0011+15         full  IN:0002+15         0100+07\n"
              "                  :                       end:     0004+15         0102+07\n");
    EXPECT_EQ(side, 0) << "the incoming shot ends, so the drawing stays on the left";
    EXPECT_EQ(left_end, 48);
    EXPECT_EQ(right_end, 80);
}

TEST_F(OpticalDrawing, ATransitionFromTheRightMirrorsTheColumns) {
    side = first_on_layer = 1;
    EXPECT_EQ(draw(outgoing(), incoming()),
              roll_heads('A', 'B') + row("     -----SPACER 24 FRAMES-----", "  SHOT: 1A roll: A001") +
                  row(left_colon, "  length: 32") + row(left_colon, "  begin:    0001+00 KJ1234560010+00") +
                  row(left_colon, right_vee) + row("SHOT: 2B roll: B002", right_vee) + row("length: 40", right_vee) +
                  fx_block + right_key_lines + row("end:     0004+15         0102+07", right_colon));
    EXPECT_EQ(side, 1);
    EXPECT_EQ(right_end, 48);
    EXPECT_EQ(left_end, 80);
}

TEST_F(OpticalDrawing, ATransitionFurtherDownHasColonsAboveItsHead) {
    right_end = 40;
    EXPECT_EQ(draw(outgoing(), incoming()),
              colons() + row("SHOT: 1A roll: A001", right_colon) + row("length: 32", right_colon) +
                  row("begin:    0001+00 KJ1234560010+00", right_colon) + row(left_vee, right_colon) +
                  row(left_vee, "  SHOT: 2B roll: B002") + row(left_vee, "  length: 40") + fx_block + left_key_lines +
                  row(left_colon, "  end:     0004+15         0102+07"));
    side = 1;
    left_end = 41;
    EXPECT_EQ(draw(outgoing(), incoming()).find(colons() + row(left_colon, "  SHOT: 1A roll: A001")), 0u);
}

TEST_F(OpticalDrawing, AShotThatCameInByATransitionIsNotDrawnAgain) {
    cut_report middle = outgoing();
    put_text(middle.fx_op_in, "D");
    right_end = 37;
    EXPECT_EQ(draw(middle, incoming())
                  .find(row(left_vee, right_colon) + row(left_vee, "      -----SPACER 3 FRAMES-----") +
                        row(left_vee, right_colon) + row(left_vee, "  SHOT: 2B roll: B002")),
              0u);
    side = 1;
    left_end = 39;
    EXPECT_EQ(draw(middle, incoming())
                  .find(row(left_colon, right_vee) + row("     -----SPACER 1 FRAMES-----", right_vee) +
                        row(left_colon, right_vee) + row("SHOT: 2B roll: B002", right_vee)),
              0u);
}

TEST_F(OpticalDrawing, WithoutAGapAContinuedTransitionHasNoSpacer) {
    cut_report middle = outgoing();
    put_text(middle.fx_op_in, "D");
    right_end = 40;
    EXPECT_EQ(
        draw(middle, incoming())
            .find(row(left_vee, right_colon) + row(left_vee, right_colon) + row(left_vee, "  SHOT: 2B roll: B002")),
        0u);
    side = 1;
    left_end = 41;
    EXPECT_EQ(
        draw(middle, incoming())
            .find(row(left_colon, right_vee) + row(left_colon, right_vee) + row("SHOT: 2B roll: B002", right_vee)),
        0u);
}

TEST_F(OpticalDrawing, AShotWithATransitionInIsDrawnWhenItBeginsALayer) {
    cut_report middle = outgoing();
    put_text(middle.fx_op_in, "D");
    first_on_layer = 1;
    EXPECT_EQ(draw(middle, incoming()).find(roll_heads('A', 'B') + "SHOT: 1A roll: A001"), 0u);
}

TEST_F(OpticalDrawing, ASideIsChangedOnlyWhenTheIncomingShotGoesOut) {
    cut_report next = incoming();
    put_text(next.fx_op_out, "D");
    const std::string text = draw(outgoing(), next);
    EXPECT_EQ(text.find("end:"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - left_key_lines.size()), left_key_lines);
    EXPECT_EQ(side, 1);
    draw(outgoing(), next);
    EXPECT_EQ(side, 0);
}

TEST_F(OpticalDrawing, ClipEffectsOfATransitionAreSpeltByTheirShot) {
    cut_report from = outgoing();
    cut_report to = incoming();
    from.speed = 0.5;
    to.speed = 2.0;
    from.utr_fx_present = to.utr_fx_present = 1;
    put_text(from.utr_fx_name, "Blur");
    put_text(to.utr_fx_name, "Glow");
    const std::string left = draw(from, to);
    EXPECT_NE(left.find(row("length: 32  **SPEED 50%**", right_colon) + row("** clip FX: Blur **", right_colon) +
                        row("begin:    0001+00 KJ1234560010+00", right_colon)),
              std::string::npos);
    EXPECT_NE(left.find(row(left_vee, "  length: 40  **SPEED 200%**") + row(left_vee, "  ** Clip FX: Glow **") +
                        row(left_vee, right_vee)),
              std::string::npos);
    side = 1;
    const std::string right = draw(from, to);
    EXPECT_NE(right.find(row(left_colon, "  length: 32  **SPEED 50%**") + row(left_colon, "  ** clip FX: Blur **") +
                         row(left_colon, "  begin:    0001+00 KJ1234560010+00")),
              std::string::npos);
    EXPECT_NE(right.find(row("length: 40  **SPEED 200%**", right_vee) + row("** Clip FX: Glow **", right_vee) +
                         row(left_vee, right_vee)),
              std::string::npos);
}

TEST_F(OpticalDrawing, TheKeysOfATransitionFollowTheSpeedOfTheirShot) {
    cut_report from = outgoing();
    cut_report to = incoming();
    from.speed = 0.5; // 8 frames of the edit are 4 of film, and the last is half a frame
    to.speed = 2.0;   // the last of 7 more frames of the edit is the 14th of film
    const std::string text = draw(from, to);
    EXPECT_NE(text.find(row("start OUT:0002+08 KJ1234560011+12", "  start IN:0002+08 KK7777770100+00") +
                        row("full  OUT:0002+15         0012+00.3", "  full  IN:0002+15         0100+14")),
              std::string::npos)
        << text;
}

TEST_F(OpticalDrawing, MissingKeysOfATransitionAreSaidBySide) {
    cut_report from = outgoing();
    from.keycode_missing = 1;
    EXPECT_NE(draw(from, incoming())
                  .find(row("start OUT:0002+08 NO KEYKODE", "  start IN:0002+08 KK7777770100+00") +
                        row("full  OUT:0002+15 NO KEYKODE", "  full  IN:0002+15         0100+07")),
              std::string::npos);
    cut_report to = incoming();
    to.keycode_missing = 1;
    const std::string text = draw(outgoing(), to);
    EXPECT_NE(text.find(row("start OUT:0002+08 KJ1234560011+08", "  start IN:0002+08 NO KEYKODE") +
                        row("full  OUT:0002+15         0011+15", "  full  IN:0002+15 NO KEYKODE")),
              std::string::npos);
    EXPECT_NE(text.find("  end:     0004+15 NO KEYKODE\n"), std::string::npos);
}

} // namespace
