#include "changelist/matching/candidates.h"

#include "tests/changelist/film_events.h"

#include <gtest/gtest.h>

#include <deque>

namespace {

class CandidatesTest : public testing::Test {
protected:
    void offer(const std::vector<FilmEvent>& events) {
        const EventTable& rows = offered.emplace_back(events);
        for (unsigned index = 0; index < rows.table.get_num_records(); ++index)
            candidates.load(*rows.table.get_record(index));
    }
    int match(const FilmEvent& event) {
        int index = -2;
        EXPECT_EQ(find_match(&index, record_of(event), candidates), nullptr);
        return index;
    }

    std::deque<EventTable> offered; ///< whose rows stay where they are
    EventTable changes;
    Candidates candidates{changes.table, changes.logger};
};

FilmEvent on_reel(const char* key, int length, int reel) { return {key, length, 0, reel}; }

TEST_F(CandidatesTest, AnEqualEventElsewhereComesAheadOfAnOverlapOnTheOwnReel) {
    offer({on_reel("KJ1234560009+00", 64, 1), on_reel("KJ1234560010+00", 16, 2)});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 1);
}

TEST_F(CandidatesTest, APartialOverlapOnTheOwnReelComesAheadOfACoverElsewhere) {
    offer({on_reel("KJ1234560009+00", 64, 2), on_reel("KJ1234560010+08", 32, 1)});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 1);
}

TEST_F(CandidatesTest, ACoverComesAheadOfAPartialOverlap) {
    offer({on_reel("KJ1234560010+01", 32, 1), on_reel("KJ1234560009+00", 64, 1), on_reel("KJ1234560008+00", 90, 1)});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 1);
}

TEST_F(CandidatesTest, OfPartialOverlapsTheFirstWinsHoweverShort) {
    offer({on_reel("KJ1234560010+15", 8, 1), on_reel("KJ1234560010+01", 32, 1)});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 0);
}

TEST_F(CandidatesTest, ARemovedRowIsNeitherFoundNorNew) {
    offer({on_reel("KJ1234560010+00", 16, 1), on_reel("KJ1234560010+00", 16, 1)});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 0);
    candidates.remove(0);
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 1);
    candidates.remove(1);
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), -1);
    candidates.drain(changes.table);
    EXPECT_EQ(changes.table.get_num_records(), 0u);
}

TEST_F(CandidatesTest, APieceThatIsPutBackIsFoundBehindTheOthers) {
    offer({on_reel("KJ1234560010+00", 16, 2)});
    EXPECT_EQ(match(on_reel("KJ1234560020+00", 16, 1)), -1);
    candidates.put_back(record_of(on_reel("KJ1234560020+00", 16, 2)));
    candidates.put_back(record_of(on_reel("KJ1234560010+00", 16, 1)));
    EXPECT_EQ(match(on_reel("KJ1234560020+00", 16, 1)), 1);
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 2);
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 5)), 0);
}

TEST_F(CandidatesTest, WhatIsLeftIsDrainedInOrderAsNew) {
    offer({on_reel("KJ1234560010+00", 16, 1), on_reel("KJ1234560011+00", 16, 1), on_reel("KJ1234560012+00", 16, 1)});
    EXPECT_EQ(match(on_reel("KJ1234560011+00", 16, 1)), 1);
    candidates.remove(1);
    candidates.drain(changes.table);
    EXPECT_EQ(summaries_of(changes.table),
              (std::vector<std::string>{"I KJ1234560010+00 16 new 1:0", "I KJ1234560012+00 16 new 1:0"}));
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), -1) << "nothing stays behind";
}

TEST_F(CandidatesTest, RollsAndCameraReelsCompareWithoutCase) {
    FilmEvent lower = on_reel("kj1234560010+01", 32, 1);
    lower.cam_reel = "a001";
    offer({lower});
    EXPECT_EQ(match(on_reel("KJ1234560010+00", 16, 1)), 0);
    FilmEvent other = on_reel("KJ1234560010+00", 16, 1);
    other.cam_reel = "B001";
    EXPECT_EQ(match(other), -1);
}

} // namespace
