#pragma once
// A file that replaces another whole or not at all.

#include <cstddef>
#include <string>
#include <vector>

namespace embedded {

/// An output file in the making. What is written goes to a file beside the target, which takes the target's
/// place when `commit` finds that everything was written; otherwise the target stays as it was. A target
/// that is no ordinary file, such as a device, is written straight.
class ReplacementFile {
public:
    explicit ReplacementFile(const std::string& path);
    /// Gives up what wasn't committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    /// False when the file can't be made, or once a write failed.
    bool good() const { return error_ == 0; }
    void write(const void* data, std::size_t count);
    /// The same for one byte; pages come so.
    void put(char byte) {
        if (pending_.size() == buffer_size) flush();
        if (good()) pending_.push_back(byte);
    }
    /// Puts the file in its place; false if anything failed since it was opened.
    bool commit();
    /// The reason in words once something failed.
    std::string why() const;

private:
    static constexpr std::size_t buffer_size = 64 * 1024;

    void open_beside();
    void flush();
    void send(const char* data, std::size_t count);
    void close_file();
    void abandon();

    std::string target_;
    std::string beside_; ///< empty when the target is written straight
    std::vector<char> pending_;
    int descriptor_ = -1;
    int error_ = 0;
};

/// Keeps the name of a file that couldn't be written, for `take_write_failure`.
void note_write_failure(const std::string& path);

} // namespace embedded
