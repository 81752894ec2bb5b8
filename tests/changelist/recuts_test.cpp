// What must hold of every change list, on random recuts.

#include "changelist/change_analysis.h"
#include "changelist/change_record.h"
#include "changelist/steps/moves.h"
#include "tests/changelist/cut_files.h"
#include "tests/support/recuts.h"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

namespace {

using namespace changelist_test;
using recuts::Recut;

/// A frame of film: its roll and its number on it.
using Film = std::pair<std::string, int>;

/// Runs on cutlists in a directory that is used again and again.
class Runs {
public:
    Runs() {
        embedded::set_lists_directory(scratch_.path());
        for (const char* key : {"chg_summary_list", "chg_pull_list", "chg_verbose_list", "chg_dissolve_list"})
            block_.set(key, "1");
    }

    /// The error, empty for success.
    std::string run(const std::vector<Cut>& old_reels, const std::vector<Cut>& new_reels) {
        changelist_reels reels(std::max(old_reels.size(), new_reels.size()));
        for (std::size_t reel = 0; reel < reels.size(); ++reel) {
            reels[reel].first = file("old", reel, old_reels);
            reels[reel].second = file("new", reel, new_reels);
        }
        RecordingLogger logger;
        const char* error = mr_make_changelist(reels, wide(scratch_.file("changes.txt")), &block_, logger);
        return error ? error : "";
    }

    std::string report() const { return plain_lines(bytes_of_file(scratch_.file("changes.txt"))); }

    /// The rows of the comparison of the last run.
    std::vector<ChangeRecord> rows() const {
        RecordingLogger logger;
        chgdb old_events(wide(scratch_.file("oldcut__.chg")), &logger);
        chgdb new_events(wide(scratch_.file("newcut__.chg")), &logger);
        chgdb changes(old_events.film_std(), &logger);
        chgdb reused(old_events.film_std(), &logger);
        merge_events(old_events, new_events, changes, logger);
        classify_moves(changes, logger);
        merge_rows(changes, logger);
        find_reused_material(changes, old_events, reused, logger);
        number_steps(changes, logger);
        show_all(changes);
        std::vector<ChangeRecord> records;
        for (unsigned index = 0; index < changes.get_num_records(); ++index) {
            records.emplace_back(changes.film_std());
            records.back().read(*changes.get_record(index));
        }
        return records;
    }

private:
    LightweightString<wchar_t> file(const char* side, std::size_t reel, const std::vector<Cut>& reels) const {
        if (reel >= reels.size()) return wide(".CDB");
        const std::string path = scratch_.file(side + std::to_string(reel) + ".cdb");
        EXPECT_TRUE(made_cut::write_cut(path, reels[reel]));
        return wide(path);
    }

