#pragma once
// Calls of the system on files, as the embedded host makes them: retried when a signal interrupts them, continued
// when they did a part.

#include <cerrno>
#include <cstddef>
#include <string>

namespace embedded {

/// Makes a call again as long as a signal interrupts it.
template <class Call> auto retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open file that closes with this object; -1 where none is open.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        close();
        number_ = other.release();
        return *this;
    }

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }
    int release();
    /// 0 or the error.
    int close();

private:
    int number_;
};

/// A file that is made with mode 0600 has that mode whatever the umask.
Descriptor open_file(const std::string& path, int flags, unsigned mode = 0);

// Each gives 0 or the error.
int write_all(int to, const char* bytes, std::size_t count);
int copy_all(int from, int to);
/// Copies the bytes of one file into another from its start, cuts it there, and syncs it.
int pour(const std::string& from, const std::string& into);
/// A file or a folder. What can't be synced, as a pipe, counts as synced.
int sync_path(const std::string& path);
int rename_file(const std::string& from, const std::string& to);
/// A file that isn't there counts as removed.
int remove_file(const std::string& path);

bool stands(const std::string& path);
/// False too where one of them can't be read.
bool hold_same_bytes(const std::string& a, const std::string& b);
/// The folder that holds a path, without a slash at its end but for the root's; "." for a bare name.
std::string folder_of_path(const std::string& path);
std::string name_of_path(const std::string& path);
/// Twelve letters and digits that can't be foreseen.
std::string random_name();

} // namespace embedded
