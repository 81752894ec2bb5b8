#include "changelist/steps/kept_steps.h"

#include "tests/changelist/change_rows.h"
#include "tests/changelist/cut_files.h"

#include <gmock/gmock.h>

namespace {

using bench_kit::words_of;
using change_rows::Row;
using change_rows::steps_of;
using change_rows::Table;
using testing::ElementsAre;

Vector<CutEvent> kept_cut(const std::vector<Row>& made) {
    const Table table(made);
    Vector<CutEvent> cut;
    keep_cut(table.rows, cut);
    return cut;
}

TEST(KeptCut, HoldsEachEvent) {
    Vector<CutEvent> cut =
        kept_cut({{.length = 40, .film = 160, .new_reel = 2, .new_frame = 7, .speed = -2, .ink = 80}});
    ASSERT_EQ(cut.size(), 1U);
    EXPECT_STREQ(cut[0].key_in.get_string(), "KJ1234560010+00");
    EXPECT_STREQ(cut[0].ink_in.get_string(), "AA120005+00");
    EXPECT_STREQ(cut[0].cam_reel, "KJ12");
    EXPECT_EQ(cut[0].speed, -2);
    EXPECT_EQ(cut[0].reel, 2);
    EXPECT_EQ(cut[0].frame, 7);
    EXPECT_EQ(cut[0].length, 40);
    EXPECT_EQ(toUTF8(cut[0].shot_name), LightweightString<char>("shot"));
    EXPECT_STREQ(cut[0].scene, "12A");
    EXPECT_STREQ(cut[0].take, "3");
}

TEST(KeptCut, HasNoOpticals) {
    const Vector<CutEvent> cut = kept_cut({{.length = 5, .optical = 1}, {.length = 6}});
    ASSERT_EQ(cut.size(), 1U);
    EXPECT_EQ(cut[0].length, 6);
}

TEST(KeptCut, LeavesInkInvalidWhereThereIsNone) { EXPECT_FALSE(kept_cut({{.length = 5}})[0].ink_in.is_valid()); }

TEST(KeptCut, CountsKeysThatAreMissingInFourDigits) {
    const Vector<CutEvent> cut = kept_cut({{.length = 5, .missing = 1}});
    EXPECT_EQ(cut[0].key_in.cvt()->count_digits(), 4);
    EXPECT_EQ(cut[0].key_in.type(), edlstr_to_label_type("35mm-4p-4d"));
}

TEST(KeptCut, IsInOrderOfReelAndFrame) {
    const Vector<CutEvent> cut = kept_cut({{.length = 1, .new_reel = 2, .new_frame = 0},
                                           {.length = 2, .new_reel = 1, .new_frame = 9},
                                           {.length = 3, .new_reel = 1, .new_frame = 2},
                                           {.length = 4, .new_reel = 1, .new_frame = 9}});
    std::vector<int> lengths;
    for (const CutEvent& event : cut)
        lengths.push_back(event.length);
    EXPECT_THAT(lengths, ElementsAre(3, 2, 4, 1)) << "equal places stay as the table has them";
}

TEST(KeptMatches, ArePiecesThatNoKindOfChangeNames) {
    const Table table({{.length = 10, .old_reel = 1, .old_frame = 2, .new_reel = 3, .new_frame = 4},
                       {.kind = "I", .length = 5},
                       {.kind = "DU", .length = 5},
                       {.kind = "FX", .length = 5}});
    Vector<MatchedPiece> matched;
    keep_matches(table.rows, matched);
    ASSERT_EQ(matched.size(), 1U);
    EXPECT_EQ(matched[0].old_reel, 1);
    EXPECT_EQ(matched[0].old_frame, 2);
    EXPECT_EQ(matched[0].new_reel, 3);
    EXPECT_EQ(matched[0].new_frame, 4);
    EXPECT_EQ(matched[0].length, 10);
}

TEST(KeptSteps, AreTheStepsOfEachKindOfChange) {
    EXPECT_THAT(words_of(steps_of({{.kind = "I", .event2 = 2, .relpos2 = 15, .length = 5, .new_reel = 1},
                                   {.kind = "DC", .event1 = 1, .relpos1 = 10, .length = 5, .old_reel = 1},
                                   {.kind = "DU", .event1 = 1, .relpos1 = 10, .length = 5, .old_reel = 1},
                                   {.kind = "MF",
                                    .event1 = 3,
                                    .relpos1 = 30,
                                    .event2 = 4,
                                    .relpos2 = 60,
                                    .length = 7,
                                    .old_reel = 1,
                                    .new_reel = 1},
                                   {.kind = "MO", .length = 100, .old_reel = 1, .new_reel = 1}})),
                ElementsAre("lift 5 at 10 of 1", "insert 5 at 10 of 1", "pick up 7 at 25 of 1 to 4",
                            "put down 7 at 48 of 1 from 3"));
}

TEST(KeptSteps, TellWhichFilmTheyAreAbout) {
    Vector<change_step> steps = steps_of({{.kind = "MB",
                                           .event1 = 1,
                                           .relpos1 = 8,
                                           .event2 = 2,
                                           .relpos2 = 3,
                                           .length = 24,
                                           .film = 160,
                                           .old_reel = 1,
                                           .old_frame = 9,
                                           .new_reel = 1,
                                           .new_frame = 3,
                                           .ink = 80},
                                          {.kind = "I", .event2 = 3, .length = 5, .new_reel = 1}});
    ASSERT_EQ(steps.size(), 3U);
    for (change_step* step : {&steps[0], &steps[1]}) {
        EXPECT_STREQ(step->first_key.get_string(), "KJ1234560010+00");
        EXPECT_STREQ(step->last_key.get_string(), "KJ1234560011+07");
        EXPECT_STREQ(step->first_ink.get_string(), "AA120005+00");
        EXPECT_STREQ(step->last_ink.get_string(), "AA120006+07");
        EXPECT_STREQ(step->cam_reel, "KJ12");
        EXPECT_STREQ(step->scene, "12A");
        EXPECT_STREQ(step->take, "3");
        EXPECT_EQ(step->old_reel, 1);
        EXPECT_EQ(step->old_frame, 9);
        EXPECT_EQ(step->reel_length, -1) << "the list doesn't tell";
    }
    EXPECT_EQ(steps[2].old_reel, 0) << "new film lay nowhere";
    EXPECT_FALSE(steps[2].first_ink.is_valid());
}

// The reel's own position forgets what was taken from it; the printed one forgets what was taken anywhere, and
// begins no reel afresh.
TEST(KeptSteps, PrintedPositionsRunOnOverTheReels) {
    const Vector<change_step> steps = steps_of({{.kind = "DC", .event1 = 1, .relpos1 = 1, .length = 1, .old_reel = 1},
                                                {.kind = "DC", .event1 = 2, .length = 1, .old_reel = 2},
                                                {.kind = "I", .event2 = 3, .relpos2 = 5, .length = 4, .new_reel = 2}});
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[1].position, 0);
    EXPECT_EQ(steps[1].printed_position, -1);
    EXPECT_EQ(steps[2].position, 4);
    EXPECT_EQ(steps[2].printed_position, 3);
}

