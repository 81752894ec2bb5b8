#pragma once
// Counted objects and the bases of the host's class trees.

#include "host/os.h"

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Root of everything that has virtual operations. Objects live on the host's memory service.
class iVirtual {
public:
    virtual ~iVirtual() = default;

    static void* operator new(std::size_t size) { return Qb::allocate_block(size); }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept { Qb::free_block(block); }
    static void operator delete(void*, void*) noexcept {}
};

namespace Qb {

/// The use count of an object that counts its own users.
class InternalRefCount {
public:
    use_count& count() const { return count_; }

private:
    mutable use_count count_;
};

/// A counted pointer: a count block and the object. The last holder deletes the object, through its
/// virtual destructor if it has one.
template <class T> class Ptr {
public:
    Ptr() = default;
    Ptr(std::nullptr_t) {}

    /// Takes the object over, also where that fails.
    explicit Ptr(T* object) {
        if (!object) return;
        std::unique_ptr<T> owned(object);
        Qb::BlockHolder memory(sizeof(use_count));
        auto* const count = new (memory.get()) use_count;
        OS()->counts().add_ref(*count);
        memory.take_over();
        count_ = count;
        object_ = owned.release();
    }

    Ptr(const Ptr& other) : count_(other.count_), object_(other.object_) { retain(); }
    Ptr(Ptr&& other) noexcept
        : count_(std::exchange(other.count_, nullptr)), object_(std::exchange(other.object_, nullptr)) {}

    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr(const Ptr<U>& other) : count_(other.count_), object_(other.object_) {
        static_assert(std::has_virtual_destructor_v<T>, "the last holder deletes through T");
        retain();
    }

    ~Ptr() { release(); }

    Ptr& operator=(Ptr other) noexcept {
        std::swap(count_, other.count_);
        std::swap(object_, other.object_);
        return *this;
    }

    T* get() const { return object_; }
    T& operator*() const { return *object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    template <class U> friend class Ptr;

    void retain() {
        if (count_) OS()->counts().add_ref(*count_);
    }
    void release() {
        if (!count_ || !Qb::release_last(*count_)) return;
        delete object_;
        Qb::free_block(count_);
    }

    use_count* count_ = nullptr;
    T* object_ = nullptr;
};

} // namespace Qb

/// Base of objects that are shared by an internal count. Both bases are virtual: a table is reached by several ways and
/// holds each of them once.
class iObject : public virtual Qb::InternalRefCount, public virtual iVirtual {};
