#include "embedded/replacement_file.h"
#include "embedded/services.h"
#include "embedded/transaction.h"
#include "host/counted.h"
#include "host/text.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <string>

namespace embedded {
namespace {

class StandardMemory : public memory_service {
public:
    void* allocate(std::size_t size) override {
        void* block = std::malloc(std::max<std::size_t>(size, 1));
        if (!block) throw std::bad_alloc();
        return block;
    }
    void free(void* block) override { std::free(block); }
};

/// A report on its way to its place: it gets there when the last holder lets it go.
class ReplacementStream : public stream {
public:
    explicit ReplacementStream(const std::string& path) : path_(path), file_(path) {}
    // While an exception passes, what was written is the beginning of a file.
    ~ReplacementStream() override {
        if (std::uncaught_exceptions() > exceptions_before_) return;
        if (!file_.commit()) note_write_failure(path_, file_.why());
    }
    void write(const void* data, unsigned int count) override {
        if (count == 1) return file_.put(*static_cast<const char*>(data));
        file_.write(data, count);
    }
    bool good() const { return file_.good(); }

private:
    int exceptions_before_ = std::uncaught_exceptions();
    std::string path_;
    ReplacementFile file_;
};

class StandardFiles : public file_service {
public:
    void remove(LightweightString<wchar_t> path) override {
        const std::string name = toUTF8(path).c_str();
        if (Transaction* run = Transaction::current()) return run->remove(name);
        (void)remove_file(name);
    }

    // A stream that couldn't be opened notes its failure when it goes.
    Qb::Ptr<stream> open(LightweightString<wchar_t> path, int, int, int, int) override {
        auto file = std::make_unique<ReplacementStream>(toUTF8(path).c_str());
        return file->good() ? Qb::Ptr<stream>(file.release()) : Qb::Ptr<stream>();
    }
};

// Texts and edits are handed from thread to thread.
class StandardCounts : public count_service {
public:
    void add_ref(use_count& count) override { std::atomic_ref(count.users).fetch_add(1, std::memory_order_relaxed); }
    int release_ref(use_count& count) override {
        return std::atomic_ref(count.users).fetch_sub(1, std::memory_order_acq_rel) - 1;
    }
};

class StandardSystem : public operating_system {
public:
    constexpr StandardSystem() = default;
    memory_service& memory() override { return memory_; }
    file_service& files() override { return files_; }
    count_service& counts() override { return counts_; }

private:
    StandardMemory memory_;
    StandardFiles files_;
    StandardCounts counts_;
};

// Ready before any other object is made, and there until the last one is gone.
union Undying {
    StandardSystem system;
    constexpr Undying() : system() {}
    ~Undying() {}
};

constinit Undying standard;
constinit operating_system* replaced_by = nullptr;

} // namespace

void use_operating_system(operating_system* services) { replaced_by = services; }

operating_system& standard_operating_system() { return standard.system; }

} // namespace embedded

operating_system* OS() { return embedded::replaced_by ? embedded::replaced_by : &embedded::standard.system; }
