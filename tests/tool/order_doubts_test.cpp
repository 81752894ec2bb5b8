// Orders of film that rolls, tracks and numbers tell in more ways than one.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

std::string time(std::int64_t frames) {
    return R"({"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": )" + std::to_string(frames) + "}";
}

std::string range(std::int64_t first, std::int64_t frames) {
    return R"({"OTIO_SCHEMA": "TimeRange.1", "start_time": )" + time(first) + R"(, "duration": )" + time(frames) + "}";
}

/// Of media of 100 frames from 01:00:00:00 on tape T1; `film` has its key number and rolls.
std::string clip(const std::string& name, std::int64_t first, std::int64_t frames, const std::string& film,
                 const std::string& effects = "") {
    return R"({"OTIO_SCHEMA": "Clip.1", "name": ")" + name + R"(", "source_range": )" + range(86400 + first, frames) +
           R"(, "effects": [)" + effects + R"(], "media_reference": {"OTIO_SCHEMA": "ExternalReference.1", "name": ")" +
           name + R"(", "target_url": "file:///m/)" + name + R"(.mxf", "available_range": )" + range(86400, 100) +
           R"(, "metadata": {"quillbrook": {"reel": "T1", "film": "35mm-4p", )" + film + "}}}}";
}

std::string speed(double times) {
    return R"({"OTIO_SCHEMA": "LinearTimeWarp.1", "time_scalar": )" + std::to_string(times) + "}";
}

std::string track(const std::string& children, int subtype = 0) {
    return R"({"OTIO_SCHEMA": "Track.1", "kind": "Video", "metadata": {"quillbrook": {"subtype": )" +
           std::to_string(subtype) + R"(}}, "children": [)" + children + "]}";
}

std::string edit(const std::string& tracks) {
    return R"({"OTIO_SCHEMA": "Timeline.1", "name": "R", "global_start_time": )" + time(86400) +
           R"(, "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [)" + tracks + "]}}";
}

std::string film(const std::string& key, const std::string& roll, const std::string& more = "") {
    return R"("keycode": ")" + key + '"' + (roll.empty() ? "" : R"(, "cam_reel": ")" + roll + '"') + more;
}

class OrderDoubts : public ToolTest {
protected:
    ToolResult order(const std::string& tracks, const std::vector<std::string>& more = {}) {
        write("r.otio", edit(tracks));
        std::vector<std::string> line{"order", "r.otio", "-o", "o.txt", "--prove"};
        line.insert(line.end(), more.begin(), more.end());
        ToolResult result = run(line);
        EXPECT_EQ(result.status, 0) << result.err;
        return result;
    }
    /// The places of some texts in the order, each behind the one before.
    void expect_in_order(const std::vector<std::string>& texts) {
        const std::string text = read("o.txt");
        std::size_t at = 0;
        for (const std::string& one : texts) {
            EXPECT_NE(text.find(one, at), std::string::npos) << one << "\n" << text;
            at = std::min(text.find(one, at), text.size());
        }
    }
};

TEST_F(OrderDoubts, PiecesOfARollGoByTheirNumbersWhateverThePerforation) {
    const auto take = [](const std::string& key) {
        return R"("keycode": ")" + key + R"(", "cam_reel": "A1", "film": "35mm-3p")";
    };
    order(track(clip("a", 0, 10, take("KJ1234560110+00.3")) + "," + clip("b", 0, 10, take("KJ1234560100+00.1")) + "," +
                clip("c", 0, 10, take("KJ1234560105+00.2"))));
    expect_in_order({"  1  KJ1234560100+00", "  2  KJ1234560105+00", "  3  KJ1234560110+00"});
}

TEST_F(OrderDoubts, FilmThatTwoPiecesHoldIsTold) {
    const std::string a = clip("a", 0, 40, film("KJ1234560100+00", "A1"));
    EXPECT_THAT(order(track(a + "," + clip("b", 0, 40, film("KJ1234560100+08.2", "A1")))).err,
                HasSubstr("piece 2 holds film of piece 1 again: their frames lie otherwise between the perforations"));
    EXPECT_THAT(run({"order", "r.otio", "-o", "p.txt", "--quiet"}).err, IsEmpty());
    write("r.otio", edit(track(a + "," + clip("b", 0, 40, film("KJ1234560100+08", "")))));
    EXPECT_THAT(run({"order", "r.otio", "-o", "q.txt"}).err, HasSubstr("again: one of them names no roll"));
    write("r.otio", edit(track(a + "," + clip("b", 0, 40, film("KJ1234560100+08.2", "B7")))));
    EXPECT_THAT(run({"order", "r.otio", "-o", "s.txt"}).err, Not(HasSubstr("again")))
        << "two rolls may have one number";
}

