// How fast logs of as many rows as a table holds are read.

#include "bench/long_files.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/log_check.h"
#include "formats/logs/log_table.h"
#include "quillbrook/logging_tables.h"

#include <benchmark/benchmark.h>

namespace {

void read_log(benchmark::State& state) {
    const std::string bytes = bench::long_ale(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const formats::TextLines text(bytes);
        formats::Log log = formats::read_ale(text, "long.ale");
        benchmark::DoNotOptimize(log);
        if (log.rows.size() != static_cast<std::size_t>(state.range(0)) || !log.warnings.empty())
            state.SkipWithError("rows are missing");
    }
}

void make_table(benchmark::State& state) {
    const std::string bytes = bench::long_ale(static_cast<int>(state.range(0)));
    const formats::TextLines text(bytes);
    const formats::Log log = formats::read_ale(text, "long.ale");
    for (auto _ : state) {
        filmdb table;
        formats::fill_table(table, log.rows);
        benchmark::DoNotOptimize(table.get_num_records());
    }
}

void check_rows(benchmark::State& state) {
    const std::string bytes = bench::long_ale(static_cast<int>(state.range(0)));
    const formats::TextLines text(bytes);
    const formats::Log log = formats::read_ale(text, "long.ale");
    for (auto _ : state)
        benchmark::DoNotOptimize(formats::check_log(log.rows));
}

BENCHMARK(read_log)->Arg(32000)->Unit(benchmark::kMillisecond);
BENCHMARK(make_table)->Arg(32000)->Unit(benchmark::kMillisecond);
BENCHMARK(check_rows)->Arg(32000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
