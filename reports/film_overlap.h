#pragma once
// Finds where film of one roll is wanted a second time.

#include "host/labels.h"

#include <cstdint>

/// The film of one record of the table, from `in` up to the exclusive end `out`, both in samples.
struct FilmPiece {
    unsigned record = 0; ///< index in the table
    LabelPoint in;
    int out = 0;
    double speed = 1.0;
    int keycode_missing = 0;
};

/// Stands for "no piece" in the result of `first_overlaps`.
constexpr std::uint32_t no_piece = 0xffffffffu;

/// For each piece, the place of the first one ahead of it with the same prefix that it overlaps. A piece that
/// begins fewer than `margin_frames` behind the other's end overlaps it, and so does one that ends at most that
/// many ahead of the other's start. Frames are those of the later record's kind.
///
///     earlier     |-------|
///     later               |-------|        overlap from a margin of 1 on
///
/// The cost is that of sorting, whatever the order of the pieces.
Vector<std::uint32_t> first_overlaps(const Vector<FilmPiece>& pieces, int margin_frames);
