#include "embedded/file_calls.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace embedded {
namespace {

constexpr std::size_t block_size = 64 * 1024;
constexpr unsigned private_mode = 0600;

/// On the stack: files are put in place without asking for memory.
using Block = std::array<char, block_size>;

bool cannot_be_synced(int error) { return error == EINVAL || error == EROFS || error == ENOTSUP; }

/// As many bytes as there are up to a block; -1 where they can't be read.
ssize_t read_block(int from, Block& block) {
    std::size_t read = 0;
    while (read < block.size()) {
        const ssize_t got = retried([&] { return ::read(from, block.data() + read, block.size() - read); });
        if (got < 0) return -1;
        if (got == 0) break;
        read += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(read);
}

} // namespace

int Descriptor::release() { return std::exchange(number_, -1); }

// A descriptor is closed whatever `close` says, so it isn't closed again.
int Descriptor::close() {
    const int number = release();
    return number >= 0 && ::close(number) != 0 && errno != EINTR ? errno : 0;
}

Descriptor open_file(const std::string& path, int flags, unsigned mode) {
    Descriptor file(retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); }));
    // What is ours alone is read again, whatever the umask says.
    if (file.is_open() && (flags & O_CREAT) != 0 && mode == private_mode) (void)::fchmod(file.number(), mode);
    return file;
}

int write_all(int to, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t sent = retried([&] { return ::write(to, bytes, count); });
        if (sent < 0) return errno;
        bytes += sent;
        count -= static_cast<std::size_t>(sent);
    }
    return 0;
}

int copy_all(int from, int to) {
    Block block;
    for (;;) {
        const ssize_t got = retried([&] { return ::read(from, block.data(), block.size()); });
        if (got == 0) return 0;
        if (got < 0) return errno;
        if (const int error = write_all(to, block.data(), static_cast<std::size_t>(got))) return error;
    }
}

int pour(const std::string& from, const std::string& into) {
    const Descriptor source = open_file(from, O_RDONLY);
    if (!source.is_open()) return errno;
    Descriptor target = open_file(into, O_WRONLY | O_NOCTTY);
    if (!target.is_open()) return errno;
    if (const int error = copy_all(source.number(), target.number())) return error;
    struct stat status = {};
    if (::fstat(target.number(), &status) != 0) return errno;
    if (S_ISREG(status.st_mode)) {
        const off_t end = ::lseek(target.number(), 0, SEEK_CUR);
        if (retried([&] { return ::ftruncate(target.number(), end); }) != 0) return errno;
    }
    if (retried([&] { return ::fsync(target.number()); }) != 0 && !cannot_be_synced(errno)) return errno;
    return target.close();
}

int sync_path(const std::string& path) {
    const Descriptor file = open_file(path, O_RDONLY);
    if (!file.is_open()) return errno == EACCES ? 0 : errno;
    return retried([&] { return ::fsync(file.number()); }) != 0 && !cannot_be_synced(errno) ? errno : 0;
}

int rename_file(const std::string& from, const std::string& to) {
    return retried([&] { return ::rename(from.c_str(), to.c_str()); }) != 0 ? errno : 0;
}

int remove_file(const std::string& path) {
    return retried([&] { return ::unlink(path.c_str()); }) != 0 && errno != ENOENT ? errno : 0;
}

bool stands(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0;
}

bool hold_same_bytes(const std::string& a, const std::string& b) {
    const Descriptor one = open_file(a, O_RDONLY), other = open_file(b, O_RDONLY);
    Block here, there;
    for (;;) {
        const ssize_t got = read_block(one.number(), here);
        if (got < 0 || got != read_block(other.number(), there)) return false;
        if (got == 0) return true;
        if (std::memcmp(here.data(), there.data(), static_cast<std::size_t>(got)) != 0) return false;
    }
}

std::string folder_of_path(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string name_of_path(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string random_name() {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz234567";
    std::array<unsigned char, 12> bytes{};
    (void)retried([&] { return ::getrandom(bytes.data(), bytes.size(), 0); });
    std::string name;
    for (const unsigned char byte : bytes)
        name += letters[byte % letters.size()];
    return name;
}

} // namespace embedded
