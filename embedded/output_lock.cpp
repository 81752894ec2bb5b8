#include "embedded/output_lock.h"

#include "embedded/crc32.h"
#include "embedded/private_folder.h"
#include "host/settings.h"

#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace embedded {
namespace {

constexpr std::string_view lock_prefix = ".quillbrook-lock-";
constexpr int naps_a_second = 100;

std::string lock_path(const std::string& folder, const std::string& name) {
    char sum[9];
    std::snprintf(sum, sizeof sum, "%08x", static_cast<unsigned>(crc32(name)));
    return folder + '/' + std::string(lock_prefix) + sum;
}

/// The file that is locked is still the one of that name.
bool is_still_there(const Descriptor& file, const std::string& path) {
    struct stat held = {}, named = {};
    return ::fstat(file.number(), &held) == 0 && ::lstat(path.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
           held.st_dev == named.st_dev;
}

std::string holder_of(const std::string& path) {
    char text[24] = {};
    const Descriptor file = open_file(path, O_RDONLY | O_NOFOLLOW);
    const ssize_t got = file.is_open() ? ::read(file.number(), text, sizeof text - 1) : 0;
    return got > 0 ? " (process " + std::string(text, std::strcspn(text, "\n")) + ')' : "";
}

void nap() { ::usleep(1000000 / naps_a_second); }

} // namespace

OutputLock::OutputLock(OutputLock&& other) noexcept
    : path_(std::move(other.path_)), file_(std::move(other.file_)), slot_(std::exchange(other.slot_, -1)) {}

OutputLock::~OutputLock() {
    if (!file_.is_open()) return;
    ::unlink(path_.c_str());
    forget_private_file(slot_);
}

int OutputLock::try_once() {
    file_ = open_file(path_, O_RDWR | O_CREAT | O_NOFOLLOW, 0600);
    if (!file_.is_open()) return errno;
    if (retried([&] { return ::flock(file_.number(), LOCK_EX | LOCK_NB); }) != 0) return errno;
    return is_still_there(file_, path_) ? 0 : EWOULDBLOCK;
}

std::string OutputLock::hold(const std::string& folder, const std::string& name) {
    path_ = lock_path(folder, name);
    const int naps = config_int("wait_for_outputs", 10, 0, 86400) * naps_a_second;
    int error = try_once();
    for (int nap_number = 0; error == EWOULDBLOCK && nap_number < naps; ++nap_number) {
        nap();
        error = try_once();
    }
    if (error != 0) file_.close();
    if (error == EWOULDBLOCK) return "another run is writing it" + holder_of(path_);
    if (error != 0) return std::strerror(error);
    slot_ = note_private_file(path_);
    const std::string pid = std::to_string(::getpid()) + '\n';
    (void)!::ftruncate(file_.number(), 0);
    (void)write_all(file_.number(), pid.data(), pid.size());
    return "";
}

void sweep_output_locks(const std::string& folder) {
    std::vector<std::string> paths;
    if (DIR* entries = ::opendir(folder.c_str())) {
        while (const dirent* entry = ::readdir(entries))
            if (std::strncmp(entry->d_name, lock_prefix.data(), lock_prefix.size()) == 0)
                paths.push_back(folder + '/' + entry->d_name);
        ::closedir(entries);
    }
    for (const std::string& path : paths) {
        const Descriptor file = open_file(path, O_RDWR | O_NOFOLLOW);
        struct stat status = {};
        const bool ours = file.is_open() && ::fstat(file.number(), &status) == 0 && status.st_uid == ::geteuid() &&
                          S_ISREG(status.st_mode);
        if (ours && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 && is_still_there(file, path))
            ::unlink(path.c_str());
    }
}

} // namespace embedded
