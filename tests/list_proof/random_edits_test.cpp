// Random edits: their lists are proved by the edit and by the table, but for what a rule of the lists explains.

#include "tests/cross_checks/random_edit.h"
#include "tests/list_proof/made_report.h"

#include <gtest/gtest.h>

namespace {

using namespace list_proof;
using cross_checks::EditKind;
using cross_checks::RandomEdit;

MadeReport random_report(const EditKind& kind) {
    RandomEdit random(kind);
    const Form form{*rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>(),
                    *rc::gen::inRange(0, 30)};
    MadeReport made(random.builder.finish(), form);
    RC_ASSERT(made.made);
    return made;
}

/// Of the failures those that no rule explains.
std::string unexplained(const film::ListProof& proof) {
    std::string text;
    for (const film::ProofFinding& failure : proof.failures)
        if (!failure.rule) text += film::line_of(failure) + '\n';
    return text;
}

void expect_explained(const MadeReport& made, const film::Strips& strips, const char* by) {
    const std::string left = unexplained(film::prove_report(made.report, strips, made.options));
    if (!left.empty()) RC_FAIL(std::string(by) + ":\n" + left + made.report);
}

TEST(ProofOfRandomEdits, HoldsButForTheRulesOfTheLists) {
    EXPECT_TRUE(rc::check([] {
        const MadeReport made = random_report({});
        expect_explained(made, made.by_edit, "by the edit");
        expect_explained(made, made.by_table, "by the table");
    }));
}

// Without upper tracks, opticals and transitions no film is lost.
TEST(ProofOfRandomEdits, HoldsOfPlainCuts) {
    EXPECT_TRUE(rc::check([] {
        const MadeReport made = random_report({false, false, false});
        for (const film::Strips* strips : {&made.by_edit, &made.by_table}) {
            const film::ListProof proof = film::prove_report(made.report, *strips, made.options);
            for (const film::ProofFinding& failure : proof.failures)
                RC_FAIL(film::line_of(failure));
        }
    }));
}

/// Whether a line marks a transition in black, whose number the proof passes over.
bool marks_black(const std::string& report, std::size_t at) {
    const std::string line = report.substr(report.rfind('\n', at) + 1, report.find('\n', at) - report.rfind('\n', at));
    return line.find("MARK FROM __BLACK_") != std::string::npos;
}

/// The digits of an assembly list that can be raised by one.
std::vector<std::size_t> digits_of_assembly(const std::string& report) {
    const std::size_t rule = report.find("____", report.find("ASSEMBLY LIST"));
    const std::size_t end = report.find("End of assembly list");
    std::vector<std::size_t> digits;
    for (std::size_t at = report.find("\n\r\n", rule); at < end; ++at)
        if (report[at] >= '0' && report[at] <= '8' && !marks_black(report, at)) digits.push_back(at);
    return digits;
}

/// A digit may be wrong where a rule of the lists has made another failure already: there, one stands for the other.
std::string failures_of(const MadeReport& made) {
    std::string text;
    for (const film::ProofFinding& failure : film::prove_report(made.report, made.by_edit, made.options).failures)
        text += (failure.rule ? "by rule " : "") + film::line_of(failure) + '\n';
    return text;
}

std::string exceptions_of(const MadeReport& made) {
    std::string text;
    for (const film::ProofFinding& exception : film::prove_report(made.report, made.by_edit, made.options).exceptions)
        text += film::line_of(exception) + '\n';
    return text;
}

TEST(ProofOfRandomEdits, TellsOfAnyOneDigitThatIsWrong) {
    EXPECT_TRUE(rc::check([] {
        MadeReport made = random_report({false, false, true});
        const std::string before = failures_of(made), exceptions_before = exceptions_of(made);
        const std::vector<std::size_t> digits = digits_of_assembly(made.report);
        RC_PRE(!digits.empty());
        ++made.report[*rc::gen::elementOf(digits)];
        const std::string after = failures_of(made);
        // A number that isn't exact may be wrong by as much as it is unsure, and is told as that.
        const bool told = exceptions_of(made) != exceptions_before;
        if ((after.empty() || after == before) && !told) RC_FAIL(before + "->\n" + after + made.report);
    }));
}

} // namespace
