// "quillbrook print": the lists of a saved table.

#include "quillbrook/cutlist.h"
#include "tool/command.h"
#include "tool/cutlist_table.h"
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

namespace tool {
namespace {

struct PrintJob {
    std::string table;
    Output output;
    bool prove = false;
    EditInput edit;  ///< what the report is proved by; without a path the table
    std::string log; ///< of the edit
    LibraryOptions options;
    Settings settings;
    bool force = false;
};

/// What the head of the table says of the lists that it was made for.
embedded::settings_block options_of_table(const std::string& path) {
    const CutlistTable table(path, 1);
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
embedded::Warnings warnings_of(const PrintJob& job) {
    const CutlistTable head(job.table, 1);
    check_tables_read();
    const std::optional<ChannelKind> kind = head.kind();
    const std::string asked = job.options.value("chan_type");
    if (!kind || asked.empty() || asked == std::to_string(*kind)) return {};
    const char* as = asked == std::to_string(sound_kind) ? word_of(sound_kind) : word_of(picture_kind);
    return {job.table + " lists a " + word_of(*kind) + " channel and is printed as " + as};
}

int prove(const PrintJob& job) {
    const std::string report = made_at(job.output.report);
    std::ostream& out = is_stream(job.output.report) ? std::cerr : std::cout;
    if (job.edit.paths.empty()) return prove_lists(report, job.table, film_of_table(job.table), job.options, out);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    tell_warnings(warnings, job.output.quiet);
    const film::Strips strips = film_of_edit(edit, job.table, job.log, job.options);
    return prove_lists(report, job.table, strips, job.options, out);
}

int run(const PrintJob& job) {
    if (job.force) read_in_spite_of_seals({job.table}, job.output.quiet);
    check_kind(job.table, {formats::FileKind::cutlist}, "a cutlist table (.cdb)");
    check_outputs(job.table, job.output, {});
    for (const std::string& path : job.edit.paths)
        check_outputs(path, job.output, {});
    if (!job.log.empty()) check_is_log_table(job.log);
    apply_settings(job.settings);
    receive_tables(job.output.quiet);
    tell_warnings(warnings_of(job), job.output.quiet);

    embedded::settings_block options = options_of_table(job.table);
    apply_options(job.options, options);
    ToolLogger logger(job.table, job.output.quiet);
    const bool done =
        print_cutlist_reports(wide_path(job.table), wide_path(made_at(job.output.report)), logger, false, &options);
    check_written();
    check_tables_read();
    if (logger.failed()) return exit_failed;
    if (!done) throw JobError(job.table + ": couldn't be printed");
    const int status = job.prove ? prove(job) : exit_done;
    deliver(job.output.report);
    return status;
}

void add_options(OptionTable& options, PrintJob& job) {
    options.add({
        {"CDB", "", "The table (.cdb)", InputFile{job.table}, Needed::yes},
        output_file(job.output, "The report to write"),
    });
    add_report_options(options, job.options, job.settings);
    options.add({overwrite(job.output, "Replace a report that is there"), force(job.force), quiet(job.output),
                 library_switch("--frames", job.options, "edit_units", "1",
                                "Positions in frames in place of feet and frames")});
    options.add({
        {"--prove", "", "Read the report back and hold it against the film", job.prove},
        {"--edit", "EDIT", "The edit to prove it by, in place of the table; several edit lists of one programme",
         InputFiles{job.edit.paths}},
        rate(job.edit.rate, "The rate of the edit"),
        {"--log", "TABLE", "The logging table that the edit's key numbers come from", InputFile{job.log}},
    });
    options.add_check([&job] {
        if (!job.prove && (!job.edit.paths.empty() || !job.log.empty()))
            throw UsageError("--edit and --log say what --prove is to go by");
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
