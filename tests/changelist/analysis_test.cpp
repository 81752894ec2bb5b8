#include "changelist/matching/match_event.h"
#include "tests/changelist/film_events.h"

#include <rapidcheck.h>

#include <gtest/gtest.h>

#include <pthread.h>

namespace {

using Rows = std::vector<std::string>;

const char* const count_10 = "KJ1234560010+00";
const char* const count_11 = "KJ1234560011+00";

FilmEvent shot(const char* key, int length, int edit_in) { return {key, length, edit_in}; }

FilmEvent black(int length, int edit_in, const char* behind, const char* ahead_of) {
    FilmEvent event{"__BLACK_0000+00", length, edit_in};
    event.cam_reel = "__BLACK";
    event.behind = behind;
    event.ahead_of = ahead_of;
    return event;
}

TEST(AnalysisTest, TwoIdenticalCutsLeaveNothingToDo) {
    FilmEvent dissolved = shot("KJ1234560030+00", 30, 48);
    dissolved.fx_op1 = "D";
    dissolved.fx_len1 = 12;
    const std::vector<FilmEvent> cut = {shot(count_10, 48, 0), dissolved, shot("KL0000010000+00", 10, 78)};
    const Comparison made(cut, cut);
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 48 old 1:0 new 1:0", "== KJ1234560030+00 30 old 1:48 new 1:48",
                                 "== KL0000010000+00 10 old 1:78 new 1:78"}));
    EXPECT_EQ(made.changes.logger.lines.at(0).level, 5);
}

TEST(AnalysisTest, ATailThatTheNewCutDropsIsDeleted) {
    const Comparison made({shot(count_10, 32, 100)}, {shot(count_10, 20, 200)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 20 old 1:100 new 1:200", "DU KJ1234560011+04 12 old 1:120"}));
}

TEST(AnalysisTest, AHeadThatTheNewCutDropsIsDeleted) {
    const Comparison made({shot(count_10, 32, 100)}, {shot(count_11, 20, 200)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560011+00 16 old 1:116 new 1:200", "DU KJ1234560010+00 16 old 1:100",
                                 "I KJ1234560012+00 4 new 1:216"}));
}

TEST(AnalysisTest, AnExtensionAtBothEndsIsInserted) {
    const Comparison made({shot(count_11, 16, 100)}, {shot(count_10, 40, 200)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560011+00 16 old 1:100 new 1:216", "I KJ1234560010+00 16 new 1:200",
                                 "I KJ1234560012+00 8 new 1:232"}));
}

