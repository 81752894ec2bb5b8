// Widening of events by their transitions.

#include "host/fixed_text.h"
#include "host/recdb.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

constexpr int picture = 1;
constexpr int sound = 2;
constexpr int perforations = 4;

class PrintPositions : public testing::Test {
protected:
    PrintPositions() {
        stored.event = 1;
        stored.edit_in = 100;
        stored.edit_out = 150;
        stored.keycode_in = LabelPoint(4000, label_key_35mm_4p);
        stored.keycode_out = LabelPoint(4200, label_key_35mm_4p);
        stored.inkcode_in = LabelPoint(8000, static_cast<label_t>(43));
        stored.inkcode_out = LabelPoint(8200, static_cast<label_t>(43));
    }

    void incoming(const char* op, int length) {
        put_text(stored.fx_op_in, op);
        stored.fx_len_in = length;
    }
    void outgoing(const char* op, int length) {
        put_text(stored.fx_op_out, op);
        stored.fx_len_out = length;
    }
    cut_report load(int halves, int chan_type = picture, int audio_opticals = 0) {
        stored.to_record(*table.get_record(0));
        cut_report cut;
        cut.load(*table.get_record(0), halves, chan_type, audio_opticals);
        return cut;
    }

    RecordingLogger logger;
    cutdb table{&logger};
    const int first = table.add_records(1);
    cut_s stored;
};

TEST_F(PrintPositions, ACutPrintsAsItIsStored) {
    const cut_report cut = load(1);
    EXPECT_EQ(cut.edit_in, 100);
    EXPECT_EQ(cut.edit_out, 150);
    EXPECT_EQ(cut.cut_length, 50);
    EXPECT_EQ(cut.cut_key_in.sample, 4000);
    EXPECT_EQ(cut.cut_key_out.sample, 4200);
    EXPECT_EQ(cut.cut_ink_out.sample, 8200);
    EXPECT_EQ(cut.reduced, 0);
}

TEST_F(PrintPositions, AFadeKeepsItsWholeLength) {
    incoming("FI", 5);
    outgoing("FO", 7);
    for (const int halves : {0, 1}) {
        const cut_report cut = load(halves);
        EXPECT_EQ(cut.edit_in, 95);
        EXPECT_EQ(cut.edit_out, 157);
        EXPECT_EQ(cut.cut_key_in.sample, 4000 - 5 * perforations);
        EXPECT_EQ(cut.cut_key_out.sample, 4200 + 7 * perforations);
    }
}

TEST_F(PrintPositions, HalvesOfFiveAreTwoAndThree) {
    incoming("D", 5);
    outgoing("D", 5);
    const cut_report cut = load(1);
    EXPECT_EQ(cut.edit_in, 98);
    EXPECT_EQ(cut.edit_out, 153);
    EXPECT_EQ(cut.cut_length, 55);
    EXPECT_EQ(cut.cut_key_in.sample, 4000 - 2 * perforations);
    EXPECT_EQ(cut.cut_key_out.sample, 4200 + 3 * perforations);
    EXPECT_EQ(cut.cut_ink_in.sample, 8000 - 2 * perforations);
    EXPECT_EQ(cut.cut_ink_out.sample, 8200 + 3 * perforations);
}

TEST_F(PrintPositions, WithoutHalvesATransitionIsWholeOnBothSides) {
    incoming("D", 5);
    outgoing("D", 5);
    const cut_report cut = load(0);
    EXPECT_EQ(cut.edit_in, 95);
    EXPECT_EQ(cut.edit_out, 155);
}

TEST_F(PrintPositions, BlackTakesNothingOfADissolve) {
    stored.special = special_black;
    incoming("D", 8);
    outgoing("W", 8);
    const cut_report cut = load(1);
    EXPECT_EQ(cut.edit_in, 100);
    EXPECT_EQ(cut.cut_key_in.sample, 4000);
    EXPECT_EQ(cut.edit_out, 158) << "of other transitions it takes all";
    EXPECT_EQ(load(0).edit_in, 92);
}

