#include "embedded/private_folder.h"

#include <array>
#include <climits>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace embedded {
namespace {

constexpr const char* lock_name = "lock";
constexpr int most_attempts = 100;
constexpr int most_naps = 500;
constexpr unsigned nap_length = 10000; // microseconds

/// Paths that a handler of signals can read at any moment.
struct Noted {
    volatile std::sig_atomic_t used = 0;
    bool is_folder = false;
    char path[PATH_MAX] = {};
};

std::array<Noted, 64> noted;

int note(const std::string& path, bool is_folder) {
    for (std::size_t i = 0; i < noted.size(); ++i) {
        if (noted[i].used || path.size() >= sizeof noted[i].path) continue;
        std::memcpy(noted[i].path, path.c_str(), path.size() + 1);
        noted[i].is_folder = is_folder;
        noted[i].used = 1;
        return static_cast<int>(i);
    }
    return -1;
}

/// An entry as the system gives it; the name follows. `readdir` isn't safe in a handler of signals.
struct RawEntry {
    unsigned long long number;
    long long offset;
    unsigned short length;
    unsigned char type;
};
constexpr std::size_t name_at = 19;

bool is_self_or_parent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

/// False where a file stays.
bool remove_listed(int folder, const char* block, long size) noexcept {
    bool all = true;
    for (long at = 0; at < size;) {
        unsigned short length = 0;
        std::memcpy(&length, block + at + offsetof(RawEntry, length), sizeof length);
        const char* name = block + at + name_at;
        const bool is_file = !is_self_or_parent(name) && std::strcmp(name, lock_name) != 0;
        if (is_file && retried([&] { return ::unlinkat(folder, name, 0); }) != 0) all = false;
        at += length;
    }
    return all;
}

// The lock goes last, and stays with what can't be removed: by it the next run knows a dead run's folder.
void remove_files_of(int folder) noexcept {
    alignas(RawEntry) char block[4096];
    bool all = true;
    for (;;) {
        const auto got = ::getdents64(folder, reinterpret_cast<dirent*>(block), sizeof block);
        if (got <= 0) break;
        all = remove_listed(folder, block, got) && all;
    }
    if (all) (void)retried([&] { return ::unlinkat(folder, lock_name, 0); });
}

void remove_folder(const char* path) noexcept {
    const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) return;
    remove_files_of(folder);
    ::close(folder);
    ::rmdir(path);
}

bool is_ours(const Descriptor& folder) {
    struct stat status = {};
    return folder.is_open() && ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid() &&
           (status.st_mode & 07777U) == 0700U;
}

/// A run that puts its files in place is done within moments.
bool take_lock(const Descriptor& lock, const std::string& path, const FolderCare* care) {
    for (int nap = 0; nap < most_naps; ++nap) {
        if (::flock(lock.number(), LOCK_EX | LOCK_NB) == 0) return true;
        if (!care || !care->is_awaited(path)) return false;
        ::usleep(nap_length);
    }
    return false;
}

void sweep_folder(const std::string& path, const FolderCare* care) {
    const Descriptor folder = open_file(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!is_ours(folder)) return;
    const Descriptor lock(::openat(folder.number(), lock_name, O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (!lock.is_open()) {
        // Its run died before it could lock it; one that lives makes another.
        if (errno == ENOENT) ::rmdir(path.c_str());
        return;
    }
    if (!take_lock(lock, path, care)) return;
    if (!care || care->finish(path)) remove_folder(path.c_str());
}

} // namespace

PrivateFolder::PrivateFolder(const std::string& parent, std::string_view prefix) : made_by_(::getpid()) {
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        path_ = parent + '/' + std::string(prefix) + random_name();
        if (make_once()) return;
        if (error_ != EEXIST && error_ != EINTR) break;
    }
    path_.clear();
}

// A sweep by another run may take the folder before it is locked; that counts as a name that was taken.
bool PrivateFolder::make_once() {
    const std::string lock_path = path_ + '/' + lock_name; // made ahead: memory may end
    slot_ = note(path_, true);
    error_ = ::mkdir(path_.c_str(), 0700) != 0 ? errno : 0;
    if (error_ != 0) {
        forget_private_file(slot_);
        return false;
    }
    (void)::chmod(path_.c_str(), 0700);
    Descriptor lock = open_file(lock_path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    struct stat status = {};
    const bool locked = lock.is_open() && ::flock(lock.number(), LOCK_EX | LOCK_NB) == 0 &&
                        ::fstat(lock.number(), &status) == 0 && status.st_nlink > 0;
    if (locked) {
        lock_ = std::move(lock);
        return true;
    }
    error_ = lock.is_open() || errno == ENOENT ? EEXIST : errno;
    remove_folder(path_.c_str());
    forget_private_file(slot_);
    return false;
}

PrivateFolder::~PrivateFolder() {
    if (path_.empty() || made_by_ != ::getpid()) return;
    remove_folder(path_.c_str());
    forget_private_file(slot_);
}

void PrivateFolder::leave() {
    path_.clear();
    forget_private_file(slot_);
}

void sweep_private_folders(const std::string& parent, std::string_view prefix, const FolderCare* care) {
    const std::size_t length = prefix.size() + random_name().size();
    std::vector<std::string> names;
    if (DIR* folder = ::opendir(parent.c_str())) {
        while (const dirent* entry = ::readdir(folder))
            if (std::strlen(entry->d_name) == length &&
                std::string_view(entry->d_name).substr(0, prefix.size()) == prefix)
                names.emplace_back(entry->d_name);
        ::closedir(folder);
    }
    for (const std::string& name : names)
        sweep_folder(parent + '/' + name, care);
}

int note_private_file(const std::string& path) { return note(path, false); }

void forget_private_file(int number) {
    if (number >= 0) noted[static_cast<std::size_t>(number)].used = 0;
}

void remove_private_files() noexcept {
    for (Noted& each : noted) {
        if (!each.used) continue;
        if (each.is_folder)
            remove_folder(each.path);
        else
            ::unlink(each.path);
    }
}

} // namespace embedded
