// Two long cuts compared, and how much of the detailed list can be carried out as it is numbered.

#include "bench/long_cut.h"
#include "embedded/services.h"
#include "quillbrook/changelist.h"
#include "tests/support/recuts.h"
#include "tests/support/scratch_directory.h"

#include <benchmark/benchmark.h>

namespace {

using bench::long_cut;
using bench::recut_of;
using made_cut::Cut;
using made_cut::Shot;

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

/// Runs over files in a directory of their own.
class Run {
public:
    Run() {
        embedded::set_lists_directory(scratch_.path());
        for (const char* key : {"chg_summary_list", "chg_pull_list", "chg_verbose_list", "chg_dissolve_list"})
            block_.set(key, "1");
    }

    bool write(const std::vector<Cut>& old_reels, const std::vector<Cut>& new_reels) {
        reels_.assign(std::max(old_reels.size(), new_reels.size()), {made_cut::wide(".CDB"), made_cut::wide(".CDB")});
        for (std::size_t reel = 0; reel < reels_.size(); ++reel) {
            if (reel < old_reels.size() && !write_reel("old", reel, old_reels[reel], reels_[reel].first)) return false;
            if (reel < new_reels.size() && !write_reel("new", reel, new_reels[reel], reels_[reel].second)) return false;
        }
        return true;
    }

    bool compare() {
        SilentLogger logger;
        return !mr_make_changelist(reels_, made_cut::wide(scratch_.file("changes.txt")), &block_, logger);
    }

private:
    bool write_reel(const char* side, std::size_t reel, const Cut& cut, LightweightString<wchar_t>& name) const {
        const std::string path = scratch_.file(side + std::to_string(reel) + ".cdb");
        name = made_cut::wide(path);
        return made_cut::write_cut(path, cut);
    }

    ScratchDirectory scratch_;
    embedded::settings_block block_;
    changelist_reels reels_;
};

/// The same events with all film moved along its rolls, so that nothing is in both.
Cut other_film(Cut cut) {
    for (Shot& shot : cut)
        shot.frame += 100;
    return cut;
}

/// Every event is a use of one long take.
Cut one_take(int events, int step) {
    Cut cut = long_cut(events, 1);
    for (std::size_t event = 0; event < cut.size(); ++event) {
        cut[event].frame = static_cast<int>(event) * step % 500;
        cut[event].length = 100 + static_cast<int>(event) % 7;
    }
    return cut;
}

void compare(benchmark::State& state, const Cut& old_cut, const Cut& new_cut) {
    Run run;
    if (!run.write({old_cut}, {new_cut})) state.SkipWithError("the cutlists couldn't be written");
    for (auto _ : state)
        if (!run.compare()) state.SkipWithError("the run failed");
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

int events(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void many_rolls(benchmark::State& state) {
    const Cut cut = long_cut(events(state), 40);
    compare(state, cut, recut_of(cut));
}

void one_roll(benchmark::State& state) {
    const Cut cut = long_cut(events(state), 1);
    compare(state, cut, recut_of(cut));
}

void nothing_in_common(benchmark::State& state) {
    const Cut cut = long_cut(events(state), 1);
    compare(state, cut, other_film(cut));
}

void one_long_take(benchmark::State& state) {
    compare(state, one_take(events(state), 13), one_take(events(state), 17));
}

void prove(benchmark::State& state) {
    const Cut cut = long_cut(events(state), 40);
    Run run;
    if (!run.write({cut}, {recut_of(cut)}) || !run.compare()) state.SkipWithError("the run failed");
    for (auto _ : state)
        benchmark::DoNotOptimize(prove_change_steps(bench_changes));
    state.SetComplexityN(state.range(0));
}

/// Not a time but a share: how many of 1,000 random recuts each list can be carried out for, in counters.
void proved_share(benchmark::State& state, const recuts::Kinds& kinds, int reels) {
    constexpr std::uint32_t recuts_made = 1000;
    double detailed = 0;
    double bench = 0;
    for (auto _ : state) {
        detailed = bench = 0;
        Run run;
        for (std::uint32_t seed = 0; seed < recuts_made; ++seed) {
            const recuts::Recut recut = recuts::make_recut(seed, kinds, reels, 14);
            if (!run.write(recut.old_reels, recut.new_reels) || !run.compare()) state.SkipWithError("the run failed");
            detailed += prove_change_steps(detailed_changes).proved;
            bench += prove_change_steps(bench_changes).proved;
        }
    }
    state.counters["detailed_proved"] = detailed / recuts_made;
    state.counters["bench_proved"] = bench / recuts_made;
}

} // namespace

BENCHMARK(many_rolls)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(one_roll)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(nothing_in_common)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(one_long_take)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(prove)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_CAPTURE(proved_share, plain_one_reel, recuts::plain, 1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(proved_share, plain_four_reels, recuts::plain, 4)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(proved_share, all_one_reel, recuts::everything, 1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(proved_share, all_four_reels, recuts::everything, 4)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
