#pragma once
// The seal that closes a saved table: how many rows it holds, and a checksum of all that lies ahead of it.
//
//   %recdb 2
//   ...
//   %end 168 4A3B2C1D

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace embedded {

struct TableSeal {
    std::size_t rows = 0;
    std::uint32_t sum = 0;
};

/// The closing line of a table of `rows` rows that begins with the bytes `ahead`.
std::string seal_line(std::string_view ahead, std::size_t rows);
/// What a line without its line end says as a seal; nothing where it isn't one to the letter.
std::optional<TableSeal> seal_of_line(std::string_view line);

/// A file parted at its seal.
struct SealedBytes {
    std::string_view ahead;        ///< all but the seal; everything where none closes the file
    std::optional<TableSeal> seal; ///< of the last line, where that is one and ends in a line end

    explicit SealedBytes(std::string_view bytes);
};

/// Why a table of the present version doesn't fit its seal, as in "cut off behind row 148 of 168"; empty where it
/// fits. The rows begin at `first_row` bytes, which is `npos` where the head ahead of them isn't one.
std::string fault_of_seal(std::string_view bytes, std::size_t first_row);

} // namespace embedded
