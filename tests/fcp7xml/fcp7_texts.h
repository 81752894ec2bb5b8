#pragma once
// Small FCP 7 XML texts, and short ways to look at the edits that come of them.

#include "embedded/edit_data.h"
#include "formats/fcp7xml/fcp7_reader.h"
#include "tests/edl/listed_edit.h"

#include <cmath>
#include <memory>
#include <string>
#include <utility>

namespace fcp7_texts {

using edl_tests::drawn;
using edl_tests::key_at;
using edl_tests::reel_at;
using edl_tests::source_at;
using edl_tests::timecode_at;

inline std::string tag(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

inline std::string rate(int timebase, bool ntsc = false) {
    return tag("rate", tag("timebase", std::to_string(timebase)) + tag("ntsc", ntsc ? "TRUE" : "FALSE"));
}

/// Timecode by its frame, or where that is empty by its text.
inline std::string timecode(const std::string& frame, const std::string& text = "", const std::string& more = "") {
    return tag("timecode",
               (frame.empty() ? "" : tag("frame", frame)) + (text.empty() ? "" : tag("string", text)) + more);
}

inline std::string reel(const std::string& name) { return tag("reel", tag("name", name)); }

/// A file of 1000 frames whose first one is 01:00:00:00 at 24, without a reel of its own.
inline std::string file(const std::string& name = "sea.mov", const std::string& more = timecode("86400"),
                        const std::string& length = "1000") {
    return "<file id=\"" + name + "\">" + tag("name", name) + tag("pathurl", "file://localhost/rushes/" + name) +
           tag("duration", length) + more + "</file>";
}

struct Item {
    Item(std::string name_of, int from, int to, int first, int last, std::string what = file(), std::string also = "")
        : name(std::move(name_of)), start(from), end(to), in(first), out(last), medium(std::move(what)),
          more(std::move(also)) {}

    std::string name;
    int start, end, in, out;
    std::string medium, more;
};

inline std::string places(const Item& item) {
    return tag("start", std::to_string(item.start)) + tag("end", std::to_string(item.end)) +
           tag("in", std::to_string(item.in)) + tag("out", std::to_string(item.out));
}

inline std::string clip(const Item& item) {
    return "<clipitem>" + tag("name", item.name) + places(item) + item.medium + item.more + "</clipitem>";
}

inline std::string transition(int start, int end, const std::string& alignment = "center",
                              const std::string& name = "Cross Dissolve", const std::string& more = "") {
    return "<transitionitem>" + tag("start", std::to_string(start)) + tag("end", std::to_string(end)) +
           tag("alignment", alignment) + tag("effect", tag("name", name) + tag("effectid", name) + more) +
           "</transitionitem>";
}

inline std::string track(const std::string& items) { return tag("track", items); }

/// At 24, from 01:00:00:00.
inline std::string sequence(const std::string& video, const std::string& more = rate(24) + timecode("86400"),
                            const std::string& audio = "", const std::string& name = "Reel 1") {
    return "<sequence id=\"" + name + "\">" + tag("name", name) + more +
           tag("media", tag("video", video) + tag("audio", audio)) + "</sequence>";
}

inline std::string document(const std::string& content) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE xmeml>\n<xmeml version=\"5\">\n" + content + "\n</xmeml>\n";
}

inline formats::ReadResult read_document(const std::string& text, const formats::ReadOptions& options = {}) {
    return formats::read_fcp7xml_bytes(text, "a.xml", 0, options);
}

/// One picture track of a sequence.
inline formats::ReadResult read(const std::string& items, const std::string& more = rate(24) + timecode("86400")) {
    return read_document(document(sequence(track(items), more)));
}

inline std::string shown(const formats::ReadResult& result, int channel = 0, double rate = 24) {
    return result.edit ? drawn(result.edit, channel, rate) : result.error;
}

/// The warnings in lines, without the file's name.
inline std::string told(const formats::ReadResult& result) {
    std::string text;
    for (const embedded::Warning& warning : result.warnings)
        text += (text.empty() ? "" : "\n") + warning.text.substr(sizeof "a.xml: " - 1);
    return text;
}

inline const embedded::Sequence& model(const formats::ReadResult& result) { return *result.edit->impl()->sequence; }

/// Source frames at which an event begins and ends, at that rate.
inline std::string source_frames(const EditPtr& edit, int channel, int event, double rate = 24) {
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
    ce_handle at = cel->get_start_ceh();
    for (int i = 0; i < 2 * event; ++i)
        at.increment(ce_all);
    const double in = at.get_channel_event().source_time;
    at.increment(ce_all);
    return std::to_string(std::lround(in * rate)) + "-" +
           std::to_string(std::lround(at.get_channel_event().source_time * rate));
}

/// Timecode at which an event begins.
inline std::string start_timecode(const EditPtr& edit, int channel = 0, int event = 0) {
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
    ce_handle at = cel->get_start_ceh();
    for (int i = 0; i < 2 * event; ++i)
        at.increment(ce_all);
    return timecode_at(source_at(edit, channel, event), at.get_channel_event().source_time);
}

/// The cues of a channel: "5 text, 9 other", in frames.
inline std::string cues(const EditPtr& edit, int channel = 0) {
    CueList* all = embedded::EditBuilder::cues_of(edit);
    const std::unique_ptr<CueList> list(all->extract(0, 1e6, edit->getId(channel)));
    std::string text;
    for (unsigned i = 0; list && i < list->getNumCuePoints(0); ++i)
        text += (text.empty() ? "" : ", ") +
                std::to_string(std::lround(embedded::EditBuilder::time_of_cue(*list, i) * 24)) + " " +
                toUTF8(list->getCuePoint(i, 0)->text).c_str();
    return text;
}

inline std::string parameter(const std::string& id, const std::string& value) {
    return tag("parameter", tag("parameterid", id) + value);
}

/// "when value when value ..." as the key frames of a graph.
inline std::string graph(std::initializer_list<std::pair<const char*, const char*>> keys) {
    std::string text;
    for (const auto& [when, value] : keys)
        text += tag("keyframe", tag("when", when) + tag("value", value));
    return parameter("graphdict", text);
}

inline std::string time_remap(const std::string& speed, bool reverse = false, bool curve = false,
                              const std::string& more = "") {
    return tag("filter", tag("effect", tag("effectid", "timeremap") +
                                           parameter("variablespeed", tag("value", curve ? "1" : "0")) +
                                           parameter("speed", tag("value", speed)) +
                                           parameter("reverse", tag("value", reverse ? "TRUE" : "FALSE")) + more));
}

} // namespace fcp7_texts