    ScratchDirectory scratch_;
    embedded::settings_block block_;
};

Recut any_recut(const recuts::Kinds& kinds, int reels) {
    return recuts::make_recut(*rc::gen::arbitrary<std::uint32_t>(), kinds, reels, *rc::gen::inRange(1, 20));
}

bool is(const ChangeRecord& row, const char* kind) { return std::string_view(row.record_type) == kind; }

bool is_matched(const ChangeRecord& row) { return is(row, "MO") || is(row, "MF") || is(row, "MB") || is(row, ""); }

std::multiset<Film> film_of(const std::vector<ChangeRecord>& rows, const char* kind) {
    std::multiset<Film> film;
    for (const ChangeRecord& row : rows) {
        for (int frame = 0; is(row, kind) && frame < row.edit_length; ++frame)
            film.emplace(row.keycode_in.get_prefix(), row.keycode_in.sample / row.key_step() + frame);
    }
    return film;
}

int length_of(const Cut& cut) {
    int length = 0;
    for (const Shot& shot : cut)
        length += shot.length;
    return length;
}

/// The whole numbers of a line.
std::vector<int> numbers_in(const std::string& line) {
    std::istringstream words(line);
    std::vector<int> numbers;
    for (std::string word; words >> word;)
        if (word.find_first_not_of("+-0123456789") == std::string::npos &&
            word.find_first_of("0123456789") != word.npos)
            numbers.push_back(std::atoi(word.c_str()));
    return numbers;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/// Original length, inserted, deleted, moved, total change and new length, as printed.
std::vector<int> summary_of(const std::string& report) {
    const std::vector<std::string> lines = lines_of(report);
    const auto title = std::find(lines.begin(), lines.end(), "SUMMARY OF CHANGES:");
    for (auto line = title; line != lines.end(); ++line)
        if (numbers_in(*line).size() == 6) return numbers_in(*line);
    return {};
}

/// The last number of the detailed list's total column, with its sign.
int last_total(const std::string& report) {
    const std::size_t begin = report.find("DETAILED LIST OF CHANGES:");
    const std::size_t end = report.find("TRANSITIONS IN NEW SEQUENCE:");
    int total = 0;
    for (const std::string& line : lines_of(report.substr(begin, end - begin))) {
        if (line.find(" SHOT") == std::string::npos || line.size() < 9) continue;
        const int magnitude = std::atoi(line.substr(line.size() - 7).c_str());
        total = line[line.size() - 9] == '-' ? -magnitude : magnitude;
    }
    return total;
}

} // namespace

RC_GTEST_PROP(PlainRecuts, OneReelAddsUp, ()) {
    Runs run;
    const Recut recut = any_recut(recuts::plain, 1);
    RC_ASSERT(run.run(recut.old_reels, recut.new_reels).empty());
    const std::vector<int> summary = summary_of(run.report());
    RC_ASSERT(summary.size() == std::size_t{6});
    RC_ASSERT(summary[0] == length_of(recut.old_reels[0]));
    RC_ASSERT(summary[5] == length_of(recut.new_reels[0]));
    RC_ASSERT(summary[0] + summary[1] - summary[2] == summary[5]);
    RC_ASSERT(last_total(run.report()) == summary[1] - summary[2]);
    RC_ASSERT(summary[4] == std::max(0, summary[1] - summary[2]));
}

RC_GTEST_PROP(PlainRecuts, EachFrameOfTheNewCutIsKeptMovedOrNewAndNoneTwice, ()) {
    Runs run;
    const Recut recut = any_recut(recuts::plain, 4);
    RC_ASSERT(run.run(recut.old_reels, recut.new_reels).empty());
    std::map<std::pair<int, int>, int> covered;
    for (const ChangeRecord& row : run.rows()) {
        for (int frame = 0; (is_matched(row) || is(row, "I")) && frame < row.edit_length; ++frame)
            ++covered[{row.reel_seq, row.edit_in + frame}];
    }
    std::size_t frames = 0;
    for (std::size_t reel = 0; reel < recut.new_reels.size(); ++reel) {
        for (int frame = 0; frame < length_of(recut.new_reels[reel]); ++frame, ++frames) {
            const int uses = covered[{static_cast<int>(reel) + 1, frame}];
            RC_ASSERT(uses == 1);
        }
    }
    RC_ASSERT(covered.size() == frames);
}

RC_GTEST_PROP(PlainRecuts, ThereAndBackInsertAndDeleteTheSameFilm, ()) {
    Runs run;
    const Recut recut = any_recut(recuts::plain, 4);
    RC_ASSERT(run.run(recut.old_reels, recut.new_reels).empty());
    const std::vector<ChangeRecord> there = run.rows();
    RC_ASSERT(run.run(recut.new_reels, recut.old_reels).empty());
    const std::vector<ChangeRecord> back = run.rows();
    RC_ASSERT(film_of(there, "I") == film_of(back, "DU"));
    RC_ASSERT(film_of(there, "DU") == film_of(back, "I"));
    RC_ASSERT(film_of(there, "DU").size() == film_of(there, "DC").size());
}

RC_GTEST_PROP(Recuts, IdenticalCutsGiveNoChanges, ()) {
    Runs run;
    recuts::Kinds kinds = recuts::plain;
    kinds.transitions = *rc::gen::arbitrary<bool>();
    kinds.varispeed = *rc::gen::arbitrary<bool>();
    const Recut recut = any_recut(kinds, 4);
    RC_ASSERT(run.run(recut.old_reels, recut.old_reels).empty());
    RC_ASSERT(run.report().find("THERE ARE NO CHANGES TO MAKE") != std::string::npos);
    unsigned steps = 1;
    change_steps(detailed_changes, steps);
    RC_ASSERT(steps == 0U);
    change_steps(bench_changes, steps);
    RC_ASSERT(steps == 0U);
    RC_ASSERT(prove_change_steps(detailed_changes).proved);
}

// Each seed is a case of its own, so that one that fails can be run again.
TEST(Recuts, TheBenchListIsProvedOnTenThousand) {
    constexpr std::uint32_t recuts_made = 10000;
    Runs run;
    for (std::uint32_t seed = 0; seed < recuts_made; ++seed) {
        const Recut recut = recuts::make_recut(seed, recuts::everything, 1 + static_cast<int>(seed % 4), 14);
        ASSERT_EQ(run.run(recut.old_reels, recut.new_reels), "") << "seed " << seed;
        const change_proof proof = prove_change_steps(bench_changes);
        ASSERT_TRUE(proof.proved) << "seed " << seed << ", step " << proof.step << ", reel " << proof.reel << ", frame "
                                  << proof.position << ": " << proof.reason;
    }
}
