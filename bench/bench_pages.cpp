// How fast saved cutlists load, and how fast their pages come out.

#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "reports/assembly_list.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/report.h"
#include "reports/report_context.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int shot_length = 48;

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

class CountingStream : public stream {
public:
    explicit CountingStream(std::int64_t& bytes) : bytes_(bytes) {}
    void write(const void*, unsigned int count) override { bytes_ += count; }

private:
    std::int64_t& bytes_;
};

void fill_table(cutdb& table, int events) {
    table.add_param("edit_name", "Reel 1");
    for (int event = 0; event < events; ++event) {
        cut_s cut;
        cut.event = event + 1;
        cut.track = 1;
        cut.edit_in = event * shot_length;
        cut.edit_out = cut.edit_in + shot_length;
        cut.shot_name = Qb::WStringFromInteger(event);
        put_text(cut.cam_reel, "A001");
        cut.keycode_in = LabelPoint(event * shot_length, label_key_35mm_4p);
        cut.keycode_in.set_prefix("KJ123456");
        cut.keycode_out = cut.keycode_in;
        cut.keycode_out += shot_length * 4;
        cut.to_record(*table.get_record(static_cast<unsigned>(table.add_records(1))));
    }
}

void prepare_context() {
    cutlist_options() = CutlistOptions();
    cutlist_options().chan_type = 1;
    report_context().film_label = label_key_35mm_4p;
    report_context().film_cvt = get_static_label_cvt(label_key_35mm_4p);
}

void write_page_text(benchmark::State& state) {
    std::int64_t bytes = 0;
    report out{Qb::Ptr<stream>(new CountingStream(bytes))};
    static constexpr int stops[] = {5, 16, 27, 37, 47, 67, 0};
    out.tab_stops = stops;
    out.page_length = 60;
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        out.print("%-4d\t%s\t%s\t%-9.9s\t%-9.9s\t%s\n", 17, "0012+05", "   2+00  ", "A001", "12A-3", "KJ1234560123+05");
    }
    state.SetBytesProcessed(bytes);
}

void load_records(benchmark::State& state) {
    SilentLogger logger;
    cutdb table(&logger);
    fill_table(table, 100);
    unsigned index = 0;
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        cut_report cut;
        cut.load(*table.get_record(index++ % 100), 1, 1, 0);
        benchmark::DoNotOptimize(cut.cut_length);
    }
}

void store_records(benchmark::State& state) {
    SilentLogger logger;
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        cutdb table(&logger);
        fill_table(table, static_cast<int>(state.range(0)));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void print_assembly(benchmark::State& state) {
    prepare_context();
    SilentLogger logger;
    cutdb table(&logger);
    fill_table(table, static_cast<int>(state.range(0)));
    std::int64_t bytes = 0;
    for (auto step : state) {
        benchmark::DoNotOptimize(step);
        report out{Qb::Ptr<stream>(new CountingStream(bytes))};
        out.page_length = 60;
        print_assembly_list(out, table, logger);
    }
    state.SetBytesProcessed(bytes);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(write_page_text);
BENCHMARK(load_records);
BENCHMARK(store_records)->Arg(1000);
BENCHMARK(print_assembly)->Arg(1000)->Arg(9999)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