TEST(KeptSteps, AreReadWithoutTouchingTheTable) {
    Table table({{.kind = "I", .event2 = 2, .length = 5, .new_reel = 1},
                 {.kind = "DC", .event1 = 1, .length = 5, .old_reel = 1},
                 {.kind = "MO", .length = 5, .old_reel = 1, .new_reel = 1}});
    tag_kind(table.rows, "DC", 0);
    tag_kind(table.rows, "MO", 1);
    table.rows.set_show_tags_only(1);
    table.rows.set_tag(1, 0);
    Vector<change_step> steps;
    Vector<MatchedPiece> matched;
    Vector<CutEvent> cut;
    keep_detailed_steps(table.rows, steps);
    keep_matches(table.rows, matched);
    keep_cut(table.rows, cut);
    EXPECT_EQ(steps.size(), 1U) << "what the table doesn't show makes no step";
    EXPECT_EQ(cut.size(), 1U);
    EXPECT_EQ(table.rows.get_show_tags_only(), 1);
    EXPECT_EQ(table.rows.get_num_records(), 1U);
    table.rows.set_show_tags_only(0);
    ASSERT_EQ(table.rows.get_num_records(), 3U);
    EXPECT_STREQ(table.rows.get_record(0)->get_field(hf_record_type), "I");
    EXPECT_EQ(table.rows.get_tag(0), 0);
    EXPECT_EQ(table.rows.get_tag(1), 1);
}

TEST(KeptSteps, OfEachListAreGivenOut) {
    KeptRun& run = kept_run();
    run = KeptRun();
    run.detailed.resize(2);
    run.bench.resize(3);
    unsigned count = 0;
    EXPECT_EQ(change_steps(detailed_changes, count), run.detailed.data());
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(change_steps(bench_changes, count), run.bench.data());
    EXPECT_EQ(count, 3U);
    run = KeptRun();
}

using BenchSteps = changelist_test::ChangelistTest;

TEST_F(BenchSteps, ArePlannedWhenSomebodyAsks) {
    const changelist_test::Cut old_cut = {{.frame = 0, .length = 100}, {.frame = 500, .length = 50}};
    const changelist_test::Cut new_cut = {{.frame = 500, .length = 50}, {.frame = 0, .length = 130}};
    block.set("chg_summary_list", "1");
    changes(old_cut, new_cut);
    EXPECT_TRUE(kept_run().bench.empty());
    unsigned asked = 0;
    EXPECT_NE(change_steps(bench_changes, asked), nullptr);
    EXPECT_GT(asked, 0U);
    changes(old_cut, new_cut);
    change_cost planned, simple;
    bench_list_costs(planned, simple);
    EXPECT_EQ(planned.steps, asked);
    EXPECT_GT(simple.steps, 0);
    changes(old_cut, new_cut);
    EXPECT_TRUE(prove_change_steps(bench_changes).proved);
    EXPECT_EQ(prove_change_steps(bench_changes).steps, static_cast<int>(asked));
}

TEST_F(BenchSteps, OfARunWithoutChangesHaveAPlaceAndThoseOfNoRunHaveNone) {
    block.set("chg_summary_list", "1");
    unsigned count = 1;
    for (const changelist_test::Shot& shot : {changelist_test::Shot{.frame = 0, .length = 100}, {.track = 2}}) {
        changes({shot}, {shot});
        for (const change_list list : {detailed_changes, bench_changes}) {
            EXPECT_NE(change_steps(list, count), nullptr);
            EXPECT_EQ(count, 0U);
        }
    }
    EXPECT_NE(run({"not there.cdb"}, {"not there.cdb"}), "");
    for (const change_list list : {detailed_changes, bench_changes})
        EXPECT_EQ(change_steps(list, count), nullptr);
}

} // namespace
