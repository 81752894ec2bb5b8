// Edits of clips as XML and as AAF.

#include "bench/long_files.h"
#include "bench/printed.h"
#include "tests/support/aaf_samples.h"

namespace bench {
namespace {

constexpr int length = 48;
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

std::string item(int event, int takes, bool before, bool behind, bool filters) {
    const int take = event % takes, in = 100 + event * 100 % 20000;
    return "<clipitem id=\"clip-" + std::to_string(event) + "\">\n" + tag("masterclipid", take) +
           tag("name", "take " + std::to_string(take)) + tag("enabled", "TRUE") + tag("duration", 30000) + rate +
           tag("start", before ? -1 : event * length) + tag("end", behind ? -1 : (event + 1) * length) +
           tag("in", before ? in - 6 : in) + tag("out", behind ? in + length + 6 : in + length) +
           file(take, event <= takes) + "<logginginfo>\n" + tag("scene", take / 10) + tag("shottake", take % 10) +
           "</logginginfo>\n" + film(take) + (filters ? basics : "") + "</clipitem>\n";
}

std::string transition(int event) {
    return "<transitionitem>\n" + rate + tag("start", event * length - 6) + tag("end", event * length + 6) +
           tag("alignment", "center") + "<effect>\n" + tag("name", "Cross Dissolve") +
           tag("effectid", "Cross Dissolve") + tag("effectcategory", "Dissolve") + "</effect>\n</transitionitem>\n";
}

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

std::string spine_item(int number, int takes, int place) {
    std::string text = "<asset-clip ref=\"a" + std::to_string(number % takes) + "\" offset=" + frames(place) +
                       " name=\"shot " + std::to_string(number % takes) +
                       "\" start=" + frames(86400 + number * 100 % 20000) + " duration=" + frames(length) +
                       " tcFormat=\"NDF\">";
    text += "<adjust-colorConform enabled=\"1\" autoOrManual=\"manual\" conformType=\"conformNone\"/>";
    if (number % 20 == 0)
        text += "<marker start=" + frames(86400 + number * 100 % 20000 + 5) + " duration=\"1/24s\" value=\"mark\"/>";
    return text + "</asset-clip>\n";
}

} // namespace

std::string long_fcp7xml(int items, bool filters) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE xmeml>\n<xmeml version=\"5\">\n"
                       "<sequence id=\"long\">\n" +
                       tag("name", "LONG") + rate + "<media>\n<video>\n<track>\n";
    for (int event = 1; event <= items; ++event) {
        const bool before = event % 10 == 0, behind = event % 10 == 9;
        if (before) text += transition(event);
        text += item(event, takes_of(items), before, behind && event < items, filters);
    }
    return text + "</track>\n</video>\n</media>\n</sequence>\n</xmeml>\n";
}

std::string long_fcpxml(int items) {
    const int takes = takes_of(items);
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
        text += spine_item(number, takes, number * length);
    }
    return text + "</spine></sequence></project></event></library></fcpxml>";
}

std::string long_aaf(int clips) { return aaf_writer::written(aaf_samples::long_cut(static_cast<std::size_t>(clips))); }

} // namespace bench
