// The detailed list of changes.

#include "changelist/lists/change_units.h"
#include "tests/changelist/reports_fixture.h"

#include <cstdio>
#include <limits>

using namespace reports_test;

namespace {

class DetailedListTest : public ChangeListTest {
protected:
    // Positions of steps count on the film as the steps ahead leave it, with what they removed.
    void add_steps() {
        add({.kind = "MF",
             .event1 = 2,
             .relpos1 = 50,
             .event2 = 4,
             .relpos2 = 130,
             .length = 10,
             .key_in = "KJ1234560200+00",
             .key_out = "KJ1234560200+09",
             .name = "Quay",
             .scene = "12B",
             .take = "1"});
        add({.kind = "DC",
             .event1 = 1,
             .relpos1 = 10,
             .length = 24,
             .key_in = "KJ1234560100+00",
             .key_out = "KJ1234560101+07",
             .name = "Harbour at night, wide",
             .scene = "12A",
             .take = "3",
             .subevent1 = 1});
        for (const int part : {1, 2, 3})
            add({.kind = "DU", .event1 = 1, .relpos1 = 2 + 8 * part, .length = 8, .name = "Part", .subevent1 = part});
        add({.kind = "I",
             .event2 = 3,
             .relpos2 = 80,
             .length = 40,
             .key_in = "KJ1234560300+00",
             .key_out = "KJ1234560302+07",
             .name = "Pier",
             .scene = "13",
             .take = "2"});
        add({.kind = "MO", .length = 500, .name = "Stays"});
        add({.kind = "FX", .length = 500, .name = "Dissolve"});
    }
    static std::string section(const std::string& heads) {
        return "\n\n\n\n\n\nDETAILED LIST OF CHANGES:\n\n" + heads + rule() + "\n";
    }
    void without_keys() { options().show_edge_codes = false; }
};

} // namespace

// Step 2 stands at 50 of the film with the 24 deleted frames, so at 26 on the bench; step 3 at 80 less 24 and 10.
TEST_F(DetailedListTest, ByNameWithKeys) {
    add_steps();
    EXPECT_EQ(
        changes(),
        section("   Step     At This      At This        Do This             For This      First/Last KEY    "
                "Shot Name                 TOTAL\n"
                "             Seq TC     Position                              Length                       "
                "                          CHANGE") +
            R"(      1 01:00:00:10     0000010      DELETE SHOT(s)          0000024     KJ1234560100+00    Harbour at night        - 0000024
        01:00:01:09     0000033                                          KJ1234560101+07
      2 01:00:01:02     0000026      MOVE SHOT(s)            0000010     KJ1234560200+00    Quay                    - 0000034
        01:00:01:11     0000035          TO     4                        KJ1234560200+09
      3 01:00:01:22     0000046      INSERT SHOT             0000040     KJ1234560300+00    Pier                    + 0000006
        01:00:03:13     0000085                                          KJ1234560302+07
      4 01:00:04:00     0000096      INSERT SHOT(s)          0000010     KJ1234560200+00    Quay                    + 0000016
        01:00:04:09     0000105        FROM     2                        KJ1234560200+09
)" + rule());
    EXPECT_TRUE(logger.said("Writing detailed list of changes", 0));
}

TEST_F(DetailedListTest, ByNameWithoutKeys) {
    without_keys();
    add_steps();
    EXPECT_EQ(
        changes(),
        section("   Step     At This      At This        Do This             For This     Shot Name          "
                "       TOTAL\n"
                "             Seq TC     Position                              Length                        "
                "      CHANGE") +
            R"(      1 01:00:00:10     0000010      DELETE SHOT(s)          0000024     Harbour at night        - 0000024
        01:00:01:09     0000033
      2 01:00:01:02     0000026      MOVE SHOT(s)            0000010     Quay                    - 0000034
        01:00:01:11     0000035          TO     4
      3 01:00:01:22     0000046      INSERT SHOT             0000040     Pier                    + 0000006
        01:00:03:13     0000085
      4 01:00:04:00     0000096      INSERT SHOT(s)          0000010     Quay                    + 0000016
        01:00:04:09     0000105        FROM     2
)" + rule());
}

