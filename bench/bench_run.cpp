// A whole run: from .otio text to the table and all lists.

#include "bench/long_edit.h"
#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "formats/otio/otio_reader.h"
#include "quillbrook/cutlist.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

/// From the text of an edit to its table and lists.
void run_lists(benchmark::State& state, const std::string& edit, const embedded::settings_block& more) {
    const std::filesystem::path folder = embedded::work_directory();
    std::filesystem::create_directories(folder);
    const std::string file = folder / "long.otio";
    std::string why;
    if (!embedded::write_file_whole(file, edit, &why)) {
        state.SkipWithError(why.c_str());
        return;
    }
    embedded::settings_block options = more;
    options.set("chan_type", "1");
    options.set("chan_num", "0");
    options.set("output_file", folder / "long.txt");
    for (auto _ : state) {
        const formats::ReadResult read = formats::read_otio(file, {});
        SilentLogger logger;
        if (!make_cutlist_from_edit(read.edit, logger, 0, &options, embedded::EditBuilder::cues_of(read.edit), false))
            state.SkipWithError("the run failed");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void whole_run(benchmark::State& state) { run_lists(state, bench::long_edit(static_cast<int>(state.range(0))), {}); }

/// Opticals and re-used film, with the single-layer lists.
void all_lists(benchmark::State& state) {
    embedded::settings_block single_layer;
    for (const char* type : {"fsl_type1_file", "fsl_type2_file", "fsl_type3_file", "fsl_type4_file"})
        single_layer.set(type, "1");
    run_lists(state, bench::long_optical_edit(static_cast<int>(state.range(0))), single_layer);
}

} // namespace

BENCHMARK(whole_run)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(all_lists)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
