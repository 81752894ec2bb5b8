// "quillbrook export": an edit as a file that other programs take.

#include "embedded/services.h"
#include "film/film_difference.h"
#include "formats/edl/edl_reader.h"
#include "formats/edl/edl_writer.h"
#include "formats/logs/ale_writer.h"
#include "formats/logs/log_table.h"
#include "formats/otio/otio_reader.h"
#include "formats/otio/otio_writer.h"
#include "tool/command.h"
#include "tool/export_keys.h"
#include "tool/film_check.h"
#include "tool/key_values.h"
#include "tool/listed_edit.h"
#include "tool/new_rolls.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include "embedded/edit_builder.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <iostream>

namespace tool {
namespace {

enum class Format { otio, edl, ale };

struct FormatName {
    const char* name; ///< as --as takes it, and without its point the extension of its files
    Format format;
};

constexpr FormatName format_names[] = {{"otio", Format::otio}, {"edl", Format::edl}, {"ale", Format::ale}};

struct ExportJob {
    EditInput edit;
    Output output;
    std::optional<Format> as;
    std::optional<ChannelName> channel;
    std::string log;
    std::optional<std::string> on_rolls; ///< an order whose rolls were built
    bool prove = false;
    Settings settings;
};

/// What is written: the edit, or the same on new rolls, and the log that its key numbers come from.
struct Subject {
    EditPtr edit;
    const film::LogRows* log; ///< null without one
};

std::optional<Format> format_named(std::string_view name) {
    for (const FormatName& known : format_names)
        if (ascii::same(name, known.name)) return known.format;
    return std::nullopt;
}

std::vector<std::string> names_of_formats() { return names_in(format_names, &FormatName::name); }

Format format_of(const ExportJob& job) {
    if (job.as) return *job.as;
    const std::string& file = job.output.report;
    const std::size_t point = file.rfind('.');
    const auto by_name = point == std::string::npos ? std::nullopt : format_named(file.substr(point + 1));
    if (!by_name)
        throw JobError(file + ": its name tells no format; name one with --as (" + listed(names_of_formats()) + ")");
    return *by_name;
}

void check_files(const ExportJob& job) {
    std::vector<std::string> inputs = job.edit.paths;
    if (!job.log.empty()) inputs.push_back(job.log);
    if (!job.edit.matching.aliases.empty()) inputs.push_back(job.edit.matching.aliases);
    if (job.on_rolls) inputs.push_back(*job.on_rolls);
    for (const std::string& input : inputs) {
        check_readable(input);
        check_outputs(input, job.output, {});
    }
    if (!job.log.empty()) check_is_log_table(job.log);
}

void check_options(const ExportJob& job, Format format) {
    if (job.on_rolls && job.channel && job.channel->kind == sound_kind)
        throw JobError("--on-rolls: only pictures lie on new rolls");
    if (format != Format::otio) return;
    if (job.channel) throw JobError("--channel: an .otio file holds all channels");
    if (!job.log.empty() && !job.on_rolls) throw JobError("--log: give it to the commands that read the .otio file");
}

/// The absolute number of a channel.
int number_of(const EditPtr& edit, const ChannelName& channel) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(channel.kind), 0);
    const auto place = static_cast<std::size_t>(channel.number) - 1;
    if (place >= static_cast<std::size_t>(channels.size()))
        throw JobError("the edit has no channel " + text_of(channel));
    return channels[static_cast<unsigned>(place)];
}

/// Only the channels whose film the lists tell can be compared: sound, and the lowest of pictures.
bool is_listed(const ChannelName& channel) { return channel.kind == sound_kind || channel.number == 1; }

formats::Written written_as_edl(const ExportJob& job, const Subject& subject) {
    const auto& [edit, log] = subject;
    const ChannelName channel = job.channel.value_or(ChannelName());
    formats::Written written = formats::write_edl(edit, {number_of(edit, channel), lookup_in(log)});
    if (!written.error.empty() || !is_listed(channel)) return written;
    const formats::ReadResult again = formats::read_edl_texts({{written.text, "the written list", 0}}, {});
    if (!again.edit) throw JobError(job.output.report + ": what was written can't be read again: " + again.error);
    film::UseOptions uses;
    uses.kind = channel.kind;
    uses.number = channel.number;
    for (embedded::Warning& warning : film::film_differences(edit, log, again.edit, uses))
        written.warnings.push_back(std::move(warning));
    return written;
}

