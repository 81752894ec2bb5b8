#include "tool/command_line.h"

#include "tool/help_texts.h"
#include "tool/key_values.h"
#include "tool/list_switches.h"
#include "tool/open_logs.h"
#include "tool/tool_error.h"

#include <CLI/CLI.hpp>

namespace tool {
namespace {

/// The raw values of the line; each command uses some of them.
struct Values {
    std::string input, report, channel = "V1", rate, log;
    std::vector<std::string> edits;
    std::vector<std::string> options, settings;
    ListSwitches lists;
    ChangeSwitches changes;
    std::vector<std::string> old_reels, new_reels;
    std::optional<std::string> json, lists_dir;
    bool prove = false;
    std::vector<std::string> logs;
    std::string reel, film;
    int tolerance = 2;
    bool as_keylog = false;
    bool neg_cut = false, frames = false, all_effects = false, overwrite = false, quiet = false;
};

void add_set(CLI::App& command, Values& values) {
    command.add_option("--set", values.options, "An option of the library; wins over all else")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
}

void add_quiet(CLI::App& command, Values& values) {
    command.add_flag("--quiet", values.quiet, "Tell neither progress nor warnings");
}

void add_input_options(CLI::App& command, Values& values) {
    command.add_option("EDIT", values.edits, "The edit (.otio), or the edit lists of one programme (.edl)")->required();
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
    add_set(command, values);
    command.add_option("--config", values.settings, "A host-wide setting")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    command.add_flag("--overwrite", values.overwrite, "Replace a report that is there");
    add_quiet(command, values);
}

CLI::App* add_cutlist(CLI::App& app, Values& values) {
    CLI::App* command = app.add_subcommand("cutlist", "Turn an edit into a report and a table (.cdb) beside it");
    add_input_options(*command, values);
    add_report_options(*command, values);
    command->add_option("--channel", values.channel, "The channel to list: V1, V2, ... or A1, A2, ...")
        ->type_name("CHANNEL")
        ->capture_default_str();
    command->add_option("--log", values.log, "The logging table that key numbers come from, by reel and timecode")
        ->type_name("TABLE")
        ->check([](const std::string& path) { return std::string(path.empty() ? "a logging table is wanted" : ""); });
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

void add_change_lists(CLI::App& command, ChangeSwitches& changes) {
    command
        .add_option("--lists", changes.lists,
                    "Only these lists: summary, new, changes, transitions, bench; by default all but bench")
        ->type_name("LIST,...")
        ->allow_extra_args(false);
    command.add_option("--units", changes.units, "Lengths and positions in frames, feet or timecode")
        ->type_name("UNITS")
        ->capture_default_str();
    command.add_flag("--no-keys", changes.no_keys, "Leave the columns of key numbers out");
    command.add_flag("--scene-take", changes.scene_take, "Scene and take in place of the shot's name");
    command.add_option("--channel", changes.channel, "The track to name at the head: V1, V2, ... or A1, A2, ...")
        ->type_name("CHANNEL");
}

void add_change_files(CLI::App& command, Values& values) {
    command.add_option("--old", values.old_reels, "The tables (.cdb) of the old cut, one a reel")
        ->type_name("FILE")
        ->required();
    command.add_option("--new", values.new_reels, "The tables of the new cut")->type_name("FILE")->required();
    command.add_option("-o", values.report, "The report to write")->type_name("FILE")->required();
    command.add_option("--json", values.json, "Write the steps of both lists to a file for scripts")->type_name("FILE");
    command.add_option("--edits", values.edits, "Edits (.otio, .edl) that the names at the head may come from")
        ->type_name("FILE");
    command.add_option("--rate", values.rate, "Frames a second of these edits, in place of what the files say")
        ->type_name("RATE");
    command.add_option("--lists-dir", values.lists_dir, "Where the working files go, to be kept")->type_name("DIR");
}

CLI::App* add_changelist(CLI::App& app, Values& values) {
    CLI::App* command = app.add_subcommand("changelist", "Print what to do to the cutting copy after a recut");
    add_change_files(*command, values);
    add_change_lists(*command, values.changes);
    command->add_flag("--prove", values.prove, "Carry the steps out on the old cut and compare with the new");
    add_set(*command, values);
    command->add_flag("--overwrite", values.overwrite, "Replace a report and a file for scripts that are there");
    add_quiet(*command, values);
    command->footer(changelist_examples);
    return command;
}

CLI::App* add_show(CLI::App& edit, Values& values) {
    CLI::App* command = edit.add_subcommand("show", "Show what the library will see of an edit");
    add_input_options(*command, values);
    command->footer(show_examples);
    return command;
}

void add_log_inputs(CLI::App& command, Values& values, const char* what) {
    command.add_option("LOG", values.logs, what)->required();
    command.add_option("--rate", values.rate, "Frames a second of the timecodes, in place of what the files say")
        ->type_name("RATE");
    command.add_option("--film", values.film, "The kind of film, in place of what the files say")->type_name("KIND");
    command.add_option("--reel", values.reel, "The reel of every row, in place of what the files say")
        ->type_name("REEL");
}

void add_table_output(CLI::App& command, Values& values) {
    command.add_option("-o", values.report, "The table to write")->type_name("FILE")->required();
    command.add_flag("--overwrite", values.overwrite, "Replace a table that is there");
    add_quiet(command, values);
}

CLI::App* add_log_import(CLI::App& log, Values& values) {
    CLI::App* command = log.add_subcommand("import", "Make a logging table (.RDB) of logs");
    add_log_inputs(*command, values, "Logs: ALE, FLEx, Keylog, or text parted by tabs or commas");
    add_table_output(*command, values);
    command->add_flag("--as-keylog", values.as_keylog, "Read Keylog files by the places of their columns");
    command->footer(log_import_examples);
    return command;
}

CLI::App* add_log_merge(CLI::App& log, Values& values) {
    CLI::App* command = log.add_subcommand("merge", "Put logging tables together");
    command->add_option("TABLE", values.logs, "Logging tables (.RDB)")->required();
    add_table_output(*command, values);
    command->footer(log_merge_examples);
    return command;
}

CLI::App* add_log_show(CLI::App& log, Values& values) {
    CLI::App* command = log.add_subcommand("show", "Show the rows of a logging table or log");
    add_log_inputs(*command, values, "Logging tables (.RDB) or logs");
    command->footer(log_show_examples);
    return command;
}

CLI::App* add_log_check(CLI::App& log, Values& values) {
    CLI::App* command = log.add_subcommand("check", "Find what in logs would spoil a conform");
    add_log_inputs(*command, values, "Logging tables (.RDB) or logs; checked together");
    command
        ->add_option("--tolerance", values.tolerance, "Film frames by which lengths may differ where there is pulldown")
        ->type_name("N")
        ->check(CLI::Range(0, 1000))
        ->capture_default_str();
    command->footer(log_check_examples);
    return command;
}

/// "log" and its four commands.
class LogCommands {
public:
    LogCommands(CLI::App& app, Values& values)
        : log_(app.add_subcommand("log", "Make, show and check logging tables")->require_subcommand(0, 1)),
          import_(add_log_import(*log_, values)), merge_(add_log_merge(*log_, values)),
          show_(add_log_show(*log_, values)), check_(add_log_check(*log_, values)) {}

    bool parsed() const { return log_->parsed(); }
    Request request(const Values& values) const;

private:
    CLI::App* log_;
    const CLI::App* import_;
    const CLI::App* merge_;
    const CLI::App* show_;
    const CLI::App* check_;
};

LogInput log_input(const Values& values) {
    return {values.logs, values.rate.empty() ? nullptr : parse_rate(values.rate), values.reel,
            values.film.empty() ? 0 : parse_film_kind(values.film)};
}

EditInput edit_input(const Values& values) {
    return {values.edits.front(),
            values.rate.empty() ? nullptr : parse_rate(values.rate),
            values.all_effects,
            {values.edits.begin() + 1, values.edits.end()}};
}

Output output(const Values& values) { return {values.report, values.overwrite, values.quiet}; }

CutlistJob cutlist_job(const Values& values) {
    CutlistJob job;
    job.edit = edit_input(values);
    job.output = output(values);
    job.channel = parse_channel(values.channel);
    job.neg_cut = values.neg_cut;
    job.frames = values.frames;
    job.log = values.log;
    job.options = list_options(values.lists, parse_options(values.options));
    job.settings = parse_settings(values.settings);
    return job;
}

PrintJob print_job(const Values& values) {
    return {values.input, output(values), list_options(values.lists, parse_options(values.options)),
            parse_settings(values.settings)};
}

ChangelistJob changelist_job(const Values& values) {
    ChangelistJob job;
    job.old_reels = values.old_reels;
    job.new_reels = values.new_reels;
    for (const std::string& path : values.edits)
        job.edits.push_back({path, values.rate.empty() ? nullptr : parse_rate(values.rate), false, {}});
    job.output = output(values);
    job.options = change_options(values.changes, parse_change_options(values.options));
    job.lists_dir = values.lists_dir;
    job.json = values.json;
    job.prove = values.prove;
    return job;
}

Request LogCommands::request(const Values& values) const {
    if (import_->parsed()) {
        const bool by_place = values.as_keylog && (!values.rate.empty() || !values.film.empty());
        if (by_place) throw UsageError("log import: --as-keylog takes rate and film from the file");
        return LogImportJob{log_input(values), output(values), values.as_keylog};
    }
    if (merge_->parsed()) return LogMergeJob{values.logs, output(values)};
    if (show_->parsed()) return LogShowJob{log_input(values)};
    if (check_->parsed()) return LogCheckJob{log_input(values), values.tolerance};
    throw UsageError("log: a command is required: import, merge, show or check; see quillbrook log --help");
}

std::string first_line(const std::string& text) { return text.substr(0, text.find('\n')); }

/// The command that the line has come to, as "quillbrook log show".
std::string command_name(const CLI::App& app) {
    std::string name = app.get_name();
    for (const CLI::App* command : app.get_subcommands())
        name += ' ' + command_name(*command);
    return name;
}

} // namespace

Request parse_command_line(int argc, const char* const* argv) {
    Values values;
    CLI::App app(about, "quillbrook");
    app.footer(main_examples);
    app.set_version_flag("--version", "quillbrook " QUILLBROOK_VERSION);
    app.require_subcommand(0, 1);
    const CLI::App* cutlist = add_cutlist(app, values);
    const CLI::App* print = add_print(app, values);
    const CLI::App* changelist = add_changelist(app, values);
    CLI::App* edit = app.add_subcommand("edit", "Look at edit files")->require_subcommand(0, 1);
    const CLI::App* show = add_show(*edit, values);
    const LogCommands log(app, values);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + '\n';
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::ParseError& error) {
        throw UsageError(first_line(error.what()) + "; see " + command_name(app) + " --help");
    }
    if (cutlist->parsed()) return cutlist_job(values);
    if (print->parsed()) return print_job(values);
    if (changelist->parsed()) return changelist_job(values);
    if (show->parsed()) return ShowJob{edit_input(values)};
    if (log.parsed()) return log.request(values);
    throw UsageError(edit->parsed() ? "edit: a command is required, show; see quillbrook edit --help"
                                    : "a command is required: cutlist, print, changelist, edit show or log; "
                                      "see quillbrook --help");
}

} // namespace tool
