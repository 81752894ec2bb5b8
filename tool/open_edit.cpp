#include "tool/open_edit.h"

#include "formats/edit_readers.h"
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

} // namespace

bool is_edit_list(const std::string& path) {
    const EditReader* reader = formats::edit_reader_of(kind_of(path), path);
    return reader && reader->kind == FileKind::edl;
}

EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings) {
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
