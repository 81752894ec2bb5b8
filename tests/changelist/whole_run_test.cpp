// Whole runs on small cuts, read as the person at the bench reads them: line by line, blanks apart.

#include "tests/changelist/cut_files.h"

#include <algorithm>
#include <sstream>

namespace {

using namespace changelist_test;

const Shot shot_a{.frame = 0, .length = 100, .name = "A"};
const Shot shot_b{.frame = 500, .length = 50, .name = "B"};
const Shot shot_c{.frame = 1000, .length = 80, .name = "C"};
const Shot shot_d{.frame = 2000, .length = 30, .name = "D"};

Shot part(Shot shot, int from, int length) {
    shot.frame += from;
    shot.length = length;
    return shot;
}

class WholeRun : public ChangelistTest {
protected:
    WholeRun() { ask_for_all(); }

    void compare(const Cut& old_cut, const Cut& new_cut) { keep_lines(changes(old_cut, new_cut)); }

    void compare_reels(const std::vector<Cut>& old_cuts, const std::vector<Cut>& new_cuts) {
        ASSERT_EQ(run(files("old", old_cuts), files("new", new_cuts)), "");
        keep_lines(report());
    }

    bool has(const std::string& line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }
    /// The lines of a list that hold a word, blanks apart.
    std::vector<std::string> with(const std::string& word) const {
        std::vector<std::string> found;
        for (const std::string& line : lines)
            if (line.find(word) != std::string::npos) found.push_back(line);
        return found;
    }

    std::vector<std::string> lines;

private:
    std::vector<std::string> files(const char* side, const std::vector<Cut>& cuts) const {
        std::vector<std::string> names;
        for (const Cut& cut : cuts)
            names.push_back(write(side + std::to_string(names.size()) + ".cdb", cut));
        return names;
    }

    void keep_lines(const std::string& text) {
        lines.clear();
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            std::istringstream words(line);
            std::string joined;
            for (std::string word; words >> word;)
                joined += (joined.empty() ? "" : " ") + word;
            lines.push_back(joined);
        }
    }
};

using Lines = std::vector<std::string>;

TEST_F(WholeRun, IdenticalCutsHaveNothingToDo) {
    compare({shot_a, shot_b}, {shot_a, shot_b});
    EXPECT_TRUE(has("0000150 0000000 0000000 0000000 +0000000 0000150"));
    EXPECT_TRUE(has("THERE ARE NO CHANGES TO MAKE"));
    EXPECT_TRUE(has("There are no new inserts"));
    EXPECT_TRUE(has("There are no transitions in the new edit"));
}

//     old   A B C        new   A C D B         B, the shorter, moves
TEST_F(WholeRun, AMoveIsTwoStepsThatNameEachOther) {
    compare({shot_a, shot_b, shot_c}, {shot_a, shot_c, shot_d, shot_b});
    EXPECT_EQ(with(" SHOT"), (Lines{
                                 "1 01:00:04:04 0000100 MOVE SHOT(s) 0000050 KJ1234560031+04 B - 0000050",
                                 "2 01:00:07:12 0000180 INSERT SHOT 0000030 KJ1234560125+00 D - 0000020",
                                 "3 01:00:08:18 0000210 INSERT SHOT(s) 0000050 KJ1234560031+04 B + 0000030",
                             }));
    EXPECT_TRUE(has("01:00:06:05 0000149 TO 3 KJ1234560034+05"));
    EXPECT_TRUE(has("01:00:10:19 0000259 FROM 1 KJ1234560034+05"));
    EXPECT_TRUE(has("0000230 0000030 0000000 0000050 +0000030 0000260"));
    EXPECT_TRUE(prove_change_steps(detailed_changes).proved);
}

TEST_F(WholeRun, TheStepOfNewMaterialIsThatOfTheDetailedList) {
    compare({shot_a, shot_b, shot_c}, {shot_a, shot_c, shot_d, shot_b});
    EXPECT_TRUE(has("D 00:01:23:08 KJ1234560125+00 0000030 2"));
}

TEST_F(WholeRun, NeighboursThatGoAreOneStep) {
    compare({shot_a, shot_b, shot_c, shot_d}, {shot_d});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:00:00 0000000 DELETE SHOT(s) 0000230 KJ1234560000+00 A - 0000230"}));
    EXPECT_TRUE(has("0000260 0000000 0000230 0000000 -0000000 0000030"));
}

//     old   |------- A 100 -------|         new   |-- A 40 --| D |-- A 60 --|
TEST_F(WholeRun, AnEventCutInTwoIsKeptWholeAroundWhatIsPutBetween) {
    compare({shot_a}, {part(shot_a, 0, 40), shot_d, part(shot_a, 40, 60)});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:01:16 0000040 INSERT SHOT 0000030 KJ1234560125+00 D + 0000030"}));
}

