#include "tool/open_edit.h"

#include "formats/otio_reader.h"
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

EditPtr open_edit(const EditInput& input, std::vector<std::string>& warnings) {
    check_readable(input.path);
    if (extension_of(input.path) != ".otio")
        throw JobError(input.path + ": not a kind of edit that is understood; .otio files are");
    formats::ReadOptions options;
    options.rate = input.rate;
    options.all_effects = input.all_effects;
    const formats::ReadResult result = formats::read_otio(input.path, options);
    warnings.insert(warnings.end(), result.warnings.begin(), result.warnings.end());
    if (!result.edit) throw JobError(one_line(result.error));
    return result.edit;
}

} // namespace tool
