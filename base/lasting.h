#pragma once
// Values that stay until the process ends. Nothing of the library runs behind `main`, for the host's services may be
// gone by then: whatever is static and holds memory of theirs is never taken down.

#include <new>
#include <utility>

template <class T> class Lasting {
public:
    template <class... Arguments> explicit Lasting(Arguments&&... arguments) {
        new (bytes_) T(std::forward<Arguments>(arguments)...);
    }
    Lasting(const Lasting&) = delete;
    Lasting& operator=(const Lasting&) = delete;

    T& value() { return *std::launder(reinterpret_cast<T*>(bytes_)); }
    const T& value() const { return *std::launder(reinterpret_cast<const T*>(bytes_)); }

private:
    alignas(T) unsigned char bytes_[sizeof(T)];
};
