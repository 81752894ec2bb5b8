#include "tests/changelist/moves_fixture.h"

namespace {

class ReusedMaterialTest : public MovesTest {
protected:
    ReusedMaterialTest() : old_events(label_key_35mm_4p, &logger), reused(label_key_35mm_4p, &logger) {}

    void add_old(const char* key, int length) { add_to(old_events, record("", key, length)); }
    /// "first-last xLENGTH" of each find.
    Lines found() {
        EXPECT_EQ(find_reused_material(changes, old_events, reused, logger), nullptr);
        Lines result;
        for (unsigned row = 0; row < reused.get_num_records(); ++row) {
            result.push_back(field(reused, row, hf_keycode_in) + "-" + field(reused, row, hf_keycode_out) + " x" +
                             field(reused, row, hf_edit_length));
        }
        return result;
    }

    chgdb old_events;
    chgdb reused;
};

TEST_F(ReusedMaterialTest, FilmThatIsInsideAnOldEventIsFoundWhole) {
    add_old("KJ1234560100+00", 100);
    add(inserted({1, 0}, 10, "KJ1234560101+00"));
    EXPECT_EQ(found(), Lines{"KJ1234560101+00-KJ1234560101+09 x10"});
    EXPECT_TRUE(logger.said(toUTF8(resourceStrW(10268)).c_str(), 0));
}

TEST_F(ReusedMaterialTest, AHeadInAnOldEventIsFoundUpToItsEnd) {
    add_old("KJ1234560100+00", 20);
    add(inserted({1, 0}, 32, "KJ1234560101+00"));
    EXPECT_EQ(found(), Lines{"KJ1234560101+00-KJ1234560101+03 x4"});
}

TEST_F(ReusedMaterialTest, ATailInAnOldEventIsFoundFromItsStart) {
    add_old("KJ1234560102+00", 32);
    add(inserted({1, 0}, 32, "KJ1234560101+00"));
    EXPECT_EQ(found(), Lines{"KJ1234560102+00-KJ1234560102+15 x16"});
}

TEST_F(ReusedMaterialTest, FilmThatBeginsWithTheOldEventHasItsInkNumber) {
    ChangeRecord old_event = record("", "KJ1234560101+00", 20);
    ChangeRecord wanted = inserted({1, 0}, 10, "KJ1234560101+00");
    for (ChangeRecord* row : {&old_event, &wanted})
        row->inkcode_in = LabelPoint(row == &wanted ? 400 : 800, label_t_to_ink_label_t(label_key_35mm_4p));
    add_to(old_events, old_event);
    add(wanted);
    EXPECT_EQ(found(), Lines{"KJ1234560101+00-KJ1234560101+09 x10"});
    LabelPoint ink = old_event.inkcode_in;
    EXPECT_EQ(field(reused, 0, hf_inkcode_in), ink.get_string());
}

TEST_F(ReusedMaterialTest, WhatRemainsOnBothSidesIsLookedForToo) {
    add_old("KJ1234560104+00", 4);
    add_old("KJ1234560100+00", 8);
    add_old("KJ1234560102+00", 8);
    add(inserted({1, 0}, 80, "KJ1234560100+04"));
    EXPECT_EQ(found(), (Lines{"KJ1234560100+04-KJ1234560100+07 x4", "KJ1234560102+00-KJ1234560102+07 x8",
                              "KJ1234560104+00-KJ1234560104+03 x4"}));
}

TEST_F(ReusedMaterialTest, OpticalsAndOtherSpeedsOfTheOldCutAreLeftOut) {
    ChangeRecord optical = record("", "KJ1234560100+00", 50);
    optical.optical = 1;
    add_to(old_events, optical);
    ChangeRecord fast = record("", "KJ1234560100+00", 50);
    fast.speed = 2;
    add_to(old_events, fast);
    add(inserted({1, 0}, 10, "KJ1234560101+00"));
    EXPECT_EQ(found(), Lines());
}

TEST_F(ReusedMaterialTest, NewMaterialAtAnotherSpeedIsAlwaysTaken) {
    ChangeRecord fast = inserted({1, 0}, 10, "KJ1234560101+00");
    fast.speed = 2;
    add(fast);
    EXPECT_EQ(found().size(), 1u);
}

TEST_F(ReusedMaterialTest, FillerIsNoFilm) {
    add_old("__BLACK_0000+00", 50);
    add(inserted({1, 0}, 10, "__BLACK_0001+00"));
    EXPECT_EQ(found(), Lines());
}

TEST_F(ReusedMaterialTest, NewMaterialIsLookedForAmongTheRowsBehindIt) {
    add(inserted({1, 0}, 16, "KJ1234560100+00"));
    add(inserted({1, 50}, 16, "KJ1234560100+08"));
    EXPECT_EQ(found(), Lines{"KJ1234560100+08-KJ1234560100+15 x8"});
}

// Everybody's film is everybody else's: without a limit there were some fifty thousand finds.
TEST_F(ReusedMaterialTest, FindsAreLimitedByTheRows) {
    for (int i = 0; i < 300; ++i) {
        add_old(("KJ123456" + std::to_string(1000 + i) + "+00").c_str(), 16);
        add(inserted({1, 0}, 300 * 16, "KJ1234561000+00"));
    }
    EXPECT_EQ(found().size(), 600u);
}

} // namespace
