// FCPXML of growing length into edits.

#include "formats/fcpxml/fcpxml_reader.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// A long film uses each take five times or so.
constexpr int takes = 2000;
constexpr int length = 48;

std::string frames(int count) { return "\"" + std::to_string(count * 100) + "/2400s\""; }

std::string asset(int take) {
    const std::string number = std::to_string(take);
    return "<asset id=\"a" + number + "\" name=\"take " + number +
           "\" start=\"3600s\" duration=\"9000s\" hasVideo=\"1\" hasAudio=\"1\" format=\"r1\"><media-rep "
           "kind=\"original-media\" src=\"file:///dailies/" +
           number + ".mov\"/><metadata><md key=\"com.apple.proapps.studio.reel\" value=\"A" +
           std::to_string(take % 97) +
           "\"/><md key=\"com.apple.proapps.mio.ingestDate\" value=\"2024-01-01 01:54:58 "
           "-0800\"/></metadata></asset>\n";
}

std::string item(int number, int place) {
    std::string text = "<asset-clip ref=\"a" + std::to_string(number % takes) + "\" offset=" + frames(place) +
                       " name=\"shot " + std::to_string(number % takes) +
                       "\" start=" + frames(86400 + number * 100 % 20000) + " duration=" + frames(length) +
                       " tcFormat=\"NDF\">";
    text += "<adjust-colorConform enabled=\"1\" autoOrManual=\"manual\" conformType=\"conformNone\"/>";
    if (number % 20 == 0)
        text += "<marker start=" + frames(86400 + number * 100 % 20000 + 5) + " duration=\"1/24s\" value=\"mark\"/>";
    return text + "</asset-clip>\n";
}

std::string long_project(int items) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE fcpxml>\n<fcpxml version=\"1.11\"><resources>"
        "<format id=\"r1\" frameDuration=\"100/2400s\"/>";
    for (int take = 0; take < takes; ++take)
        text += asset(take);
    text += "</resources><library><event><project name=\"Long\"><sequence format=\"r1\" tcStart=\"0s\"><spine>";
    for (int number = 0; number < items; ++number) {
        if (number > 0 && number % 10 == 0)
            text += "<transition name=\"Cross Dissolve\" offset=" + frames(number * length - 6) +
                    " duration=" + frames(12) + "/>";
        text += item(number, number * length);
    }
    return text + "</spine></sequence></project></event></library></fcpxml>";
}

void read_project(benchmark::State& state) {
    const std::string text = long_project(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_fcpxml_bytes(text, "long.fcpxml", 0);
        if (!result.edit) state.SkipWithError(result.error.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(read_project)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK_MAIN();