/// Of the channel that is named, else of all that show film.
formats::Written written_as_ale(const ExportJob& job, const Subject& subject) {
    const auto& [edit, log] = subject;
    formats::AleWriting writing;
    writing.log = lookup_in(log);
    if (job.channel) {
        writing.channels.push_back(number_of(edit, *job.channel));
        return formats::write_ale(edit, writing);
    }
    Vector<int> channels;
    edit->getChans(channels, picture_kind, 0);
    writing.channels.assign(channels.begin(), channels.end());
    return formats::write_ale(edit, writing);
}

formats::Written written_as(Format format, const ExportJob& job, const Subject& subject) {
    switch (format) {
    case Format::otio:
        return formats::write_otio(subject.edit);
    case Format::edl:
        return written_as_edl(job, subject);
    case Format::ale:
        return written_as_ale(job, subject);
    }
    return {};
}

void note_rendered(const EditPtr& edit, const EditPtr& listed, embedded::Warnings& warnings) {
    if (edit.get() == listed.get()) return;
    warnings.push_back({embedded::WarningKind::note, "rendered clips are written as what they were rendered from; "
                                                     "--config allow_auto_unrender=0 writes the clips themselves"});
}

void deliver_written(const ExportJob& job, const formats::Written& written, embedded::Warnings& warnings) {
    if (!written.error.empty()) throw JobError(job.edit.paths.front() + ": " + written.error);
    for (const embedded::Warning& warning : written.warnings)
        warnings.push_back({warning.kind, job.output.report + ": " + warning.text});
    tell_warnings(warnings, job.output.quiet);
    deliver_bytes(job.output.report, written.text);
}

/// A written log as its own reader takes it.
std::unique_ptr<film::LogRows> log_of_ale(const std::string& text) {
    LogInput input;
    input.paths = {work_file("written.ale")};
    std::string why;
    if (!embedded::write_file_whole(input.paths.front(), text, &why)) throw JobError(input.paths.front() + ": " + why);
    embedded::Warnings ignored;
    filmdb table;
    formats::fill_table(table, open_logs(input, ignored));
    return std::make_unique<film::LogRows>(table);
}

/// The film of what was written, as it is found on the new rolls.
film::Strips strips_of_written(Format format, const std::string& text, const Subject& written, const NewRolls& rolls) {
    if (format == Format::ale) return film::uses_of_edit(written.edit, {}, log_of_ale(text).get());
    const formats::ReadResult again = format == Format::edl
                                          ? formats::read_edl_texts({{text, "the written list", 0}}, {})
                                          : formats::read_otio_bytes(text, "the written text", 0);
    if (!again.edit) throw JobError("what was written can't be read again: " + again.error);
    return rolls.back_to_film(film::uses_of_edit(again.edit, {}));
}

/// Of one layer, as if it were the lowest.
film::Strips layer_of(const film::Strips& strips, int layer) {
    film::Strips only;
    for (const film::Strip& strip : strips)
        if (strip.layer == layer) only.emplace_back(strip).layer = 0;
    return only;
}

/// The layers that the file holds: all, or those of the channel.
int layers_of(const film::Strips& strips) {
    int layers = 0;
    for (const film::Strip& strip : strips)
        layers = std::max(layers, strip.layer + 1);
    return layers;
}

