// Whole runs on random recuts: the bench list of each holds, and the proof of either list says what work frame by
// frame does.

#include "changelist/steps/kept_steps.h"
#include "tests/changelist/cut_files.h"
#include "tests/changelist/frame_by_frame.h"
#include "tests/support/recuts.h"

#include <rapidcheck.h>

#include <algorithm>

namespace {

using changelist_test::wide;
using recuts::Recut;

class BenchRuns : public changelist_test::ChangelistTest {
protected:
    BenchRuns() { block.set("chg_verbose_list", "1"); }

    LightweightString<wchar_t> file(const char* side, std::size_t reel, const std::vector<made_cut::Cut>& reels) {
        if (reel >= reels.size()) return wide(".CDB");
        return wide(write(side + std::to_string(reel) + ".cdb", reels[reel], header));
    }

    bool make(const Recut& recut) {
        changelist_reels reels(std::max(recut.old_reels.size(), recut.new_reels.size()));
        for (std::size_t reel = 0; reel < reels.size(); ++reel)
            reels[reel] = {file("old", reel, recut.old_reels), file("new", reel, recut.new_reels)};
        return mr_make_changelist(reels, wide(scratch.file("changes.txt")), &block, logger) == nullptr;
    }

    void check_lists(const recuts::Kinds& kinds, int reels, int events) {
        EXPECT_TRUE(rc::check([&] {
            header.film = *rc::gen::element<std::string>("35mm-4p", "16mm-1p", "35mm-3p", "35mm-2p", "35mm-8p");
            RC_ASSERT(make(recuts::make_recut(*rc::gen::arbitrary<std::uint32_t>(), kinds, reels, events)));
            const KeptRun& run = kept_run();
            const change_proof bench = prove_change_steps(bench_changes);
            RC_LOG() << bench.reason << '\n';
            RC_ASSERT(bench.proved);
            RC_ASSERT(frame_by_frame::carry_out(run.old_cut, run.new_cut, run.bench).proved);

            const change_proof detailed = prove_change_steps(detailed_changes);
            const frame_by_frame::Result said = {detailed.proved, detailed.step, detailed.reel, detailed.position};
            RC_ASSERT(said == frame_by_frame::carry_out(run.old_cut, run.new_cut, run.detailed));
        }));
    }

    made_cut::Header header;
};

TEST_F(BenchRuns, HoldOnOneReelOfPlainFilm) { check_lists(recuts::plain, 1, 12); }

TEST_F(BenchRuns, HoldOnSeveralReelsOfPlainFilm) { check_lists(recuts::plain, 4, 8); }

TEST_F(BenchRuns, HoldOnSeveralReelsOfEverything) { check_lists(recuts::everything, 4, 12); }

} // namespace
