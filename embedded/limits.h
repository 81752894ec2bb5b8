#pragma once
// How much of a file is read. What lies beyond is refused, so that a wrong file, a device or a pipe without an end
// doesn't take all memory.

#include <cstddef>
#include <cstdint>
#include <string>

namespace embedded {

struct Limits {
    std::size_t input_bytes = std::size_t{256} << 20;
    std::size_t line_bytes = std::size_t{1} << 20; ///< of edit lists and logs; other files may be one line
    std::size_t name_bytes = std::size_t{64} << 10;
};

/// For the whole process; not beside work.
void set_limits(const Limits& limits);
const Limits& limits();

/// Why a file of that size isn't read; empty where it is.
std::string fault_of_size(std::uint64_t bytes);

} // namespace embedded