TEST_F(DetailedListTest, BySceneAndTakeWithoutKeysInFeet) {
    options().use_scene_take = 1;
    use_feet();
    without_keys();
    add_steps();
    EXPECT_EQ(
        changes(),
        section("   Step     At This      At This        Do This             For This     Scene            "
                "Take                      TOTAL\n"
                "             Seq TC     Position                              Length                     "
                "                          CHANGE") +
            R"(      1 01:00:00:10     0000+10      DELETE SHOT(s)          0001+08     12A              3                        -0001+08
        01:00:01:09     0002+01
      2 01:00:01:02     0001+10      MOVE SHOT(s)            0000+10     12B              1                        -0002+02
        01:00:01:11     0002+03          TO     4
      3 01:00:01:22     0002+14      INSERT SHOT             0002+08     13               2                        +0000+06
        01:00:03:13     0005+05
      4 01:00:04:00     0006+00      INSERT SHOT(s)          0000+10     12B              1                        +0001+00
        01:00:04:09     0006+09        FROM     2
)" + rule());
}

// The last stop stands at column 125, so the page's width cuts the total.
TEST_F(DetailedListTest, BySceneAndTakeWithKeysInTimecodeRunsIntoThePageWidth) {
    options().use_scene_take = 1;
    use_timecode();
    add_steps();
    EXPECT_EQ(
        changes(),
        section("   Step     At This      At This        Do This             For This      First/Last KEY    "
                "Scene            Take                 \n"
                "             Seq TC     Position                              Length                       "
                "                                       ") +
            R"(      1 01:00:00:10 00:00:00:10      DELETE SHOT(s)      00:00:01:00     KJ1234560100+00    12A              3                    
        01:00:01:09 00:00:01:09                                          KJ1234560101+07
      2 01:00:01:02 00:00:01:02      MOVE SHOT(s)        00:00:00:10     KJ1234560200+00    12B              1                    
        01:00:01:11 00:00:01:11          TO     4                        KJ1234560200+09
      3 01:00:01:22 00:00:01:22      INSERT SHOT         00:00:01:16     KJ1234560300+00    13               2                    
        01:00:03:13 00:00:03:13                                          KJ1234560302+07
      4 01:00:04:00 00:00:04:00      INSERT SHOT(s)      00:00:00:10     KJ1234560200+00    12B              1                    
        01:00:04:09 00:00:04:09        FROM     2                        KJ1234560200+09
)" + rule());
}

TEST_F(DetailedListTest, TotalsInTimecode) {
    without_keys();
    use_timecode();
    add({.kind = "DC", .event1 = 1, .length = 30, .name = "A"});
    add({.kind = "I", .event2 = 2, .relpos2 = 30, .length = 30, .name = "B"});
    add({.kind = "I", .event2 = 3, .relpos2 = 60, .length = 30, .name = "C"});
    EXPECT_EQ(
        below_heads(changes()),
        R"(      1 01:00:00:00 00:00:00:00      DELETE SHOT(s)      00:00:01:06     A                    -00:00:01:06
        01:00:01:05 00:00:01:05
      2 01:00:00:00 00:00:00:00      INSERT SHOT         00:00:01:06     B                     00:00:00:00
        01:00:01:05 00:00:01:05
      3 01:00:01:06 00:00:01:06      INSERT SHOT         00:00:01:06     C                    +00:00:01:06
        01:00:02:11 00:00:02:11
)" + rule());
}

TEST_F(DetailedListTest, FramesHaveSevenPlacesOrAsManyAsTheyNeed) {
    const ChangeUnits units(label_key_35mm_4p);
    for (const int power : {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000}) {
        for (const int frames : {power - 1, power, power + 1, -power, 1 - power, -1 - power}) {
            char plain[16];
            std::snprintf(plain, sizeof plain, "%07d", frames);
            EXPECT_STREQ(units.behind("", frames).text, plain);
        }
    }
    EXPECT_STREQ(units.behind("", std::numeric_limits<int>::min()).text, "-2147483648");
    EXPECT_STREQ(units.behind("", std::numeric_limits<int>::max()).text, "2147483647");
}

TEST_F(DetailedListTest, AMoveIsTwoStepsThatNameEachOtherAndCancel) {
    without_keys();
    add({.kind = "MB", .event1 = 2, .relpos1 = 60, .event2 = 1, .relpos2 = 20, .length = 10, .name = "Quay"});
    EXPECT_EQ(
        below_heads(changes()),
        R"(      1 01:00:00:20     0000020      INSERT SHOT(s)          0000010     Quay                    + 0000010
        01:00:01:05     0000029        FROM     2
      2 01:00:02:12     0000060      MOVE SHOT(s)            0000010     Quay                      0000000
        01:00:02:21     0000069          TO     1
)" + rule());
}

