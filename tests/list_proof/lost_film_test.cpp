// The check tells of film that the lists leave out by the way they count transitions, as the proof does.

#include "film/find.h"
#include "tests/cross_checks/random_edit.h"
#include "tests/list_proof/made_report.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace list_proof;
using namespace generator_test;
using cross_checks::RandomEdit;

const std::set<std::string> rules{"transition-at-speed", "from-zero"};

/// The rule and the name of a shot that loses film by it.
using Lost = std::set<std::pair<std::string, std::string>>;

Lost found_in(const EditPtr& edit, bool neg_cut) {
    film::CheckOptions options;
    options.uses.neg_cut = neg_cut;
    Lost lost;
    for (const film::Finding& finding : film::check_edit(edit, options, nullptr, {}))
        if (const char* code = film::info_of(finding.code).name; rules.count(code) > 0)
            lost.emplace(code, finding.place.name);
    return lost;
}

/// The shot that the failure is of, and any other with the same number at that frame.
Lost meant_by(const film::ProofFinding& failure, const film::Strips& strips) {
    Lost lost;
    for (const film::Strip& strip : strips) {
        if (!strip.key || failure.frame < strip.start || strip.end <= failure.frame) continue;
        const std::string film = "the frames are " + strip.key.text_at(failure.frame - strip.start) + ' ';
        if (failure.what.find(film) != std::string::npos) lost.emplace(failure.rule->name, strip.name);
    }
    return lost;
}

bool meet(const Lost& a, const Lost& b) {
    return std::any_of(a.begin(), a.end(), [&b](const auto& one) { return b.count(one) > 0; });
}

/// Each failure is found, and nothing else.
bool same(const Lost& found, const std::vector<Lost>& proved) {
    Lost all;
    for (const Lost& lost : proved)
        all.insert(lost.begin(), lost.end());
    return std::includes(all.begin(), all.end(), found.begin(), found.end()) &&
           std::all_of(proved.begin(), proved.end(), [&found](const Lost& lost) { return meet(found, lost); });
}

std::vector<Lost> proved_of(const EditPtr& edit, bool neg_cut) {
    const MadeReport made(edit, Form{neg_cut, false, true});
    RC_ASSERT(made.made);
    std::vector<Lost> all;
    for (const film::ProofFinding& failure : film::prove_report(made.report, made.by_edit, made.options).failures)
        if (failure.rule && rules.count(failure.rule->name) > 0) all.push_back(meant_by(failure, made.by_edit));
    return all;
}

// Frames 0 to 47 of the second shot are inked from 0 on, so that the half of the dissolve ahead of them has no number.
TEST(LostFilm, InkNumbersThatBeginAtZeroAreMovedOn) {
    EditBuilder builder(plain_edit());
    const int v1 = builder.add_channel(picture);
    builder.add_event(v1, event_of(builder.add_source(shot("a")), 48, 100));
    builder.add_transition(v1, dissolve(12, 0));
    SourceDescription inked = shot("b");
    inked.ink = label(43, "AA120000+00");
    builder.add_event(v1, event_of(builder.add_source(inked), 48, 0));
    const EditPtr edit = builder.finish();
    EXPECT_EQ(found_in(edit, false), (Lost{{"from-zero", "b"}}));
    EXPECT_TRUE(found_in(edit, true).empty());
}

TEST(LostFilm, TheCheckTellsOfWhatTheProofMissesInRandomEdits) {
    bool any = false;
    EXPECT_TRUE(rc::check([&any] {
        RandomEdit random({});
        const EditPtr edit = random.builder.finish();
        const bool neg_cut = *rc::gen::arbitrary<bool>();
        const Lost found = found_in(edit, neg_cut);
        any = any || !found.empty();
        RC_ASSERT(same(found, proved_of(edit, neg_cut)));
    }));
    EXPECT_TRUE(any);
}

} // namespace
