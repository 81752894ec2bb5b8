#pragma once
// Values of AAF objects: numbers in either byte order, and the ids of classes, definitions and mobs.

#include "embedded/fraction.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace formats::aaf {

using embedded::Fraction;

/// The id of a class or definition.
struct Auid {
    std::uint32_t first = 0;
    std::uint16_t second = 0, third = 0;
    std::array<std::uint8_t, 8> rest{};

    friend constexpr std::strong_ordering operator<=>(const Auid&, const Auid&) = default;
};

namespace detail {

constexpr unsigned hex_digit(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    return static_cast<unsigned>(c - 'a' + 10);
}

} // namespace detail

/// Of "9d2ea890-0968-11d3-8a38-0050040ef7d2"; small letters, hyphens anywhere.
constexpr Auid auid(std::string_view text) {
    std::array<std::uint8_t, 16> bytes{};
    std::size_t digits = 0;
    for (const char c : text)
        if (c != '-' && digits < 32) {
            bytes[digits / 2] = static_cast<std::uint8_t>(unsigned{bytes[digits / 2]} << 4 | detail::hex_digit(c));
            ++digits;
        }
    Auid id;
    for (std::size_t i = 0; i < 4; ++i)
        id.first = id.first << 8 | bytes[i];
    id.second = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    id.third = static_cast<std::uint16_t>(bytes[6] << 8 | bytes[7]);
    for (std::size_t i = 0; i < 8; ++i)
        id.rest[i] = bytes[8 + i];
    return id;
}

std::string text_of(const Auid& id);

using MobId = std::array<std::uint8_t, 32>;
constexpr MobId no_mob{};
/// All of it in hexadecimal digits.
std::string text_of(const MobId& id);

/// Bytes of a stream or value with their byte order. Reading past the end gives nothing.
class Bytes {
public:
    Bytes() = default;
    Bytes(std::string_view bytes, bool big_endian) : bytes_(bytes), big_(big_endian) {}

    std::size_t size() const { return bytes_.size(); }
    std::string_view view() const { return bytes_; }
    Bytes from(std::size_t at) const { return {bytes_.substr(at < bytes_.size() ? at : bytes_.size()), big_}; }

    /// Of `size` bytes, at most 8.
    std::optional<std::uint64_t> number(std::size_t at, std::size_t size) const;
    std::optional<std::int64_t> signed_number(std::size_t at, std::size_t size) const;
    std::optional<Auid> auid(std::size_t at) const;
    std::optional<MobId> mob_id(std::size_t at) const;
    /// None where the denominator is 0.
    std::optional<Fraction> rational(std::size_t at) const;
    /// UTF-8 of the 16-bit text up to its closing 0.
    std::string text(std::size_t at = 0) const;

private:
    std::string_view bytes_;
    bool big_ = false;
};

/// A value that says its own type: a number as a fraction, where its type is one.
std::optional<Fraction> indirect_number(const Bytes& value);
/// The same with a text; empty for other types.
std::string indirect_text(const Bytes& value);

} // namespace formats::aaf
