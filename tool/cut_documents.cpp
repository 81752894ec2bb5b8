#include "tool/cut_documents.h"

#include "documents/list_kinds.h"
#include "tool/tool_error.h"

#include <cstdlib>
#include <utility>

namespace tool {
namespace {

constexpr const char* json_option = "--json";

} // namespace

void add_cut_document_options(OptionTable& options, DocumentFiles& files,
                              const std::function<bool()>& asks_for_frames) {
    add_document_options(options, files, json_option);
    options.add_check([&files, asks_for_frames] {
        if (files.feet && asks_for_frames()) throw UsageError("--feet and --frames are two ways to count");
    });
}

std::vector<std::string> check_cut_documents(const DocumentFiles& files, const std::vector<std::string>& inputs,
                                             const std::vector<std::string>& others) {
    if (!files.wanted()) return {};
    return check_document_files(files, json_option, documents::cut_list_ids(profile_of(files).lists), inputs, others);
}

void write_cut_documents(const DocumentFiles& files, ListedCut cut, const LibraryOptions& options, bool overwrite) {
    if (!files.wanted()) return;
    const documents::Profile profile = profile_of(files);
    documents::CutOptions choices;
    choices.frames = counts_frames(files, profile, cut.frames);
    choices.handles = std::atoi(options.value("pull_handle").c_str());
    if (!options.value("butt").empty()) choices.butt = std::atoi(options.value("butt").c_str());
    choices.reel = options.value("pgm_id");
    choices.by_table = cut.by_table;
    const documents::CutFilmPtr film =
        documents::cut_film(std::move(cut.strips), *cut.table, std::move(cut.findings), choices);
    write_document(files, documents::document_of(*film, profile), overwrite);
}

} // namespace tool
