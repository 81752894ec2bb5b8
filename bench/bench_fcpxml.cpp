// FCPXML of growing length into edits.

#include "bench/long_files.h"
#include "formats/fcpxml/fcpxml_reader.h"

#include <benchmark/benchmark.h>

namespace {

void read_project(benchmark::State& state) {
    const std::string text = bench::long_fcpxml(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_fcpxml_bytes(text, "long.fcpxml", 0);
        if (!result.edit) state.SkipWithError(result.error.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(read_project)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
