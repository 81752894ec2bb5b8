#pragma once
// Folders that a run keeps to itself, and what dead runs left of theirs.

#include "embedded/file_calls.h"

#include <string>
#include <string_view>

#include <sys/types.h>

namespace embedded {

/// A folder of mode 0700 with a name that nobody foresees. It holds a file "lock", locked as long as the run lives,
/// and goes with all files in it when this object goes, or when `remove_private_files` is called.
class PrivateFolder {
public:
    /// Makes PREFIX and twelve letters in `parent`.
    PrivateFolder(const std::string& parent, std::string_view prefix);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    /// 0, or why there is no folder.
    int error() const { return error_; }
    const std::string& path() const { return path_; }
    /// Leaves the folder to the next run.
    void leave();

private:
    bool make_once();

    std::string path_;
    Descriptor lock_;
    int error_ = 0;
    int slot_ = -1;
    pid_t made_by_ = 0;
};

/// What has to be done with a private folder before it is removed.
struct FolderCare {
    bool (*is_awaited)(const std::string& folder); ///< its run, while it lives, has to be waited for
    bool (*finish)(const std::string& folder);     ///< false: the folder has to stay
};

/// Removes from `parent` the private folders of that prefix whose runs are dead. Folders of other users, and those
/// that have no lock, aren't touched.
void sweep_private_folders(const std::string& parent, std::string_view prefix, const FolderCare* care = nullptr);

/// A file that goes when the run is ended by a signal. The number is that for `forget_private_file`, or -1.
int note_private_file(const std::string& path);
void forget_private_file(int number);
/// Removes all private folders and files of this process. For handlers of signals.
void remove_private_files() noexcept;

} // namespace embedded
