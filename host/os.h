#pragma once
// The services of the process that the library takes from its host: memory, files and use counts.

#include <cstddef>

template <class T> class LightweightString;

namespace Qb {
template <class T> class Ptr;
}

/// A use count. Hosts may keep it as they like; the library only hands it back to `count_service`.
struct use_count {
    int users = 0;
};

/// Blocks of memory. All allocation of the library comes from here.
class memory_service {
public:
    virtual ~memory_service() = default;
    /// A block of `size` bytes, aligned for any object. Never null: the library doesn't treat a failure.
    virtual void* allocate(std::size_t size) = 0;
    /// Gives back a block that `allocate` made; null is allowed.
    virtual void free(void* block) = 0;
};

/// An output file. It closes when the last `Qb::Ptr` to it goes.
class stream {
public:
    virtual ~stream() = default;
    /// Appends `count` bytes. Errors aren't reported here; a host that cares keeps them to itself.
    virtual void write(const void* data, unsigned int count) = 0;
};

class file_service {
public:
    virtual ~file_service() = default;
    /// Removes the file if it stands there.
    virtual void remove(LightweightString<wchar_t> path) = 0;
    /// Opens a file for writing from its start, making it or replacing what stands there; null if that
    /// fails. The four numbers are the host's: the library passes 2, 1, 0, 0 for the report of a cutlist
    /// and 2, 3, 0, 0 for a change report.
    virtual Qb::Ptr<stream> open(LightweightString<wchar_t> path, int access, int creation, int sharing, int flags) = 0;
};

class count_service {
public:
    virtual ~count_service() = default;
    /// One more user.
    virtual void add_ref(use_count& count) = 0;
    /// One user less; the users that remain.
    virtual int release_ref(use_count& count) = 0;
};

class operating_system {
public:
    virtual ~operating_system() = default;
    virtual memory_service& memory() = 0;
    virtual file_service& files() = 0;
    virtual count_service& counts() = 0;
};

/// The process's operating-system object, owned by the host. Callable before `main`.
operating_system* OS();

/// A standard allocator on the memory service, so that containers of the library follow the same road.
template <class T> struct host_allocator {
    using value_type = T;

    host_allocator() noexcept = default;
    template <class U> host_allocator(const host_allocator<U>&) noexcept {}

    T* allocate(std::size_t count) { return static_cast<T*>(OS()->memory().allocate(count * sizeof(T))); }
    void deallocate(T* block, std::size_t) noexcept { OS()->memory().free(block); }

    template <class U> bool operator==(const host_allocator<U>&) const noexcept { return true; }
};
