// An index of events as text parted by commas, alone and beside the log of its edit.

#include "formats/logs/joined_events.h"
#include "tests/logs/log_texts.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Cells columns{"#",          "Reel",      "Match",      "V",    "C",        "Dur",       "Source In",
                    "Source Out", "Record In", "Record Out", "Name", "Comments", "Source FPS"};

Cells event(const std::string& reel, const std::string& name, const std::string& in, const std::string& out,
            const std::string& track = "V1") {
    return {"1", reel, "", track, "C", "00:00:01:00", in, out, "01:00:00:00", "01:00:01:00", name, "", "24.000"};
}

Cells shot(const std::string& name, const std::string& tape, const std::string& start, const std::string& end,
           const std::string& key) {
    return {name, "V", tape, start, end, key, "12", "A7"};
}

std::string index_of(const std::vector<Cells>& events) {
    std::string text = joined(columns, ",") + "\n";
    for (const Cells& row : events)
        text += joined(row, ",") + "\n";
    return text;
}

std::string log_of(const std::vector<Cells>& shots) {
    return ale({"FIELD_DELIM\tTABS", "VIDEO_FORMAT\t1080", "FPS\t24", "FILM_FORMAT\t35mm,4perf"},
               {"Name", "Tracks", "Tape", "Start", "End", "KN Start", "Scene", "Camroll"}, shots);
}

class IndexOfEvents : public testing::Test {
protected:
    void take(const std::string& bytes, const std::string& path) {
        Log log = read(bytes, path);
        EXPECT_EQ(log.error, "");
        rows_.insert(rows_.end(), log.rows.begin(), log.rows.end());
        warnings_.insert(warnings_.end(), log.warnings.begin(), log.warnings.end());
    }
    void join(const std::vector<Cells>& events, const std::vector<Cells>& shots) {
        take(index_of(events), "reel.csv");
        if (!shots.empty()) take(log_of(shots), "reel.ale");
        join_events(rows_, warnings_);
    }
    /// "reel name start end key", a row.
    std::vector<std::string> rows() const {
        std::vector<std::string> lines;
        for (const LogRow& row : rows_)
            lines.push_back(row[LogField::reel] + " " + row[LogField::name] + " " + row[LogField::start] + " " +
                            row[LogField::end] + " " + row[LogField::key_start]);
        return lines;
    }
    std::vector<std::string> told() const { return {warnings_.begin(), warnings_.end()}; }

    std::vector<LogRow> rows_;
    embedded::Warnings warnings_;
};

TEST_F(IndexOfEvents, AloneIsALogOfItsPictures) {
    join({event("A012", "12-1", "01:00:00:00", "01:00:01:00"),
          event("A012", "12-1", "01:00:00:00", "01:00:01:00", "A1"), event("", "", "", ""),
          event("BL", "", "00:00:00:00", "00:00:01:00"), event("B003", "13-1", "02:00:00:00", "02:00:01:00", "V2"),
          event("A012", "12-1", "01:00:00:00", "01:00:01:00")},
         {});
    EXPECT_THAT(rows(), ElementsAre("A012 12-1 01:00:00:00 01:00:01:00 ", "B003 13-1 02:00:00:00 02:00:01:00 "));
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_EQ(rows_[1].line, 6);
}

