// "quillbrook print": the lists of a saved table.

#include "quillbrook/cutlist.h"
#include "tool/command.h"
#include "tool/cutlist_table.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

struct PrintJob {
    std::string table;
    Output output;
    LibraryOptions options;
    Settings settings;
};

// The options aren't derived from the table, so one of the other kind prints with the wrong headings.
embedded::Warnings warnings_of(const PrintJob& job) {
    const CutlistTable head(job.table, 1);
    if (!head.is_readable()) throw JobError(job.table + ": " + embedded::fault_of_table(job.table));
    const std::optional<ChannelKind> kind = head.kind();
    const ChannelKind asked = job.options.value("chan_type") == std::to_string(sound_kind) ? sound_kind : picture_kind;
    if (!kind || *kind == asked) return {};
    return {job.table + " lists a " + word_of(*kind) + " channel and is printed as " + word_of(asked) +
            "; --set chan_type=" + std::to_string(*kind) + " prints it as " + word_of(*kind)};
}

int run(const PrintJob& job) {
    check_plain(job.table);
    check_readable(job.table);
    check_outputs(job.table, job.output, {});
    apply_settings(job.settings);
    tell_warnings(warnings_of(job), job.output.quiet);

    embedded::settings_block options;
    apply_options(job.options, options);
    ToolLogger logger(job.table, job.output.quiet);
    const bool done =
        print_cutlist_reports(wide_path(job.table), wide_path(job.output.report), logger, false, &options);
    if (logger.failed()) return exit_failed;
    check_written();
    if (!done) throw JobError(job.table + ": couldn't be printed");
    return exit_done;
}

void add_options(OptionTable& options, PrintJob& job) {
    options.add({
        {"CDB", "", "The table (.cdb)", job.table, Needed::yes},
        output_file(job.output, "The report to write"),
    });
    add_report_options(options, job.options, job.settings);
    options.add({overwrite(job.output, "Replace a report that is there"), quiet(job.output)});
}

constexpr const char* examples = R"(Examples:
  quillbrook print lists/reel.cdb -o lists/again.txt
      all lists, by the library's default options
  quillbrook print lists/reel.cdb -o lists/rolls.txt --lists rolls
      the list of rolls alone
  quillbrook print lists/sound.cdb -o lists/sound.txt --set chan_type=2 --set chan_num=3
      a table of a sound channel)";

} // namespace

extern const Command print_command{"print", "Print the lists of a saved table", examples,
                                   prepare<PrintJob, add_options, run>};

} // namespace tool
