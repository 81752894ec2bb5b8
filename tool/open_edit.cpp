#include "tool/open_edit.h"

#include "embedded/services.h"
#include "embedded/warning.h"
#include "formats/edl/edl_reader.h"
#include "formats/otio/otio_reader.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace tool {
namespace {

std::string extension_of(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

} // namespace

bool is_edit_list(const std::string& path) {
    const std::string extension = extension_of(path);
    if (extension == ".edl") return true;
    if (extension == ".otio") return false;
    std::string bytes, why;
    if (!embedded::read_file(path, &bytes, &why)) throw JobError(path + ": " + why);
    return formats::looks_like_edl(bytes);
}

namespace {

bool is_edit(const std::string& path) { return extension_of(path) == ".otio" || is_edit_list(path); }

/// What the user can do about it.
std::string advice_on(const formats::ReadResult& result, const EditInput& input) {
    const bool rate = !input.rate && result.rate_missing;
    return rate ? "; give it with --rate" : "";
}

void check_kinds(const EditInput& input) {
    for (const std::string& path : input.paths) {
        check_readable(path);
        if (!is_edit(path))
            throw JobError(path + ": not a kind of edit that is understood; .otio files and edit lists (.edl) are");
        if (input.paths.size() > 1 && !is_edit_list(path))
            throw JobError(path + ": several files make one edit only where each is an edit list (.edl)");
    }
}

} // namespace

EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings) {
    check_kinds(input);
    formats::ReadOptions options;
    options.rate = input.rate;
    options.all_effects = input.all_effects;
    options.reverse_from_first = input.reverse_from_first;
    const formats::ReadResult result = is_edit_list(input.paths.front())
                                           ? formats::read_edl(input.paths, options)
                                           : formats::read_otio(input.paths.front(), options);
    warnings.insert(warnings.end(), result.warnings.begin(), result.warnings.end());
    if (!result.edit) throw JobError(one_line(result.error) + advice_on(result, input));
    return result.edit;
}

} // namespace tool
