// Strips of events whose film a log tells.

#include "film/source_facts.h"
#include "tests/film/made_film.h"
#include "tests/shots/logged_edit.h"

#include <gmock/gmock.h>

using namespace logged;
using film::LogRows;
using film::Strips;
using film::Sureness;
using film_test::drawn;
using testing::ElementsAre;

namespace {

std::vector<std::string> row(const std::string& reel, const std::string& start, const std::string& end,
                             const std::string& roll, const std::string& key) {
    return {"", reel, start, end, roll, "", "", key, "", "", "", ""};
}

struct LoggedUses : testing::Test {
    Strips uses(const std::string& reel, int first, int length, const Records& rows, const Fraction& speed = 1) {
        EditBuilder builder(edit_24());
        const int v1 = builder.add_channel(1);
        builder.add_event(v1, event_of(builder.add_source(transfer(reel)), first, length, speed));
        const MadeTable table(log_params(), log_columns(), rows);
        const LogRows log(table);
        return film::uses_of_edit(builder.finish(), {}, &log);
    }
};

const auto first_minute = row("VT1", "01:00:00:00", "01:01:00:00", "A001", "KJ1234560100+00");
const auto second_minute = row("VT1", "01:01:00:00", "01:02:00:00", "A002", "KJ9876540500+00");

TEST_F(LoggedUses, FilmIsCountedFromTheRow) {
    const Strips strips = uses("vt1", 24, 48, {first_minute});
    EXPECT_THAT(drawn(strips), ElementsAre("1 cut 0-48 A001 KJ1234560101+08"));
    EXPECT_EQ(strips[0].log_row, 0);
    EXPECT_EQ(strips[0].sureness, Sureness::exact);
}

// Of 7 frames of tape by pulldown the last shows the sixth of film, of which only 5.6 go by.
TEST_F(LoggedUses, AnEndBetweenFramesOfFilmIsUnsureByPulldown) {
    const auto sureness = [](int length) {
        const embedded::RateInfo* rate = embedded::nearest_rate(30.0);
        EditDescription edit = edit_24();
        edit.rate = rate;
        EditBuilder builder(edit);
        const int v1 = builder.add_channel(1);
        SourceDescription source = transfer("VT1");
        source.rate = rate;
        source.video_timecode = LabelDescription{rate->timecode, "01:00:00:00", {}, Fraction(30)};
        EventDescription event = event_of(builder.add_source(source), 0, 0);
        event.duration = Fraction(length, 30);
        builder.add_event(v1, event);
        Params params = log_params();
        params[1].second = "30fps";
        const MadeTable table(params, log_columns(), {first_minute});
        const LogRows log(table);
        return film::uses_of_edit(builder.finish(), {}, &log).at(0).sureness;
    };
    EXPECT_EQ(sureness(10), Sureness::exact);
    EXPECT_EQ(sureness(7), Sureness::within);
}

TEST_F(LoggedUses, InkIsCountedFromTheRowToo) {
    auto inked = first_minute;
    inked[8] = "AA121000+00";
    EXPECT_EQ(uses("vt1", 24, 48, {inked})[0].ink.text_at(1), "AA121001+09");
    EXPECT_FALSE(uses("vt1", 24, 48, {first_minute})[0].ink);
}

TEST_F(LoggedUses, AFramePastTheRowIsTheNextRows) {
    EXPECT_THAT(drawn(uses("vt1", 1440 - 48, 77, {first_minute, second_minute})),
                ElementsAre("1 cut 0-48 A001 KJ1234560187+00", "1 cut 48-77 A002 KJ9876540500+00"));
}

TEST_F(LoggedUses, BackwardItPassesTheRowsTheOtherWay) {
    EXPECT_THAT(drawn(uses("vt1", 1440 - 48, 77, {first_minute, second_minute}, -1)),
                ElementsAre("1 cut 0-29 A002 KJ9876540501+12", "1 cut 29-77 A001 KJ1234560189+15"));
}

TEST_F(LoggedUses, ReelsOfTheirOwnGoBeforeReelsThatBeginThem) {
    const auto one = row("1", "01:00:00:00", "01:01:00:00", "A001", "KJ1111110100+00");
    const auto ten = row("10", "01:00:00:00", "01:01:00:00", "A010", "KJ1010100100+00");
    EXPECT_THAT(drawn(uses("10", 0, 24, {one, ten})), ElementsAre("1 cut 0-24 A010 KJ1010100100+00"));
    EXPECT_THAT(drawn(uses("10", 0, 24, {one})), ElementsAre("1 cut 0-24 A001 KJ1111110100+00"));
}

TEST_F(LoggedUses, PastTheLastRowFilmIsCountedOnForThirtyFrames) {
    const Strips strips = uses("vt1", 1440 - 10, 60, {first_minute});
    EXPECT_THAT(drawn(strips),
                ElementsAre("1 cut 0-10 A001 KJ1234560189+06", "1 cut 10-40 A001 KJ1234560190+00", "1 cut 40-60"));
    EXPECT_EQ(strips[1].sureness, Sureness::beyond);
    EXPECT_EQ(strips[2].sureness, Sureness::unknown);
}

TEST_F(LoggedUses, TheListsTakeTheFirstRowThatFitsWithinThirtyFrames) {
    const MadeTable table(log_params(), log_columns(), {first_minute, second_minute});
    const LogRows log(table);
    const std::int64_t hour = 24 * 3600, minute = 24 * 60;
    EXPECT_EQ(log.listed("vt1", hour, hour + minute + 30)->row, 0);
    EXPECT_EQ(log.listed("vt1", hour + minute - 30, hour + minute + 31)->row, 1);
    EXPECT_EQ(log.listed("vt1", hour, hour + minute + 31), nullptr);
    EXPECT_EQ(log.listed("vt123", hour + minute - 20, hour + minute + 20)->row, 0);
    EXPECT_EQ(log.listed("vt", hour, hour + 1), nullptr);
}

TEST_F(LoggedUses, OfOverlappingRowsTheFirstOfTheTableCounts) {
    const auto other = row("VT1", "01:00:30:00", "01:01:30:00", "A003", "KJ3333330100+00");
    const MadeTable table(log_params(), log_columns(), {first_minute, other});
    const LogRows log(table);
    const std::int64_t hour = 24 * 3600;
    EXPECT_EQ(log.at("VT1", hour + 800).row->row, 0);
    EXPECT_EQ(log.at("VT1", hour + 800).other->row, 1);
    EXPECT_EQ(log.at("VT1", hour + 1500).row->row, 1);
    EXPECT_EQ(log.at("VT1", hour + 1500).other, nullptr);
    EXPECT_EQ(log.at("VT1", hour + 800).from, hour + 720);
    EXPECT_EQ(log.at("VT1", hour + 800).to, hour + 1440);
}

TEST(RollsOfRows, AreListedByTheMediumThatIsAskedFor) {
    film::LogRow row;
    row.camera = "A001", row.reel = "VT1", row.sound = "S1", row.lab = "L1", row.daily = "D1";
    const auto listed = [&row](int film_reel) { return film::rolls_of(row, "vt1", film_reel).listed; };
    EXPECT_THAT((std::vector{listed(2), listed(3), listed(4), listed(10), listed(11)}),
                ElementsAre("A001", "VT1", "S1", "L1", "D1"));
    row.lab.clear();
    EXPECT_EQ(listed(10), "VT1") << "the tape, where the row has none";
}

TEST_F(LoggedUses, RowsTellTheirLines) {
    const std::string bytes = table_bytes(log_params(), log_columns(), {first_minute});
    EXPECT_EQ(film::line_of_first_record(bytes), 9);
}

} // namespace
