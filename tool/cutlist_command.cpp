// "quillbrook cutlist": an edit into a table and a report.

#include "embedded/edit_builder.h"
#include "quillbrook/cutlist.h"
#include "tool/list_switches.h"
#include "tool/open_edit.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

constexpr std::size_t longest_project_name = 63;

void set_number(embedded::settings_block& block, const char* key, int value) { block.set(key, std::to_string(value)); }

embedded::settings_block options_of(const CutlistJob& job, const EditPtr& edit) {
    embedded::settings_block block;
    block.set("proj_name", embedded::EditBuilder::project_of(edit).substr(0, longest_project_name));
    set_number(block, "chan_type", job.channel.kind);
    set_number(block, "chan_num", job.channel.number - 1);
    set_number(block, "pull_match_assembly", job.neg_cut ? 0 : 1);
    set_number(block, "edit_units", job.frames ? 1 : 0);
    apply_options(job.options, block);
    block.set("output_file", job.output.report);
    return block;
}

std::vector<std::string> files_beside_report(const CutlistJob& job) {
    std::vector<std::string> files{beside_report(job.output.report, ".cdb")};
    for (const char* extension : single_layer_extensions(job.options))
        files.push_back(beside_report(job.output.report, extension));
    return files;
}

std::string subject_of(const CutlistJob& job) {
    return (job.channel.kind == 2 ? "A" : "V") + std::to_string(job.channel.number) + " of " + job.edit.path;
}

} // namespace

int run(const CutlistJob& job) {
    check_readable(job.edit.path);
    check_outputs(job.edit.path, job.output, files_beside_report(job));
    apply_settings(job.settings);
    std::vector<std::string> warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    tell_warnings(warnings, job.output.quiet);

    const embedded::settings_block options = options_of(job, edit);
    ToolLogger logger(subject_of(job), job.output.quiet);
    CueList* cues = embedded::EditBuilder::cues_of(edit);
    const bool done = make_cutlist_from_edit(edit, logger, 0, &options, cues, false);
    if (logger.failed()) return exit_failed;
    check_written();
    if (!done) throw JobError(job.edit.path + ": " + subject_of(job) + " holds nothing to list");
    return exit_done;
}

} // namespace tool
