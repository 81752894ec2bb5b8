#include "tool/open_edit.h"

#include "embedded/edit_recipe.h"
#include "formats/edit_readers.h"
#include "tool/listed_edit.h"
#include "tool/log_match.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

namespace tool {
namespace {

using formats::EditReader;
using formats::FileKind;

/// What the user can do about it.
std::string advice_on(const formats::ReadResult& result, const EditInput& input) {
    if (result.sequence_missing) return "; name one with --sequence";
    return !input.rate && result.rate_missing ? "; give it with --rate" : "";
}

/// Of all files of the edit.
const EditReader& reader_of(const EditInput& input) {
    const EditReader* reader = nullptr;
    for (const std::string& path : input.paths) {
        const FileKind kind = kind_of(path);
        reader = formats::edit_reader_of(kind, path);
        if (!reader) refuse_kind(path, kind, formats::edits_wanted().c_str());
        if (input.paths.size() > 1 && !reader->many)
            throw JobError(path + ": several files make one edit only where each is an edit list (.edl)");
    }
    return *reader;
}

formats::ReadOptions options_of(const EditInput& input) {
    formats::ReadOptions options;
    options.rate = input.rate;
    options.all_effects = input.all_effects;
    options.reverse_from_first = input.reverse_from_first;
    options.sequence = input.sequence;
    return options;
}

formats::ReadResult read(const EditInput& input, const formats::ReadOptions& options) {
    formats::ReadResult result = formats::read_edit(reader_of(input), input.paths, options);
    if (!result.error.empty()) throw JobError(one_line(result.error) + advice_on(result, input));
    return result;
}

/// The sources of the edit and of its copy without rendered material, by their own names.
std::vector<embedded::SourceDescription> sources_of(const EditInput& input) {
    const formats::ReadResult result = read(input, options_of(input));
    if (!result.edit) return {};
    const auto& own = embedded::recipe_of(result.edit)->sources;
    std::vector<embedded::SourceDescription> sources(own.begin(), own.end());
    const ListedEdit listed(result.edit);
    if (listed.edit().get() != result.edit.get())
        for (const embedded::SourceDescription& source : embedded::recipe_of(listed.edit())->sources)
            sources.push_back(source);
    embedded::take_warnings_of_copy(); // told when it is made again
    return sources;
}

/// Readies the log for the edit, and the names that its sources take on.
void find_rows(const EditInput& input, embedded::Warnings& warnings) {
    name_by_aliases(input.matching);
    if (input.matching.asks_for_rows()) match_log(input.matching, sources_of(input), warnings);
}

} // namespace

bool is_edit_list(const std::string& path) {
    const EditReader* reader = formats::edit_reader_of(kind_of(path), path);
    return reader && reader->kind == FileKind::edl;
}

EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings) {
    find_rows(input, warnings);
    const formats::ReadResult result = read(input, options_of(input));
    warnings.insert(warnings.end(), result.warnings.begin(), result.warnings.end());
    if (!result.edit) throw JobError(one_line(input.paths.front()) + ": holds no edit");
    return result.edit;
}

std::vector<formats::Sequence> sequences_of(const EditInput& input) {
    formats::ReadOptions options = options_of(input);
    options.list_only = true;
    return read(input, options).sequences;
}

} // namespace tool
