#pragma once
// A file that replaces another whole or not at all.

#include "embedded/file_calls.h"

#include <cstddef>
#include <memory>
#include <string>

namespace embedded {

/// An output file in the making. What is written goes to a file beside the target, which takes the target's
/// place when `commit` finds that everything was written; otherwise the target stays as it was. A target
/// that is no ordinary file, such as a device, is written straight. While a `Transaction` is under way, all this
/// happens in its folder.
class ReplacementFile {
public:
    explicit ReplacementFile(const std::string& path);
    /// Gives up what wasn't committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    /// False when the file can't be made, or once a write failed.
    bool good() const { return why_.empty(); }
    void write(const void* data, std::size_t count);
    /// The same for one byte; pages come so.
    void put(char byte) {
        if (used_ == room_) return put_behind(byte);
        buffer_[used_++] = byte;
    }
    /// Puts the file in its place; false if anything failed since it was opened.
    bool commit();
    /// The reason in words once something failed.
    const std::string& why() const { return why_; }

private:
    static constexpr std::size_t buffer_size = 64 * 1024;

    void fail(int error);
    void open_beside(unsigned mode);
    void keep_mode();
    void make_room();
    void put_behind(char byte);
    void flush();
    void send(const char* data, std::size_t count);
    int sync_file();
    void forget_beside();
    void abandon();

    std::string target_;
    std::string beside_;             ///< empty when the target is written straight
    std::unique_ptr<char[]> buffer_; ///< made for the first byte; what comes behind a failure is kept from the file
    std::size_t room_ = 0;
    std::size_t used_ = 0;
    Descriptor file_;
    std::string why_; ///< empty as long as nothing failed
    int noted_ = -1;  ///< the number of `beside_` among the private files
};

/// Keeps the name of a file that couldn't be written, and the reason, for `take_write_failure`. The first counts.
void note_write_failure(const std::string& path, const std::string& why);
/// The same of a table that couldn't be read, for `take_read_failure`. The last counts.
void note_read_failure(const std::string& path, const std::string& why);

} // namespace embedded
