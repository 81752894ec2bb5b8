// The smallest example of each rule by which lists print something else than the film's frames.

#include "tests/list_proof/made_report.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>

namespace {

using namespace list_proof;
using namespace generator_test;

/// By number, each entry of a pull list names its roll.
constexpr Form copy{false, false, true};
constexpr Form negative{true, false, true};
constexpr Form in_frames{false, true, true};

/// An edit in the making: V1, and what lies above it.
class Rules : public testing::Test {
protected:
    EditBuilder builder{plain_edit()};
    int v1 = builder.add_channel(picture);

    void add(int channel, const std::string& name, int length, int source_in = 100, const Fraction& speed = 1) {
        builder.add_event(channel, event_of(builder.add_source(shot(name)), length, source_in, speed));
    }
    int add_effects() { return builder.add_channel(picture, chan_fx); }
    void add_effect(int channel, int ahead, int length) {
        builder.add_gap(channel, frames(ahead));
        builder.add_gap(channel, frames(length), {lab_effect("Blur", {0, 1})});
    }
    film::ListProof proof(const Form& form) {
        if (!edit_) edit_ = builder.finish();
        const MadeReport made(edit_, form);
        EXPECT_TRUE(made.made);
        return film::prove_report(made.report, made.by_edit, made.options);
    }

