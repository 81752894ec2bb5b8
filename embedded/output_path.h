#pragma once
// Where an output really goes.

#include <string>

namespace embedded {

/// The file that a path leads to, links followed as `cp` would, but none that lies where anyone may write.
struct OutputPath {
    explicit OutputPath(const std::string& path);

    std::string full() const { return is_device ? name : (folder == "/" ? "" : folder) + '/' + name; }

    std::string folder;     ///< in full and without links; empty of a device
    std::string name;       ///< in that folder; of a device its path as given
    bool is_device = false; ///< a device or a pipe, which is written as it stands
    std::string refusal;    ///< why nothing can be written there; empty where it can

private:
    bool follow(std::string path);
};

} // namespace embedded
