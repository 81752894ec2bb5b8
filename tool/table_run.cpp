#include "tool/table_run.h"

#include "embedded/edit_builder.h"
#include "host/os.h"
#include "quillbrook/cutlist.h"
#include "tool/log_match.h"
#include "tool/log_use.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <filesystem>
#include <iostream>

namespace tool {
namespace {

/// Text options of the library hold no more bytes.
constexpr std::size_t longest_text_option = 63;

void set_number(embedded::settings_block& block, const char* key, int value) { block.set(key, std::to_string(value)); }

/// A name for the log that the library's option can hold: a link in the work directory stands in for a long one.
std::string short_name_of(const std::string& log) {
    namespace fs = std::filesystem;
    if (log.size() <= longest_text_option) return log;
    const std::string plain = plain_copy_of(log);
    if (plain.size() <= longest_text_option) return plain;
    const std::string link = embedded::work_directory() + "/log.rdb";
    if (link.size() > longest_text_option)
        throw JobError(log + ": its path is longer than " + std::to_string(longest_text_option) +
                       " bytes, and so is that of the work directory; set TMPDIR to a shorter one");
    std::error_code trouble;
    fs::create_directories(embedded::work_directory(), trouble);
    fs::remove(link, trouble); // of an earlier run of this job
    fs::create_symlink(fs::absolute(plain), link, trouble);
    if (trouble) throw JobError(log + ": no link to it can be made: " + trouble.message());
    return link;
}

// What a run wants for its report alone.
void remove_report(const std::string& report) { OS()->files().remove(wide_path(report)); }

} // namespace

embedded::settings_block table_options(const TableChoices& choices, const EditPtr& edit, const std::string& report) {
    embedded::settings_block block;
    block.set("proj_name", embedded::EditBuilder::project_of(edit).substr(0, longest_text_option));
    set_number(block, "chan_type", choices.channel.kind);
    set_number(block, "chan_num", choices.channel.number - 1);
    set_number(block, "pull_match_assembly", choices.neg_cut ? 0 : 1);
    set_number(block, "edit_units", choices.frames ? 1 : 0);
    apply_options(choices.options, block);
    block.set("output_file", report);
    const MatchedLog* matched = matched_log(choices.log);
    if (!choices.log.empty()) block.set("log_file", short_name_of(matched ? matched->path : choices.log));
    return block;
}

std::string subject_of(const ChannelName& channel, const std::string& edit_file) {
    return text_of(channel) + " of " + edit_file;
}

EditPtr make_table(const EditInput& input, const TableChoices& choices, const CheckChoices& checks,
                   const std::string& path, bool quiet) {
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(input, warnings);
    const ListedFilm film(edit, choices.log);
    const film::Findings findings = check_film(
        film, check_options(input, choices.channel, choices.log, choices.neg_cut, choices.options, checks), warnings);
    tell_kinds(findings, quiet, std::cerr);
    const std::string subject = subject_of(choices.channel, input.paths.front());
    if (checks.strict && fails(findings, true)) throw JobError(subject + ": is in doubt");

    const std::string report = path + ".txt";
    const embedded::settings_block options = table_options(choices, edit, report);
    ToolLogger logger(subject, quiet);
    CueList* cues = embedded::EditBuilder::cues_of(edit);
    const bool done = make_cutlist_from_edit(edit, logger, choices.log.empty() ? 0 : 1, &options, cues, false);
    embedded::take_warnings_of_copy(); // told with the findings
    check_written();
    check_tables_read();
    const std::string fault = done || choices.log.empty() ? "" : fault_of_film(choices.log);
    if (!fault.empty()) throw JobError(fault);
    if (!done || logger.failed()) throw JobError(subject + ": no table could be made");
    remove_report(report);
    return edit;
}

} // namespace tool
