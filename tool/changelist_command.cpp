// "quillbrook changelist": the cutlists of two cuts into a report of what to do to the cutting copy.

#include "embedded/services.h"
#include "embedded/warning.h"
#include "quillbrook/changelist.h"
#include "tool/change_faults.h"
#include "tool/change_jobs.h"
#include "tool/change_json.h"
#include "tool/cutlist_table.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace tool {
namespace {

constexpr const char* no_reel = ".CDB";
constexpr const char* working_files[] = {"oldcut__.chg", "newcut__.chg"};

struct ProvableList {
    change_list list;
    const char* name;
    const char* key; ///< of the option that prints it
};

constexpr ProvableList provable_lists[] = {{detailed_changes, "changes", "chg_verbose_list"},
                                           {bench_changes, "bench", "chg_bench_list"}};

std::vector<std::string> files_of(const ChangelistJob& job) {
    std::vector<std::string> files = tables_of(job);
    for (const EditInput& edit : job.edits)
        files.push_back(edit.path);
    return files;
}

std::vector<std::string> working_files_of(const ChangelistJob& job) {
    std::vector<std::string> files;
    for (const char* name : working_files)
        if (job.lists_dir) files.push_back(*job.lists_dir + '/' + name);
    return files;
}

void check_files(const ChangelistJob& job) {
    const std::vector<std::string> inputs = files_of(job);
    for (const std::string& table : tables_of(job))
        check_plain(table);
    for (const EditInput& edit : job.edits)
        check_readable(edit.path);
    if (job.lists_dir) check_folder(*job.lists_dir);
    const std::vector<std::string> working = working_files_of(job);
    for (const std::string& file : working)
        check_working_file(file, inputs);
    check_output("-o", job.output.report, job.output.overwrite, inputs, working);
    if (!job.json) return;
    std::vector<std::string> others = working;
    others.push_back(job.output.report);
    check_output("--json", *job.json, job.output.overwrite, inputs, others);
}

void check_work_directory() {
    const std::filesystem::path work = embedded::work_directory();
    std::error_code ignored;
    if (!std::filesystem::is_directory(work, ignored)) check_folder(work.parent_path());
}

/// The tables of the first reels, which speak for their cuts.
struct Heads {
    CutlistTable old_cut;
    CutlistTable new_cut;

    explicit Heads(const ChangelistJob& job) : old_cut(job.old_reels.front(), 1), new_cut(job.new_reels.front(), 1) {}
};

embedded::settings_block block_of(const ChangelistJob& job, const Heads& heads) {
    embedded::settings_block block;
    block.set("CHAN_TYPE", heads.old_cut.is_sound() ? "2" : "1");
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
    for (const EditInput& edit : job.edits)
        edits.push_back(open_edit(edit, warnings));
    tell_warnings(warnings, job.output.quiet);
    return edits;
}

/// The text of the error, empty when the report was made in `file`.
std::string make_changelist(const ChangelistJob& job, const Heads& heads, const std::string& file) {
    const std::vector<EditPtr> kept_open = open_edits(job);
    embedded::settings_block block = block_of(job, heads);
    changelist_reels reels = reels_of(job);
    ToolLogger logger(job.output.report, job.output.quiet);
    const char* error = mr_make_changelist(reels, wide_path(file), &block, logger);
    // Of a file that couldn't be written the library knows less than we do.
    check_written();
    return error ? one_line(error) : "";
}

void write_whole(const std::string& path, const std::string& bytes) {
    std::string why;
    if (!embedded::write_file_whole(path, bytes, &why)) throw JobError(path + ": couldn't be written: " + why);
}

// A run can fail behind the opening of its report, so what stands in its place is replaced only afterwards.
void put_report(const std::string& made, const std::string& report) {
    std::string bytes, why;
    if (!embedded::read_file(made, &bytes, &why)) throw JobError(made + ": " + why);
    write_whole(report, bytes);
}

bool is_printed(const ProvableList& list, const Options& options) {
    const auto found = options.find(list.key);
    return found != options.end() && found->second != "0";
}

std::string steps_text(int steps) { return std::to_string(steps) + (steps == 1 ? " step" : " steps"); }

std::string outcome(const change_proof& proof) {
    if (proof.proved) return "proved, " + steps_text(proof.steps);
    const std::string reel = "reel " + std::to_string(proof.reel);
    const std::string place = "frame " + std::to_string(proof.position) + ": " + one_line(proof.reason);
    if (proof.step == 0)
        return "after all " + steps_text(proof.steps) + ' ' + reel + " differs from the new cut at " + place;
    return "step " + std::to_string(proof.step) + " parts from the new cut at " + reel + ", " + place;
}

/// Proves the lists that were asked for, or else the detailed one.
int prove(const Options& options) {
    int status = exit_done;
    for (const ProvableList& list : provable_lists) {
        const bool only = list.list == detailed_changes && !is_printed(provable_lists[1], options);
        if (!only && !is_printed(list, options)) continue;
        const change_proof proof = prove_change_steps(list.list);
        std::cout << list.name << ": " << outcome(proof) << '\n';
        if (!proof.proved) status = exit_not_proved;
    }
    return status;
}

} // namespace

int run(const ChangelistJob& job) {
    check_files(job);
    if (job.lists_dir) embedded::set_lists_directory(*job.lists_dir);
    check_work_directory();
    const std::string made = embedded::work_directory() + "/changes.txt";
    const Heads heads(job);
    const std::string error = make_changelist(job, heads, made);
    if (!error.empty()) {
        std::cerr << "error: " << told_error(error, job) << '\n';
        return exit_failed;
    }
    put_report(made, job.output.report);
    if (job.json) write_whole(*job.json, change_document(heads.old_cut.parameter("film label_std")));
    return job.prove ? prove(job.options) : exit_done;
}

} // namespace tool
