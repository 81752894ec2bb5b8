#pragma once
// Small FCPXML texts, and short ways to look at the edits that come of them.

#include "formats/fcpxml/fcpxml_reader.h"
#include "tests/edl/listed_edit.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

namespace fcpxml_texts {

using edl_tests::drawn;
using edl_tests::key_at;
using edl_tests::reel_at;
using edl_tests::source_at;

/// Formats r23, r24, r25, r29, r60 and their media m23, ... without sound, from 0; "hour", media at 24 whose timecode
/// begins at an hour; "noise", sound alone; "both", picture and sound at 24; "still", a photograph; effects "text",
/// "clouds" and "dissolve".
inline std::string usual_resources() {
    const auto format = [](const std::string& id, const std::string& frame) {
        return "<format id=\"r" + id + "\" frameDuration=\"" + frame + "\"/><asset id=\"m" + id + "\" name=\"M" + id +
               "\" start=\"0s\" duration=\"1000s\" hasVideo=\"1\" format=\"r" + id + "\" src=\"file:///m" + id +
               ".mov\"/>";
    };
    return format("23", "1001/24000s") + format("24", "100/2400s") + format("25", "1/25s") +
           format("29", "1001/30000s") + format("60", "1/60s") +
           R"(<asset id="hour" name="Hour" start="3600s" duration="1000s" hasVideo="1" format="r24"/>)"
           R"(<asset id="noise" name="Noise" start="0s" duration="1000s" hasAudio="1" audioSources="1"/>)"
           R"(<asset id="both" name="Both" start="0s" duration="1000s" hasVideo="1" hasAudio="1" format="r24"/>)"
           R"(<format id="rstill" name="FFVideoFormatRateUndefined"/>)"
           R"(<asset id="still" name="Photo" start="0s" duration="0s" hasVideo="1" format="rstill"/>)"
           R"(<effect id="text" name="Basic Title"/><effect id="clouds" name="Clouds"/>)"
           R"(<effect id="dissolve" name="Uberblendung" uid="FxPlug:4731E73A-8DAC-4113-9A30-AE85B1761265"/>)";
}

inline std::string file_of(const std::string& body, const std::string& version = "1.11") {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE fcpxml>\n<fcpxml version=\"" + version + "\">" + body + "</fcpxml>";
}

inline std::string project(const std::string& spine, const std::string& sequence = R"(format="r24" tcStart="0s")",
                           const std::string& name = "Reel 1") {
    return "<project name=\"" + name + "\"><sequence " + sequence + "><spine>" + spine +
           "</spine></sequence></project>";
}

/// A file of one project, whose spine is given; `more` goes to the resources.
inline std::string with_spine(const std::string& spine, const std::string& sequence = R"(format="r24" tcStart="0s")",
                              const std::string& more = {}) {
    return file_of("<resources>" + usual_resources() + more +
                   "</resources><library location=\"file:///a/Film%201.fcpbundle/\">"
                   "<event name=\"Cuts\">" +
                   project(spine, sequence) + "</event></library>");
}

inline std::string clip(const std::string& name, const std::string& attributes, const std::string& inside = {},
                        const std::string& media = "m24") {
    return "<asset-clip ref=\"" + media + "\" name=\"" + name + "\" " + attributes + ">" + inside + "</asset-clip>";
}

inline std::string compound(const std::string& id, const std::string& spine,
                            const std::string& sequence = R"(format="r24" tcStart="0s")") {
    return "<media id=\"" + id + "\" name=\"" + id + "\"><sequence " + sequence + "><spine>" + spine +
           "</spine></sequence></media>";
}

inline std::string dissolve(const std::string& attributes) {
    return "<transition name=\"X\" " + attributes + "><filter-video ref=\"dissolve\"/></transition>";
}

/// Points as "0s 0s, 20s 10s".
inline std::string speed(const std::string& points) {
    std::string text = "<timeMap>";
    std::size_t at = 0;
    while (at < points.size()) {
        const std::size_t blank = points.find(' ', at), end = std::min(points.find(',', at), points.size());
        text += "<timept time=\"" + points.substr(at, blank - at) + "\" value=\"" +
                points.substr(blank + 1, end - blank - 1) + "\" interp=\"smooth2\"/>";
        at = end + 2;
    }
    return text + "</timeMap>";
}

inline formats::ReadResult read(const std::string& text, const formats::ReadOptions& options = {}) {
    return formats::read_fcpxml_bytes(text, "a.fcpxml", 7, options);
}

/// What the first channel of a file with that spine shows, in frames of 24, and the warnings.
inline std::string drawn_spine(const std::string& spine, const std::string& sequence = R"(format="r24" tcStart="0s")",
                               const std::string& more = {}, double rate = 24) {
    const formats::ReadResult result = read(with_spine(spine, sequence, more));
    return result.edit ? drawn(result.edit, 0, rate) : result.error;
}

inline bool warns(const formats::ReadResult& result, const std::string& words,
                  embedded::WarningKind kind = embedded::WarningKind::doubt) {
    for (const embedded::Warning& warning : result.warnings)
        if (warning.kind == kind && warning.text.find(words) != std::string::npos) return true;
    return false;
}

/// How many channels of pictures (1) or sound (2) there are.
inline int channels_of_kind(const EditPtr& edit, unsigned kind) {
    int count = 0;
    for (int channel = edit->getFirstChan(kind, 0); channel != no_more_channels; edit->getNextChan(channel, kind, 0))
        ++count;
    return count;
}

/// Cues of a channel in frames: "12 word, 30 other".
inline std::string cues_of(const EditPtr& edit, int channel, double rate = 24) {
    CueList* all = embedded::EditBuilder::cues_of(edit);
    const std::unique_ptr<CueList> cues(all->extract(0, 1e6, edit->getId(channel)));
    std::string text;
    for (unsigned i = 0; cues && i < cues->getNumCuePoints(0); ++i)
        text += (text.empty() ? "" : ", ") +
                std::to_string(std::lround(embedded::EditBuilder::time_of_cue(*cues, i) * rate)) + " " +
                toUTF8(cues->getCuePoint(i, 0)->text).c_str();
    return text;
}

} // namespace fcpxml_texts
