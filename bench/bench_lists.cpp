// Lists with opticals and re-use: from .otio text to the table, the report and the four single-layer lists.

#include "bench/long_edit.h"
#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "formats/otio_reader.h"
#include "quillbrook/cutlist.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

embedded::settings_block options_for(const std::string& report) {
    embedded::settings_block options;
    options.set("chan_type", "1");
    options.set("chan_num", "0");
    options.set("output_file", report);
    for (const char* type : {"fsl_type1_file", "fsl_type2_file", "fsl_type3_file", "fsl_type4_file"})
        options.set(type, "1");
    return options;
}

void all_lists(benchmark::State& state) {
    const std::filesystem::path folder = embedded::work_directory();
    std::filesystem::create_directories(folder);
    const std::string file = folder / "opticals.otio";
    std::string why;
    if (!embedded::write_file_whole(file, bench::long_optical_edit(static_cast<int>(state.range(0))), &why)) {
        state.SkipWithError(why.c_str());
        return;
    }
    const embedded::settings_block options = options_for(folder / "opticals.txt");
    for (auto _ : state) {
        const formats::ReadResult read = formats::read_otio(file, {});
        SilentLogger logger;
        if (!make_cutlist_from_edit(read.edit, logger, 0, &options, embedded::EditBuilder::cues_of(read.edit), false))
            state.SkipWithError("the run failed");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(all_lists)->Arg(2500)->Arg(5000)->Arg(9999)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
