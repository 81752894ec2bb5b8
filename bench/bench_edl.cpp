// Edit lists of growing length into edits.

#include "formats/edl/edl_reader.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

std::string timecode(int frame) {
    char text[16];
    const int second = frame / 24;
    std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", second / 3600 % 24, second / 60 % 60, second % 60,
                  frame % 24);
    return text;
}

/// A long film uses each take five times or so.
int take_of(int event) { return event % 2000; }

std::string line(int event, const char* type, int source, int record, int length) {
    char head[64];
    std::snprintf(head, sizeof head, "%06d  A%03d     V     %s ", event, take_of(event) % 97, type);
    return head + timecode(source) + " " + timecode(source + length) + " " + timecode(record) + " " +
           timecode(record + length) + "\n";
}

std::string long_list(int events) {
    constexpr int length = 48;
    std::string text = "TITLE: LONG\nFCM: NON-DROP FRAME\n";
    for (int event = 1; event <= events; ++event) {
        const int record = 86400 + event * length;
        const bool dissolve = event % 10 == 0;
        if (dissolve) text += line(event, "C    ", event * 100, record, 0);
        text += line(event, dissolve ? "D 012" : "C    ", 86400 + event * 100 % 20000, record, length);
        text += "* FROM CLIP NAME:  take " + std::to_string(take_of(event)) + "\n";
        if (event % 25 == 0) text += "* KEYCODE: KJ 12 3456-" + std::to_string(1000 + event % 9000) + "+05\n";
    }
    return text;
}

void read_list(benchmark::State& state) {
    const std::string text = long_list(static_cast<int>(state.range(0)));
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
