#include "tool/command_line.h"

#include "tool/key_values.h"
#include "tool/list_switches.h"
#include "tool/tool_error.h"

#include <CLI/CLI.hpp>

namespace tool {
namespace {

constexpr const char* about = "Film lists from edits: cutlist tables and paged reports.";

constexpr const char* main_examples = R"(Examples:
  quillbrook cutlist reel.otio -o lists/reel.txt
  quillbrook print lists/reel.cdb -o lists/again.txt --lists assembly,opticals
  quillbrook edit show reel.otio

Exit status: 0 done, 1 the job failed, 2 wrong usage.
"quillbrook COMMAND --help" tells of one command.)";

constexpr const char* cutlist_examples = R"(Examples:
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
      lists rendered material as it stands)";

constexpr const char* print_examples = R"(Examples:
  quillbrook print lists/reel.cdb -o lists/again.txt
      all lists, by the library's default options
  quillbrook print lists/reel.cdb -o lists/rolls.txt --lists rolls
      the list of rolls alone
  quillbrook print lists/sound.cdb -o lists/sound.txt --set chan_type=2 --set chan_num=3
      a table of a sound channel)";

constexpr const char* show_examples = R"(Examples:
  quillbrook edit show reel.otio
  quillbrook edit show reel.otio --rate 23.976 --all-effects)";

/// The raw values of the line; each command uses some of them.
struct Values {
    std::string input, report, channel = "V1", rate;
    std::vector<std::string> options, settings;
    ListSwitches lists;
    bool neg_cut = false, frames = false, all_effects = false, overwrite = false, quiet = false;
};

void add_input_options(CLI::App& command, Values& values) {
    command.add_option("EDIT", values.input, "The edit file (.otio)")->required();
    command.add_option("--rate", values.rate, "Frames a second of the edit, in place of what the file says")
        ->type_name("RATE");
    command.add_flag("--all-effects", values.all_effects, "Every effect of the file is the lab's to make");
}

void add_report_options(CLI::App& command, Values& values) {
    command.add_option("-o", values.report, "The report to write")->type_name("FILE")->required();
    command.add_option("--lists", values.lists.lists, "Only these lists: rolls, pull, assembly, opticals")
        ->type_name("LIST,...")
        ->allow_extra_args(false);
    command.add_option("--handles", values.lists.handles, "Frames to pull at each end beyond what is cut")
        ->type_name("N");
    command
        .add_option("--butt", values.lists.butt,
                    "Frames apart at which two cuts of a roll still count as re-use; by default 1")
        ->type_name("N");
    command.add_flag("--sort-by-key", values.lists.sort_by_key, "Pull lists by key number in place of by roll");
    command.add_option("--set", values.options, "An option of the library; wins over all else")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    command.add_option("--config", values.settings, "A host-wide setting")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    command.add_flag("--overwrite", values.overwrite, "Replace a report that is there");
    command.add_flag("--quiet", values.quiet, "Tell neither progress nor warnings");
}

CLI::App* add_cutlist(CLI::App& app, Values& values) {
    CLI::App* command = app.add_subcommand("cutlist", "Turn an edit into a report and a table (.cdb) beside it");
    add_input_options(*command, values);
    add_report_options(*command, values);
    command->add_option("--channel", values.channel, "The channel to list: V1, V2, ... or A1, A2, ...")
        ->type_name("CHANNEL")
        ->capture_default_str();
    command->add_flag("--neg-cut", values.neg_cut, "A neg-cut list in place of a cutting-copy list");
    command->add_flag("--frames", values.frames, "Positions in frames in place of feet and frames");
    command->add_option("--single-layer", values.lists.single_layer, "Single-layer lists to write: 1, 2, 3, 4")
        ->type_name("N,...")
        ->allow_extra_args(false);
    command->footer(cutlist_examples);
    return command;
}

CLI::App* add_print(CLI::App& app, Values& values) {
    CLI::App* command = app.add_subcommand("print", "Print the lists of a saved table");
    command->add_option("CDB", values.input, "The table (.cdb)")->required();
    add_report_options(*command, values);
    command->footer(print_examples);
    return command;
}

CLI::App* add_show(CLI::App& edit, Values& values) {
    CLI::App* command = edit.add_subcommand("show", "Show what the library will see of an edit");
    add_input_options(*command, values);
    command->footer(show_examples);
    return command;
}

EditInput edit_input(const Values& values) {
    return {values.input, values.rate.empty() ? nullptr : parse_rate(values.rate), values.all_effects};
}

Output output(const Values& values) { return {values.report, values.overwrite, values.quiet}; }

CutlistJob cutlist_job(const Values& values) {
    CutlistJob job;
    job.edit = edit_input(values);
    job.output = output(values);
    job.channel = parse_channel(values.channel);
    job.neg_cut = values.neg_cut;
    job.frames = values.frames;
    job.options = list_options(values.lists, parse_options(values.options));
    job.settings = parse_settings(values.settings);
    return job;
}

PrintJob print_job(const Values& values) {
    return {values.input, output(values), list_options(values.lists, parse_options(values.options)),
            parse_settings(values.settings)};
}

std::string first_line(const std::string& text) { return text.substr(0, text.find('\n')); }

} // namespace

Request parse_command_line(int argc, const char* const* argv) {
    Values values;
    CLI::App app(about, "quillbrook");
    app.footer(main_examples);
    app.set_version_flag("--version", "quillbrook " QUILLBROOK_VERSION);
    app.require_subcommand(0, 1);
    const CLI::App* cutlist = add_cutlist(app, values);
    const CLI::App* print = add_print(app, values);
    CLI::App* edit = app.add_subcommand("edit", "Look at edit files")->require_subcommand(0, 1);
    const CLI::App* show = add_show(*edit, values);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + '\n';
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::ParseError& error) {
        throw UsageError(first_line(error.what()) + "; see quillbrook --help");
    }
    if (cutlist->parsed()) return cutlist_job(values);
    if (print->parsed()) return print_job(values);
    if (show->parsed()) return ShowJob{edit_input(values)};
    throw UsageError(edit->parsed() ? "edit: a command is required, show; see quillbrook edit --help"
                                    : "a command is required: cutlist, print or edit show; see quillbrook --help");
}

} // namespace tool
