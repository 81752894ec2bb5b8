#pragma once
// Texts by a format, as the C library makes them, at a fraction of its cost: lists print some ten lines an event.

#include <cstdarg>
#include <cstddef>

/// Fills `out` by `format`, cut to `size` - 1 bytes and always closed; the bytes written. `size` is at least 1.
///
/// It writes %s, %d, %c and %% with the flags '-' and '0', a width and a precision, of which lists consist; a format
/// with anything else goes to `vsnprintf` as a whole.
std::size_t format_text(char* out, std::size_t size, const char* format, va_list values)
    __attribute__((format(printf, 3, 0)));

/// The same for an array whose size the compiler knows.
template <std::size_t N>
__attribute__((format(printf, 2, 3))) std::size_t format_text(char (&out)[N], const char* format, ...) {
    va_list values;
    va_start(values, format);
    const std::size_t written = format_text(out, N, format, values);
    va_end(values);
    return written;
}
