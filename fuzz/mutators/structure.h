#pragma once
// Changes to texts that keep their structure, so that they get past the first line of a reader. What knows a format
// says where its pieces lie, and the same few changes are made to the pieces of all.
//
//     {"rate": 24, "name": "a"}        pieces: 24 | "a" | "rate": 24 | "name": "a" | the whole
//
// A piece takes the place of another of its kind, is left out, written twice, or is changed in its digits or bytes.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Draws the same from the same seed, everywhere.
class Random {
public:
    explicit Random(std::uint32_t seed) : state_(seed) {}
    /// From 0 to below `count`, which is above 0.
    std::size_t below(std::size_t count);
    bool one_in(std::size_t count) { return below(count) == 0; }

private:
    std::uint64_t state_;
};

using Words = std::vector<std::string_view>;

/// One that can be left out needs more to go with it: the comma of a list, say. [drop_begin, drop_end) holds the piece.
struct Piece {
    std::size_t begin = 0, end = 0;
    int kind = 0;                 ///< pieces of one kind stand well in each other's place
    const Words* words = nullptr; ///< what a leaf may become; null for pieces with others inside
    bool item = false;            ///< may be left out and written twice
    std::size_t drop_begin = 0, drop_end = 0;
};

struct Structure {
    std::vector<Piece> pieces;
    std::string_view separator = {}; ///< between an item and its copy
    std::string_view marks = {};     ///< bytes that would end a leaf, and are taken out of changed ones
};

/// Changes bytes in any way.
using Scramble = std::function<std::string(std::string, Random&)>;

/// The text with one change; as it was where there are no pieces.
std::string changed(const std::string& text, const Structure& structure, Random& random, const Scramble& scramble);
/// One run of digits becomes another number: one more, one less, nines, none, any.
std::string change_digits(std::string text, Random& random);

} // namespace fuzz
