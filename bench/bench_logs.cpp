// How fast logs of as many rows as a table holds are read.

#include "formats/logs/ale_reader.h"
#include "formats/logs/log_check.h"
#include "formats/logs/log_table.h"
#include "quillbrook/logging_tables.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

/// A roll of takes of ten seconds, one after the other.
std::string long_log(int rows) {
    std::string text = "Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\nColumn\n"
                       "Name\tTape\tStart\tEnd\tCamroll\tKN Start\tKN End\tSoundroll\tSound TC\tScene\tTake\n\nData\n";
    for (int i = 0; i < rows; ++i) {
        char row[256];
        const int second = i % 8000 * 10;
        std::snprintf(
            row, sizeof row,
            "%d-%d\tT%03d\t%02d:%02d:%02d:00\t%02d:%02d:%02d:00\tA%03d\tKJ %06d-%04d+00\tKJ %06d-%04d+00\tS1\t"
            "%02d:%02d:%02d:00\t%d\t%d\n",
            i / 10, i % 10, i / 8000, second / 3600, second / 60 % 60, second % 60, (second + 10) / 3600,
            (second + 10) / 60 % 60, (second + 10) % 60, i / 100, 100000 + i / 600, i % 600 * 15, 100000 + i / 600,
            i % 600 * 15 + 15, second / 3600, second / 60 % 60, second % 60, i / 10, i % 10);
        text += row;
    }
    return text;
}

void read_log(benchmark::State& state) {
    const std::string bytes = long_log(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const formats::TextLines text(bytes);
        formats::Log log = formats::read_ale(text, "long.ale");
        benchmark::DoNotOptimize(log);
        if (log.rows.size() != static_cast<std::size_t>(state.range(0)) || !log.warnings.empty())
            state.SkipWithError("rows are missing");
    }
}

void make_table(benchmark::State& state) {
    const std::string bytes = long_log(static_cast<int>(state.range(0)));
    const formats::TextLines text(bytes);
    const formats::Log log = formats::read_ale(text, "long.ale");
    for (auto _ : state) {
        filmdb table;
        formats::fill_table(table, log.rows);
        benchmark::DoNotOptimize(table.get_num_records());
    }
}

void check_rows(benchmark::State& state) {
    const std::string bytes = long_log(static_cast<int>(state.range(0)));
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
