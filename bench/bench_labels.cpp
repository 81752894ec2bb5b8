// How fast labels print and read.

#include "host/labels.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int key_number = label_key_35mm_4p;
constexpr int feet = 13;
constexpr int timecode = 6;

void format_label(benchmark::State& state) {
    LabelPoint point(0, static_cast<label_t>(state.range(0)));
    point.set_prefix("KJ123456");
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        point += 4;
        benchmark::DoNotOptimize(point.get_string());
        if (point.sample > 2'000'000) point.set_sample(0);
    }
}

void parse_label(benchmark::State& state) {
    LabelPoint point(123456, static_cast<label_t>(state.range(0)));
    point.set_prefix("KJ123456");
    const std::string text = point.get_string();
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        point.set_sample(text.c_str());
        benchmark::DoNotOptimize(point.sample);
    }
}

BENCHMARK(format_label)->Arg(key_number)->Arg(feet)->Arg(timecode);
BENCHMARK(parse_label)->Arg(key_number)->Arg(feet)->Arg(timecode);

} // namespace

BENCHMARK_MAIN();
