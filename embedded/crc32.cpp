#include "embedded/crc32.h"

#include "embedded/eight_bytes.h"

#include <array>
#include <cstddef>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

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

/// Of a sum in the making, as it stands inside: all its bits turned over.
std::uint32_t table_sum(std::string_view bytes, std::uint32_t sum) {
    for (; bytes.size() >= step; bytes.remove_prefix(step))
        sum = eight_bytes_on(sum, bytes.data());
    for (const char byte : bytes)
        sum = (sum >> 8U) ^ tables[0][(sum ^ static_cast<unsigned char>(byte)) & 0xFFU];
    return sum;
}

#ifdef __x86_64__

// Bytes are a polynomial, the sum is what dividing it leaves. Instead of dividing byte by byte, sixteen bytes are
// carried to the next sixteen, multiplied by what the powers that lie between leave; the sum of all stays the same:
//
//     | first 8 | last 8 | next sixteen ...        first * x^192 + last * x^128 + next

/// What x^`power` leaves, ready to be multiplied with eight bytes. The lowest bit of a number stands for its highest
/// power: the 32 bits of a remainder lie 32 powers higher in a number of 64, so it is that of 32 powers less; and the
/// product of two such numbers is a bit short of 128, hence the shift.
constexpr std::uint64_t factor_of(unsigned power) {
    std::uint32_t sum = 0x80000000U; // x^0
    for (unsigned at = 32; at < power; ++at)
        sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? polynomial : 0U);
    return std::uint64_t{sum} << 1U;
}

constexpr std::uint64_t first_factor = factor_of(192), last_factor = factor_of(128);
constexpr std::size_t sixteen = sizeof(__m128i);

__m128i sixteen_bytes(const char* bytes) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)); }

/// The sum of whole sixteens, of which there is one at least.
[[gnu::target("pclmul,sse2")]] std::uint32_t product_sum(std::string_view bytes, std::uint32_t sum) {
    const __m128i factors = _mm_set_epi64x(static_cast<long long>(last_factor), static_cast<long long>(first_factor));
    __m128i carried = _mm_xor_si128(sixteen_bytes(bytes.data()), _mm_cvtsi32_si128(static_cast<int>(sum)));
    for (std::size_t at = sixteen; at < bytes.size(); at += sixteen) {
        const __m128i both =
            _mm_xor_si128(_mm_clmulepi64_si128(carried, factors, 0x00), _mm_clmulepi64_si128(carried, factors, 0x11));
        carried = _mm_xor_si128(both, sixteen_bytes(bytes.data() + at));
    }
    char last[sixteen];
    std::memcpy(last, &carried, sizeof last);
    return table_sum({last, sizeof last}, 0);
}

/// As many bytes as this machine has a quicker way for; moves `bytes` behind them.
std::uint32_t quick_sum(std::string_view& bytes, std::uint32_t sum) {
    const std::size_t whole = bytes.size() / sixteen * sixteen;
    if (whole == 0 || !__builtin_cpu_supports("pclmul")) return sum;
    sum = product_sum(bytes.substr(0, whole), sum);
    bytes.remove_prefix(whole);
    return sum;
}

#else

std::uint32_t quick_sum(std::string_view&, std::uint32_t sum) { return sum; }

#endif

} // namespace

std::uint32_t crc32(std::string_view bytes, std::uint32_t before) {
    const std::uint32_t sum = quick_sum(bytes, ~before);
    return ~table_sum(bytes, sum);
}

} // namespace embedded
