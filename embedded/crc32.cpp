#include "embedded/crc32.h"

#include "embedded/eight_bytes.h"

#include <array>
#include <cstddef>

namespace embedded {
namespace {

constexpr std::size_t step = 8;
constexpr std::uint32_t polynomial = 0xEDB88320U;

using Table = std::array<std::uint32_t, 256>;

constexpr Table one_byte_on() {
    Table table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? polynomial : 0U);
        table[byte] = sum;
    }
    return table;
}

/// What a byte does to the sum once `n` further bytes have followed it, for eight bytes a step.
constexpr std::array<Table, step> make_tables() {
    std::array<Table, step> tables{};
    tables[0] = one_byte_on();
    for (std::size_t n = 1; n < step; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[n][byte] = (tables[n - 1][byte] >> 8U) ^ tables[0][tables[n - 1][byte] & 0xFFU];
    return tables;
}

constexpr std::array<Table, step> tables = make_tables();

std::uint32_t eight_bytes_on(std::uint32_t sum, const char* bytes) {
    const std::uint64_t word = word_of(bytes) ^ sum;
    const auto byte = [word](unsigned place) { return static_cast<std::size_t>(word >> (8U * place)) & 0xFFU; };
    return tables[7][byte(0)] ^ tables[6][byte(1)] ^ tables[5][byte(2)] ^ tables[4][byte(3)] ^ tables[3][byte(4)] ^
           tables[2][byte(5)] ^ tables[1][byte(6)] ^ tables[0][byte(7)];
}

} // namespace

std::uint32_t crc32(std::string_view bytes, std::uint32_t before) {
    std::uint32_t sum = ~before;
    for (; bytes.size() >= step; bytes.remove_prefix(step))
        sum = eight_bytes_on(sum, bytes.data());
    for (const char byte : bytes)
        sum = (sum >> 8U) ^ tables[0][(sum ^ static_cast<unsigned char>(byte)) & 0xFFU];
    return ~sum;
}

} // namespace embedded
