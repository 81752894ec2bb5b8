#pragma once
// Pictures that lie in folders, one file a frame, as sequences by their names.
//
//     A012/A012_0001.dpx      stem A012, number 1
//     A012/0001.dpx           no stem
//     A012/.A012_0001.dpx     hidden files aren't looked at

#include "embedded/warning.h"

#include <cstdint>
#include <string>
#include <vector>

namespace formats {

enum class ScanKind { dpx, exr };

struct ScanFile {
    std::uint64_t number;
    std::string name;
};

/// Files of one folder whose names differ in their numbers alone.
struct ScanFiles {
    std::string folder;
    std::string stem; ///< before the number and the sign that parts them; empty without such a sign
    ScanKind kind;
    std::vector<ScanFile> files; ///< by number, none twice

    std::string path(std::size_t index) const { return folder + "/" + files[index].name; }
    /// The number as its file has it.
    std::string digits(std::size_t index) const;
};

/// What lies in the folder and those below it, folder by folder in the order of their names. What can't be used goes to
/// `warnings`; `why` is empty unless the folder itself can't be read.
std::vector<ScanFiles> find_scans(const std::string& folder, embedded::Warnings& warnings, std::string& why);

/// Whether it ends as pictures do.
bool is_picture_name(const std::string& path);

} // namespace formats
