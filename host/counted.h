#pragma once
// Counted objects and the bases of the host's class trees.
//
// All of it is inline and stands on `OS()`, so a host has nothing to define here. Objects that both sides hold are
// made and freed by one memory service, whichever side does it.

#include "host/os.h"

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Root of everything that has virtual operations. Objects live on the host's memory service.
/// What derives from it needs no operators of its own, and may be deleted through any of its bases.
class iVirtual {
public:
    /// Virtual, so that whoever holds a base may delete the whole object.
    virtual ~iVirtual() = default;

    /// `size` bytes from the host, aligned for any object.
    /// Throws `std::bad_alloc` where there is none, or ends the process in a build without exceptions.
    static void* operator new(std::size_t size) { return Qb::allocate_block(size); }
    /// In memory that is there already; nothing is taken.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    /// Back to the host; null is allowed.
    /// A host that throws here is counted in `Qb::failed_releases`; nothing passes on.
    static void operator delete(void* block) noexcept { Qb::free_block(block); }
    /// For a constructor that fails in place: nothing was taken.
    static void operator delete(void*, void*) noexcept {}
};

namespace Qb {

/// The use count of an object that counts its own users.
/// The count starts at 0: making the object makes no user of it.
class InternalRefCount {
public:
    /// The count itself. Only `count_service` changes it, so a host with threads can make that atomic.
    use_count& count() const { return count_; }

private:
    /// Users of an object that is const count as well.
    mutable use_count count_;
};

/// A counted pointer: a count block and the object. The last holder deletes the object, through its
/// virtual destructor if it has one.
/// Handles may go from thread to thread if the host's `count_service` is atomic; one handle itself belongs to one
/// thread at a time. The object isn't guarded by its count. Two objects that hold each other are never freed.
template <class T> class Ptr {
public:
    /// Holds nothing and takes no memory.
    Ptr() = default;
    /// Holds nothing, as does a default-made one.
    Ptr(std::nullptr_t) {}

    /// Takes the object over as its first holder, also where that fails. It must have been made by `new`, and nobody
    /// else may delete it or wrap it a second time: the two would count apart. Null makes an empty handle without a
    /// count.
    /// The count is a block of its own, so this takes memory and throws `std::bad_alloc` without it.
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

    /// One holder more.
    Ptr(const Ptr& other) : count_(other.count_), object_(other.object_) { retain(); }
    /// Takes the other's place; `other` is empty afterwards and the count stays.
    Ptr(Ptr&& other) noexcept
        : count_(std::exchange(other.count_, nullptr)), object_(std::exchange(other.object_, nullptr)) {}

    /// Of a derived class: one holder more of the same object.
    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr(const Ptr<U>& other) : count_(other.count_), object_(other.object_) {
        static_assert(std::has_virtual_destructor_v<T>, "the last holder deletes through T");
        retain();
    }

    /// The last holder deletes the object, then gives the count back.
    ~Ptr() { release(); }

    /// Leaves what it held to its other holders.
    /// Setting it to itself is harmless. What it held is deleted at the end of the call where this was its last holder.
    Ptr& operator=(Ptr other) noexcept {
        std::swap(count_, other.count_);
        std::swap(object_, other.object_);
        return *this;
    }

    /// The object, which stays this handle's; null where it holds none.
    T* get() const { return object_; }
    /// Not for an empty handle, nor is the arrow.
    T& operator*() const { return *object_; }
    T* operator->() const { return object_; }
    /// True while it holds an object.
    explicit operator bool() const { return object_ != nullptr; }

private:
    /// A handle of a derived class shares its count with one of the base.
    template <class U> friend class Ptr;

    /// One user more, where there is an object.
    void retain() {
        if (count_) OS()->counts().add_ref(*count_);
    }
    /// One user less. The object goes before its count, as its destructor may still ask the host's services.
    void release() {
        if (!count_ || !Qb::release_last(*count_)) return;
        delete object_;
        Qb::free_block(count_);
    }

    /// Shared by all holders; null exactly where `object_` is.
    use_count* count_ = nullptr;
    /// The object that the holders share.
    T* object_ = nullptr;
};

} // namespace Qb

/// Base of objects that are shared by an internal count. Both bases are virtual: a table is reached by several ways and
/// holds each of them once.
class iObject : public virtual Qb::InternalRefCount, public virtual iVirtual {};
