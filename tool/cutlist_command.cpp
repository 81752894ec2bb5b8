// "quillbrook cutlist": an edit into a table and a report.

#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "embedded/warning.h"
#include "host/os.h"
#include "quillbrook/cutlist.h"
#include "tool/command.h"
#include "tool/cut_documents.h"
#include "tool/cutlist_table.h"
#include "tool/doubt_pages.h"
#include "tool/film_check.h"
#include "tool/list_switches.h"
#include "tool/log_use.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/prove_lists.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/table_run.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace tool {
namespace {

struct CutlistJob {
    EditInput edit;
    Output output;
    ChannelName channel;
    bool neg_cut = false;
    bool frames = false;
    bool prove = false;
    bool doubts = false;
    std::string log;        ///< the logging table that key numbers come from; empty: the edit's own labels
    LibraryOptions options; ///< wins over all of the above
    Settings settings;
    CheckChoices choices;
    bool force = false;
    DocumentFiles documents;
};

TableChoices choices_of(const CutlistJob& job) { return {job.channel, job.neg_cut, job.frames, job.log, job.options}; }

/// Single-layer lists beside the report that this run doesn't make: an earlier one did.
std::vector<std::string> lists_of_earlier_run(const CutlistJob& job) {
    if (is_stream(job.output.report)) return {};
    const std::vector<const char*> made = single_layer_extensions(job.options);
    std::vector<std::string> files;
    for (const char* extension : all_single_layer_extensions()) {
        const std::string file = beside_report(job.output.report, extension);
        const bool input = std::find(job.edit.paths.begin(), job.edit.paths.end(), file) != job.edit.paths.end();
        const bool wanted = std::find(made.begin(), made.end(), extension) != made.end();
        std::error_code ignored;
        if (!wanted && !input && std::filesystem::is_regular_file(file, ignored)) files.push_back(file);
    }
    return files;
}

std::vector<std::string> files_beside_report(const CutlistJob& job) {
    if (is_stream(job.output.report)) return {};
    std::vector<std::string> files = lists_of_earlier_run(job);
    files.push_back(beside_report(job.output.report, ".cdb"));
    for (const char* extension : single_layer_extensions(job.options))
        files.push_back(beside_report(job.output.report, extension));
    return files;
}

void remove_file(const std::string& path) { OS()->files().remove(wide_path(path)); }

/// Tells that a single-layer list is made only when it was: those without rows aren't.
class CutlistLogger : public ToolLogger {
public:
    using ToolLogger::ToolLogger;

    void message(const LightweightString<wchar_t>& text, int level) override {
        const std::string line = toUTF8(text).c_str();
        if (line.compare(0, creating.size(), creating) != 0) return ToolLogger::message(text, level);
        const std::string path = line.substr(line.find(behind_number) + behind_number.size());
        remove_file(path); // an earlier run's: one without rows wouldn't replace it
        begun_.emplace_back(path, text);
    }
    /// To be called when the run has made its lists.
    void end() {
        for (const auto& [path, text] : begun_)
            if (fileExists(wide_path(path))) ToolLogger::message(text, 0);
    }

private:
    static constexpr std::string_view creating = "Creating sl", behind_number = " file ";

