// FCP 7 XML of growing length into edits.

#include "formats/fcp7xml/fcp7_reader.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

std::string tag(const char* name, const std::string& text) {
    return "<" + std::string(name) + ">" + text + "</" + name + ">\n";
}

std::string tag(const char* name, int number) { return tag(name, std::to_string(number)); }

const std::string rate = "<rate>\n<timebase>24</timebase>\n<ntsc>TRUE</ntsc>\n</rate>\n";

/// A long film uses each take five times or so; its file stands there once in full.
std::string file(int take, bool full) {
    const std::string id = "<file id=\"file-" + std::to_string(take) + "\"";
    if (!full) return id + "/>\n";
    const std::string name = "A" + std::to_string(take % 97) + "_" + std::to_string(take) + ".mov";
    return id + ">\n" + tag("name", name) + tag("pathurl", "file://localhost/Volumes/Rushes/" + name) + rate +
           tag("duration", 30000) + "<timecode>\n" + rate + tag("string", "01:00:00:00") + tag("frame", 86400) +
           tag("displayformat", "NDF") + "<reel>\n" + tag("name", "TK" + std::to_string(take % 97)) +
           "</reel>\n</timecode>\n<media>\n<video>\n" + tag("duration", 30000) + "</video>\n</media>\n</file>\n";
}

std::string film(int take) {
    return "<filmdata>\n" + tag("cameraroll", "A" + std::to_string(take % 97)) + "<keycode>\n" +
           tag("prefix", "KJ" + std::to_string(100000 + take)) + tag("feetframes", "5867+00") + "</keycode>\n" +
           tag("filmstandard", "35mm4p") + "</filmdata>\n";
}

std::string filter(const char* name, const char* id, const char* parameter, const char* value) {
    return "<filter>\n<enabled>TRUE</enabled>\n<effect>\n" + tag("name", name) + tag("effectid", id) +
           tag("effectcategory", "motion") + tag("effecttype", "motion") + tag("mediatype", "video") + "<parameter>\n" +
           tag("parameterid", parameter) + tag("name", parameter) + tag("value", value) +
           "</parameter>\n</effect>\n</filter>\n";
}

/// Some programs write them with every clip, whatever was done to it.
const std::string basics =
    filter("Basic Motion", "basic", "scale", "100") + filter("Opacity", "opacity", "opacity", "100");

std::string item(int event, bool before, bool behind, bool filters) {
    constexpr int length = 48;
    const int take = event % 2000, in = 100 + event * 100 % 20000;
    return "<clipitem id=\"clip-" + std::to_string(event) + "\">\n" + tag("masterclipid", take) +
           tag("name", "take " + std::to_string(take)) + tag("enabled", "TRUE") + tag("duration", 30000) + rate +
           tag("start", before ? -1 : event * length) + tag("end", behind ? -1 : (event + 1) * length) +
           tag("in", before ? in - 6 : in) + tag("out", behind ? in + length + 6 : in + length) +
           file(take, event <= 2000) + "<logginginfo>\n" + tag("scene", take / 10) + tag("shottake", take % 10) +
           "</logginginfo>\n" + film(take) + (filters ? basics : "") + "</clipitem>\n";
}

std::string transition(int event) {
    constexpr int length = 48;
    return "<transitionitem>\n" + rate + tag("start", event * length - 6) + tag("end", event * length + 6) +
           tag("alignment", "center") + "<effect>\n" + tag("name", "Cross Dissolve") +
           tag("effectid", "Cross Dissolve") + tag("effectcategory", "Dissolve") + "</effect>\n</transitionitem>\n";
}

std::string long_sequence(int events, bool filters) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE xmeml>\n<xmeml version=\"5\">\n"
                       "<sequence id=\"long\">\n" +
                       tag("name", "LONG") + rate + "<media>\n<video>\n<track>\n";
    for (int event = 1; event <= events; ++event) {
        const bool before = event % 10 == 0, behind = event % 10 == 9;
        if (before) text += transition(event);
        text += item(event, before, behind && event < events, filters);
    }
    return text + "</track>\n</video>\n</media>\n</sequence>\n</xmeml>\n";
}

void read_sequence(benchmark::State& state, bool filters) {
    const std::string text = long_sequence(static_cast<int>(state.range(0)), filters);
    for (auto _ : state) {
        const formats::ReadResult result = formats::read_fcp7xml_bytes(text, "long.xml", 0);
        if (!result.edit || !result.warnings.empty()) state.SkipWithError(result.error.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK_CAPTURE(read_sequence, plain, false)
    ->Arg(2500)
    ->Arg(5000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(read_sequence, with_filters, true)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
