// Random edits: their lists are proved by the edit and by the table, but for what a rule of the lists explains.

#include "cutlist/cutlist_options.h"
#include "embedded/services.h"
#include "quillbrook/cutlist.h"
#include "tests/cross_checks/random_edit.h"
#include "tests/list_proof/proved_example.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>

namespace {

using namespace list_proof;
using cross_checks::EditKind;
using cross_checks::RandomEdit;

struct Form {
    bool neg_cut = false, frames = false, by_key = false;
    int handles = 0;
};

Form any_form() {
    return {*rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>(),
            *rc::gen::inRange(0, 30)};
}

embedded::settings_block block_of(const Form& form, const std::string& report) {
    embedded::settings_block block;
    block.set("chan_type", "1");
    block.set("chan_num", "0");
    block.set("edit_units", form.frames ? "1" : "0");
    block.set("pull_match_assembly", form.neg_cut ? "0" : "1");
    block.set("pull_handle", std::to_string(form.handles));
    block.set("pull_sort_by_keycode", form.by_key ? "1" : "0");
    block.set("output_file", report);
    return block;
}

/// The lists of an edit, and its film by the edit and by the table.
struct Made {
    std::string report;
    film::Strips by_edit, by_table;
    film::ProofOptions options;
};

Made made_lists(const EditPtr& edit, const Form& form) {
    const ScratchDirectory scratch;
    RecordingLogger logger;
    cutlist_options() = CutlistOptions();
    const embedded::settings_block block = block_of(form, scratch.file("list.txt"));
    RC_ASSERT(make_cutlist_from_edit(edit, logger, 0, &block, nullptr, true));
    cutlist_options() = CutlistOptions();
    Made made;
    made.report = bytes_of_file(scratch.file("list.txt"));
    const recdb table(fromUTF8(scratch.file("list.cdb").c_str(), -1), INT_MAX, false);
    film::UseOptions use;
    use.neg_cut = form.neg_cut;
    made.by_edit = film::uses_of_edit(edit, use);
    made.by_table = film::uses_of_table(table);
    film::take_header(table, made.options);
    made.options.handles = form.handles;
    return made;
}

/// What no rule explains.
std::string unexplained(const film::ListProof& proof) {
    std::string text;
    for (const film::ProofFinding& failure : proof.failures)
        if (!failure.rule) text += film::line_of(failure) + '\n';
    return text;
}

void expect_explained(const Made& made, const film::Strips& strips, const char* by) {
    const std::string left = unexplained(film::prove_report(made.report, strips, made.options));
    if (!left.empty()) RC_FAIL(std::string(by) + ":\n" + left + made.report);
}

TEST(ProofOfRandomEdits, HoldsButForTheRulesOfTheLists) {
    EXPECT_TRUE(rc::check([] {
        RandomEdit random(EditKind{});
        const Made made = made_lists(random.builder.finish(), any_form());
        expect_explained(made, made.by_edit, "by the edit");
        expect_explained(made, made.by_table, "by the table");
    }));
}

// Without upper tracks, opticals and transitions nothing but the ends of shots at a speed of their own is by a rule.
TEST(ProofOfRandomEdits, HoldsOfPlainCuts) {
    EXPECT_TRUE(rc::check([] {
        RandomEdit random(EditKind{false, false, false});
        const Made made = made_lists(random.builder.finish(), any_form());
        for (const film::Strips* strips : {&made.by_edit, &made.by_table}) {
            const film::ListProof proof = film::prove_report(made.report, *strips, made.options);
            for (const film::ProofFinding& failure : proof.failures)
                RC_FAIL(film::line_of(failure));
        }
    }));
}

// A digit of the assembly or of a pull list, of a report that was proved.
TEST(ProofOfRandomEdits, FailsWithAnyOneDigit) {
    EXPECT_TRUE(rc::check([] {
        RandomEdit random(EditKind{false, false, true});
        Made made = made_lists(random.builder.finish(), any_form());
        const std::size_t before = film::prove_report(made.report, made.by_edit, made.options).failures.size();
        const std::size_t rule = made.report.find("____", made.report.find("ASSEMBLY LIST"));
        const std::size_t body = made.report.find("\n\r\n", rule);
        const std::size_t end = made.report.find("End of assembly list");
        std::vector<std::size_t> digits;
        for (std::size_t at = body; at < end; ++at)
            if (made.report[at] >= '0' && made.report[at] <= '8') digits.push_back(at);
        RC_PRE(!digits.empty() && end - body < 3000);
        ++made.report[*rc::gen::elementOf(digits)];
        const film::ListProof proof = film::prove_report(made.report, made.by_edit, made.options);
        if (proof.failures.size() <= before) RC_FAIL(made.report);
    }));
}

} // namespace
