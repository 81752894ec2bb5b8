// The list of doubts is held against the film: its places, and what has to stand there.

#include "film/doubt_list.h"
#include "film/find.h"
#include "tests/list_proof/proved_example.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

using namespace list_proof;

/// The report of an example with the doubts of its table behind it.
Example with_doubts(const std::string& name) {
    Example made = example(name);
    const recdb table(fromUTF8((expected_path(name) + ".cdb").c_str(), -1), INT_MAX, false);
    const std::string head(film::head_of_report(made.report));
    const bool in_frames = name.find("frames") != std::string::npos || name.rfind("65mm", 0) == 0;
    made.report += "\f\n" + film::doubt_pages(film::check_table(table, {}), {head, made.options.film, in_frames, true});
    return made;
}

std::string doubts_of(const film::ListProof& proof) {
    std::string lines;
    for (const film::ProofFinding& failure : proof.failures)
        if (failure.list == "list of doubts") lines += film::line_of(failure) + "\n";
    return lines;
}

TEST(ProvedDoubts, StandBehindTheListsOfTheExamples) {
    for (const char* name : {"reel/reel", "reel/reel-neg", "reel/reel-frames", "16mm/heron", "3perf/harbour-neg",
                             "65mm/desert", "opticals/lantern", "opticals/lantern-neg", "25fps/market"}) {
        const Example plain = example(name), made = with_doubts(name);
        EXPECT_EQ(doubts_of(proof_of(made, made.report)), "") << name;
        EXPECT_EQ(rules_of(proof_of(made, made.report).failures), rules_of(proof_of(plain, plain.report).failures))
            << name;
    }
}

TEST(ProvedDoubts, FailWhereALineIsAnother) {
    const Example made = with_doubts("reel/reel");
    struct {
        const char *text, *with, *failure;
    } const breaks[] = {
        {"\n49   0157+02", "\n48   0157+02", "event 48, frame 2514: the event doesn't lie there"},
        {"\n49   0157+02", "\n49   0177+02", "event 49, frame 2834: the event doesn't lie there"},
        {"\nV3   0106+04", "\nV4   0106+04", "V4, frame 1700: no film of that track lies there"},
        {"\nV3   0106+04", "\nV4   0106+04", "V3, frame 1700: \"14A/2\" is missing in the list"},
        {"\n80   0236+03", "\n80   0236+3x", "\"0236+3x\""},
    };
    for (const auto& tried : breaks) {
        std::string report = made.report;
        const std::size_t at = report.find(tried.text, report.find("MISSING AND DOUBTFUL"));
        ASSERT_NE(at, std::string::npos) << tried.text;
        report.replace(at, std::string(tried.text).size(), tried.with);
        EXPECT_THAT(doubts_of(proof_of(made, report)), HasSubstr(tried.failure)) << tried.with;
    }
}

TEST(ProvedDoubts, FailWhereAnEntryIsLeftOut) {
    const Example made = with_doubts("reel/reel");
    std::string report = made.report;
    const std::size_t at = report.find("\n80   0236+03", report.find("MISSING AND DOUBTFUL"));
    ASSERT_NE(at, std::string::npos);
    report.erase(at + 1, report.find("\r\n\r\n", at) + 4 - at - 1);
    EXPECT_THAT(doubts_of(proof_of(made, report)), HasSubstr("\"16/1 workprint\" is missing in the list"));
}

} // namespace
