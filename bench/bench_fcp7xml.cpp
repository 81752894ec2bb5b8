// FCP 7 XML of growing length into edits.

#include "bench/long_files.h"
#include "formats/fcp7xml/fcp7_reader.h"

#include <benchmark/benchmark.h>

namespace {

void read_sequence(benchmark::State& state, bool filters) {
    const std::string text = bench::long_fcp7xml(static_cast<int>(state.range(0)), filters);
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_fcp7xml_bytes(text, "long.xml", 0);
        if (!result.edit || !result.warnings.empty()) state.SkipWithError(result.error.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK_CAPTURE(read_sequence, plain, false)
    ->Arg(2500)
    ->Arg(5000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(read_sequence, with_filters, true)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
