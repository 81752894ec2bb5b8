// "--prove" of cutlist and print from outside.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ProveLists : public ToolTest {
protected:
    void SetUp() override { write_edit("cut.otio"); }

    static std::string example(const std::string& name) { return project_folder() + "/examples/" + name; }
};

TEST_F(ProveLists, SayWhatWasProved) {
    const ToolResult result = run({"cutlist", "cut.otio", "-o", "cut.txt", "--prove", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "proved: 2 events, 84 frames\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ProveLists, HoldWithOptionsThatChangeWhatIsPrinted) {
    const std::vector<std::string> always{
        "cutlist", example("16mm/heron.otio"), "-o", "cut.txt", "--overwrite", "--quiet", "--prove"};
    const std::vector<std::vector<std::string>> options = {
        {"--neg-cut"},           {"--frames"},
        {"--handles", "8"},      {"--neg-cut", "--handles", "3", "--sort-by-key"},
        {"--butt", "0"},         {"--lists", "rolls"},
        {"--lists", "assembly"}, {"--lists", "pull"}};
    for (const std::vector<std::string>& more : options) {
        std::vector<std::string> arguments = always;
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << more.back() << ": " << result.out << result.err;
        EXPECT_EQ(result.out, "proved: 8 events, 534 frames\n");
    }
}

TEST_F(ProveLists, OfSoundAreProvedByTheSoundChannel) {
    const ToolResult result =
        run({"cutlist", example("reel/reel.otio"), "-o", "a.txt", "--channel", "A1", "--prove", "--quiet"});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_EQ(result.out, "proved: 19 events, 1,603 frames\n");
}

// Event 9 of the reel runs backward into a wipe.
TEST_F(ProveLists, FailWithTheRuleByWhichFilmIsLost) {
    const ToolResult result =
        run({"cutlist", example("reel/reel.otio"), "-o", "reel.txt", "--lists", "assembly", "--prove", "--quiet"});
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_THAT(result.out, StartsWith("not proved: 1 failure in 128 events, 5,439 frames\n"
                                       "assembly list, page 1, line "));
    EXPECT_THAT(result.out, HasSubstr(", event 9, frame 544: lists KJ2910106329+15 to 6326+15, but the frames are "
                                      "KJ2910106327+09 to KJ2910106326+13 (rule transition-at-speed: "));
    EXPECT_TRUE(exists("reel.txt") && exists("reel.cdb"));
}

TEST_F(ProveLists, OfATableAreProvedByItOrByTheEdit) {
    ASSERT_EQ(run({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"}).status, 0);
    const ToolResult table = run({"print", "cut.cdb", "-o", "again.txt", "--prove", "--quiet"});
    EXPECT_EQ(table.status, 0) << table.err;
    EXPECT_EQ(table.out, "proved: 2 events, 84 frames\n");
    const ToolResult edit =
        run({"print", "cut.cdb", "-o", "again.txt", "--overwrite", "--prove", "--edit", "cut.otio", "--quiet"});
    EXPECT_EQ(edit.status, 0) << edit.err;
    EXPECT_EQ(edit.out, table.out);
}

TEST_F(ProveLists, FailByAnEditThatIsAnotherOne) {
    ASSERT_EQ(run({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"}).status, 0);
    const ToolResult result =
        run({"print", "cut.cdb", "-o", "again.txt", "--prove", "--edit", example("16mm/heron.otio"), "--quiet"});
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_THAT(result.out, StartsWith("not proved: "));
}

TEST_F(ProveLists, AreRefusedByAnEditWithoutAName) {
    ASSERT_EQ(run({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"}).status, 0);
    expect_failure({"print", "cut.cdb", "-o", "again.txt", "--prove", "--edit", "", "--quiet"}, 1,
                   "quillbrook: \"\": names no file\n");
}

TEST_F(ProveLists, NeedToBeAskedForWhereAnEditIsNamed) {
    ASSERT_EQ(run({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"}).status, 0);
    const ToolResult result = run({"print", "cut.cdb", "-o", "again.txt", "--edit", "cut.otio"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("--prove"));
    EXPECT_FALSE(exists("again.txt"));
}

TEST_F(ProveLists, TellOnceByWhichRuleFilmIsPrintedOtherwise) {
    write("one.otio",
          R"({"OTIO_SCHEMA": "Clip.1", "name": "1-1", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
              "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
              "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 24}},
              "metadata": {"quillbrook": {"cam_reel": "A1", "film": "65mm-5p80", "keycode": "KJ1234560100+00",
                                          "ink": "35mm-4p", "inkcode": "WE010012+08"}}})");
    const auto told = [&](const char* lists) {
        return run({"cutlist", "one.otio", "-o", "one.txt", "--overwrite", "--prove", "--quiet", "--lists", lists}).out;
    };
    const std::string rule = "event 1, frame 0: NO INKCODE to NO INKCODE, the film has WE010012+08 to 0013+15 (rule "
                             "no-ink-kind: film of a kind that has no feet is listed without its ink numbers)";
    EXPECT_EQ(told("assembly"),
              "proved: 1 event, 24 frames\nby a rule: assembly list, page 1, line 11, " + rule + "\n");
    EXPECT_EQ(told("assembly,pull"),
              "proved: 1 event, 24 frames\nby a rule: pull list, page 1, line 14, " + rule + " and 1 more\n");
}

TEST_F(ProveLists, HoldWithKeyNumbersOfAsManyDigitsAsAreAskedFor) {
    ASSERT_EQ(
        run({"log", "import", example("edl/days.ale"), example("edl/night.flx"), "-o", "show.RDB", "--quiet"}).status,
        0);
    for (const auto& [digits, number] : {std::pair("0", " KJ2910105869+08 "), std::pair("1", " KJ29101005869+08 "),
                                         std::pair("2", " KJ291010005869+08 ")}) {
        const ToolResult result =
            run({"cutlist", example("edl/ferryman.edl"), "--rate", "25", "--log", "show.RDB", "-o", "cut.txt",
                 "--overwrite", "--prove", "--quiet", "--set", std::string("long_keycode=") + digits});
        EXPECT_EQ(result.out, "proved: 65 events, 4,148 frames\n") << digits << result.err;
        EXPECT_THAT(read("cut.txt"), HasSubstr(number));
    }
}

// The start of that timecode is made another than that of the edit's own, so that either can be told from the other.
TEST_F(ProveLists, OfSoundByTimecodeOfTwentyFourFrames) {
    std::string edit = read(example("reel/reel.otio"));
    const std::string kept = R"("timecode_24p": "01:00:00:00")";
    ASSERT_NE(edit.find(kept), std::string::npos);
    write("reel.otio", edit.replace(edit.find(kept), kept.size(), R"("timecode_24p": "09:00:00:00")"));
    for (const auto& [setting, start] : {std::pair("0", "01:00:00:00"), std::pair("1", "09:00:00:00")}) {
        const ToolResult result = run({"cutlist", "reel.otio", "-o", "a.txt", "--overwrite", "--channel", "A1",
                                       "--prove", "--quiet", "--config", "audio_cutlist_by_timecode_test=1", "--config",
                                       std::string("audio_cutlist_24P=") + setting});
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        EXPECT_EQ(result.out, "proved: 19 events, 1,603 frames\n");
        EXPECT_THAT(read("a.txt"), HasSubstr(std::string("\n  1  ") + start));
    }
}

// In an edit of another rate it counts otherwise, too.
TEST_F(ProveLists, OfSoundByTimecodeOfTwentyFourFramesInAnEditOfThirty) {
    std::string edit = read(example("29.97df/newsroom.otio"));
    const std::string drop = R"("drop_frame": true)";
    ASSERT_NE(edit.find(drop), std::string::npos);
    write("news.otio", edit.replace(edit.find(drop), drop.size(), drop + R"(, "timecode_24p": "09:00:00:00")"));
    const ToolResult result = run({"cutlist", "news.otio", "-o", "a.txt", "--channel", "A1", "--prove", "--quiet",
                                   "--config", "audio_cutlist_by_timecode_test=1", "--config", "audio_cutlist_24P=1"});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_THAT(result.out, StartsWith("proved: "));
    EXPECT_THAT(read("a.txt"), HasSubstr("\n  1  09:00:00:00"));
}

} // namespace
