// "quillbrook changelist": the cutlists of two cuts into a report of what to do to the cutting copy.

#include "documents/list_kinds.h"
#include "embedded/services.h"
#include "embedded/warning.h"
#include "film/film_uses.h"
#include "quillbrook/changelist.h"
#include "tool/change_faults.h"
#include "tool/change_json.h"
#include "tool/command.h"
#include "tool/cut_tables.h"
#include "tool/cutlist_table.h"
#include "tool/document_files.h"
#include "tool/file_bytes.h"
#include "tool/key_values.h"
#include "tool/list_switches.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/prove_lists.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace tool {
namespace {

/// The cutlists of an old and a new cut into a changelist.
struct ChangelistJob {
    std::vector<std::string> old_reels, new_reels; ///< tables or edits, one a reel, in order
    std::vector<std::string> edits;                ///< that the names in the banner may be taken from
    CutTables cuts;                                ///< how edits become tables
    Output output;
    LibraryOptions options;               ///< wins over what the tables say
    std::optional<std::string> lists_dir; ///< of the working files; without it the host's own
    std::optional<std::string> json;      ///< the file of the steps
    bool prove = false;
    bool force = false;
    DocumentFiles documents;
};

/// --json is the document of the steps alone.
constexpr const char* json_option = "--lists-json";

constexpr const char* no_reel = ".CDB";
constexpr const char* working_files[] = {"oldcut__.chg", "newcut__.chg"};

struct ProvableList {
    change_list list;
    const char* name;
    const char* key; ///< of the option that prints it
};

/// What "chg_bench_cost" may ask for.
struct CostName {
    std::string_view value;
    const char* name;
    std::int64_t change_cost::*count;
};

constexpr ProvableList provable_lists[] = {{detailed_changes, "changes", "chg_verbose_list"},
                                           {bench_changes, "bench", "chg_bench_list"}};

/// The tables of both cuts, the old one's first.
std::vector<std::string> tables_of(const ChangelistJob& job) { return joined(job.old_reels, job.new_reels); }

/// Of the cuts as the line names them, those that are tables.
std::vector<std::string> given_tables(const ChangelistJob& job) {
    std::vector<std::string> tables = tables_of(job);
    std::erase_if(tables, [](const std::string& path) { return is_edit(path); });
    return tables;
}

std::vector<std::string> working_files_of(const ChangelistJob& job) {
    std::vector<std::string> files;
    for (const char* name : working_files)
        if (job.lists_dir) files.push_back(*job.lists_dir + '/' + name);
    if (!job.lists_dir) return files;
    return joined(std::move(files), joined(tables_to_make(job.old_reels, old_side, *job.lists_dir),
                                           tables_to_make(job.new_reels, new_side, *job.lists_dir)));
}

void check_files(const ChangelistJob& job) {
    std::vector<std::string> inputs = joined(tables_of(job), job.edits);
    if (!job.cuts.choices.log.empty()) inputs.push_back(job.cuts.choices.log);
    for (const std::string& table : tables_of(job))
        check_named_input(table);
    for (const std::string& edit : job.edits)
        check_readable(edit);
    if (!job.cuts.choices.log.empty()) check_is_log_table(job.cuts.choices.log);
    if (job.lists_dir) check_folder(*job.lists_dir);
    const std::vector<std::string> working = working_files_of(job);
    for (const std::string& file : working)
        check_working_file(file, inputs);
    check_output("-o", job.output.report, inputs, working);
    std::vector<std::string> outputs{job.output.report};
    if (job.json) {
        check_output("--json", *job.json, inputs, joined(working, outputs));
        outputs.push_back(*job.json);
    }
    if (job.documents.wanted()) {
        const documents::Profile profile = profile_of(job.documents);
        outputs =
            joined(outputs, check_document_files(job.documents, json_option, documents::change_list_ids(profile.lists),
                                                 inputs, joined(working, outputs)));
    }
    hold_outputs(outputs, job.output.overwrite, working);
}

void check_work_directory() {
    const std::filesystem::path work = embedded::work_directory();
    std::error_code ignored;
    if (!std::filesystem::is_directory(work, ignored)) check_folder(work.parent_path());
    const std::string fault = embedded::fault_of_work_directory();
    if (!fault.empty()) throw JobError(fault);
}

/// The tables of the first reels, which speak for their cuts.
struct Heads {
    CutlistTable old_cut;
    CutlistTable new_cut;

    explicit Heads(const ChangelistJob& job) : old_cut(job.old_reels.front(), 1), new_cut(job.new_reels.front(), 1) {}

