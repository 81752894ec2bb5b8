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

/// A use count, in the memory of what it counts or in a block of its own. Only `count_service` changes it.
struct use_count {
    /// 0 in a new count: whoever makes the count adds the first user.
    /// The embedded host changes it by atomic operations. A text reads it before it writes into its block, so a host
    /// that counts elsewhere keeps it true as well.
    int users = 0;
};

/// Blocks of memory. All allocation of the library comes from here.
/// Asked on every thread that uses the library, so one service must bear calls from several threads at once.
class memory_service {
public:
    virtual ~memory_service() = default;
    /// A block of `size` bytes, aligned for any object. Where there is none the service throws `std::bad_alloc` or
    /// returns null: either ends the run as a failure.
    /// 0 is a size like others and gives a block that is given back.
    virtual void* allocate(std::size_t size) = 0;
    /// Gives back a block that `allocate` made; null is allowed. One that can't be given back is lost.
    virtual void free(void* block) = 0;
};

/// An output file. It closes when the last `Qb::Ptr` to it goes.
/// The library holds one report at a time and writes it on the thread of the run, from its first byte to its last. It
/// never seeks and never reads.
class stream {
public:
    virtual ~stream() = default;
    /// Appends `count` bytes. The library writes a few bytes at a time, often one, so a stream should buffer. Errors
    /// aren't reported here; a host that cares keeps them to itself.
    /// `data` is read before the call returns and stays the caller's. Texts are UTF-8, and the bytes go out as they
    /// come: nothing turns line ends.
    virtual void write(const void* data, unsigned int count) = 0;
};

/// Files that the library writes itself, which are reports. Tables are saved by `recdb`, and read there.
/// Paths come as the caller gave them: whole or relative, with the host's separators.
class file_service {
public:
    virtual ~file_service() = default;
    /// Removes the file if it stands there. There is no result: a file that can't be removed shows when it is opened.
    /// Called on a report that may be overwritten, ahead of `open`, and on the working files of a changelist before
    /// they are saved anew; a file may stand there or not.
    virtual void remove(LightweightString<wchar_t> path) = 0;
    /// Opens a file for writing from its start, making it or replacing what stands there; null if that
    /// fails, which ends the run with a message. The four numbers are the host's: the library passes 2, 1, 0, 0 for
    /// the report of a cutlist and 2, 3, 0, 0 for a change report.
    /// Either set of numbers means the same file: one that is written from its first byte. The file stays open until
    /// its last list is printed.
    virtual Qb::Ptr<stream> open(LightweightString<wchar_t> path, int access, int creation, int sharing, int flags) = 0;
};

/// Who counts users, so that a host with threads can do it its own way.
/// A count that reached 0 is never used again.
class count_service {
public:
    virtual ~count_service() = default;
    /// One more user.
    /// Of a new count this is the first user. There is no result and no limit is looked for.
    virtual void add_ref(use_count& count) = 0;
    /// One user less; the users that remain. At 0 the caller frees what was counted.
    /// Called once for each `add_ref`, so it never goes below 0.
    virtual int release_ref(use_count& count) = 0;
};

/// The three services together. Each is there from the first call of `OS` on and always the same.
/// Set up by the host before the library is first called, and not changed during a run.
class operating_system {
public:
    virtual ~operating_system() = default;
    /// Blocks and all objects: see `memory_service`.
    virtual memory_service& memory() = 0;
    /// Writes reports and removes files; record tables are written elsewhere.
    virtual file_service& files() = 0;
    /// Users of texts, of counted pointers and of edits.
    virtual count_service& counts() = 0;
};

/// The process's operating-system object, owned by the host. Callable before `main`.
/// Never null. Objects of static lifetime ask it too, so it must also bear calls after `main`.
operating_system* OS();

namespace Qb {

/// What a host threw while something was given back to it. A destructor can't pass that on, so it is counted, and
/// the run in progress ends as a failure.
/// It only grows: a run compares what it finds at its end with what it found at its start. All threads of the process
/// share it.
inline std::atomic<unsigned> failed_releases{0};

// These headers serve hosts that are compiled without exceptions too.
/// Throws `std::bad_alloc` where this header is compiled with exceptions, and ends the process where it isn't.
[[noreturn]] inline void no_memory() {
#ifdef __cpp_exceptions
    throw std::bad_alloc();
#else
    std::abort();
#endif
}

/// Runs `release`, which gives something back to the host, and counts it as failed where it throws. What wasn't given
/// back is lost.
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
/// Aligned for any object. It goes back by `free_block` alone, never by the C library's `free`.
inline void* allocate_block(std::size_t size) {
    if (void* block = OS()->memory().allocate(size)) return block;
    no_memory();
}

/// Gives a block back; null is allowed. Where the host throws, that is counted and the block is lost.
inline void free_block(void* block) noexcept {
    release_quietly([&] { OS()->memory().free(block); });
}

/// One user less; true when that was the last.
/// Also false where the host throws: then nobody frees what was counted, which is the safe side.
inline bool release_last(use_count& count) noexcept {
    bool last = false;
    release_quietly([&] { last = OS()->counts().release_ref(count) == 0; });
    return last;
}

/// A block that goes back unless it is taken over.
/// It covers the time between the taking of memory and the making of the object in it, when something may throw.
class BlockHolder {
public:
    /// `size` bytes; throws as `Qb::allocate_block` does.
    explicit BlockHolder(std::size_t size) : block_(allocate_block(size)) {}
    ~BlockHolder() {
        if (block_) free_block(block_);
    }
    BlockHolder(const BlockHolder&) = delete;
    BlockHolder& operator=(const BlockHolder&) = delete;
    /// The block; null once it was taken over.
    void* get() const { return block_; }
    /// From here on somebody else frees the block.
    void take_over() { block_ = nullptr; }

private:
    /// Null once somebody else took it over.
    void* block_;
};

} // namespace Qb

/// A standard allocator on the memory service, so that containers of the library follow the same road.
template <class T> struct host_allocator {
    using value_type = T;

    host_allocator() noexcept = default;
    /// Containers make one for their own nodes from the one they were given; there is no state to copy.
    template <class U> host_allocator(const host_allocator<U>&) noexcept {}

    /// Room for `count` objects, none of them made. Throws `std::bad_alloc` without memory.
    T* allocate(std::size_t count) { return static_cast<T*>(Qb::allocate_block(count * sizeof(T))); }
    /// The objects are gone by then; the number isn't looked at.
    void deallocate(T* block, std::size_t) noexcept { Qb::free_block(block); }

    /// All are alike, so containers take over each other's blocks.
    template <class U> bool operator==(const host_allocator<U>&) const noexcept { return true; }
};