TEST(AnalysisTest, BothHalvesOfAnEventThatWasCutInTwoAreKept) {
    const Comparison made({shot(count_10, 32, 0)}, {shot(count_10, 16, 0), shot(count_11, 16, 40)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 16 old 1:0 new 1:0", "== KJ1234560011+00 16 old 1:16 new 1:40"}));
}

TEST(AnalysisTest, AnEventWithinAnOldOneLeavesItsHeadAheadOfItsTail) {
    const Comparison made({shot(count_10, 48, 0)}, {shot(count_11, 16, 40)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560011+00 16 old 1:16 new 1:40", "DU KJ1234560010+00 16 old 1:0",
                                 "DU KJ1234560012+00 16 old 1:32"}));
}

TEST(AnalysisTest, FilmThatTheNewCutUsesTwiceMatchesOnce) {
    const Comparison made({shot(count_10, 16, 0)}, {shot(count_10, 16, 0), shot(count_10, 16, 50)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 16 old 1:0 new 1:0", "I KJ1234560010+00 16 new 1:50"}));
}

TEST(AnalysisTest, OfTwoEqualEventsTheOneOnTheOwnReelWins) {
    FilmEvent old_event = shot(count_10, 16, 0);
    FilmEvent other_reel = shot(count_10, 16, 0);
    old_event.reel = 2;
    FilmEvent own_reel = shot(count_10, 16, 50);
    own_reel.reel = 2;
    const Comparison made({old_event}, {other_reel, own_reel});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 16 old 2:0 new 2:50", "I KJ1234560010+00 16 new 1:0"}));
}

TEST(AnalysisTest, BlackMatchesBetweenTheSameNeighboursOnly) {
    const FilmEvent old_black = black(8, 16, count_10, count_11);
    EXPECT_EQ(Comparison({old_black}, {black(8, 30, count_10, "KJ1234560090+00")}).rows(),
              (Rows{"== __BLACK_0000+00 8 old 1:16 new 1:30"}));
    EXPECT_EQ(Comparison({old_black}, {black(8, 30, "KJ1234560090+00", count_11)}).rows(),
              (Rows{"== __BLACK_0000+00 8 old 1:16 new 1:30"}));
    EXPECT_EQ(Comparison({old_black}, {black(8, 30, count_11, count_10)}).rows(),
              (Rows{"DU __BLACK_0000+00 8 old 1:16", "I __BLACK_0000+00 8 new 1:30"}));
    EXPECT_EQ(Comparison({old_black}, {black(9, 30, count_10, count_11)}).rows(),
              (Rows{"DU __BLACK_0000+00 8 old 1:16", "I __BLACK_0000+00 9 new 1:30"}));
}

TEST(AnalysisTest, BlackBetweenBlackHasNoNeighbours) {
    const FilmEvent between = black(8, 16, "__BLACK_0000+07", "__BLACK_0000+00");
    EXPECT_EQ(Comparison({between}, {between}).rows(),
              (Rows{"DU __BLACK_0000+00 8 old 1:16", "I __BLACK_0000+00 8 new 1:16"}));
}

TEST(AnalysisTest, BlankBracketsAreAlike) {
    const FilmEvent first = black(8, 0, "", count_11);
    EXPECT_EQ(Comparison({first}, {black(8, 5, "", "KJ1234560090+00")}).rows(),
              (Rows{"== __BLACK_0000+00 8 old 1:0 new 1:5"}));
}

TEST(AnalysisTest, DoubleSpeedDoesntMatchNormalSpeed) {
    FilmEvent fast = shot(count_10, 16, 0);
    fast.speed = 2;
    EXPECT_EQ(Comparison({fast}, {shot(count_10, 16, 0)}).rows(),
              (Rows{"DU KJ1234560010+00 16 old 1:0", "I KJ1234560010+00 16 new 1:0"}));
    EXPECT_EQ(Comparison({shot(count_10, 16, 0)}, {fast}).rows(),
              (Rows{"DU KJ1234560010+00 16 old 1:0", "I KJ1234560010+00 16 new 1:0"}));
}

TEST(AnalysisTest, AVarispeedEventMatchesAWholeOneWithinIt) {
    FilmEvent old_event = shot(count_10, 40, 100);
    FilmEvent new_event = shot(count_11, 20, 0);
    old_event.speed = new_event.speed = 2;
    EXPECT_EQ(Comparison({old_event}, {new_event}).rows(),
              (Rows{"== KJ1234560011+00 20 old 1:108 new 1:0", "DU KJ1234560010+00 8 old 1:100",
                    "DU KJ1234560010+14 12 old 1:128"}));
}

TEST(AnalysisTest, AVarispeedEventNeverMatchesALongerOne) {
    FilmEvent old_event = shot(count_10, 20, 100);
    FilmEvent new_event = shot(count_10, 21, 0);
    old_event.speed = new_event.speed = -1;
    EXPECT_EQ(Comparison({old_event}, {new_event}).rows(),
              (Rows{"DU KJ1234560010+00 20 old 1:100", "I KJ1234560010+00 21 new 1:0"}));
}

TEST(AnalysisTest, AHeldFrameMatchesAShorterOneAndKeepsItsKeyInTheTail) {
    FilmEvent old_event = shot(count_10, 20, 100);
    FilmEvent new_event = shot(count_10, 15, 0);
    old_event.speed = new_event.speed = 0;
    EXPECT_EQ(Comparison({old_event}, {new_event}).rows(),
              (Rows{"== KJ1234560010+00 15 old 1:100 new 1:0", "DU KJ1234560010+00 5 old 1:115"}));
}

TEST(AnalysisTest, ADissolveThatBecameShorterIsOneChangeAtTheStart) {
    FilmEvent old_event = shot(count_10, 48, 0);
    FilmEvent new_event = old_event;
    old_event.fx_op1 = new_event.fx_op1 = "D";
    old_event.fx_len1 = 24;
    new_event.fx_len1 = 12;
    EXPECT_EQ(Comparison({old_event}, {new_event}).rows(),
              (Rows{"FX KJ1234560010+00 48 I D24>D12", "== KJ1234560010+00 48 old 1:0 new 1:0"}));
}

TEST(AnalysisTest, AFadeThatCameAtTheEndIsOneChangeWithTheLastKeyNumber) {
    FilmEvent old_event = shot(count_10, 48, 0);
    old_event.fx_op2 = "C";
    FilmEvent new_event = shot(count_10, 48, 0);
    new_event.fx_op2 = "F";
    new_event.fx_len2 = 16;
    const Comparison made({old_event}, {new_event});
    EXPECT_EQ(made.rows(), (Rows{"FX KJ1234560010+00 48 O 0>F16", "== KJ1234560010+00 48 old 1:0 new 1:0"}));
    EXPECT_STREQ(read_row(made.changes.table, 0).keycode_out.get_string(), "KJ1234560012+15");
}

TEST(AnalysisTest, AChangeAtTheEndOfAPieceHasThePiecesLastNumbers) {
    FilmEvent old_event = shot(count_10, 16, 0);
    old_event.ink = "AA010010+00";
    old_event.fx_op2 = "F";
    old_event.fx_len2 = 8;
    FilmEvent new_event = shot(count_10, 48, 0);
    new_event.ink = old_event.ink;
    const Comparison made({old_event}, {new_event});
    EXPECT_EQ(made.rows().at(0), "FX KJ1234560010+00 16 O F8>0");
    ChangeRecord change = read_row(made.changes.table, 0);
    EXPECT_STREQ(change.keycode_out.get_string(), "KJ1234560010+15");
    EXPECT_STREQ(change.inkcode_out.get_string(), "AA010010+15");
}

TEST(AnalysisTest, APlainCutIsNoTransition) {
    FilmEvent old_event = shot(count_10, 48, 0);
    old_event.fx_op1 = old_event.fx_op2 = "C";
    const Comparison made({old_event}, {shot(count_10, 48, 0)});
    EXPECT_EQ(made.rows(), (Rows{"== KJ1234560010+00 48 old 1:0 new 1:0"}));
}

TEST(AnalysisTest, ATransitionAheadOfAKeptEndStillShowsAsTheOldOne) {
    FilmEvent old_event = shot(count_10, 32, 0);
    old_event.fx_op1 = "D";
    old_event.fx_len1 = 12;
    const Comparison made({old_event}, {shot(count_11, 20, 0)});
    EXPECT_EQ(made.rows(), (Rows{"FX KJ1234560011+00 16 I D-4>0", "== KJ1234560011+00 16 old 1:16 new 1:0",
                                 "DU KJ1234560010+00 16 old 1:0", "I KJ1234560012+00 4 new 1:16"}));
}

TEST(AnalysisTest, OpticalsTakeNoPart) {
    FilmEvent optical = shot(count_10, 48, 0);
    optical.optical = 1;
    EXPECT_EQ(Comparison({optical}, {optical, shot(count_11, 8, 0)}).rows(), (Rows{"I KJ1234560011+00 8 new 1:0"}));
}

// Of two partial overlaps the one that stands first in the new cut wins, whatever its key number.
TEST(AnalysisTest, ARollThatTheOldCutReachesIsMetInTheOrderOfTheNewCut) {
    const Comparison made({shot(count_11, 16, 0)}, {shot(count_10, 24, 100), shot("KJ1234560011+04", 24, 0)});
    EXPECT_EQ(made.rows().at(0), "== KJ1234560011+04 12 old 1:4 new 1:0");
}

TEST(AnalysisTest, RollsBehindTheOldCutsLastComeInTheOrderOfTheirKeys) {
    const FilmEvent kept = shot("KA0000010000+00", 8, 0);
    const std::vector<FilmEvent> new_events = {kept, shot("KB0000010020+00", 8, 8), shot("KB0000010010+00", 8, 16)};
    EXPECT_EQ(
        Comparison({kept}, new_events).rows(),
        (Rows{"== KA0000010000+00 8 old 1:0 new 1:0", "I KB0000010010+00 8 new 1:16", "I KB0000010020+00 8 new 1:8"}));
    EXPECT_EQ(Comparison({kept, shot("KC0000010000+00", 8, 8)}, new_events).rows(),
              (Rows{"== KA0000010000+00 8 old 1:0 new 1:0", "I KB0000010020+00 8 new 1:8",
                    "I KB0000010010+00 8 new 1:16", "DU KC0000010000+00 8 old 1:8"}));
}

TEST(AnalysisTest, RollsThatOneCutLacksAreDeletedOrInserted) {
    const Comparison made({shot("KA0000010000+00", 8, 0), shot("KC0000010000+00", 8, 8)},
                          {shot("KB0000010000+00", 8, 0), shot("KD0000010000+00", 8, 8)});
    EXPECT_EQ(made.rows(), (Rows{"DU KA0000010000+00 8 old 1:0", "I KB0000010000+00 8 new 1:0",
                                 "DU KC0000010000+00 8 old 1:8", "I KD0000010000+00 8 new 1:8"}));
}

TEST(AnalysisTest, EmptyCutsHaveNoChanges) {
    EXPECT_EQ(Comparison({}, {}).rows(), Rows());
    EXPECT_EQ(Comparison({shot(count_10, 8, 0)}, {}).rows(), (Rows{"DU KJ1234560010+00 8 old 1:0"}));
    EXPECT_EQ(Comparison({}, {shot(count_10, 8, 0)}).rows(), (Rows{"I KJ1234560010+00 8 new 1:0"}));
}

TEST(AnalysisTest, AnEventWithoutLengthIsDeletedAndNotDividedBy) {
    EXPECT_EQ(Comparison({shot(count_11, 0, 0)}, {shot(count_10, 32, 0)}).rows().size(), 3u);
    EXPECT_EQ(Comparison({shot(count_10, 0, 0)}, {shot(count_10, 0, 0)}).rows(),
              (Rows{"DU KJ1234560010+00 0 old 1:0", "I KJ1234560010+00 0 new 1:0"}));
}

/// The rows of two cuts that are compared on a thread whose stack holds far less than a record for each event.
struct SmallStackRun {
    std::vector<FilmEvent> old_events;
    std::vector<FilmEvent> new_events;
    Rows rows;

    static void* run(void* self) {
        auto& made = *static_cast<SmallStackRun*>(self);
        made.rows = Comparison(made.old_events, made.new_events).rows();
        return nullptr;
    }
    void compare() {
        pthread_attr_t small;
        pthread_attr_init(&small);
        pthread_attr_setstacksize(&small, 256 * 1024);
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &small, &run, this), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&small);
    }
};

TEST(AnalysisTest, AnEventThatFallsIntoThousandsOfPiecesNeedsNoStack) {
    constexpr int events = 9999;
    for (const bool backward : {false, true}) {
        SmallStackRun made;
        made.old_events = {shot("KJ1234560000+00", events * 12, 0)};
        for (int i = 0; i < events; ++i) {
            LabelPoint key(0, label_key_35mm_4p);
            key.set_prefix("KJ123456");
            key.set_sample(i * 12 * 4 + 8);
            made.new_events.push_back(shot(key.get_string(), 8, 8 * (backward ? events - i : i)));
        }
        made.compare();
        EXPECT_EQ(made.rows.size(), static_cast<std::size_t>(2 * events + 1));
    }
}

TEST(AnalysisTest, NoTableIsTooStrange) {
    EXPECT_TRUE(rc::check("fields of any text", [] {
        const auto texts = rc::gen::element<std::string>(
            "", "0", "-1", "1", "2147483647", "-2147483648", "99999999999", "1e308", "nan", "-inf", "0.99", "1.01",
            "KJ1234560010+00", "KJ12345633554431+15", "KJ12345633554431-15", "__BLACK_0000+00", "35mm-3p", "24fps",
            "23:59:59:23", "D", "C", "A001", "\xff\xfe", "536870911");
        EventTable tables[2];
        for (EventTable& side : tables) {
            for (int row = *rc::gen::inRange(0, 12); row > 0; --row) {
                append(side.table, record_of(shot(count_10, 8, 0)));
                for (int change = *rc::gen::inRange(0, 12); change > 0; --change)
                    side.table.set_field(side.table.get_num_records() - 1,
                                         static_cast<unsigned>(*rc::gen::inRange<int>(0, hf_count)), (*texts).c_str());
            }
        }
        EventTable changes;
        RC_ASSERT(merge_events(tables[0].table, tables[1].table, changes.table, changes.logger) == nullptr);
        RC_ASSERT(changes.table.get_num_records() >= tables[0].table.get_num_records());
    }));
}

} // namespace