    std::vector<std::pair<std::string, LightweightString<wchar_t>>> begun_;
};

std::string subject_of(const CutlistJob& job) { return subject_of(job.channel, job.edit.paths.front()); }

void check_files(const CutlistJob& job) {
    std::vector<std::string> inputs = job.edit.paths;
    if (!job.log.empty()) inputs.push_back(job.log);
    if (!job.edit.matching.aliases.empty()) inputs.push_back(job.edit.matching.aliases);
    std::vector<std::string> beside = files_beside_report(job), others = beside;
    others.push_back(job.output.report);
    for (const std::string& input : inputs)
        check_readable(input);
    const std::vector<std::string> documents = check_cut_documents(job.documents, inputs, others);
    beside.insert(beside.end(), documents.begin(), documents.end());
    for (const std::string& input : inputs)
        check_outputs(input, job.output, beside);
    if (is_stream(job.output.report)) hold_outputs(documents, job.output.overwrite);
    if (!job.log.empty()) check_is_log_table(job.log);
    if (is_stream(job.output.report) && !single_layer_extensions(job.options).empty())
        throw JobError(job.output.report + ": single-layer lists go beside the report; -o has to name a file");
}

int prove(const CutlistJob& job, const ListedFilm& film) {
    const std::string report = made_at(job.output.report);
    const std::string table = beside_report(report, ".cdb");
    return prove_lists(report, table, film_of_edit(film, table, job.options), job.options,
                       is_stream(job.output.report) ? std::cerr : std::cout);
}

void list_doubts(const CutlistJob& job, embedded::settings_block options, const film::Findings& findings) {
    const std::string report = made_at(job.output.report), table = beside_report(report, ".cdb");
    // Headings count channels as the table does.
    const CutlistTable head(table, 1);
    options.set("chan_num", std::to_string(head.channel_number()));
    add_doubts({report, table, head, options, asks_for_frames(job.options, job.frames)}, findings, false);
}

void write_documents(const CutlistJob& job, const ListedFilm& film, const film::Findings& findings) {
    const std::string table = beside_report(made_at(job.output.report), ".cdb");
    write_cut_documents(job.documents,
                        {table_with_records(table), film_of_edit(film, table, job.options), findings, false,
                         asks_for_frames(job.options, job.frames)},
                        job.options, job.output.overwrite);
}

int run(const CutlistJob& job) {
    if (job.force && !job.log.empty()) read_in_spite_of_seals({job.log}, job.output.quiet);
    check_files(job);
    apply_settings(job.settings);
    if (!job.log.empty()) receive_tables(job.output.quiet);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    const ListedFilm film(edit, job.log);
    const film::Findings findings = check_film(
        film, check_options(job.edit, job.channel, job.log, job.neg_cut, job.options, job.choices), warnings);
    tell_kinds(findings, job.output.quiet, std::cerr);
    if (job.choices.strict && fails(findings, true)) return exit_failed;

    const embedded::settings_block options = table_options(choices_of(job), edit, made_at(job.output.report));
    CutlistLogger logger(subject_of(job), job.output.quiet || job.output.no_progress);
    CueList* cues = embedded::EditBuilder::cues_of(edit);
    const bool done = make_cutlist_from_edit(edit, logger, job.log.empty() ? 0 : 1, &options, cues, false);
    embedded::take_warnings_of_copy(); // told with the findings
    check_written();
    check_tables_read();
    if (logger.failed()) return exit_failed;
    const std::string fault = done || job.log.empty() ? "" : fault_of_film(job.log);
    if (!fault.empty()) throw JobError(fault);
    logger.end();
    for (const std::string& list : lists_of_earlier_run(job))
        remove_file(list);
    if (!done) throw JobError(job.edit.paths.front() + ": " + subject_of(job) + " holds nothing to list");
    if (job.doubts) list_doubts(job, options, findings);
    const int status = job.prove ? prove(job, film) : exit_done;
    if (job.documents.wanted()) write_documents(job, film, findings);
    deliver(job.output.report);
    return status;
}

void add_options(OptionTable& options, CutlistJob& job) {
    add_edit_input(options, job.edit);
    options.add({output_file(job.output, "The report to write")});
    add_report_options(options, job.options, job.settings, job.doubts);
    options.add({overwrite(job.output, "Replace a report that is there"), force(job.force), quiet(job.output),
                 no_progress(job.output)});
    add_channel_and_log(options, job.channel, job.log);
    add_log_matching(options, job.edit, job.log);
    options.add({
        {"--neg-cut", "", "A neg-cut list in place of a cutting-copy list", job.neg_cut},
        {"--frames", "", "Positions in frames in place of feet and frames", job.frames},
        single_layer_option(job.options),
        {"--prove", "", "Read the report back and hold it against the film that the edit needs", job.prove},
    });
    add_check_options(options, job.choices);
    add_cut_document_options(options, job.documents, [&job] { return asks_for_frames(job.options, job.frames); });
}

constexpr const char* examples = R"(Examples:
  quillbrook cutlist reel.otio -o lists/reel.txt
      lists the first picture channel: lists/reel.txt and the table lists/reel.cdb
  quillbrook cutlist reel.otio -o lists/neg.txt --neg-cut --frames --set pgm_id=R1
      a neg-cut list in frames, with a programme identifier in its headings
  quillbrook cutlist reel.otio -o lists/pull.txt --lists rolls,pull --handles 8 --sort-by-key
      what to pull from the vault, 8 frames longer at each end, by key number
  quillbrook cutlist reel.otio -o lists/reel.txt --single-layer 1,3
      also lists/reel.sl1 and lists/reel.sl3
  quillbrook cutlist reel.otio -o lists/sound.txt --channel A2
      the second sound channel
  quillbrook cutlist reel.otio -o lists/reel.txt --overwrite --config allow_auto_unrender=0
      lists rendered material as it stands
  quillbrook cutlist reel.otio -o lists/reel.txt --prove
      also reads the report back and tells whether each frame of it is the edit's; status 3 where one isn't
  quillbrook cutlist reel.otio -o lists/reel.txt --html lists/reel.html --for cutter
      also a page to look at and to print, with few columns and boxes to tick
  quillbrook cutlist reel1.edl --rate 24 --log show.RDB -o lists/reel1.txt
      an edit list, with its key numbers from a logging table
  zcat reel.otio.gz | quillbrook cutlist - -o - --lists rolls | less
      an edit from standard input, its rolls to standard output; no table is kept
  quillbrook cutlist pictures.edl titles.edl --rate 25 -o lists/reel.txt --lists assembly,opticals,doubts
      two edit lists of one programme, and what of its film no other list shows)";

} // namespace

extern const Command cutlist_command{"cutlist", "Turn an edit into a report and a table (.cdb) beside it", examples,
                                     prepare<CutlistJob, add_options, run>};

} // namespace tool
