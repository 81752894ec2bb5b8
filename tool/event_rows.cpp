#include "tool/event_rows.h"

#include "embedded/edit_builder.h"
#include "tool/text_table.h"
#include "tool/tool_logger.h"

#include <cmath>
#include <cstdio>
#include <memory>

namespace tool {
namespace {

constexpr int printed_cue = 4;

/// A reel that lists ask for.
struct ReelColumn {
    const char* heading;
    MediumRollIdent ident;
};
const ReelColumn reel_columns[] = {
    {"reel", {1, 2}}, {"sound reel", {4, 3}}, {"24P reel", {15, 1}}, {"cam reel", {2, 1}}};

/// A label of a source, and the medium on which its positions stand.
struct LabelColumn {
    const char* heading;
    UserLabelType kind;
    MediumRollIdent ident;
};
const LabelColumn label_columns[] = {
    {"key", user_label_key, {1, 1}},
    {"ink", user_label_ink, {1, 1}},
    {"timecode", user_label_timecode, {1, 2}},
    {"sound timecode", user_label_timecode, {1, 3}},
    {"24P timecode", user_label_timecode, {15, 1}},
};

/// One channel while it is walked.
struct Walk {
    EditPtr edit;
    int chan = 0;
    double frame = 1.0;
    CueList* cues = nullptr;
    TextTable events;
    TextTable notes;
    int number = 0;
};

template <class... Values> std::string printed(const char* format, Values... values) {
    char text[64];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string frames(const Walk& walk, double time) { return std::to_string(frames_of(time, walk.frame)); }

void add_columns(Walk& walk) {
    using enum TextTable::Align;
    for (const char* heading : {"event", "in", "out"})
        walk.events.add_column(heading, right);
    for (const char* heading : {"timecode in", "kind"})
        walk.events.add_column(heading);
    for (const char* heading : {"source in", "source out", "speed"})
        walk.events.add_column(heading, right);
    walk.events.add_column("name");
    for (const ReelColumn& column : reel_columns)
        walk.events.add_column(column.heading);
    for (const LabelColumn& column : label_columns)
        walk.events.add_column(column.heading);
    for (const char* heading : {"event", "at"})
        walk.notes.add_column(heading, right);
    for (const char* heading : {"timecode", "what", "name", "flag", "tracks"})
        walk.notes.add_column(heading);
}

std::string edit_timecode(const Walk& walk, double time) {
    EditLabel* label = walk.edit->getLabel(user_label_timecode, {medium_video, 1});
    return label->is_valid() ? label->get_label_point(time).get_string() : "";
}

std::string label_text(const EditPtr& source, const LabelColumn& column, double source_time) {
    EditLabel* label = source->getLabel(column.kind, column.ident);
    if (!label->is_valid()) return "";
    const double from_start = source_time - source->getStartStripTime();
    const double posn = column.kind == user_label_timecode ? mPosn_Xlate(from_start, medium_edit, label, source)
                                                           : mPosn_Xlate(from_start, medium_edit, medium_film, source);
    return label->get_label_point(posn).get_string();
}

/// Timecodes as a stretch, "01:00:00:00 - 01:00:02:00", the second behind its last frame; other labels at its start.
std::string label_cell(const EditPtr& source, const LabelColumn& column, double source_in, double source_out) {
    const std::string first = label_text(source, column, source_in);
    if (column.kind != user_label_timecode || first.empty()) return first;
    return first + " - " + label_text(source, column, source_out);
}

std::vector<std::string> source_cells(const EditPtr& source, double source_in, double source_out) {
    std::vector<std::string> cells{one_line(narrow(source->getName()))};
    for (const ReelColumn& column : reel_columns)
        cells.push_back(one_line(source->getReelId(column.ident).c_str()));
    for (const LabelColumn& column : label_columns)
        cells.push_back(label_cell(source, column, source_in, source_out));
    return cells;
}

std::string kind_of_event(const Cookie& cookie, const EditPtr& source) {
    if (cookie.isBlack()) return "black";
    if (!source) return "lost";
    return RenderHistory::isRendered(cookie) ? "rendered" : "clip";
}

std::string kind_of_transition(const Walk& walk, const ce_handle& handle) {
    const Cookie kind = walk.edit->getED2CookieForED5Effect(handle);
    if (kind.isWipe())
        return printed("wipe %u", kind.wipeType()) + (kind.wipeDirection() == wipe_reversed ? " reversed" : "");
    if (kind.isFilmDissolve()) return "film dissolve";
    return kind.isDissolve() ? "dissolve" : "transition";
}

std::string track_list(const Vector<int>& tracks) {
    std::string text;
    for (const int track : tracks)
        text += (text.empty() ? "" : ", ") + std::to_string(track);
    return text;
}

void add_cues(Walk& walk, const std::string& event, const ChannelEvent& in, const ChannelEvent& out) {
    if (!walk.cues) return;
    const std::unique_ptr<CueList> cues(walk.cues->extract(in.edit_time, out.edit_time, walk.edit->getId(walk.chan)));
    if (!cues) return;
    cues->sort();
    for (unsigned i = 0; i < cues->getNumCuePoints(0); ++i) {
        const Cue* cue = cues->getCuePoint(i, 0);
        const double time = embedded::EditBuilder::time_of_cue(*cues, i);
        walk.notes.add_row({event, frames(walk, time), edit_timecode(walk, time), "cue", one_line(narrow(cue->text)),
                            cue->flags & printed_cue ? "printed" : "not printed"});
    }
}

void add_transition(Walk& walk, const ce_handle& handle, const ChannelEvent& in, const ChannelEvent& out) {
    const Qb::Ptr<FXGraphNodeBase> node = walk.edit->getVideoNode(handle.getEffectGraph());
    const std::string length = std::to_string(frames_of(out.edit_time - in.edit_time, walk.frame));
    walk.events.add_row({"", frames(walk, in.edit_time), frames(walk, out.edit_time), edit_timecode(walk, in.edit_time),
                         kind_of_transition(walk, handle), "", "", "",
                         (node ? one_line(narrow(node->getName())) : "") + " (" + length + " frames)"});
    add_cues(walk, "", in, out);
}

void add_effects(Walk& walk, const ChannelEvent& in) {
    const EditGraphIterator graph(walk.edit, walk.chan, in.edit_time, 0);
    if (!graph.found) return;
    Vector<Qb::Ptr<FXGraphNodeBase>> nodes;
    Vector<int> tracks;
    graph.findComponentsForCurrentEffect(nodes);
    graph.findMaterialTracks(tracks);
    for (const Qb::Ptr<FXGraphNodeBase>& node : nodes) {
        const auto* instance = dynamic_cast<const EffectInstance_opu4h5a4j*>(node.get());
        walk.notes.add_row({std::to_string(walk.number), "", "", "effect", one_line(narrow(node->getName())),
                            instance && instance->flag ? "for the lab" : "", track_list(tracks)});
    }
}

void add_event(Walk& walk, const ChannelEvent& in, const ChannelEvent& out) {
    EditPtr source;
    source.i_open(in.cookie, edit_open_default);
    std::vector<std::string> row{std::to_string(++walk.number), frames(walk, in.edit_time), frames(walk, out.edit_time),
                                 edit_timecode(walk, in.edit_time), kind_of_event(in.cookie, source)};
    if (!in.cookie.isBlack()) {
        const double frame = source ? source->getCelResolution() : walk.frame;
        const auto position = [frame](double time) { return std::to_string(frames_of(time, frame)); };
        row.insert(row.end(), {position(in.source_time), position(out.source_time), printed("%g", double{in.speed})});
        if (source) {
            const std::vector<std::string> cells = source_cells(source, in.source_time, out.source_time);
            row.insert(row.end(), cells.begin(), cells.end());
        }
    }
    walk.events.add_row(std::move(row));
    add_effects(walk, in);
    add_cues(walk, std::to_string(walk.number), in, out);
}

} // namespace

std::int64_t frames_of(double seconds, double frame_length) {
    return static_cast<std::int64_t>(std::floor(seconds / frame_length + 1e-6));
}

std::string narrow(const LightweightString<wchar_t>& text) { return toUTF8(text).c_str(); }

std::string describe_events(const EditPtr& edit, int chan, CueList* cues) {
    Walk walk{edit, chan, edit->getCelResolution(), cues, {}, {}, 0};
    add_columns(walk);
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(chan);
    for (ce_handle handle = cel->get_start_ceh(); handle.valid(); handle.increment(ce_all)) {
        const ce_handle start = handle;
        handle.increment(ce_all);
        if (!handle.valid()) break;
        const ChannelEvent in = start.get_channel_event();
        const ChannelEvent out = handle.get_channel_event();
        if (in.cookie.isEffect())
            add_transition(walk, start, in, out);
        else
            add_event(walk, in, out);
    }
    if (walk.events.empty()) return "  no events\n";
    return walk.events.text() + (walk.notes.empty() ? "" : "\n" + walk.notes.text());
}

} // namespace tool