TEST_F(OrderDoubts, TracksThatNoListShowsAreTold) {
    const std::string other = clip("b", 0, 20, film("KJ1234560300+00", "A1"));
    EXPECT_THAT(order(track(clip("a", 0, 20, film("KJ1234560100+00", "A1"))) + "," + track(other + "," + other, 4)).err,
                HasSubstr("r.otio: a picture track of sub-type 4 isn't listed; the film of its 2 shots isn't counted"));
    EXPECT_THAT(read("o.txt"), Not(HasSubstr("KJ1234560300")));
}

TEST_F(OrderDoubts, TablesOfSoundAreRefused) {
    const ToolResult result = run({"order", project_folder() + "/examples/reel/expected/reel-a1.cdb", "-o", "o.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("is a table of sound, and only picture film is ordered"));
}

TEST_F(OrderDoubts, NumbersBelowTheFirstAreLeftOutOfAllFiles) {
    const ToolResult result =
        order(track(clip("a", -5, 20, film("KJ1234560000+00", "A1"))), {"--otio", "s.otio", "--ale", "s.ale"});
    EXPECT_THAT(result.err, HasSubstr("s.otio: piece 1: its key numbers begin below 0000+00, and are left out"));
    EXPECT_THAT(read("s.otio"), Not(HasSubstr("KJ1234560000-05")));
    EXPECT_THAT(read("s.ale"), Not(HasSubstr("KJ1234560000-05")));
}

TEST_F(OrderDoubts, OfTwoLabRollsTheReelIsTheFirst) {
    const ToolResult result =
        order(track(clip("a", 0, 20, film("KJ1234560100+00", "A1", R"(, "lab_reel": "L1")")) + "," +
                    clip("b", 15, 20, film("KJ1234560100+00", "A1", R"(, "lab_reel": "L2")"))),
              {"--edl", "s.edl", "--edl-reel", "lab"});
    EXPECT_THAT(result.err, HasSubstr("s.edl: piece 1: lies on the lab rolls L1, L2; the first stands as its reel"));
    EXPECT_THAT(read("s.edl"), HasSubstr("001  L1       V"));
}

class RollDoubts : public OrderDoubts {
protected:
    ToolResult on_rolls(const std::string& tracks) {
        order(tracks, {"--json", "o.json", "--build-rolls", "400"});
        return run({"export", "r.otio", "-o", "x.edl", "--on-rolls", "o.json", "--prove"});
    }
};

// Both have the same numbers: A012's five frames come first on the new roll.
TEST_F(RollDoubts, AnEventIsTakenFromThePieceOfItsOwnRoll) {
    const ToolResult result = on_rolls(track(clip("a", 10, 5, film("KJ1234560100+00", "A012")) + "," +
                                             clip("b", 5, 20, film("KJ1234560100+00", "C1"))));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("x.edl"), HasSubstr("001  SEL001   V     C        01:00:00:00 01:00:00:05 "));
}

TEST_F(RollDoubts, AnEventOfARollThatTheOrderLacksIsTold) {
    order(track(clip("a", 10, 5, film("KJ1234560100+00", "A012"))), {"--json", "o.json", "--build-rolls", "400"});
    write("r.otio", edit(track(clip("a", 10, 5, film("KJ1234560100+00", "C1")))));
    const ToolResult result = run({"export", "r.otio", "-o", "x.edl", "--on-rolls", "o.json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("the order has its numbers on roll A012, and it is of roll C1"));
}

// A single frame at three times play-speed shows the first of the three that it runs over.
TEST_F(RollDoubts, WhatAFastEventRunsOverBehindItsLastFrameIsNotWanted) {
    const ToolResult result = on_rolls(track(clip("a", 10, 1, film("KJ1234560100+00", "A1"), speed(3)) + "," +
                                             clip("b", 60, 5, film("KJ1234560100+00", "A1"))));
    EXPECT_EQ(result.status, 0) << result.err << result.out;
    EXPECT_THAT(result.err, Not(HasSubstr("lies on no new roll")));
}

TEST_F(RollDoubts, NumbersBelowTheFirstAreLeftOut) {
    order(track(clip("a", -5, 20, film("KJ1234560000+00", "A1"))), {"--json", "o.json", "--build-rolls", "400"});
    const ToolResult result = run({"export", "r.otio", "-o", "x.otio", "--on-rolls", "o.json", "--prove"});
    EXPECT_EQ(result.status, 0) << result.err << result.out;
    EXPECT_THAT(result.err, HasSubstr("\"a\": its key numbers begin below 0000+00, and are left out"));
    EXPECT_THAT(read("x.otio"), Not(HasSubstr("keycode")));
}

// At -1/2 a single frame shows the one ahead of the point that the clip names.
TEST_F(RollDoubts, ASingleFrameAtHalfSpeedInReverseLiesOnTheRollThatWasOrderedForIt) {
    const ToolResult result = on_rolls(track(clip("a", 10, 1, film("KJ1234560100+00", "A1"), speed(-0.5)) + "," +
                                             clip("b", 60, 5, film("KJ1234560100+00", "A1"))));
    EXPECT_EQ(result.status, 0) << result.err << result.out;
}

} // namespace
