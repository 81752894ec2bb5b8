#include "tool/file_description.h"

#include "embedded/edit_facts.h"
#include "embedded/edit_recipe.h"
#include "embedded/services.h"
#include "formats/edit_readers.h"
#include "host/recdb.h"
#include "tool/channels.h"
#include "tool/event_rows.h"
#include "tool/json_writer.h"
#include "tool/open_logs.h"
#include "tool/option_table.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <set>

namespace tool {
namespace {

using embedded::EventFacts;
using embedded::Fraction;
using formats::FileKind;
using formats::LogField;

constexpr int document_version = 1;
constexpr FileKind kinds_of_logs[] = {FileKind::logging_table, FileKind::ale, FileKind::flex, FileKind::keylog,
                                      FileKind::text};

bool is_log(FileKind kind) {
    return std::find(std::begin(kinds_of_logs), std::end(kinds_of_logs), kind) != std::end(kinds_of_logs);
}

std::vector<std::string> lines_of(const std::set<std::string>& texts) {
    std::vector<std::string> list;
    for (const std::string& text : texts)
        if (!text.empty()) list.push_back(one_line(text));
    return list;
}

/// The camera roll of a source, else its tape.
std::string roll_of(const embedded::SourceDescription& source) {
    const std::string& camera = source.reel(embedded::camera_reel);
    return camera.empty() ? source.reel(embedded::tape_reel) : camera;
}

TrackDescription track_of(const EditPtr& edit, int chan, ChannelKind kind, int number) {
    TrackDescription track;
    track.channel = text_of(ChannelName{kind, number});
    track.fx = edit->getChanSubtype(chan) == chan_fx;
    track.listed = edit->getChanSubtype(chan) == chan_plain;
    const embedded::RateInfo* rate = embedded::recipe_of(edit)->edit.rate;
    for (const EventFacts& facts : embedded::facts_of_channel(edit, chan)) {
        if (facts.kind == EventFacts::Kind::material) ++track.events;
        if (rate) track.frames = std::max(track.frames, (facts.edit_out * rate->rate()).nearest());
    }
    return track;
}

void add_tracks(FileDescription& file, const EditPtr& edit, ChannelKind kind) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(kind), 0);
    int number = 0;
    for (const int chan : channels)
        file.tracks.push_back(track_of(edit, chan, kind, ++number));
}

void take_edit(FileDescription& file, const EditPtr& edit) {
    file.name = one_line(narrow(edit->getName()));
    file.project = one_line(embedded::EditBuilder::project_of(edit));
    file.rate = tv_standard_to_edlstr(
        {edit->getSourceFrameRate(), static_cast<std::uint8_t>(Qb::CurrentProject::getUseDropFrameTimecode())});
    EditLabel* timecode = edit->getLabel(user_label_timecode, {medium_video, 1});
    if (timecode->is_valid()) file.timecode = timecode->get_string(0);
    std::set<std::string> rolls;
    for (const embedded::SourceDescription& source : embedded::recipe_of(edit)->sources)
        rolls.insert(roll_of(source));
    file.rolls = lines_of(rolls);
    add_tracks(file, edit, picture_kind);
    add_tracks(file, edit, sound_kind);
}

void describe_edit(FileDescription& file, const formats::EditReader& reader, const DescriptionInput& input) {
    formats::ReadOptions options;
    options.rate = input.rate;
    options.sequence = input.sequence;
    options.list_only = true;
    file.sequences = formats::read_edit(reader, {file.path}, options).sequences;
    options.list_only = false;
    const formats::ReadResult result = formats::read_edit(reader, {file.path}, options);
    file.warnings = result.warnings;
    file.fault = one_line(result.error);
    if (result.rate_missing) file.needs = "rate";
    if (result.sequence_missing) file.needs = "sequence";
    if (result.edit) take_edit(file, result.edit);
}

void describe_log(FileDescription& file, const DescriptionInput& input) {
    LogInput log;
    log.paths = {file.path};
    log.rate = input.rate;
    std::set<std::string> rolls, rates;
    for (const formats::LogRow& row : open_logs(log, file.warnings)) {
        ++file.rows;
        if (row.key_start.is_useful()) ++file.with_key;
        const std::string& roll = row[LogField::cam_reel].empty() ? row[LogField::reel] : row[LogField::cam_reel];
        rolls.insert(roll);
        if (row.standard.rate) rates.insert(tv_standard_to_edlstr(row.standard));
    }
    file.rolls = lines_of(rolls);
    file.rate = listed(lines_of(rates));
}

