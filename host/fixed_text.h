#pragma once
// The one door for text into fixed arrays: cut to fit, always terminated, never overrun. Cutting goes by bytes, so a
// character of several bytes at the very end may lose some. Nothing here allocates.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

/// Copies `text` into an array of `size` bytes, cut to `size` - 1. True when all of it fitted. `size` is at least 1,
/// and the text mustn't lie in the array.
/// The bytes behind the closing zero stay as they were.
inline bool put_text(char* target, std::size_t size, std::string_view text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
    return length == text.size();
}

/// The same for an array whose size the compiler knows.
/// That size counts the closing zero.
template <std::size_t N> bool put_text(char (&target)[N], std::string_view text) { return put_text(target, N, text); }

/// A null text counts as empty.
template <std::size_t N> bool put_text(char (&target)[N], const char* text) {
    return put_text(target, N, std::string_view(text ? text : ""));
}
