#include "tool/open_edit.h"

#include "embedded/warning.h"
#include "formats/edl/edl_reader.h"
#include "formats/otio/otio_reader.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace tool {
namespace {

using formats::FileKind;

std::string extension_of(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

enum class Reader { otio, edl, none };

/// By what the file holds; by its name where that tells nothing, so that the reader tells what is wrong.
Reader reader_of(const std::string& path, FileKind kind) {
    if (kind == FileKind::otio || kind == FileKind::json) return Reader::otio;
    if (kind == FileKind::edl) return Reader::edl;
    if (kind != FileKind::text && kind != FileKind::wide_text && kind != FileKind::binary) return Reader::none;
    const std::string extension = extension_of(path);
    return extension == ".otio" ? Reader::otio : extension == ".edl" ? Reader::edl : Reader::none;
}

} // namespace

bool is_edit_list(const std::string& path) { return reader_of(path, kind_of(path)) == Reader::edl; }

namespace {

/// What the user can do about it.
std::string advice_on(const formats::ReadResult& result, const EditInput& input) {
    const bool rate = !input.rate && result.rate_missing;
    return rate ? "; give it with --rate" : "";
}

/// Of all files of the edit.
Reader reader_of(const EditInput& input) {
    Reader reader = Reader::none;
    for (const std::string& path : input.paths) {
        const FileKind kind = kind_of(path);
        reader = reader_of(path, kind);
        if (reader == Reader::none) refuse_kind(path, kind, "an .otio file or an edit list (.edl)");
        if (input.paths.size() > 1 && reader != Reader::edl)
            throw JobError(path + ": several files make one edit only where each is an edit list (.edl)");
    }
    return reader;
}

} // namespace

EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings) {
    formats::ReadOptions options;
    options.rate = input.rate;
    options.all_effects = input.all_effects;
    options.reverse_from_first = input.reverse_from_first;
    const formats::ReadResult result = reader_of(input) == Reader::edl
                                           ? formats::read_edl(input.paths, options)
                                           : formats::read_otio(input.paths.front(), options);
    warnings.insert(warnings.end(), result.warnings.begin(), result.warnings.end());
    if (!result.edit) throw JobError(one_line(result.error) + advice_on(result, input));
    return result.edit;
}

} // namespace tool
