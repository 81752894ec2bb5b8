#pragma once
// The services of the process that the library takes from its host: memory, files and use counts.
//
// A service that throws ends the run that it is called from as a failure. The exception stays inside the library.

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

template <class T> class LightweightString;

namespace Qb {
template <class T> class Ptr;
}

/// A use count. Hosts may keep it as they like; the library only hands it back to `count_service`.
struct use_count {
    /// 0 in a new count: whoever makes the count adds the first user.
    int users = 0;
};

/// Blocks of memory. All allocation of the library comes from here.
class memory_service {
public:
    virtual ~memory_service() = default;
    /// A block of `size` bytes, aligned for any object. Where there is none the service throws `std::bad_alloc` or
    /// returns null: either ends the run as a failure.
    virtual void* allocate(std::size_t size) = 0;
    /// Gives back a block that `allocate` made; null is allowed. One that can't be given back is lost.
    virtual void free(void* block) = 0;
};

/// An output file. It closes when the last `Qb::Ptr` to it goes.
class stream {
public:
    virtual ~stream() = default;
    /// Appends `count` bytes. The library writes a few bytes at a time, often one, so a stream should buffer. Errors
    /// aren't reported here; a host that cares keeps them to itself.
    virtual void write(const void* data, unsigned int count) = 0;
};

/// Files that the library writes itself, which are reports. Tables are saved by `recdb`, and read there.
class file_service {
public:
    virtual ~file_service() = default;
    /// Removes the file if it stands there. There is no result: a file that can't be removed shows when it is opened.
    virtual void remove(LightweightString<wchar_t> path) = 0;
    /// Opens a file for writing from its start, making it or replacing what stands there; null if that
    /// fails, which ends the run with a message. The four numbers are the host's: the library passes 2, 1, 0, 0 for
    /// the report of a cutlist and 2, 3, 0, 0 for a change report.
    virtual Qb::Ptr<stream> open(LightweightString<wchar_t> path, int access, int creation, int sharing, int flags) = 0;
};

/// Who counts users, so that a host with threads can do it its own way.
class count_service {
public:
    virtual ~count_service() = default;
    /// One more user.
    virtual void add_ref(use_count& count) = 0;
    /// One user less; the users that remain. At 0 the caller frees what was counted.
    virtual int release_ref(use_count& count) = 0;
};

/// The three services together. Each is there from the first call of `OS` on and always the same.
class operating_system {
public:
    virtual ~operating_system() = default;
    virtual memory_service& memory() = 0;
    virtual file_service& files() = 0;
    virtual count_service& counts() = 0;
};

/// The process's operating-system object, owned by the host. Callable before `main`.
operating_system* OS();

namespace Qb {

/// What a host threw while something was given back to it. A destructor can't pass that on, so it is counted, and
/// the run in progress ends as a failure.
inline std::atomic<unsigned> failed_releases{0};

// These headers serve hosts that are compiled without exceptions too.
[[noreturn]] inline void no_memory() {
#ifdef __cpp_exceptions
    throw std::bad_alloc();
#else
    std::abort();
#endif
}

template <class Release> void release_quietly(Release release) noexcept {
#ifdef __cpp_exceptions
    try {
        release();
    } catch (...) {
        ++failed_releases;
    }
#else
    release();
#endif
}

/// A block of the memory service; throws `std::bad_alloc` where there is none.
inline void* allocate_block(std::size_t size) {
    if (void* block = OS()->memory().allocate(size)) return block;
    no_memory();
}

inline void free_block(void* block) noexcept {
    release_quietly([&] { OS()->memory().free(block); });
}

/// One user less; true when that was the last.
inline bool release_last(use_count& count) noexcept {
    bool last = false;
    release_quietly([&] { last = OS()->counts().release_ref(count) == 0; });
    return last;
}

/// A block that goes back unless it is taken over.
class BlockHolder {
public:
    explicit BlockHolder(std::size_t size) : block_(allocate_block(size)) {}
    ~BlockHolder() {
        if (block_) free_block(block_);
    }
    BlockHolder(const BlockHolder&) = delete;
    BlockHolder& operator=(const BlockHolder&) = delete;
    void* get() const { return block_; }
    void take_over() { block_ = nullptr; }

private:
    void* block_;
};

} // namespace Qb

/// A standard allocator on the memory service, so that containers of the library follow the same road.
template <class T> struct host_allocator {
    using value_type = T;

    host_allocator() noexcept = default;
    template <class U> host_allocator(const host_allocator<U>&) noexcept {}

    T* allocate(std::size_t count) { return static_cast<T*>(Qb::allocate_block(count * sizeof(T))); }
    void deallocate(T* block, std::size_t) noexcept { Qb::free_block(block); }

    /// All are alike, so containers take over each other's blocks.
    template <class U> bool operator==(const host_allocator<U>&) const noexcept { return true; }
};
