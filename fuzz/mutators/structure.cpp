#include "fuzz/mutators/structure.h"

#include <algorithm>

namespace fuzz {
namespace {

constexpr int tries = 20;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string text_of(const std::string& text, const Piece& piece) {
    return text.substr(piece.begin, piece.end - piece.begin);
}

std::string with(const std::string& text, const Piece& piece, const std::string& other) {
    return text.substr(0, piece.begin) + other + text.substr(piece.end);
}

/// Another one of the same kind; the piece itself where none was met.
const Piece& like(const Piece& piece, const std::vector<Piece>& pieces, Random& random) {
    for (int i = 0; i < tries; ++i) {
        const Piece& other = pieces[random.below(pieces.size())];
        if (other.kind == piece.kind && other.begin != piece.begin) return other;
    }
    return piece;
}

std::string copied_over(const std::string& text, const Piece& piece, const Structure& structure, Random& random) {
    return with(text, piece, text_of(text, like(piece, structure.pieces, random)));
}

std::string exchanged(const std::string& text, const Piece& piece, const Structure& structure, Random& random) {
    const Piece& other = like(piece, structure.pieces, random);
    const Piece &first = piece.begin < other.begin ? piece : other, &second = piece.begin < other.begin ? other : piece;
    if (first.end > second.begin) return text;
    return with(with(text, second, text_of(text, first)), first, text_of(text, second));
}

std::string dropped(const std::string& text, const Piece& piece) {
    return text.substr(0, piece.drop_begin) + text.substr(piece.drop_end);
}

std::string repeated(const std::string& text, const Piece& piece, const Structure& structure) {
    return text.substr(0, piece.end) + std::string(structure.separator) + text.substr(piece.begin);
}

std::string scrambled(const std::string& leaf, const Structure& structure, Random& random, const Scramble& scramble) {
    std::string other = scramble(leaf, random);
    other.erase(std::remove_if(other.begin(), other.end(),
                               [&](char c) { return structure.marks.find(c) != std::string_view::npos; }),
                other.end());
    return other;
}

std::string changed_leaf(const std::string& text, const Piece& piece, const Structure& structure, Random& random,
                         const Scramble& scramble) {
    const std::string leaf = text_of(text, piece);
    const std::size_t way = random.below(8);
    if (way < 2 && !piece.words->empty())
        return with(text, piece, std::string((*piece.words)[random.below(piece.words->size())]));
    if (way < 3) return with(text, piece, scrambled(leaf, structure, random, scramble));
    return with(text, piece, change_digits(leaf, random));
}

std::string number_beside(const std::string& digits, Random& random) {
    std::string number = digits;
    const int step = random.one_in(2) ? 1 : -1;
    for (std::size_t at = number.size(); at-- > 0;) {
        const int digit = number[at] - '0' + step;
        number[at] = static_cast<char>('0' + (digit + 10) % 10);
        if (digit >= 0 && digit <= 9) break;
    }
    return number;
}

std::string any_number(std::size_t digits, Random& random) {
    std::string number;
    for (std::size_t i = 0; i < digits; ++i)
        number += static_cast<char>('0' + random.below(10));
    return number;
}

std::string other_number(const std::string& digits, Random& random) {
    switch (random.below(8)) {
    case 0:
        return std::string(digits.size(), '0');
    case 1:
        return std::string(digits.size(), '9');
    case 2:
        return any_number(digits.size(), random);
    case 3:
        return any_number(1 + random.below(20), random);
    case 4:
        return "-" + digits;
    default:
        return number_beside(digits, random);
    }
}

} // namespace

std::size_t Random::below(std::size_t count) {
    // The numbers of SplitMix64.
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return static_cast<std::size_t>((z ^ (z >> 31)) % count);
}

std::string change_digits(std::string text, Random& random) {
    std::vector<std::size_t> runs;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (is_digit(text[i]) && (i == 0 || !is_digit(text[i - 1]))) runs.push_back(i);
    if (runs.empty()) return text;
    const std::size_t begin = runs[random.below(runs.size())];
    std::size_t end = begin;
    while (end < text.size() && is_digit(text[end]))
        ++end;
    return text.replace(begin, end - begin, other_number(text.substr(begin, end - begin), random));
}

std::string changed(const std::string& text, const Structure& structure, Random& random, const Scramble& scramble) {
    if (structure.pieces.empty()) return text;
    const Piece& piece = structure.pieces[random.below(structure.pieces.size())];
    const std::size_t way = random.below(8);
    if (piece.words && way < 4) return changed_leaf(text, piece, structure, random, scramble);
    if (piece.item && way == 4) return dropped(text, piece);
    if (piece.item && way == 5) return repeated(text, piece, structure);
    return way == 6 ? exchanged(text, piece, structure, random) : copied_over(text, piece, structure, random);
}

} // namespace fuzz