TEST_F(WholeRun, AShortenedTailIsDeleted) {
    compare({shot_a, shot_b}, {part(shot_a, 0, 90), shot_b});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:03:18 0000090 DELETE SHOT(s) 0000010 KJ1234560005+10 A - 0000010"}));
}

TEST_F(WholeRun, AnExtensionIsNewMaterial) {
    compare({shot_a, shot_b}, {part(shot_a, 0, 110), shot_b});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:04:04 0000100 INSERT SHOT 0000010 KJ1234560006+04 A + 0000010"}));
}

TEST_F(WholeRun, TheSecondUseOfAShotIsNewMaterial) {
    compare({shot_a, shot_b}, {shot_a, shot_b, shot_a});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:06:06 0000150 INSERT SHOT 0000100 KJ1234560000+00 A + 0000100"}));
}

TEST_F(WholeRun, TheUseOnItsOwnReelIsTheOneThatIsKept) {
    compare_reels({{shot_a}, {shot_b, shot_c}}, {{shot_a, shot_b}, {shot_b, shot_c}});
    EXPECT_EQ(with(" SHOT"), (Lines{"1 01:00:04:04 0000100 INSERT SHOT 0000050 KJ1234560031+04 B + 0000050"}));
}

TEST_F(WholeRun, BlackBetweenTheSameShotsIsKeptAndElsewhereIsNot) {
    compare({shot_a, black(20), shot_b, shot_c}, {shot_a, black(20), shot_b, shot_c});
    EXPECT_TRUE(has("THERE ARE NO CHANGES TO MAKE"));
    compare({shot_a, black(20), shot_b, shot_c, shot_d}, {shot_a, shot_b, shot_c, black(20), shot_d});
    EXPECT_EQ(with(" SHOT"), (Lines{
                                 "1 01:00:04:04 0000100 DELETE SHOT(s) 0000020 __BLACK_0000+00 Black - 0000020",
                                 "2 01:00:09:14 0000230 INSERT SHOT 0000020 __BLACK_0000+00 Black 0000000",
                             }));
}

TEST_F(WholeRun, ANewSpeedIsNewMaterial) {
    Shot fast = shot_b;
    fast.speed = 2.0;
    compare({shot_a, fast}, {shot_a, shot_b});
    EXPECT_EQ(with(" SHOT").size(), 2U);
}

TEST_F(WholeRun, AChangedDissolveMovesTheCutAndNotTheFilm) {
    const auto dissolve = [](int length) {
        Shot out = shot_a;
        Shot in = shot_c;
        out.length -= length / 2;
        in.frame += length / 2;
        in.length -= length / 2;
        out.out_op = "DO";
        in.in_op = "DI";
        out.out_length = in.in_length = length;
        return Cut{out, in};
    };
    compare(dissolve(24), dissolve(12));
    EXPECT_TRUE(has("THERE ARE NO CHANGES TO MAKE"));
    EXPECT_TRUE(has("Transition IN-COMING"));
    EXPECT_TRUE(has("01:00:04:04 0000100 KJ1234560062+08 0000006"));
    EXPECT_TRUE(has("01:00:03:22 0000094 KJ1234560005+14 0000006"));
}

TEST_F(WholeRun, AShotOfALaterReelMovesBackAndOneOfAnEarlierForward) {
    compare_reels({{shot_a, shot_b}, {shot_c, shot_d}}, {{shot_a, shot_d}, {shot_c, shot_b}});
    EXPECT_EQ(with("MOVE SHOT(s)").size(), 2U);
    EXPECT_EQ(with("INSERT SHOT(s)").size(), 2U);
    unsigned count = 0;
    const change_step* steps = change_steps(detailed_changes, count);
    ASSERT_EQ(count, 4U);
    EXPECT_EQ(steps[0].action, change_pick_up);
    EXPECT_EQ(steps[0].reel, 1);
    EXPECT_EQ(steps[3].action, change_put_down);
    EXPECT_EQ(steps[3].reel, 1);
    EXPECT_EQ(steps[3].other_step, 2);
}

TEST_F(WholeRun, SoundNeverGetsTheListOfTransitions) {
    const Header sound{.channel = "A05"};
    ASSERT_EQ(run({write("a.cdb", {shot_a}, sound)}, {write("b.cdb", {shot_b}, sound)}), "");
    EXPECT_EQ(report().find("TRANSITIONS"), std::string::npos);
}

TEST_F(WholeRun, AFailedRunLeavesNoSteps) {
    compare({shot_a, shot_b}, {shot_b});
    unsigned count = 0;
    change_steps(detailed_changes, count);
    EXPECT_EQ(count, 1U);
    EXPECT_NE(run({scratch.file("none.cdb")}, {scratch.file("none.cdb")}), "");
    change_steps(detailed_changes, count);
    EXPECT_EQ(count, 0U);
    EXPECT_FALSE(prove_change_steps(detailed_changes).proved);
}

} // namespace
