#include "formats/bundle/folder_bundle.h"

#include <filesystem>

namespace formats {
namespace {

namespace fs = std::filesystem;

constexpr const char* edits_in_folders[] = {"Info.fcpxml", "content.otio"};

} // namespace

std::string file_of_bundle(const std::string& path) {
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) return path;
    for (const char* name : edits_in_folders)
        if (const fs::path inside = fs::path(path) / name; fs::exists(inside, ignored)) return inside.string();
    return path;
}

} // namespace formats
