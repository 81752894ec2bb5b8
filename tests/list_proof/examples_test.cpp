// The reports of the examples are proved, but where a rule of the lists makes them wrong.

#include "tests/list_proof/proved_example.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace {

using namespace list_proof;

struct Proved {
    const char* name;
    const char* failures;   ///< by rule
    const char* exceptions; ///< by rule
};

// Reversed shots with a transition, rolls that a page leaves out, film of upper tracks that no list shows.
constexpr Proved examples[] = {
    {"16mm/heron", "", ""},
    {"16mm/heron-neg", "", ""},
    {"23.976/ferry", "", ""},
    {"23.976/ferry-neg", "", ""},
    {"25fps/market", "", ""},
    {"25fps/market-neg", "", ""},
    {"29.97df/newsroom", "", "inexact 4"},
    {"29.97df/newsroom-a1", "", ""},
    {"29.97df/newsroom-a1-timecode", "", ""},
    {"29.97df/newsroom-neg", "", "inexact 2"},
    {"3perf/harbour", "", ""},
    {"3perf/harbour-neg", "", ""},
    {"65mm/desert", "", ""},
    {"65mm/desert-neg", "roll-carried 3", ""},
    {"edl/ferryman", "", ""},
    {"edl/ferryman-neg", "", ""},
    {"opticals/lantern", "transition-at-speed 1, upper-track 3", "upper-layers 30"},
    {"opticals/lantern-frames", "transition-at-speed 1, upper-track 3", "fx-end 8, upper-layers 30"},
    {"opticals/lantern-neg", "transition-at-speed 2, upper-track 3", ""},
    {"recut/weir-new-r1", "", ""},
    {"recut/weir-new-r2", "", ""},
    {"recut/weir-old-r1", "", ""},
    {"recut/weir-old-r2", "", ""},
    {"reel/reel", "transition-at-speed 2, upper-track 2", "upper-layers 4"},
    {"reel/reel-a1", "", ""},
    {"reel/reel-a1-timecode", "", ""},
    {"reel/reel-a2", "", ""},
    {"reel/reel-frames", "transition-at-speed 2, upper-track 2", "fx-end 7, upper-layers 4"},
    {"reel/reel-neg", "transition-at-speed 1, upper-track 2", ""},
};

TEST(ProofOfExamples, HoldsButForTheRulesOfTheLists) {
    for (const Proved& proved : examples) {
        const Example made = example(proved.name);
        const film::ListProof proof = proof_of(made, made.report);
        EXPECT_EQ(rules_of(proof.failures), proved.failures) << proved.name;
        EXPECT_EQ(rules_of(proof.exceptions), proved.exceptions) << proved.name;
        EXPECT_GT(proof.events, 3u) << proved.name;
        EXPECT_GT(proof.frames, 100) << proved.name;
    }
}

TEST(ProofOfExamples, LeavesNoReportOut) {
    std::set<std::string> names;
    for (const Proved& proved : examples)
        names.insert(expected_path(proved.name) + ".txt");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project_folder() + "/examples")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".txt" || name.rfind("changes", 0) == 0) continue;
        EXPECT_EQ(names.count(entry.path().string()), 1u) << entry.path();
    }
}

TEST(ProofOfExamples, TellsTheReversedShotWhoseEntryEndsAheadOfItsFilm) {
    const Example made = example("reel/reel");
    const film::ListProof proof = proof_of(made, made.report);
    ASSERT_FALSE(proof.proved());
    EXPECT_EQ(film::line_of(proof.failures[0]),
              "pull list, page 1, line 70, event 9, frame 544: lists KJ2910106329+15 to 6326+15, but the frames are "
              "KJ2910106327+09 to KJ2910106326+13 (rule transition-at-speed: a transition of a shot at a speed of its "
              "own is counted in whole frames of film)");
    EXPECT_EQ(film::summary_of(proof), "not proved: 4 failures in 128 events, 5,439 frames");
}

TEST(ProofOfExamples, SaysWhatWasProved) {
    const Example made = example("edl/ferryman");
    EXPECT_EQ(film::summary_of(proof_of(made, made.report)), "proved: 65 events, 4,148 frames");
}

TEST(ProofOfExamples, FailsWithTheFilmOfAnotherReel) {
    Example made = example("16mm/heron");
    made.strips = example("3perf/harbour").strips;
    EXPECT_FALSE(proof_of(made, made.report).proved());
}

} // namespace
