#pragma once
// The checksum that seals a table.

#include <cstdint>
#include <string_view>

namespace embedded {

/// CRC-32 as PNG and zlib use it: 0xCBF43926 for "123456789", 0 for nothing. With the sum of what came before as
/// `before` it goes on from there.
std::uint32_t crc32(std::string_view bytes, std::uint32_t before = 0);

} // namespace embedded