    /// A head that couldn't be read, though the run then could, would leave the names out.
    void check(const ChangelistJob& job) const {
        if (!old_cut.is_readable()) throw JobError(job.old_reels.front() + ": couldn't be read");
        if (!new_cut.is_readable()) throw JobError(job.new_reels.front() + ": couldn't be read");
    }
};

embedded::settings_block block_of(const ChangelistJob& job, const Heads& heads) {
    embedded::settings_block block;
    block.set("CHAN_TYPE", std::to_string(heads.old_cut.is_sound() ? sound_kind : picture_kind));
    block.set("CHAN_NUM", "0");
    block.set("old_cookie", heads.old_cut.parameter("edit_cookie"));
    block.set("new_cookie", heads.new_cut.parameter("edit_cookie"));
    apply_options(job.options, block);
    return block;
}

/// The name of a reel's table; behind the last reel the word that ends a side, which no table may be called.
LightweightString<wchar_t> reel_name(const std::vector<std::string>& reels, std::size_t index) {
    if (index >= reels.size()) return wide_path(no_reel);
    return wide_path(reels[index] == no_reel ? std::string("./") + no_reel : reels[index]);
}

changelist_reels reels_of(const ChangelistJob& job) {
    changelist_reels reels;
    const std::size_t count = std::max(job.old_reels.size(), job.new_reels.size());
    for (std::size_t i = 0; i < count; ++i)
        reels.emplace_back(reel_name(job.old_reels, i), reel_name(job.new_reels, i));
    return reels;
}

std::vector<EditPtr> open_edits(const ChangelistJob& job) {
    std::vector<EditPtr> edits;
    embedded::Warnings warnings;
    for (const std::string& path : job.edits)
        edits.push_back(open_edit({{path}, job.cuts.edit.rate}, warnings));
    tell_warnings(warnings, job.output.quiet);
    return edits;
}

embedded::Warnings warnings_of_missing_keys(const ChangelistJob& job) {
    embedded::Warnings warnings;
    for (const std::string& path : tables_of(job)) {
        const unsigned count = path == no_reel ? 0 : CutlistTable(path).events_without_key();
        if (count > 0)
            warnings.push_back(path + ": " + std::to_string(count) + (count == 1 ? " event has" : " events have") +
                               " no key number; told apart by the names of their media alone");
    }
    return warnings;
}

/// The text of the error, empty when the report was made in `file`.
std::string make_changelist(const ChangelistJob& job, const Heads& heads, const std::string& file) {
    tell_warnings(warnings_of_missing_keys(job), job.output.quiet);
    const std::vector<EditPtr> kept_open = open_edits(job);
    embedded::settings_block block = block_of(job, heads);
    changelist_reels reels = reels_of(job);
    ToolLogger logger(job.output.report, job.output.quiet);
    const char* error = mr_make_changelist(reels, wide_path(file), &block, logger);
    // Of a file that couldn't be written the library knows less than we do.
    check_written();
    return error ? one_line(error) : "";
}

/// An error that still names no file, with the table that couldn't be read behind it.
std::string with_cause(const std::string& error, const std::string& told) {
    std::string name, why;
    const bool unread = embedded::take_read_failure(&name, &why);
    return unread && told == error ? told + ": " + one_line(name + ": " + why) : told;
}

// A run can fail behind the opening of its report, so what stands in its place is replaced only afterwards.
void put_report(const std::string& made, const std::string& report) { deliver_bytes(report, bytes_of(made)); }

std::string steps_text(int steps) { return std::to_string(steps) + (steps == 1 ? " step" : " steps"); }

std::string outcome(const change_proof& proof) {
    if (proof.proved) return "proved, " + steps_text(proof.steps);
    const std::string reel = "reel " + std::to_string(proof.reel);
    const std::string place = "frame " + std::to_string(proof.position) + ": " + one_line(proof.reason);
    if (proof.step == 0)
        return "after all " + steps_text(proof.steps) + ' ' + reel + " differs from the new cut at " + place;
    return "step " + std::to_string(proof.step) + " parts from the new cut at " + reel + ", " + place;
}

/// By the values of "chg_bench_cost".
constexpr CostName cost_names[] = {{"1", "moves", &change_cost::moves},
                                   {"2", "splices", &change_cost::splices},
                                   {"3", "frames", &change_cost::frames}};

const CostName* cost_asked_for(const LibraryOptions& options) {
    const auto* const found = std::find_if(std::begin(cost_names), std::end(cost_names), [&](const CostName& cost) {
        return options.value("chg_bench_cost") == cost.value;
    });
    return found == std::end(cost_names) ? nullptr : found;
}

void tell_cost(const CostName& cost, std::ostream& out) {
    change_cost planned, simple;
    bench_list_costs(planned, simple);
    out << "bench: " << planned.*cost.count << ' ' << cost.name << ", " << simple.*cost.count
        << " by deleting and inserting\n";
}

/// Whether a list is proved: those that were asked for, or else the detailed one; the bench list always where a cost
/// was asked for.
bool is_to_prove(const ChangelistJob& job, const ProvableList& list) {
    const LibraryOptions& options = job.options;
    if (list.list == bench_changes && cost_asked_for(options)) return true;
    const bool only = list.list == detailed_changes && !options.is_on(provable_lists[1].key);
    return job.prove && (only || options.is_on(list.key));
}

int prove(const ChangelistJob& job, std::ostream& out) {
    int status = exit_done;
    for (const ProvableList& list : provable_lists) {
        if (!is_to_prove(job, list)) continue;
        const change_proof proof = prove_change_steps(list.list);
        if (std::string_view(proof.reason) == "Out of memory") throw std::bad_alloc();
        out << list.name << ": " << outcome(proof) << '\n';
        if (!proof.proved) status = exit_not_proved;
    }
    if (const CostName* cost = cost_asked_for(job.options)) tell_cost(*cost, out);
    return status;
}

/// Whether the detailed list is so long that its reader is told why, should the bench list be much shorter.
bool is_long_list_told(const ChangelistJob& job) {
    constexpr unsigned worth_telling = 1000;
    unsigned detailed = 0;
    change_steps(detailed_changes, detailed);
    return !job.output.quiet && job.options.is_on(provable_lists[0].key) && detailed >= worth_telling;
}

/// The bench list is planned when it is asked for. One that memory ended for must not pass for one without steps.
void plan_what_is_told(const ChangelistJob& job) {
    unsigned count = 0;
    const bool told = job.json || job.documents.wanted() || is_long_list_told(job);
    if (told && !change_steps(bench_changes, count)) throw std::bad_alloc();
}

/// Film that lies in many places is matched piece by piece there, each piece with any of the places.
void tell_long_list(const ChangelistJob& job) {
    if (!is_long_list_told(job)) return;
    unsigned detailed = 0, bench = 0;
    change_steps(detailed_changes, detailed);
    change_steps(bench_changes, bench);
    if (detailed / 2 < bench) return;
    tell_warnings({job.output.report + ": the detailed list has " + steps_text(static_cast<int>(detailed)) +
                   ", as film that is used again falls into pieces there; the bench list needs " +
                   std::to_string(bench)},
                  job.output.quiet);
}

std::vector<documents::CutFilmPtr> cuts_of(const std::vector<std::string>& reels) {
    std::vector<documents::CutFilmPtr> cuts;
    for (const std::string& path : reels) {
        if (path == no_reel) continue;
        const std::shared_ptr<const recdb> table = table_with_records(path);
        cuts.push_back(documents::cut_film(film::uses_of_table(*table), *table, {}, {}));
    }
    return cuts;
}

/// Pages and tables for scripts, of the steps of the run.
void write_documents(const ChangelistJob& job) {
    constexpr const char* feet = "1";
    std::vector<documents::CutFilmPtr> old_reels = cuts_of(job.old_reels), new_reels = cuts_of(job.new_reels);
    if (old_reels.empty() || new_reels.empty()) throw JobError("there are no pages of a cut without a reel");
    const documents::Profile profile = profile_of(job.documents);
    const bool in_feet = job.options.value("chg_lengthunits") == feet;
    const bool frames = !job.documents.feet && profile.frames.value_or(!in_feet);
    write_document(job.documents,
                   documents::document_of(
                       documents::changes_of_last_run(std::move(old_reels), std::move(new_reels), frames), profile),
                   job.output.overwrite);
}

/// The report of tables.
int list_changes(const ChangelistJob& job) {
    const std::string made = embedded::work_directory() + "/changes.txt";
    const Heads heads(job);
    const std::string error = make_changelist(job, heads, made);
    if (!error.empty()) {
        std::cerr << "error: " << with_cause(error, told_error(error, tables_of(job))) << '\n';
        return exit_failed;
    }
    check_tables_read();
    heads.check(job);
    plan_what_is_told(job);
    put_report(made, job.output.report);
    tell_long_list(job);
    if (job.json) deliver_bytes(*job.json, change_document(heads.old_cut.parameter("film label_std")));
    if (job.documents.wanted()) write_documents(job);
    const bool taken = is_stream(job.output.report) || (job.json && is_stream(*job.json));
    return prove(job, taken ? std::cerr : std::cout);
}

int run(const ChangelistJob& job) {
    check_files(job);
    if (job.force) read_in_spite_of_seals(given_tables(job), job.output.quiet);
    if (job.lists_dir) embedded::set_lists_directory(*job.lists_dir);
    apply_settings(job.cuts.settings);
    receive_tables(job.output.quiet);
    ChangelistJob listed = job;
    check_work_directory();
    if (cost_asked_for(job.options)) listed.options.set[provable_lists[1].key] = "1";
    const std::string folder = job.lists_dir.value_or(embedded::work_directory());
    std::vector<EditPtr> kept_open;
    for (const CutSide* side : {&old_side, &new_side})
        make_tables(side == &old_side ? listed.old_reels : listed.new_reels, *side, job.cuts, folder, job.output.quiet,
                    kept_open);
    return list_changes(listed);
}

void add_files(OptionTable& options, ChangelistJob& job) {
    options.add({
        {"--old", "FILE", "The tables (.cdb) or edits of the old cut, one a reel", InputFiles{job.old_reels},
         Needed::yes},
        {"--new", "FILE", "The tables or edits of the new cut", InputFiles{job.new_reels}, Needed::yes},
        output_file(job.output, "The report to write"),
        {"--json", "FILE", "Write the steps of both lists to a file for scripts", job.json},
        {"--edits", "FILE", "Edits that the names at the head may come from", InputFiles{job.edits}},
        {"--lists-dir", "DIR", "Where the working files go, to be kept", job.lists_dir},
    });
    add_cut_options(options, job.cuts);
}

void name_track(ChangelistJob& job, const std::string& text) {
    const ChannelName channel = parse_channel(text);
    job.cuts.choices.channel = channel;
    job.options.switches["CHAN_TYPE"] = std::to_string(channel.kind);
    job.options.switches["CHAN_NUM"] = std::to_string(channel.number - 1);
}

void add_list_options(OptionTable& options, ChangelistJob& job) {
    LibraryOptions& library = job.options;
    library.switches = {{"chg_showedgecodes", "1"}, {"chg_useshotscenetake", "0"}};
    options.add({
        change_lists_option(library),
        bench_cost_option(library),
        change_units_option(library),
        library_switch("--no-keys", library, "chg_showedgecodes", "0", "Leave the columns of key numbers out"),
        library_switch("--scene-take", library, "chg_useshotscenetake", "1",
                       "Scene and take in place of the shot's name"),
        {"--channel", "CHANNEL", "The track of the edits, and to name at the head: V1, V2, ... or A1, A2, ...",
         OneText{[&job](const std::string& text) { name_track(job, text); }}},
    });
}

void add_options(OptionTable& options, ChangelistJob& job) {
    add_files(options, job);
    add_list_options(options, job);
    options.add({
        {"--prove", "", "Carry the steps out on the old cut and compare with the new", job.prove},
        library_set(job.options, parse_change_options),
        overwrite(job.output, "Replace a report and a file for scripts that are there"),
        force(job.force),
        quiet(job.output),
    });
    add_document_options(options, job.documents, json_option);
}

constexpr const char* examples = R"(Examples:
  quillbrook changelist --old monday/r1.cdb --new friday/r1.cdb -o lists/changes.txt
      what to do to the cutting copy of a reel: all lists, lengths in frames
  quillbrook changelist --old old/r1.cdb old/r2.cdb --new new/r1.cdb new/r2.cdb new/r3.cdb -o changes.txt
      a picture of several reels, one table a reel
  quillbrook changelist --old a.cdb --new b.cdb -o changes.txt --lists summary,changes --units feet --scene-take
      two of the lists, in feet and frames, with scene and take
  quillbrook changelist --old a.cdb --new b.cdb -o changes.txt --edits monday.otio friday.otio
      names both edits at the head of the list
  quillbrook changelist --old monday.otio --new friday.otio --log show.RDB -o changes.txt
      makes the tables of two edits itself; with --lists-dir they are kept
  quillbrook changelist --old a.cdb --new b.cdb -o bench.txt --lists bench --prove --json bench.json
      the steps for the bench, carried out on the old cut as a check, and written for scripts too
  quillbrook changelist --old a.cdb --new b.cdb -o bench.txt --lists bench --cost splices
      the same with the fewest splices opened and made, and what that saves
  quillbrook changelist --old a.cdb --new b.cdb -o changes.txt --html changes.html --feet
      also a page with the steps, what to pull for them, what comes out, and the lengths of the reels

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 a list asked for with --prove doesn't make the new cut.)";

} // namespace

extern const Command changelist_command{"changelist", "Print what to do to the cutting copy after a recut", examples,
                                        prepare<ChangelistJob, add_options, run>};

} // namespace tool
