#include "embedded/replacement_file.h"

#include "embedded/held_input.h"
#include "embedded/limits.h"
#include "embedded/output_path.h"
#include "embedded/private_folder.h"
#include "embedded/services.h"
#include "embedded/transaction.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded {
namespace {

/// Short, so that it fits wherever the target's own name does. Only its own run knows it.
std::string name_beside(const std::string& target) {
    return folder_of_path(target) + "/.quillbrook-" + random_name() + ".tmp";
}

struct FileTrouble {
    bool failed = false;
    std::string path;
    std::string why;
};

// Never destroyed, as a file may close while the process ends.
FileTrouble& write_failure() {
    static auto& failure = *new FileTrouble;
    return failure;
}

FileTrouble& read_failure() {
    static auto& failure = *new FileTrouble;
    return failure;
}

bool take(FileTrouble& failure, std::string* name, std::string* why) {
    const bool failed = failure.failed;
    if (failed && name) *name = failure.path;
    if (failed && why) *why = failure.why;
    failure = {};
    return failed;
}

} // namespace

ReplacementFile::ReplacementFile(const std::string& path) {
    if (Transaction* run = Transaction::current()) {
        target_ = run->stage(path, &why_);
        if (good()) open_beside(0600);
        return;
    }
    const OutputPath at(path);
    why_ = at.refusal;
    target_ = at.full();
    if (!good()) return;
    if (at.is_device) {
        file_ = open_file(target_, O_WRONLY | O_NOCTTY);
        if (!file_.is_open()) fail(errno);
    } else {
        open_beside(0666);
        keep_mode();
    }
}

ReplacementFile::~ReplacementFile() { abandon(); }

void ReplacementFile::fail(int error) {
    if (good() && error != 0) why_ = std::strerror(error);
}

void ReplacementFile::open_beside(unsigned mode) {
    beside_ = name_beside(target_);
    file_ = open_file(beside_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (file_.is_open()) {
        noted_ = note_private_file(beside_);
        return;
    }
    fail(errno);
    beside_.clear();
}

void ReplacementFile::keep_mode() {
    struct stat status = {};
    if (good() && ::stat(target_.c_str(), &status) == 0) (void)::fchmod(file_.number(), status.st_mode & 07777U);
}

void ReplacementFile::write(const void* data, std::size_t count) {
    if (!good() || count == 0) return;
    if (count >= buffer_size) {
        flush();
        send(static_cast<const char*>(data), count);
        return;
    }
    if (room_ - used_ < count) make_room();
    std::memcpy(buffer_.get() + used_, data, count);
    used_ += count;
}

void ReplacementFile::make_room() {
    flush();
    if (room_ != 0) return;
    buffer_.reset(new char[buffer_size]);
    room_ = buffer_size;
}

// Apart from `put`, which is called for every byte of a page and has nothing to save for this.
void ReplacementFile::put_behind(char byte) {
    make_room();
    buffer_[used_++] = byte;
}

void ReplacementFile::flush() {
    send(buffer_.get(), used_);
    used_ = 0;
}

void ReplacementFile::send(const char* data, std::size_t count) {
    if (good()) fail(write_all(file_.number(), data, count));
}

bool ReplacementFile::commit() {
    flush();
    if (good() && !beside_.empty() && !Transaction::current()) fail(sync_file());
    fail(file_.close());
    if (good() && !beside_.empty()) {
        fail(rename_file(beside_, target_));
        if (good()) forget_beside();
    }
    abandon();
    return good();
}

int ReplacementFile::sync_file() {
    return retried([this] { return ::fsync(file_.number()); }) != 0 && errno != EINVAL ? errno : 0;
}

void ReplacementFile::forget_beside() {
    beside_.clear();
    forget_private_file(noted_);
    noted_ = -1;
}

void ReplacementFile::abandon() {
    (void)file_.close();
    if (!beside_.empty()) (void)remove_file(beside_);
    forget_beside();
}

void note_write_failure(const std::string& path, const std::string& why) {
    if (!write_failure().failed) write_failure() = {true, path, why};
}

bool take_write_failure(std::string* name, std::string* why) { return take(write_failure(), name, why); }

void note_read_failure(const std::string& path, const std::string& why) { read_failure() = {true, path, why}; }

bool take_read_failure(std::string* name, std::string* why) { return take(read_failure(), name, why); }

bool write_file_whole(const std::string& path, const std::string& bytes, std::string* why) {
    ReplacementFile file(path);
    file.write(bytes.data(), bytes.size());
    if (file.commit()) return true;
    note_write_failure(path, file.why());
    if (why) *why = file.why();
    return false;
}

namespace {

/// What a file holds as long as it doesn't grow; never more than is read of any.
std::size_t expected_size(int file) {
    struct stat status = {};
    const bool plain = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
    const std::size_t size = plain ? static_cast<std::size_t>(status.st_size) : 0;
    return fault_of_size(size).empty() ? size : 0;
}

} // namespace

bool read_file(const std::string& path, std::string* bytes, std::string* why) {
    if (const std::string* held = held_input(path)) {
        *bytes = *held;
        return true;
    }
    bytes->clear();
    Transaction* run = Transaction::current();
    const std::string seen = run ? run->seen(path) : path;
    // What the run made itself may be as large as its job made it.
    const bool is_own = seen != path || is_work_directory(OutputPath(path).folder);
    const Descriptor file = open_input(seen);
    int error = file.is_open() ? 0 : errno;
    std::string too_large;
    constexpr std::size_t block_size = 64 * 1024;
    const std::unique_ptr<char[]> block(new char[block_size]);
    const bool stream = file.is_open() && is_stream(file.number());
    if (file.is_open() && !stream) bytes->reserve(expected_size(file.number()));
    while (error == 0 && too_large.empty()) {
        const ssize_t got = retried([&] { return ::read(file.number(), block.get(), block_size); });
        if (got == 0) {
            if (stream || path == standard_input) hold_input(path, *bytes);
            return true;
        }
        if (got > 0) bytes->append(block.get(), static_cast<std::size_t>(got));
        if (got < 0) error = errno;
        if (!is_own) too_large = fault_of_size(bytes->size());
    }
    *bytes = std::string();
    if (why) *why = error == 0 ? too_large : std::strerror(error);
    return false;
}

} // namespace embedded
