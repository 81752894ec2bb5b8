// Transitions between frames of film: the check tells of just those of which the lists leave film out.

#include "film/find.h"
#include "tests/list_proof/made_report.h"

#include <gtest/gtest.h>

namespace {

using namespace list_proof;
using namespace generator_test;

constexpr Form copy{false, false, true};
constexpr Form negative{true, false, true};

/// Lengths are frames of the edit.
struct Dissolve {
    int rate, shot, before, behind;
};

EventDescription event_lasting(SourceId source, const Fraction& seconds) {
    EventDescription event = event_of(source, 0, 100);
    event.duration = seconds;
    return event;
}

EditPtr edit_with(const Dissolve& dissolve, bool from_black) {
    const auto seconds = [&dissolve](int frames) { return Fraction(frames, dissolve.rate); };
    EditDescription edit = plain_edit();
    edit.rate = embedded::nearest_rate(dissolve.rate);
    EditBuilder builder(edit);
    const int v1 = builder.add_channel(picture);
    if (from_black)
        builder.add_black(v1, seconds(dissolve.shot));
    else
        builder.add_event(v1, event_lasting(builder.add_source(shot("a")), seconds(dissolve.shot)));
    TransitionDescription transition;
    transition.in_offset = seconds(dissolve.before);
    transition.out_offset = seconds(dissolve.behind);
    builder.add_transition(v1, transition);
    builder.add_event(v1, event_lasting(builder.add_source(shot("b")), seconds(40)));
    return builder.finish();
}

std::vector<film::Finding> found_between(const EditPtr& edit, bool neg_cut) {
    film::CheckOptions options;
    options.uses.neg_cut = neg_cut;
    std::vector<film::Finding> found;
    for (const film::Finding& finding : film::check_edit(edit, options, nullptr, {}))
        if (finding.code == film::Code::between_frames) found.push_back(finding);
    return found;
}

bool proof_fails(const EditPtr& edit, const Form& form) {
    const MadeReport made(edit, form);
    EXPECT_TRUE(made.made);
    return !film::prove_report(made.report, made.by_edit, made.options).failures.empty();
}

/// How many of the dissolves that begin and end in all places of a cycle are told; those that the proof misses.
int told_of(int rate, bool from_black, const Form& form) {
    int told = 0;
    for (int place = 0; place < 125; ++place) {
        const Dissolve dissolve{rate, 20 + place / 25, place / 5 % 5, 1 + place % 5};
        const EditPtr edit = edit_with(dissolve, from_black);
        const std::size_t found = found_between(edit, form.neg_cut).size();
        EXPECT_EQ(found, proof_fails(edit, form) ? 1U : 0U)
            << dissolve.shot << ' ' << dissolve.before << ' ' << dissolve.behind;
        told += static_cast<int>(found);
    }
    return told;
}

TEST(BetweenFrames, TheCheckTellsOfWhatTheProofMisses) {
    for (const int rate : {30, 48, 60})
        for (const bool from_black : {false, true})
            for (const Form& form : {copy, negative}) {
                SCOPED_TRACE(std::to_string(rate) + (from_black ? " from black" : "") +
                             (form.neg_cut ? " negative" : ""));
                const int told = told_of(rate, from_black, form);
                EXPECT_TRUE(0 < told && told < 125) << told;
            }
}

// Frames 101 to 117 at 30 are 80.8 to 93.6 of film.
TEST(BetweenFrames, AFindingNamesTheTransitionAndWhatTheListsCount) {
    const auto found = found_between(edit_with({30, 109, 8, 8}, false), false);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].severity, film::Severity::wrong);
    EXPECT_EQ(found[0].place.frame, 80);
    EXPECT_EQ(found[0].place.event, 2);
    EXPECT_EQ(found[0].what,
              "the transition from frame 80 to 92 lies between frames of film: the lists count 12 of its "
              "13 frames, and leave one out");
}

} // namespace