    EditPtr edit_;
};

TEST_F(Rules, PlainCutsNeedNone) {
    add(v1, "a", 24);
    add(v1, "b", 24);
    const film::ListProof made = proof(copy);
    EXPECT_EQ(rules_of(made.failures) + rules_of(made.exceptions), "");
    EXPECT_EQ(film::summary_of(made), "proved: 2 events, 48 frames");
}

TEST_F(Rules, FilmOfAnUpperTrackWithoutAnEffectStandsInNoList) {
    add(v1, "a", 48);
    const int v2 = builder.add_channel(picture);
    builder.add_gap(v2, frames(10));
    add(v2, "b", 12);
    const film::ListProof made = proof(copy);
    EXPECT_EQ(rules_of(made.failures), "upper-track 1");
    EXPECT_THAT(film::line_of(made.failures[0]),
                testing::StartsWith("pull list, V2, frame 10: \"b\" on roll \"A001\" stands in no list (rule "));
    EXPECT_EQ(film::summary_of(made), "not proved: 1 failure in 1 event, 48 frames");
}

// The dissolve lies from frame 101 to 117 of tape, which are 80.8 to 93.6 of film: 80 to 93, and 12 frames long. With
// half of these the first shot ends at 86, and the second begins at 87.
TEST_F(Rules, ATransitionBetweenFramesOfFilmIsCutByItself) {
    EditDescription at_30 = plain_edit();
    at_30.rate = embedded::nearest_rate(30.0);
    EditBuilder tape(at_30);
    const int channel = tape.add_channel(picture);
    const auto add_shot = [&](const char* name, int length) {
        EventDescription event = event_of(tape.add_source(shot(name)), 0, 100);
        event.duration = Fraction(length, 30);
        tape.add_event(channel, event);
    };
    add_shot("a", 109);
    TransitionDescription transition = dissolve(0, 0);
    transition.in_offset = transition.out_offset = Fraction(8, 30);
    tape.add_transition(channel, transition);
    add_shot("b", 91);
    edit_ = tape.finish();
    const film::ListProof made = proof(copy);
    EXPECT_THAT(rules_of(made.failures), testing::MatchesRegex("between-frames [0-9]+"));
    std::string lines;
    for (const film::ProofFinding& failure : made.failures)
        lines += film::line_of(failure) + "\n";
    EXPECT_THAT(lines, testing::HasSubstr("event 2, frame 86: begins at 000087, but frame 86 is the next (rule "));
}

TEST_F(Rules, ReversedShotsLoseFilmAtATransition) {
    add(v1, "a", 48, 400, -1);
    builder.add_transition(v1, wipe(10, 15, 22, false));
    add(v1, "b", 48);
    EXPECT_EQ(rules_of(proof(copy).failures), "transition-at-speed 2");
    EXPECT_EQ(rules_of(proof(negative).failures), "transition-at-speed 1");
}

TEST_F(Rules, ACountAtZeroIsMovedOn) {
    add(v1, "a", 48);
    builder.add_transition(v1, dissolve(12, 0));
    SourceDescription inked = shot("b");
    inked.ink = label(43, "AA120000+00");
    builder.add_event(v1, event_of(builder.add_source(inked), 48, 0));
    EXPECT_EQ(rules_of(proof(copy).failures), "from-zero 2");
}

TEST_F(Rules, AWipeFromBlackIsAssembledTwice) {
    builder.add_black(v1, frames(48));
    builder.add_transition(v1, wipe(12, 12, 22, false));
    add(v1, "a", 48);
    EXPECT_EQ(rules_of(proof(copy).failures), "black-wipe 1");
}

TEST_F(Rules, BlackIsMarkedAtTheFirstFrameOfItsTransition) {
    add(v1, "a", 48);
    builder.add_transition(v1, dissolve(6, 6));
    builder.add_black(v1, frames(48));
    builder.add_transition(v1, dissolve(6, 6));
    add(v1, "b", 48);
    edit_ = builder.finish();
    MadeReport made(edit_, copy);
    const auto failures = [&made] {
        return rules_of(film::prove_report(made.report, made.by_edit, made.options).failures);
    };
    EXPECT_EQ(failures(), "");
    const std::string mark = "MARK FROM __BLACK_0002+04     NO INKCODE";
    const std::size_t at = made.report.find(mark);
    ASSERT_NE(at, std::string::npos) << made.report;
    made.report.replace(at, mark.size(), "MARK FROM __BLACK_0002+05     NO INKCODE");
    EXPECT_THAT(failures(),
                testing::HasSubstr("marked from __BLACK_0002+05 and NO INKCODE, should be __BLACK_0002+04"));
}

TEST_F(Rules, AllFilmOfAnEventIsThatOfItsRow) {
    add(v1, "a", 48);
    const MadeReport made(builder.finish(), copy);
    film::Strips strips{made.by_edit[0], made.by_edit[0]};
    strips[0].end = strips[1].start = 40;
    strips[1].key.first = strips[1].key.at(1000);
    strips[1].log_row = 1;
    strips[1].rolls.listed = "B9";
    EXPECT_EQ(rules_of(film::prove_report(made.report, strips, made.options).failures), "log-row 2");
}

TEST_F(Rules, AnEffectBehindItsGroupIsGonePast) {
    add(v1, "a", 28);
    builder.add_transition(v1, dissolve(2, 2));
    add(v1, "b", 13);
    const int v2 = builder.add_channel(picture);
    builder.add_gap(v2, frames(41));
    add(v2, "c", 12);
    const int fx = add_effects();
    add_effect(fx, 1, 4);
    add_effect(fx, 36, 4);
    EXPECT_EQ(rules_of(proof(copy).failures), "unplaced 2, upper-track 1");
}

TEST_F(Rules, AGapAheadOfAChainIsNotDrawn) {
    add(v1, "a", 120);
    const int v2 = builder.add_channel(picture);
    add(v2, "b", 20);
    builder.add_gap(v2, frames(10));
    add(v2, "c", 30);
    builder.add_transition(v2, dissolve(4, 4));
    add(v2, "d", 30);
    add_effect(add_effects(), 0, 120);
    EXPECT_EQ(rules_of(proof(negative).failures), "undrawn-gap 1");
}

TEST_F(Rules, InFramesAnEffectEndsBehindItsLast) {
    add(v1, "a", 48);
    add_effect(add_effects(), 10, 20);
    EXPECT_EQ(rules_of(proof(in_frames).exceptions), "fx-end 1");
}

TEST_F(Rules, ACuttingCopyPullsTheMainTrackAlone) {
    add(v1, "a", 48);
    add(builder.add_channel(picture), "b", 48);
    add_effect(add_effects(), 10, 20);
    const film::ListProof made = proof(copy);
    EXPECT_TRUE(made.proved());
    EXPECT_EQ(rules_of(made.exceptions), "upper-layers 1");
    EXPECT_EQ(rules_of(proof(negative).exceptions), "");
}

TEST_F(Rules, ABarInANameIsNotPrinted) {
    add(v1, "A|B", 48);
    const film::ListProof made = proof(copy);
    EXPECT_TRUE(made.proved());
    EXPECT_EQ(rules_of(made.exceptions), "name-cut 2");
}

// Feet and frames that stand where the proof isn't sure of the frame: first numbers, marks and drawings.
TEST_F(Rules, ANumberAtAnUnevenSpeedMayBeAFrameOffAndNoMore) {
    add(v1, "a", 48, 100, Fraction(3, 2));
    builder.add_transition(v1, dissolve(6, 6));
    add(v1, "b", 48, 200, Fraction(5, 3));
    const MadeReport made(builder.finish(), copy);
    const auto failures_with = [&made](const std::string& text, const std::string& other) {
        std::string report = made.report;
        const std::size_t at = report.find(text);
        EXPECT_NE(at, std::string::npos) << text << report;
        report.replace(at, text.size(), text.substr(0, text.size() - other.size()) + other);
        return film::prove_report(report, made.by_edit, made.options).failures.size();
    };
    ASSERT_TRUE(film::prove_report(made.report, made.by_edit, made.options).proved());
    struct Number {
        const char* text;
        const char* near[2];
        const char* far[2];
    };
    constexpr Number numbers[] = {
        {"1    A001      a                     3+00      KJ1234560106+04", {"3", "5"}, {"2", "6"}},
        {"1    0000+00       3+00    A001      a         KJ1234560106+04", {"3", "5"}, {"2", "6"}},
        {"MARK FROM KJ1234560110+03", {"2", "4"}, {"1", "5"}},
        {"start OUT:0002+10 KJ1234560110+03", {"2", "4"}, {"1", "5"}},
        {"start IN:0002+10 KJ1234560111+14", {"3", "5"}, {"2", "6"}},
    };
    for (const Number& number : numbers)
        for (const int side : {0, 1}) {
            EXPECT_EQ(failures_with(number.text, number.near[side]), 0U) << number.text << ", " << number.near[side];
            EXPECT_GT(failures_with(number.text, number.far[side]), 0U) << number.text << ", " << number.far[side];
        }
}

std::string section_of(const std::string& file, const std::string& heading) {
    const std::string text = bytes_of_file(project_folder() + "/docs/" + file);
    const std::size_t begin = text.find("\n## " + heading + "\n");
    return begin == std::string::npos ? "" : text.substr(begin, text.find("\n## ", begin + 1) - begin);
}

TEST(RulesInWords, EachStandsInTheProofsTableAndAmongWhatMisleads) {
    const std::string table = section_of("proof.md", "Where a rule of the lists makes them wrong");
    const std::string misleads = section_of("lists.md", "What misleads");
    ASSERT_FALSE(film::list_rules().empty());
    for (const film::ListRule& rule : film::list_rules()) {
        const std::string name = std::string("`") + rule.name + "` |";
        EXPECT_NE(table.find("\n| " + name), std::string::npos) << rule.name;
        EXPECT_NE(misleads.find("| " + name), std::string::npos) << rule.name;
    }
}

// A row was taken out of a table: the transition into its shot leads to no other.
TEST_F(Rules, ADrawingEndsAtATransitionThatLeadsNowhere) {
    add(v1, "a", 48);
    builder.add_transition(v1, dissolve(6, 6));
    add(v1, "b", 48);
    builder.add_transition(v1, dissolve(6, 6));
    add(v1, "c", 48);
    const PrintedWithout printed(builder.finish(), negative, 2);
    const film::ListProof made = film::prove_report(printed.report, printed.strips, printed.options);
    EXPECT_THAT(rules_of(made.failures), testing::HasSubstr("undrawn 1"));
}

} // namespace
