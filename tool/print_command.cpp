// "quillbrook print": the lists of a saved table.

#include "film/film_uses.h"
#include "quillbrook/cutlist.h"
#include "tool/command.h"
#include "tool/cut_documents.h"
#include "tool/cutlist_table.h"
#include "tool/doubt_pages.h"
#include "tool/film_check.h"
#include "tool/log_use.h"
#include "tool/open_edit.h"
#include "tool/output_files.h"
#include "tool/prove_lists.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <iostream>
#include <optional>

namespace tool {
namespace {

struct PrintJob {
    std::string table;
    Output output;
    bool prove = false;
    bool doubts = false;
    EditInput edit;  ///< what the report is proved by, and what is in doubt; without a path the table
    std::string log; ///< of the edit
    LibraryOptions options;
    Settings settings;
    bool force = false;
    DocumentFiles documents;
};

/// What the head of the table says of the lists that it was made for.
embedded::settings_block options_of_table(const CutlistTable& table) {
    embedded::settings_block options;
    const std::string form = table.parameter("cutlist_type");
    if (!form.empty()) options.set("pull_match_assembly", form == "neg-cut" ? "0" : "1");
    if (const std::optional<ChannelKind> kind = table.kind()) {
        options.set("chan_type", std::to_string(*kind));
        options.set("chan_num", std::to_string(table.channel_number()));
    }
    return options;
}

// Explicit options win, so a table that is printed as another kind is told of.
embedded::Warnings warnings_of(const PrintJob& job, const CutlistTable& head) {
    const std::optional<ChannelKind> kind = head.kind();
    const std::string asked = job.options.value("chan_type");
    if (!kind || asked.empty() || asked == std::to_string(*kind)) return {};
    const char* as = asked == std::to_string(sound_kind) ? word_of(sound_kind) : word_of(picture_kind);
    return {job.table + " lists a " + word_of(*kind) + " channel and is printed as " + as};
}

/// The edit that the table was made of, where the line names it, and what its reader told.
struct EditOfTable {
    explicit EditOfTable(const PrintJob& job) {
        if (job.edit.paths.empty()) return;
        film.emplace(open_edit(job.edit, warnings), job.log);
    }

    embedded::Warnings warnings;
    std::optional<ListedFilm> film;
};

film::Findings findings_of(const PrintJob& job, const CutlistTable& head, const EditOfTable& edit) {
    if (!edit.film) return check_table(job.table, job.options);
    const bool neg_cut = head.parameter("cutlist_type") == "neg-cut";
    const ChannelName channel = channel_of_table(edit.film->edit(), job.table);
    return check_film(*edit.film, check_options(job.edit, channel, job.log, neg_cut, job.options, {}), edit.warnings);
}

film::Strips strips_of(const PrintJob& job, const EditOfTable& edit) {
    return edit.film ? film_of_edit(*edit.film, job.table, job.options) : film_of_table(job.table);
}

int prove(const PrintJob& job, const EditOfTable& edit) {
    std::ostream& out = is_stream(job.output.report) ? std::cerr : std::cout;
    return prove_lists(made_at(job.output.report), job.table, strips_of(job, edit), job.options, out);
}

void write_documents(const PrintJob& job, const CutlistTable& head, const EditOfTable& edit) {
    const std::shared_ptr<const recdb> table = table_with_records(job.table);
    ListedCut cut{table, {}, {}, !edit.film, asks_for_frames(job.options, false)};
    cut.strips = edit.film ? strips_of(job, edit) : film::uses_of_table(*table);
    cut.findings = edit.film ? findings_of(job, head, edit) : check_table(*table, job.table, job.options);
    write_cut_documents(job.documents, std::move(cut), job.options, job.output.overwrite);
}

void check_files(const PrintJob& job) {
    std::vector<std::string> inputs{job.table};
    inputs.insert(inputs.end(), job.edit.paths.begin(), job.edit.paths.end());
    const std::vector<std::string> read = inputs;
    if (!job.log.empty()) inputs.push_back(job.log);
    const std::vector<std::string> documents = check_cut_documents(job.documents, inputs, {job.output.report});
    for (const std::string& input : read)
        check_outputs(input, job.output, documents);
    if (is_stream(job.output.report)) hold_outputs(documents, job.output.overwrite);
    if (!job.log.empty()) check_is_log_table(job.log);
}

int run(const PrintJob& job) {
    if (job.force) read_in_spite_of_seals({job.table}, job.output.quiet);
    check_kind(job.table, {formats::FileKind::cutlist}, "a cutlist table (.cdb)");
    check_files(job);
    apply_settings(job.settings);
    receive_tables(job.output.quiet);
    const CutlistTable head(job.table, 1);
    check_tables_read();
    tell_warnings(warnings_of(job, head), job.output.quiet);

    embedded::settings_block options = options_of_table(head);
    apply_options(job.options, options);
    ToolLogger logger(job.table, job.output.quiet);
    const bool done =
        print_cutlist_reports(wide_path(job.table), wide_path(made_at(job.output.report)), logger, false, &options);
    check_written();
    check_tables_read();
    if (logger.failed()) return exit_failed;
    if (!done) throw JobError(job.table + ": couldn't be printed");
    const EditOfTable edit(job);
    tell_warnings(edit.warnings, job.output.quiet);
    if (job.doubts)
        add_doubts({made_at(job.output.report), job.table, head, options, asks_for_frames(job.options, false)},
                   findings_of(job, head, edit), !edit.film);
    const int status = job.prove ? prove(job, edit) : exit_done;
    if (job.documents.wanted()) write_documents(job, head, edit);
    deliver(job.output.report);
    return status;
}

void add_options(OptionTable& options, PrintJob& job) {
    options.add({
        {"CDB", "", "The table (.cdb)", InputFile{job.table}, Needed::yes},
        output_file(job.output, "The report to write"),
    });
    add_report_options(options, job.options, job.settings, job.doubts);
    options.add({overwrite(job.output, "Replace a report that is there"), force(job.force), quiet(job.output),
                 library_switch("--frames", job.options, "edit_units", "1",
                                "Positions in frames in place of feet and frames")});
    options.add({
        {"--prove", "", "Read the report back and hold it against the film", job.prove},
        {"--edit", "EDIT", "The edit to take its film from, in place of the table; several edit lists of one programme",
         InputFiles{job.edit.paths}},
        rate(job.edit.rate, "The rate of the edit"),
        {"--log", "TABLE", "The logging table that the edit's key numbers come from", InputFile{job.log}},
    });
    add_log_matching(options, job.edit, job.log);
    add_cut_document_options(options, job.documents, [&job] { return asks_for_frames(job.options, false); });
    options.add_check([&job] {
        const bool used = job.prove || job.doubts || job.documents.wanted();
        if (!used && (!job.edit.paths.empty() || !job.log.empty()))
            throw UsageError("--edit and --log say what --prove, the list of doubts and pages are to go by");
        if (job.edit.paths.empty() && !job.log.empty()) throw UsageError("--log needs --edit");
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook print lists/reel.cdb -o lists/again.txt
      all lists, in the form of the table: cutting copy or neg cut, picture or sound
  quillbrook print lists/reel.cdb -o lists/rolls.txt --lists rolls
      the list of rolls alone
  quillbrook print lists/neg.cdb -o - --frames | less
      a neg-cut table, in frames, to standard output
  quillbrook print lists/reel.cdb -o lists/again.txt --prove --edit reel.otio
      also reads the report back and holds it against the film that the edit needs)";

} // namespace

extern const Command print_command{"print", "Print the lists of a saved table", examples,
                                   prepare<PrintJob, add_options, run>};

} // namespace tool