/// Holds the film of the edit against what was written, frame by frame.
int prove(Format format, const ExportJob& job, const Subject& subject, const film::Strips& written) {
    const film::Strips wanted = film::uses_of_edit(subject.edit, {}, subject.log);
    const bool one = job.channel || format == Format::edl;
    const int first = job.channel ? job.channel->number - 1 : 0, behind = one ? first + 1 : layers_of(wanted);
    std::ostream& out = is_stream(job.output.report) ? std::cerr : std::cout;
    std::int64_t frames = 0;
    bool proved = true;
    for (int layer = first; layer < behind; ++layer) {
        const film::Strips film = layer_of(wanted, layer);
        for (const film::Strip& strip : film)
            frames += strip.key ? strip.length() : 0;
        for (const embedded::Warning& warning :
             film::film_differences(film, layer_of(written, format == Format::edl ? 0 : layer))) {
            out << "export: " << one_line(warning.text) << '\n';
            proved = false;
        }
    }
    if (!proved) return exit_not_proved;
    out << "proved: " << frames << " frames on new rolls\n";
    return exit_done;
}

/// Gives what was written, and the exit status.
int deliver_on_rolls(Format format, const ExportJob& job, const Subject& subject, embedded::Warnings& warnings) {
    const NewRolls rolls(read_pieces_on_rolls(*job.on_rolls));
    const Subject moved{on_new_rolls(subject.edit, rolls, lookup_in(subject.log), rolls_of_log(subject.log), warnings),
                        nullptr};
    const formats::Written written = written_as(format, job, moved);
    deliver_written(job, written, warnings);
    return job.prove ? prove(format, job, subject, strips_of_written(format, written.text, moved, rolls)) : exit_done;
}

int run(const ExportJob& job) {
    const Format format = format_of(job);
    check_options(job, format);
    check_files(job);
    apply_settings(job.settings);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    const ListedEdit listed(edit);
    note_rendered(edit, listed.edit(), warnings);
    for (embedded::Warning& warning : embedded::take_warnings_of_copy())
        warnings.push_back(std::move(warning));
    const auto log = job.log.empty() ? nullptr : open_log_rows(job.log);
    const Subject subject{listed.edit(), log.get()};
    if (job.on_rolls) return deliver_on_rolls(format, job, subject, warnings);
    deliver_written(job, written_as(format, job, subject), warnings);
    return exit_done;
}

Option format_option(std::optional<Format>& as) {
    return {"--as", "FORMAT", "The format, in place of what the name of FILE says: otio, edl or ale",
            OneText{[&as](const std::string& text) { as = format_named(text); },
                    {},
                    [](const std::string& text) {
                        return format_named(text) ? std::string() : none_of(text, names_of_formats());
                    },
                    names_of_formats()}};
}

void add_options(OptionTable& options, ExportJob& job) {
    add_edit_input(options, job.edit);
    options.add({
        output_file(job.output, "The file to write"),
        format_option(job.as),
        {"--channel", "CHANNEL", "The channel of an .edl, by default V1, or of an .ale, by default all of pictures",
         OneText{[&job](const std::string& text) { job.channel = parse_channel(text); }}},
        {"--log", "TABLE", "The logging table that key numbers come from, by reel and timecode", InputFile{job.log}},
        {"--on-rolls", "ORDER", "An order (--json, --build-rolls): its new rolls and their timecodes are the sources",
         job.on_rolls},
        {"--prove", "", "With --on-rolls: read the file again and hold its film against the edit's", job.prove},
        overwrite(job.output, "Replace a file that is there"),
        quiet(job.output),
        {"--config", "KEY=VALUE", "A host-wide setting",
         EachText{[&job](const std::vector<std::string>& pairs) { job.settings = parse_settings(pairs); }}},
    });
    add_log_matching(options, job.edit, job.log);
    options.add_check([&job] {
        if (job.prove && !job.on_rolls) throw UsageError("export: --prove needs --on-rolls");
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook export reel1.edl --rate 24 -o reel1.otio
      with all that lists are made of: its cutlist is that of the edit
  quillbrook export reel.otio -o reel.edl --log show.RDB
      the lowest picture track as an edit list, with key numbers of the log as comments
  quillbrook export reel.otio -o shots.ale
      what is used of each shot, with its key numbers, rolls and timecode
  quillbrook export reel.otio -o reel-on-rolls.edl --on-rolls order.json --prove
      the same film on the rolls of selects that the order laid it on

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 the film on new rolls doesn't prove.)";

} // namespace

extern const Command export_command{"export", "Write an edit as a file that other programs take", examples,
                                    prepare<ExportJob, add_options, run>};

} // namespace tool
