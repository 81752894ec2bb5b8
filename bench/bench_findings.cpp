// Findings of long edits through long logs.

#include "film/find.h"
#include "film/log_rows.h"
#include "formats/edl/edl_reader.h"
#include "tests/logging/film_tables.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int hour = 24 * 3600, row_length = 2000, row_step = 2400, rows_of_a_tape = 30, length = 24;

std::string timecode(int frame) {
    LabelPoint point(frame, label_tc_24);
    return point.get_string();
}

std::string tape_of(int row) { return "T" + std::to_string(100 + row / rows_of_a_tape); }
int start_of(int row) { return hour + row % rows_of_a_tape * row_step; }

/// Four events of each row, in an order that leaps about the log.
std::string long_list(int events) {
    std::string text = "TITLE: LONG\n";
    const int rows = events / 4;
    for (int event = 0; event < events; ++event) {
        const int row = event * 7 % rows, source = start_of(row) + 40 + event % 4 * 400, record = hour + event * length;
        text += std::to_string(event + 1) + "  " + tape_of(row) + "  V C " + timecode(source) + " " +
                timecode(source + length) + " " + timecode(record) + " " + timecode(record + length) + "\n";
    }
    return text;
}

MadeTable long_log(int rows) {
    Records records;
    for (int row = 0; row < rows; ++row)
        records.push_back({tape_of(row), timecode(start_of(row)), timecode(start_of(row) + row_length),
                           "A" + std::to_string(row), "KJ" + std::to_string(100000 + row) + "0100+00"});
    return {{{"FILMDB", "Rev 16"}, {"label_std", "24fps"}, {"film label_std", "35mm-4p"}},
            {"reel", "start time", "end time", "cam reel", "start keycode"},
            records};
}

void find(benchmark::State& state) {
    const int events = static_cast<int>(state.range(0));
    formats::ReadOptions reading;
    reading.rate = embedded::nearest_rate(24);
    const formats::ReadResult edit = formats::read_edl_texts({{long_list(events), "long.edl", 0}}, reading);
    const MadeTable table = long_log(events / 4);
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
