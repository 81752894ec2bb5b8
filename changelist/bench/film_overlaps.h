#pragma once
// Which stretches of two cuts have film in common.

#include "host/text.h"

#include <cstdint>

/// Film of a cut that runs through.
struct BenchSpan {
    std::uint64_t film = 0;       ///< spans of one number may have film in common
    std::int64_t first_frame = 0; ///< on that film
    std::int64_t length = 0;      ///< frames
    std::int64_t at = 0;          ///< where it lies in its cut

    std::int64_t end_frame() const { return first_frame + length; }
};

struct SpanPair {
    std::size_t old_span = 0; ///< indices
    std::size_t new_span = 0;
};

/// Sorts both and finds the pairs that overlap. Where there are many times as many pairs as spans, only those are
/// found that begin near each other.
Vector<SpanPair> film_overlaps(Vector<BenchSpan>& old_spans, Vector<BenchSpan>& new_spans);
