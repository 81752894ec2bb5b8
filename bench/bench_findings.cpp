// Findings of long edits through long logs.

#include "bench/long_files.h"
#include "film/find.h"
#include "film/log_rows.h"
#include "formats/edl/edl_reader.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/log_table.h"
#include "quillbrook/logging_tables.h"

#include <benchmark/benchmark.h>

namespace {

void find(benchmark::State& state) {
    const int events = static_cast<int>(state.range(0));
    formats::ReadOptions reading;
    reading.rate = embedded::nearest_rate(24);
    const formats::ReadResult edit = formats::read_edl_texts({{bench::list_of_tapes(events), "long.edl", 0}}, reading);
    filmdb table;
    const std::string log_text = bench::log_of_tapes(events / 4);
    formats::fill_table(table, formats::read_ale(formats::TextLines(log_text), "long.ale").rows);
    for (auto _ : state) {
        const film::LogRows log(table);
        benchmark::DoNotOptimize(film::check_edit(edit.edit, {}, &log, {}));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(find)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
