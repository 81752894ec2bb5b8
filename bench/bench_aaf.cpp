// AAF edits of many clips, from the bytes of the file to the edit.

#include "bench/long_files.h"
#include "formats/aaf/aaf_reader.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

void read(benchmark::State& state) {
    const std::string bytes = bench::long_aaf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_aaf_bytes(bytes, "long.aaf", 0);
        if (!result.edit) std::abort();
        benchmark::DoNotOptimize(result.edit.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetLabel(std::to_string(bytes.size() >> 20) + " MB");
}

BENCHMARK(read)->Arg(1000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