TEST_F(DetailedListTest, ADeletionOfSeveralPartsIsOneStep) {
    add_steps();
    const std::string list = changes();
    EXPECT_EQ(list.find("DELETE"), list.rfind("DELETE"));
    EXPECT_EQ(list.find("Part"), std::string::npos);
}

TEST_F(DetailedListTest, TheLastTotalIsTheSummarysTotal) {
    without_keys();
    add_steps();
    EXPECT_NE(summary().find("+0000016 "), std::string::npos);
    const std::string list = changes();
    EXPECT_EQ(list.substr(list.rfind("+ "), 9), "+ 0000016");
}

TEST_F(DetailedListTest, NewMaterialIsNumberedAsItsStep) {
    add_steps();
    EXPECT_NE(new_material().find(" Pier                 01:00:00:00     KJ1234560300+00         0000040         3\n"),
              std::string::npos);
    EXPECT_NE(changes().find("      3 01:00:01:22     0000046      INSERT SHOT   "), std::string::npos);
}

TEST_F(DetailedListTest, StandsTheSameBehindTheListOfNewMaterial) {
    add_steps();
    const std::string alone = changes();
    new_material();
    EXPECT_EQ(changes(), alone);
}

TEST_F(DetailedListTest, WithoutChangesHasWordsAndNoClosingRule) {
    without_keys();
    add({.kind = "MO", .length = 500});
    add({.kind = "FX", .length = 500});
    add({.length = 500});
    EXPECT_EQ(below_heads(changes()), " THERE ARE NO CHANGES TO MAKE\n");
}

TEST_F(DetailedListTest, LoneDeletedPartsPrintNothingButTheRule) {
    add({.kind = "DU", .event1 = 1, .length = 8});
    EXPECT_EQ(below_heads(changes()), rule());
}

TEST_F(DetailedListTest, KeysAreCutAtFifteenCharacters) {
    add({.kind = "I", .event2 = 1, .length = 1, .key_in = "KJ1234561234567+05", .key_out = "KJ1234561234567+05"});
    const std::string list = changes();
    EXPECT_NE(list.find(" KJ1234561234567 "), std::string::npos);
    EXPECT_NE(list.find(" KJ1234561234567\n"), std::string::npos);
}

TEST_F(DetailedListTest, ASequenceWithoutTimecodeLeavesItsColumnsBlank) {
    without_keys();
    change_run() = ChangeRun();
    add({.kind = "I", .event2 = 1, .length = 12, .name = "Pier"});
    EXPECT_EQ(
        below_heads(changes()),
        R"(      1                 0000000      INSERT SHOT             0000012     Pier                    + 0000012
                        0000011
)" + rule());
}

TEST_F(DetailedListTest, WildNumbersWrapAndLongTextsAreCut) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    without_keys();
    add({.kind = "MF", .event1 = highest, .relpos1 = lowest, .event2 = lowest, .relpos2 = highest, .length = lowest});
    add({.kind = "DC", .event1 = -1, .relpos1 = highest, .length = highest});
    add({.kind = "DC", .event1 = -2, .relpos1 = highest, .length = lowest});
    const std::string frames = changes();
    // 8 characters of lead and 11 of the number fill the buffer.
    EXPECT_NE(frames.find("      - -2147483648"), std::string::npos);
    use_feet();
    EXPECT_NE(changes().find("TO -2147483648"), std::string::npos);
    use_timecode();
    EXPECT_NE(changes().find("TO -2147483648"), std::string::npos);
}

TEST_F(DetailedListTest, FilmOf65mmCountsFramesForFeet) {
    without_keys();
    use_feet();
    chgdb wide_film(edlstr_to_label_type("65mm-5p120"), &logger);
    add(wide_film, {.kind = "I", .event2 = 1, .relpos2 = 6, .length = 30, .name = "Pier"});
    EXPECT_EQ(
        below_heads(printed([&](report& out) { write_changes(out, wide_film, logger); })),
        R"(      1 01:00:00:06     6            INSERT SHOT             30          Pier                          +30
        01:00:01:11     35
)" + rule());
}
