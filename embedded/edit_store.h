#pragma once
// The edits that can be opened by cookie, and the one that is being listed.

#include "host/edit.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace embedded {

/// All threads share it. An edit itself belongs to one thread at a time.
class EditStore {
public:
    static EditStore& get();

    /// A number that tells a stored edit from all others.
    std::uint32_t next_serial() { return ++last_serial_; }

    /// An edit can be opened by its cookie as long as it lives.
    void add(Edit* edit);
    void remove(Edit* edit);
    /// The stored edit of a cookie, or the first one of its text where the cookie was made of a text; empty
    /// when there is none.
    EditPtr open(const Cookie& cookie);
    /// The same without opening it and whether it can be opened or not; null where it isn't open.
    Edit* find_open(const Cookie& cookie);

    /// The edit that is being listed: of those that still live, the one that this thread made so last, or any thread
    /// where this one has none; null if there is none.
    Edit* current() const;
    void make_current(Edit* edit);

    using Reader = std::function<EditPtr(const std::string& path)>;
    /// Keeps a file as a stored edit that `reader` opens; the opened edit takes on this cookie and name.
    void add_file(const Cookie& cookie, const std::string& path, const std::string& name, Reader reader);
    /// Removes the file of a stored edit with its backups and forgets it. Edits without a file are left alone.
    void delete_file(const Cookie& cookie);

private:
    struct File {
        std::string path;
        std::string name;
        Reader reader;
    };
    struct Stored {
        Edit* edit = nullptr;
        std::unique_ptr<const File> file; ///< null for most
    };

    Stored* find(Cookie& cookie);
    void forget(const Cookie& cookie);
    EditPtr read(const File& file, const Cookie& cookie);

    struct Listed {
        Edit* edit;
        std::thread::id by;
    };

    std::atomic<std::uint32_t> last_serial_{0};
    mutable std::recursive_mutex mutex_; ///< of all below; the reader of a file opens further edits
    std::unordered_map<std::uint32_t, Stored> by_serial_;
    std::unordered_map<std::uint32_t, std::set<std::uint32_t>> serials_of_text_;
    std::vector<Listed> listed_;
};

} // namespace embedded