TEST_F(IndexOfEvents, ShotsTakeTheReelsOfTheirEventsByName) {
    join({event("A012C003", "12-3", "01:00:04:00", "01:00:06:12"),
          event("A012C003", "12-3", "01:00:08:00", "01:00:09:00")},
         {shot("12-3", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00")});
    EXPECT_THAT(rows(), ElementsAre("A012C003 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00"));
    EXPECT_EQ(rows_[0][LogField::scene], "12");
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(IndexOfEvents, ReelGoesBeforeName) {
    join({event("A2", "12-3", "01:00:04:00", "01:00:06:12")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00"),
          shot("", "a2", "01:00:00:00", "01:00:20:00", "KJ 12 3456 2000+00")});
    EXPECT_THAT(rows(), ElementsAre("A1 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00",
                                    "A2 12 01:00:00:00 01:00:20:00 KJ1234562000+00"));
}

TEST_F(IndexOfEvents, OtherReelOfTheSameNameIsTold) {
    join({event("X1", "12-3", "01:00:04:00", "01:00:06:12")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00")});
    EXPECT_THAT(rows(), ElementsAre("X1 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00"));
    EXPECT_THAT(told(), ElementsAre("reel.csv:2: reel X1 is A1 in reel.ale; taken as X1"));
}

TEST_F(IndexOfEvents, ShotOfSeveralReelsIsARowForEach) {
    join({event("X1", "12-3", "01:00:04:00", "01:00:06:12"), event("X2", "12-3", "01:00:04:00", "01:00:06:12"),
          event("X1", "12-3", "01:00:05:00", "01:00:06:12")},
         {shot("12-3", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00")});
    EXPECT_THAT(rows(), ElementsAre("X1 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00",
                                    "X2 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00"));
}

TEST_F(IndexOfEvents, EventsOutsideEveryShotStayRowsAndAreTold) {
    join({event("A1", "12-3", "01:00:19:00", "01:00:20:01"), event("A1", "12-3", "00:59:59:23", "01:00:02:00"),
          event("A1", "12-3", "01:00:19:00", "01:00:20:00")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00")});
    EXPECT_THAT(rows(), ElementsAre("A1 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00",
                                    "A1 12-3 01:00:19:00 01:00:20:01 ", "A1 12-3 00:59:59:23 01:00:02:00 "));
    EXPECT_THAT(told(), ElementsAre("reel.csv:2: no shot of the logs holds this event; it has no key number",
                                    "reel.csv:3: no shot of the logs holds this event; it has no key number"));
}

// 12 frames are 12 frames of film: the second shot begins 12 frames later and 12 frames on.
TEST_F(IndexOfEvents, ShotsThatAgreeAboutAnEventAreAsGoodAsOne) {
    join({event("A1", "12-3", "01:00:04:00", "01:00:05:00")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00"),
          shot("12-3b", "A1", "01:00:00:12", "01:00:20:00", "KJ 12 3456 1000+12")});
    EXPECT_EQ(rows_.size(), 2u);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(IndexOfEvents, ShotsThatDisagreeGiveNoKeyNumber) {
    join({event("A1", "12-3", "01:00:04:00", "01:00:05:00")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00"),
          shot("12-3b", "A1", "01:00:00:12", "01:00:20:00", "KJ 12 3456 1000+13")});
    ASSERT_EQ(rows_.size(), 3u);
    EXPECT_EQ(rows().back(), "A1 12-3 01:00:04:00 01:00:05:00 ");
    EXPECT_THAT(told(),
                ElementsAre("reel.csv:2: shots of the logs with different key numbers hold this event; it has none"));
}

TEST_F(IndexOfEvents, ShotsWithoutKeyNumberStandBack) {
    join({event("A1", "12-3", "01:00:04:00", "01:00:05:00")},
         {shot("12-3", "A1", "01:00:00:00", "01:00:20:00", ""),
          shot("12-3b", "A1", "01:00:00:12", "01:00:20:00", "KJ 12 3456 1000+13")});
    EXPECT_EQ(rows_.size(), 2u);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(IndexOfEvents, RowsWithoutAReelStandBehindThoseThatTheyWouldTakeEventsFrom) {
    join({event("A1", "12-4", "01:00:04:00", "01:00:05:00"), event("B1", "12-5", "01:00:06:00", "01:00:07:00"),
          event("B2", "12-5", "01:00:08:00", "01:00:09:00")},
         {shot("12-3", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00"),
          shot("12-5", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 3000+00"),
          shot("12-6", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 4000+00")});
    EXPECT_THAT(rows(),
                ElementsAre("B1 12-5 01:00:00:00 01:00:20:00 KJ1234563000+00", "A1 12-4 01:00:04:00 01:00:05:00 ",
                            "B2 12-5 01:00:00:00 01:00:20:00 KJ1234563000+00",
                            " 12-3 01:00:00:00 01:00:20:00 KJ1234561000+00",
                            " 12-6 01:00:00:00 01:00:20:00 KJ1234564000+00"));
}

TEST_F(IndexOfEvents, AnEventThatBecomesTheFirstRowKeepsTheKindOfFilm) {
    join({event("A1", "12-4", "01:00:04:00", "01:00:05:00")},
         {shot("12-3", "", "01:00:00:00", "01:00:20:00", "KJ 12 3456 1000+00")});
    ASSERT_EQ(rows().front(), "A1 12-4 01:00:04:00 01:00:05:00 ");
    EXPECT_EQ(rows_.front().film, label_key_35mm_4p);
}

TEST_F(IndexOfEvents, LogsWithoutAnIndexStayAsTheyAre) {
    const std::string twice =
        log_of({shot("1", "A1", "01:00:00:00", "01:00:01:00", ""), shot("1", "A1", "01:00:00:00", "01:00:01:00", "")});
    take(twice, "a.ale");
    join_events(rows_, warnings_);
    EXPECT_EQ(rows_.size(), 2u);
}

} // namespace