std::string parameter(const recdb& table, const char* key) {
    const char* value = table.get_param_val(key);
    return value ? one_line(value) : "";
}

void describe_cut(FileDescription& file) {
    const recdb table(wide_path(file.path), 0, false);
    std::string name, why = "the table can't be read";
    const bool unread = embedded::take_read_failure(&name, &why);
    if (unread || !table.get_valid()) {
        file.fault = file.path + ": " + why;
        return;
    }
    file.name = parameter(table, "edit_name");
    file.project = parameter(table, "project_name");
    file.rate = parameter(table, "edit label_std");
    file.timecode = parameter(table, "edit_vidtc_start");
}

void describe_contents(FileDescription& file, const DescriptionInput& input) {
    const formats::EditReader* reader = formats::edit_reader_of(file.kind, file.path);
    if (file.kind == FileKind::cutlist) {
        file.use = "cut";
        describe_cut(file);
    } else if (reader) {
        file.use = "edit";
        describe_edit(file, *reader, input);
    } else if (is_log(file.kind)) {
        file.use = "log";
        describe_log(file, input);
    } else {
        file.fault = file.path + ": " + formats::told_kind(file.kind);
    }
}

void put_texts(JsonWriter& out, const char* key, const std::vector<std::string>& texts) {
    out.begin_array(key);
    for (const std::string& text : texts)
        out.add(text);
    out.end_array();
}

void put_sequences(JsonWriter& out, const FileDescription& file) {
    out.begin_array("sequences");
    for (const formats::Sequence& sequence : file.sequences) {
        out.begin_object();
        out.put("name", sequence.name);
        out.put_or_null("rate", sequence.rate ? sequence.rate->name : "");
        out.put_or_null("place", sequence.place);
        out.end_object();
    }
    out.end_array();
}

void put_tracks(JsonWriter& out, const FileDescription& file) {
    out.begin_array("tracks");
    for (const TrackDescription& track : file.tracks) {
        out.begin_object();
        out.put("channel", track.channel);
        out.put("kind", track.fx ? "effects" : track.listed ? "plain" : "not listed");
        out.put("events", track.events);
        out.put("frames", track.frames);
        out.end_object();
    }
    out.end_array();
}

void put_file(JsonWriter& out, const FileDescription& file) {
    out.begin_object();
    out.put("path", file.path);
    out.put("kind", formats::name_of(file.kind));
    const std::pair<const char*, const std::string*> texts[] = {
        {"use", &file.use},   {"fault", &file.fault},     {"needs", &file.needs},      {"name", &file.name},
        {"rate", &file.rate}, {"project", &file.project}, {"timecode", &file.timecode}};
    for (const auto& [key, text] : texts)
        out.put_or_null(key, *text);
    put_sequences(out, file);
    put_tracks(out, file);
    put_texts(out, "rolls", file.rolls);
    out.put("rows", file.rows);
    out.put("rows_with_key", file.with_key);
    put_texts(out, "warnings", {file.warnings.begin(), file.warnings.end()});
    out.end_object();
}

std::string count_of(int number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

} // namespace

FileDescription describe_file(const std::string& path, const DescriptionInput& input) {
    FileDescription file;
    file.path = path;
    try {
        file.kind = kind_of(path);
        describe_contents(file, input);
    } catch (const JobError& error) {
        file.fault = error.what();
    }
    return file;
}

std::string told_description(const FileDescription& file) {
    std::vector<std::string> facts{formats::name_of(file.kind)};
    if (!file.name.empty()) facts.push_back('"' + file.name + '"');
    if (file.sequences.size() > 1) facts.push_back(count_of(static_cast<int>(file.sequences.size()), "sequence"));
    for (const TrackDescription& track : file.tracks)
        facts.push_back(count_of(track.events, "event") + " on " + track.channel);
    if (file.rows > 0)
        facts.push_back(count_of(file.rows, "row") + ", " + std::to_string(file.with_key) + " with a key number");
    if (!file.rate.empty()) facts.push_back(file.rate);
    if (!file.rolls.empty()) facts.push_back(count_of(static_cast<int>(file.rolls.size()), "roll"));
    return listed(facts);
}

std::string description_document(const std::vector<FileDescription>& files) {
    JsonWriter out;
    out.begin_object();
    out.put("format", "quillbrook files");
    out.put("version", document_version);
    out.begin_array("files");
    for (const FileDescription& file : files)
        put_file(out, file);
    out.end_array();
    out.end_object();
    return out.document();
}

} // namespace tool
