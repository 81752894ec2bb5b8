// What it costs to prove a printed report, beside what it costs to print it.

#include "bench/long_cut.h"
#include "cutlist/cutlist_options.h"
#include "film/film_uses.h"
#include "film/list_proof.h"
#include "quillbrook/cutlist.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <benchmark/benchmark.h>

#include <climits>

namespace {

LightweightString<wchar_t> wide(const std::string& text) { return fromUTF8(text.c_str(), -1); }

/// A table of so many events, with their numbers, and its report.
struct Printed {
    ScratchDirectory scratch;
    std::string table = scratch.file("cut.cdb");
    std::string report = scratch.file("cut.txt");

    explicit Printed(int events) {
        made_cut::write_cut(table, bench::long_cut(events, 20));
        recdb numbered(wide(table), INT_MAX, false);
        for (unsigned i = 0; i < numbered.get_num_records(); ++i)
            numbered.set_field(i, 0, static_cast<int>(i) + 1);
        numbered.save_text();
        print();
    }
    void print() {
        RecordingLogger logger;
        cutlist_options() = CutlistOptions();
        cutlist_options().chan_type = 1;
        cutlist_options().pull_match_assembly = 1;
        print_cutlist_reports(wide(table), wide(report), logger, true, nullptr);
    }
};

void print_lists(benchmark::State& state) {
    Printed printed(static_cast<int>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        printed.print();
    }
}

void prove_lists(benchmark::State& state) {
    Printed printed(static_cast<int>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        const recdb table(wide(printed.table), INT_MAX, false);
        film::ProofOptions options;
        film::take_header(table, options);
        const film::ListProof proof =
            film::prove_report(bytes_of_file(printed.report), film::uses_of_table(table), options);
        if (!proof.proved()) state.SkipWithError(film::line_of(proof.failures[0]).c_str());
    }
}

BENCHMARK(print_lists)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond);
BENCHMARK(prove_lists)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
