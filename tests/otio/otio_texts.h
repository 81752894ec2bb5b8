#pragma once
// Small edit files as texts, and short ways to look at what they become. Times are seconds unless a rate is given.

#include "embedded/edit_builder.h"
#include "formats/otio/otio_reader.h"
#include "tests/edit_model/made_edits.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace otio_texts {

/// A field to add to an object, as `"enabled": false`.
using Extra = std::string;

inline std::string joined(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

inline std::string object(const std::string& schema, const std::string& fields) {
    return R"({"OTIO_SCHEMA": ")" + schema + "\"" + (fields.empty() ? "" : ", ") + fields + "}";
}

inline std::string moment(double value, double rate = 1) {
    return object("RationalTime.1", "\"value\": " + std::to_string(value) + ", \"rate\": " + std::to_string(rate));
}

inline std::string range(double start, double duration, double rate = 1) {
    return object("TimeRange.1",
                  "\"start_time\": " + moment(start, rate) + ", \"duration\": " + moment(duration, rate));
}

inline Extra source_range(double start, double duration, double rate = 1) {
    return "\"source_range\": " + range(start, duration, rate);
}

inline std::string with(std::string fields, const Extra& extra) { return fields + (extra.empty() ? "" : ", ") + extra; }

inline Extra quillbrook(const std::string& fields) { return R"("metadata": {"quillbrook": {)" + fields + "}}"; }

inline std::string reference(const std::string& fields = {}) { return object("ExternalReference.1", fields); }

/// A clip with media; `media` is the reference, null for missing media.
inline std::string clip(const std::string& name, double start, double duration, const Extra& extra = {},
                        const std::string& media = reference()) {
    const std::string fields =
        "\"name\": \"" + name + "\", " + source_range(start, duration) + ", \"media_reference\": " + media;
    return object("Clip.1", with(fields, extra));
}

/// A clip with nothing but the fields given.
inline std::string bare_clip(const std::string& fields) { return object("Clip.1", fields); }

inline std::string gap(double duration, const Extra& extra = {}) {
    return object("Gap.1", with(source_range(0, duration), extra));
}

inline std::string transition(double in, double out, const Extra& extra = R"("transition_type": "SMPTE_Dissolve")") {
    return object("Transition.1", with("\"in_offset\": " + moment(in) + ", \"out_offset\": " + moment(out), extra));
}

inline std::string track(std::initializer_list<std::string> children, const Extra& extra = {}) {
    return object("Track.1", with("\"children\": [" + joined(children) + "]", extra));
}

inline std::string stack(std::initializer_list<std::string> children, const Extra& extra = {}) {
    return object("Stack.1", with("\"children\": [" + joined(children) + "]", extra));
}

inline std::string timeline(std::initializer_list<std::string> tracks, const Extra& extra = {},
                            const Extra& of_stack = {}) {
    return object("Timeline.1", with("\"tracks\": " + stack(tracks, of_stack), extra));
}

inline std::string effect(const Extra& extra, const std::string& schema = "Effect.1") { return object(schema, extra); }

inline Extra effects(std::initializer_list<std::string> list) { return "\"effects\": [" + joined(list) + "]"; }

inline std::string warp(double scalar) {
    return effect("\"time_scalar\": " + std::to_string(scalar), "LinearTimeWarp.1");
}

inline std::string marker(double start, const std::string& name, const Extra& extra = {}) {
    return object("Marker.2", with("\"marked_range\": " + range(start, 0) + ", \"name\": \"" + name + "\"", extra));
}

inline Extra markers(std::initializer_list<std::string> list) { return "\"markers\": [" + joined(list) + "]"; }

inline formats::ReadResult read(const std::string& text, const formats::ReadOptions& options = {}) {
    return formats::read_otio_bytes(text, "dir/reel one.otio", 1000, options);
}

/// The error of a text that is refused, without the file's name before it.
inline std::string error_of(const std::string& text) {
    const std::string name = "dir/reel one.otio: ";
    const formats::ReadResult result = read(text);
    if (result.edit || result.error.compare(0, name.size(), name) != 0) return "(" + result.error + ")";
    return result.error.substr(name.size());
}

inline bool warns_of(const formats::ReadResult& result, const std::string& words) {
    for (const std::string& warning : result.warnings)
        if (warning.find(words) != std::string::npos) return true;
    return false;
}

/// A channel's events as `edit_model::drawn` shows them.
inline std::string channel(const formats::ReadResult& result, int number = 0) {
    if (!result.edit) return "no edit: " + result.error;
    return edit_model::drawn(*result.edit->get_edit_cel_p(number));
}

inline std::string drawn(const std::string& text, int number = 0) { return channel(read(text), number); }

/// The points of a channel, in and out in turn.
inline std::vector<ChannelEvent> points(const formats::ReadResult& result, int number = 0) {
    std::vector<ChannelEvent> all;
    if (!result.edit) return all;
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(number);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all))
        all.push_back(at.get_channel_event());
    return all;
}

/// The source of an event, counted from 0; empty where it doesn't open.
inline EditPtr source_of(const formats::ReadResult& result, std::size_t event = 0) {
    EditPtr source;
    const std::vector<ChannelEvent> all = points(result);
    if (2 * event < all.size()) source.i_open(all[2 * event].cookie, edit_open_default);
    return source;
}

inline std::string reel(const EditPtr& source, int medium, int roll) {
    return source ? source->getReelId(medium, roll).c_str() : "no source";
}

inline std::string label(const EditPtr& source, UserLabelType kind, int medium, int roll = 1) {
    return source ? source->getLabel(kind, {medium, roll})->get_string(0) : "no source";
}

inline std::string name(const EditPtr& edit) { return edit ? toUTF8(edit->getName()).c_str() : "no edit"; }

/// The cues of a channel as "text@time/flags".
inline std::vector<std::string> cues(const formats::ReadResult& result, int number = 0, double to = 1e6) {
    std::vector<std::string> all;
    if (!result.edit) return all;
    CueList* found = embedded::EditBuilder::cues_of(result.edit)->extract(0, to, result.edit->getId(number));
    for (unsigned i = 0; found && found->getCuePoint(i, 0); ++i)
        all.push_back(std::string(toUTF8(found->getCuePoint(i, 0)->text).c_str()) + "/" +
                      std::to_string(found->getCuePoint(i, 0)->flags));
    delete found;
    return all;
}

} // namespace otio_texts
