#include "embedded/replacement_file.h"

#include "embedded/limits.h"
#include "embedded/services.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded {
namespace {

// A link stays a link: the file that it leads to is the one replaced.
std::string resolved(const std::string& path) {
    char* real = ::realpath(path.c_str(), nullptr);
    if (!real) return path;
    std::string result(real);
    std::free(real);
    return result;
}

std::string directory_part(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// Short, so that it fits wherever the target's own name does.
std::string name_beside(const std::string& target) {
    static std::atomic<unsigned> counter{0};
    return directory_part(target) + ".quillbrook-" + std::to_string(::getpid()) + "-" +
           std::to_string(counter.fetch_add(1)) + ".tmp";
}

struct WriteFailure {
    bool failed = false;
    std::string path;
};

// Never destroyed, as a file may close while the process ends.
WriteFailure& write_failure() {
    static auto& failure = *new WriteFailure;
    return failure;
}

} // namespace

ReplacementFile::ReplacementFile(const std::string& path) : target_(resolved(path)) {
    struct stat status = {};
    const bool stands = ::stat(target_.c_str(), &status) == 0;
    if (path.empty()) {
        error_ = ENOENT;
    } else if (stands && S_ISDIR(status.st_mode)) {
        error_ = EISDIR;
    } else if (stands && !S_ISREG(status.st_mode)) {
        descriptor_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) error_ = errno;
    } else {
        open_beside();
        if (stands && good()) (void)::fchmod(descriptor_, status.st_mode & 07777U);
    }
}

ReplacementFile::~ReplacementFile() { abandon(); }

void ReplacementFile::open_beside() {
    do {
        beside_ = name_beside(target_);
        descriptor_ = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (descriptor_ < 0 && errno == EEXIST);
    if (descriptor_ < 0) {
        error_ = errno;
        beside_.clear();
    }
}

void ReplacementFile::write(const void* data, std::size_t count) {
    if (!good() || count == 0) return;
    if (count >= buffer_size) {
        flush();
        send(static_cast<const char*>(data), count);
        return;
    }
    if (pending_.size() + count > buffer_size) flush();
    const char* bytes = static_cast<const char*>(data);
    pending_.insert(pending_.end(), bytes, bytes + count);
}

void ReplacementFile::flush() {
    send(pending_.data(), pending_.size());
    pending_.clear();
}

void ReplacementFile::send(const char* data, std::size_t count) {
    while (good() && count > 0) {
        const ssize_t sent = ::write(descriptor_, data, count);
        if (sent < 0) {
            if (errno != EINTR) error_ = errno;
            continue;
        }
        data += sent;
        count -= static_cast<std::size_t>(sent);
    }
}

void ReplacementFile::close_file() {
    if (descriptor_ < 0) return;
    if (::close(descriptor_) != 0 && good()) error_ = errno;
    descriptor_ = -1;
}

bool ReplacementFile::commit() {
    flush();
    close_file();
    if (good() && !beside_.empty()) {
        if (std::rename(beside_.c_str(), target_.c_str()) != 0) {
            error_ = errno;
        } else {
            beside_.clear();
        }
    }
    abandon();
    return good();
}

void ReplacementFile::abandon() {
    close_file();
    if (!beside_.empty()) ::unlink(beside_.c_str());
    beside_.clear();
}

std::string ReplacementFile::why() const { return good() ? std::string() : std::strerror(error_); }

void note_write_failure(const std::string& path) {
    WriteFailure& failure = write_failure();
    if (!failure.failed) failure.path = path;
    failure.failed = true;
}

bool take_write_failure(std::string* name) {
    WriteFailure& failure = write_failure();
    const bool failed = failure.failed;
    if (failed && name) *name = failure.path;
    failure = {};
    return failed;
}

bool write_file_whole(const std::string& path, const std::string& bytes, std::string* why) {
    ReplacementFile file(path);
    file.write(bytes.data(), bytes.size());
    if (file.commit()) return true;
    note_write_failure(path);
    if (why) *why = file.why();
    return false;
}

bool read_file(const std::string& path, std::string* bytes, std::string* why) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    int error = descriptor < 0 ? errno : 0;
    std::string too_large;
    bytes->clear();
    constexpr std::size_t block_size = 64 * 1024;
    std::vector<char> block(descriptor < 0 ? 0 : block_size);
    while (error == 0 && too_large.empty()) {
        const ssize_t got = ::read(descriptor, block.data(), block.size());
        if (got == 0) break;
        if (got > 0) bytes->append(block.data(), static_cast<std::size_t>(got));
        too_large = fault_of_size(bytes->size());
        if (got < 0 && errno != EINTR) error = errno;
    }
    if (descriptor >= 0) ::close(descriptor);
    if (error == 0 && too_large.empty()) return true;
    *bytes = std::string();
    if (why) *why = error == 0 ? too_large : std::strerror(error);
    return false;
}

} // namespace embedded
