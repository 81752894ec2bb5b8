#pragma once
// Bytes looked at eight at a time.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace embedded {

/// Eight bytes as one number, the first of them lowest; one load where the machine counts so itself.
inline std::uint64_t word_of(const char* bytes) {
    std::uint64_t word = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&word, bytes, sizeof word);
    } else {
        for (std::size_t i = 0; i < sizeof word; ++i)
            word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8U * i);
    }
    return word;
}

/// The highest bit of each byte of the word that is that character, no others.
constexpr std::uint64_t places_of(char character, std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101010101010101U, low_bits = 0x7F * ones;
    const std::uint64_t others = word ^ (ones * static_cast<unsigned char>(character));
    return ~(((others & low_bits) + low_bits) | others | low_bits);
}

/// How many bytes lie ahead of the first place, of which there is one.
constexpr std::size_t first_place(std::uint64_t places) { return static_cast<unsigned>(std::countr_zero(places)) / 8; }

} // namespace embedded
