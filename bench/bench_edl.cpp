// Edit lists of growing length into edits.

#include "bench/long_files.h"
#include "formats/edl/edl_reader.h"

#include <benchmark/benchmark.h>

namespace {

void read_list(benchmark::State& state) {
    const std::string text = bench::long_edit_list(static_cast<int>(state.range(0)));
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(24);
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_edl_texts({{text, "long.edl", 0}}, options);
        if (!result.edit) state.SkipWithError(result.error.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(read_list)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
