// Merging logs of this and other revisions, and pulldown phases at midnight.

#include "tests/logging/film_tables.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

const Columns required = {"Name", "reel", "start time", "end time", "label_std", "cam reel", "start keycode"};

Columns without(const Columns& columns, const std::vector<std::string>& gone) {
    Columns left;
    for (const std::string& column : columns) {
        if (std::find(gone.begin(), gone.end(), column) == gone.end()) left.push_back(column);
    }
    return left;
}

TEST(Merge, OfTheSameRevisionIsNotChecked) {
    OpenFilm film;
    MadeTable other({{"FilmDB", "Rev 16"}}, {"reel", "mine"}, {{"001", "x"}});
    EXPECT_EQ(film.add_any_recdb(&other), 0);
    ASSERT_EQ(film.get_num_records(), 1U);
    EXPECT_EQ(film.getField(0, 1), "001");
}

TEST(Merge, WithoutASharedColumnFails) {
    OpenFilm film;
    MadeTable other({{"FILMDB", "Rev 16"}}, {"mine"}, {{"x"}});
    EXPECT_EQ(film.add_any_recdb(&other), 1);
}

TEST(Merge, OfAnotherRevisionJoinsColumnsByName) {
    Columns columns = required;
    columns.push_back("colour");
    columns.push_back("NOTES");
    OpenFilm film;
    for (const char* revision : {"Rev 15", "Rev 7", "Rev 99", ""}) {
        MadeTable other({{"FILMDB", revision}}, columns, {{"1-1", "001", "", "", "", "A1", "KJ", "red", "fine"}});
        EXPECT_EQ(film.add_any_recdb(&other), 0);
    }
    ASSERT_EQ(film.get_num_records(), 4U);
    EXPECT_EQ(film.getField(3, 0), "1-1");
    EXPECT_EQ(film.getField(3, 11), "A1");
    EXPECT_EQ(film.getField(3, 12), "KJ");
    EXPECT_EQ(film.getField(3, 29), "fine");
    EXPECT_EQ(film.getField(3, 28), "");
}

TEST(Merge, NamesTheLastOfTheMissingColumns) {
    OpenFilm film;
    MadeTable one({{"FILMDB", "Rev 15"}}, without(required, {"cam reel"}), {{"x"}});
    EXPECT_EQ(film.add_any_recdb(&one), fdb_missing_field);
    EXPECT_STREQ(film.get_error_message(), "Cannot add file: missing field \"CAM REEL\"\n");
    MadeTable two({}, without(required, {"Name", "end time"}), {{"x"}});
    EXPECT_EQ(film.add_any_recdb(&two), fdb_missing_field);
    EXPECT_STREQ(film.get_error_message(), "Cannot add file: missing field \"END TIME\"\n");
    EXPECT_EQ(film.get_error(), fdb_ok);
    EXPECT_EQ(film.get_num_records(), 0U);
}

TEST(Merge, OfATableWithoutRowsAddsNone) {
    OpenFilm film;
    MadeTable other({}, required);
    EXPECT_EQ(film.add_any_recdb(&other), 0);
    EXPECT_EQ(film.get_num_records(), 0U);
}

class Midnight : public testing::Test {
protected:
    Midnight() {
        film.set_pulldown(true);
        film.set_vid_std({rate(5), 0});
    }

    OpenFilm film;
    const TCInf ntsc{rate(5), 0};
    const double seven_frames = string_to_tc("00:00:00:07", ntsc);
};

TEST_F(Midnight, CountsBackFromThePhase) {
    EXPECT_EQ(film.calc_midnight_pulldown(seven_frames, 0, ntsc), 3);
    EXPECT_EQ(film.calc_midnight_pulldown(seven_frames, 4, ntsc), 2);
    EXPECT_EQ(film.calc_midnight_pulldown("00:00:00:07", 0, ntsc), 3);
    EXPECT_EQ(film.calc_midnight_pulldown("00:00:01:00", 1, ntsc), 1);
}

TEST_F(Midnight, IsZeroForPhasesOutsideTheCycle) {
    EXPECT_EQ(film.calc_midnight_pulldown(seven_frames, 5, ntsc), 0);
    EXPECT_EQ(film.calc_midnight_pulldown(seven_frames, -1, ntsc), 0);
    EXPECT_EQ(film.calc_midnight_pulldown(seven_frames, 24, {rate(2), 0}) >= 0, true) << "that cycle has 25";
}

TEST_F(Midnight, IsZeroWithoutPulldown) {
    film.set_pulldown(false);
    EXPECT_TRUE(rc::check("no phase without pulldown", [&](int phase) {
        const int frame = *rc::gen::inRange(0, 2000000);
        RC_ASSERT(film.calc_midnight_pulldown(frame / 30.0, phase, ntsc) == 0);
    }));
}

TEST_F(Midnight, FramesWithoutAStandardCountByTheTables) {
    film.set_vid_std({rate(3), 0});
    const TCInf pal{rate(3), 0};
    EXPECT_EQ(film.calc_midnight_pulldown("00:00:01:00", 2, {}), film.calc_midnight_pulldown("00:00:01:00", 2, pal));
    EXPECT_EQ(film.calc_midnight_pulldown(1.0, 2, {}), 2);
}

// The cycle is that of no standard, 5 frames, though the table's own has 25.
TEST_F(Midnight, WithoutAStandardTheCycleIsTheShortOne) {
    film.set_vid_std({rate(2), 0});
    const double ten_frames = string_to_tc("00:00:00:10", {rate(2), 0});
    EXPECT_EQ(film.calc_midnight_pulldown(ten_frames, 2, {}), 2);
    EXPECT_EQ(film.calc_midnight_pulldown(ten_frames, 7, {}), 0);
    EXPECT_EQ(film.calc_midnight_pulldown(ten_frames, 2, {rate(2), 0}), 17);
    EXPECT_EQ(film.calc_midnight_pulldown("00:00:00:10", 2, {}), 17) << "a text takes the table's standard at once";
}

TEST_F(Midnight, PhasesRollForwardAgain) {
    EXPECT_TRUE(rc::check("phase at a frame from that at midnight", [&] {
        const int phase = *rc::gen::inRange(0, 5);
        const int frame = *rc::gen::inRange(0, 2589408);
        const double time = frame * 1001.0 / 30000.0 + 1e-6;
        const int midnight = film.calc_midnight_pulldown(time, phase, ntsc);
        RC_ASSERT(midnight >= 0 && midnight < 5);
        RC_ASSERT((midnight + tc_to_frames(time, ntsc.rate, 0, 0)) % 5 == phase);
    }));
}

} // namespace
