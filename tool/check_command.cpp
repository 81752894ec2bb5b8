// "quillbrook check": what is wrong or doubtful of an edit.

#include "tool/command.h"
#include "tool/film_check.h"
#include "tool/findings_json.h"
#include "tool/key_values.h"
#include "tool/log_use.h"
#include "tool/open_edit.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <iostream>

namespace tool {
namespace {

struct CheckJob {
    EditInput edit;
    ChannelName channel;
    std::string log;
    bool neg_cut = false;
    LibraryOptions options;
    Settings settings;
    CheckChoices choices;
    std::string json;
    bool overwrite = false;
};

void check_files(const CheckJob& job) {
    std::vector<std::string> inputs = job.edit.paths;
    if (!job.log.empty()) inputs.push_back(job.log);
    if (!job.edit.matching.aliases.empty()) inputs.push_back(job.edit.matching.aliases);
    for (const std::string& input : inputs)
        check_readable(input);
    if (!job.log.empty()) check_is_log_table(job.log);
    if (job.json.empty()) return;
    check_output("--json", job.json, inputs, {});
    hold_outputs({job.json}, job.overwrite);
}

JobResult run(const CheckJob& job) {
    check_files(job);
    apply_settings(job.settings);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    const film::CheckOptions options =
        check_options(job.edit, job.channel, job.log, job.neg_cut, job.options, job.choices);
    const film::Findings findings = check_film(ListedFilm(edit, job.log), options, warnings);
    if (!job.json.empty()) deliver_bytes(job.json, findings_document(findings));
    for (const film::Finding& finding : findings)
        std::cout << line_of(finding) << '\n';
    std::cout << tally_of(findings) << '\n';
    return fails(findings, job.choices.strict) ? JobResult::found() : exit_done;
}

void add_options(OptionTable& options, CheckJob& job) {
    add_edit_input(options, job.edit);
    add_channel_and_log(options, job.channel, job.log);
    add_log_matching(options, job.edit, job.log);
    options.add({{"--neg-cut", "", "As a neg-cut list numbers the events", job.neg_cut}});
    add_check_options(options, job.choices);
    options.add({
        {"--json", "FILE", "The findings as a JSON document too", job.json},
        {"--overwrite", "", "Replace a document that is there", job.overwrite},
        library_set(job.options, parse_options),
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook check reel.otio
      what is wrong, what is doubtful and what to know of the first picture channel, worst first
  quillbrook check reel1.edl --rate 24 --log show.RDB --strict
      fails on doubts too
  quillbrook check reel.otio --channel A1 --json findings.json
      also as a document for other programs

Exit status: 0 nothing wrong, 1 something is wrong, or with --strict in doubt.)";

} // namespace

extern const Command check_command{"check", "Tell what is wrong or doubtful of an edit and its log", examples,
                                   prepare<CheckJob, add_options, run>};

} // namespace tool
