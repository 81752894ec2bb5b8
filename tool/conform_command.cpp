// "quillbrook conform": whether the negative still holds what a cut needs.

#include "documents/conform_lists.h"
#include "tool/command.h"
#include "tool/conform_json.h"
#include "tool/conform_text.h"
#include "tool/document_files.h"
#include "tool/key_values.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/reel_films.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/splice_options.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

namespace tool {
namespace {

/// --json is the report for scripts.
constexpr const char* lists_json = "--lists-json";

struct ConformJob {
    EditInput edit;                             ///< its paths are the reels, edits or tables
    std::vector<std::vector<std::string>> cuts; ///< carried out, each with its reels
    std::string log;
    Output output;
    std::optional<std::string> report, json;
    film::SpliceRules rules;
    bool force = false;
    DocumentFiles documents;
    LibraryOptions options;
    Settings settings;
};

std::vector<std::string> inputs_of(const ConformJob& job) {
    std::vector<std::string> inputs = job.edit.paths;
    for (const std::vector<std::string>& cut : job.cuts)
        inputs = joined(std::move(inputs), cut);
    if (!job.log.empty()) inputs.push_back(job.log);
    return inputs;
}

void check_files(const ConformJob& job) {
    const std::vector<std::string> inputs = inputs_of(job);
    for (const std::string& input : inputs)
        check_named_input(input);
    std::vector<std::string> outputs;
    for (const auto& [option, file] : {std::pair("-o", &job.report), std::pair("--json", &job.json)}) {
        if (!*file) continue;
        check_output(option, **file, inputs, outputs);
        outputs.push_back(**file);
    }
    if (job.documents.wanted())
        outputs = joined(
            outputs, check_document_files(job.documents, lists_json, documents::conform_list_ids(), inputs, outputs));
    hold_outputs(outputs, job.output.overwrite);
    for (const std::string& input : inputs)
        check_readable(input);
    if (!job.log.empty()) check_is_log_table(job.log);
}

/// Reads the reels of a cut.
film::CutFilm read_cut(const ReelReader& reader, const std::vector<std::string>& paths, film::CutMethod method,
                       std::vector<film::OrderInput>& inputs) {
    film::CutFilm cut;
    for (const std::string& path : paths) {
        ReelFilm reel = reader.read(path);
        if (reel.sound) throw JobError(path + ": is a table of sound, and only picture negative is cut");
        film::add_cut(reel.film, reel.log, method, static_cast<int>(inputs.size()), cut);
        inputs.push_back(std::move(reel.input));
    }
    return cut;
}

film::ConformToTell conform(const ConformJob& job) {
    CheckChoices checks;
    checks.splice_frames = 0;
    const ReelReader reader({job.edit, {}, job.log, job.options, checks, job.output.quiet, false});
    film::ConformToTell told;
    told.log = job.log;
    told.rules = job.rules;
    film::SpentFilm negative(job.rules);
    for (const std::vector<std::string>& paths : job.cuts) {
        film::CutFilm cut = read_cut(reader, paths, job.rules.method, told.cuts.emplace_back());
        negative.carry_out(cut.uses);
        for (film::UnknownFilm& film : cut.unheld)
            told.unheld_cuts.push_back({told.cuts.size() - 1, std::move(film)});
    }
    film::CutFilm cut = read_cut(reader, job.edit.paths, job.rules.method, told.reels);
    told.uses = std::move(cut.uses);
    told.unheld = std::move(cut.unheld);
    told.conform = film::conform_of(told.uses, negative);
    told.negative = negative.strands();
    return told;
}

JobResult run(const ConformJob& job) {
    check_files(job);
    if (job.force && !job.log.empty()) read_in_spite_of_seals({job.log}, job.output.quiet);
    apply_settings(job.settings);
    receive_tables(job.output.quiet);
    const film::ConformToTell told = conform(job);
    deliver_bytes(job.report.value_or("-"), conform_text(told));
    if (job.json) deliver_bytes(*job.json, conform_document(told));
    if (job.documents.wanted()) {
        const bool frames = counts_frames(job.documents, profile_of(job.documents), false);
        write_document(job.documents, documents::conform_lists(told, frames));
    }
    return told.conforms() ? exit_done : JobResult::found();
}

void add_options(OptionTable& options, ConformJob& job) {
    options.add({
        {"EDIT", "", "The reels of the cut: edits, or their cutlist tables (.cdb)", InputFiles{job.edit.paths},
         Needed::yes},
        {"--cut", "REEL", "The reels of a cut that was carried out; several times for one cut after another",
         InputGroups{job.cuts}},
        {"-o", "FILE", "The report, in place of standard output", job.report},
        {"--json", "FILE", "The same for scripts", job.json},
        method_option(job.rules),
        splice_loss_option(job.rules),
    });
    add_document_options(options, job.documents, lists_json, false);
    options.add({log_table(job.log)});
    add_edit_reading(options, job.edit);
    options.add({
        library_set(job.options, parse_options),
        host_setting(job.settings),
        overwrite(job.output, "Replace files that are there"),
        force(job.force),
        quiet(job.output),
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook conform r1.otio r2.otio
      before the first cut: film that is used twice, and uses too close for their splices
  quillbrook conform r1-v3.otio r2-v3.otio --cut r1-v1.cdb r2-v1.cdb --cut r1-v2.cdb r2-v2.cdb
      whether the third version can be cut of a negative that was cut twice before
  quillbrook conform r1.edl --rate 24 --log show.RDB --method single --splice-loss 3p -o spent.txt --json spent.json
      a single strand, with the lab's own figure

Exit status: 0 the cut can be conformed, 1 it can't as it stands, or the job failed, 2 wrong usage.)";

} // namespace

extern const Command conform_command{"conform", "Tell whether the negative still holds what a cut needs", examples,
                                     prepare<ConformJob, add_options, run>};

} // namespace tool