TEST_F(PrintPositions, SoundIsNotWidenedButItsEndMovesByTheWholeLength) {
    stored.edit_out = stored.edit_in;
    incoming("D", 8);
    outgoing("D", 8);
    stored.speed = 2.0;
    const cut_report cut = load(1, sound);
    EXPECT_EQ(cut.edit_in, 100);
    EXPECT_EQ(cut.edit_out, 100);
    EXPECT_EQ(cut.reduced, 0);
    EXPECT_EQ(cut.cut_key_out.sample, 4200 + 8 * perforations);
    EXPECT_EQ(cut.cut_key_in.sample, 4000 - 8 * perforations);
}

TEST_F(PrintPositions, SoundWithOpticalsIsWidened) {
    incoming("D", 8);
    EXPECT_EQ(load(1, sound, 1).edit_in, 96);
}

TEST_F(PrintPositions, AnEventWithoutFramesIsReduced) {
    stored.edit_out = stored.edit_in;
    EXPECT_EQ(load(1).reduced, 1);
    outgoing("D", 1);
    EXPECT_EQ(load(1).reduced, 0);
}

TEST_F(PrintPositions, FilmRunsAtTheEventsSpeed) {
    stored.speed = 1.5;
    outgoing("FO", 5);
    const cut_report cut = load(1);
    EXPECT_EQ(cut.edit_out, 155);
    EXPECT_EQ(cut.cut_key_out.sample, 4200 + 8 * perforations) << "7.5 frames round up";
}

TEST_F(PrintPositions, ALengthWithoutATransitionStillMovesTheCodes) {
    stored.fx_len_in = 3;
    stored.fx_len_out = 2;
    const cut_report cut = load(1);
    EXPECT_EQ(cut.edit_in, 100);
    EXPECT_EQ(cut.cut_key_in.sample, 4000 - 3 * perforations);
    EXPECT_EQ(cut.cut_key_out.sample, 4200 + 2 * perforations);
}

TEST_F(PrintPositions, AStartAtTheOriginPushesTheEndForward) {
    stored.keycode_in.set_sample(0);
    stored.keycode_out.set_sample(200);
    incoming("FI", 5);
    const cut_report cut = load(1);
    EXPECT_EQ(cut.cut_key_in.sample, 0);
    EXPECT_EQ(cut.keycode_in.sample, 5 * perforations);
    EXPECT_EQ(cut.keycode_out.sample, 200 + 5 * perforations);
    EXPECT_EQ(cut.cut_key_out.sample, 200 + 5 * perforations);
    EXPECT_EQ(cut.cut_ink_in.sample, 8000 - 5 * perforations);
    EXPECT_EQ(cut.inkcode_in.sample, 8000);
}

TEST_F(PrintPositions, AnyNumbersLoad) {
    constexpr int extremes[] = {INT_MIN, -1, 0, 1, INT_MAX};
    constexpr double speeds[] = {
        0.0, -1.0, 1e300, -1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
    for (const int length : extremes) {
        for (const int frame : extremes) {
            for (const double speed : speeds) {
                incoming("D", length);
                outgoing("D", length);
                stored.edit_in = frame;
                stored.edit_out = length;
                stored.speed = speed;
                EXPECT_EQ(load(1).event, 1);
            }
        }
    }
}

TEST_F(PrintPositions, AnEmptyFieldGivesTheValueOfANewRecord) {
    cut_report cut;
    cut.load(*table.get_record(0), 1, picture, 0);
    EXPECT_EQ(cut.edit_out, 1);
    EXPECT_EQ(cut.cut_length, 1);
}

TEST(RoundFrames, RoundsUpWhatIsNotNearlyWhole) {
    EXPECT_EQ(round_frames(10.04), 10.04);
    EXPECT_EQ(round_frames(10.06), 11.0);
    EXPECT_EQ(round_frames(-10.06), -11.0);
    EXPECT_EQ(round_frames(-10.04), -10.04);
    EXPECT_EQ(round_frames(0.0), 0.0);
    EXPECT_TRUE(std::isnan(round_frames(std::nan(""))));
    EXPECT_TRUE(std::isinf(round_frames(std::numeric_limits<double>::infinity())));
}

} // namespace
