#pragma once
// The strips of one event put together: what a list names in one entry.

#include "film/film_strip.h"

#include <map>
#include <vector>

namespace film {

/// One event of a track with its shares of the transitions at both ends.
///
///     start    cut_in          cut_out   end
///     |--------|---------------|---------|
///      incoming       cut        outgoing
struct Piece {
    std::vector<const Strip*> strips; ///< in order, without a gap
    std::int64_t start = 0, cut_in = 0, cut_out = 0, end = 0;
    bool black_before = false, black_behind = false; ///< what the transitions there join

    const Strip& first() const { return *strips.front(); }
    std::int64_t in_length() const { return cut_in - start; }
    std::int64_t out_length() const { return end - cut_out; }
    /// The strip that holds a frame, or the one nearest to it.
    const Strip& at(std::int64_t frame) const;
    bool black() const { return first().black; }
    /// Material that lists know nothing of: it is assembled, and not pulled.
    bool unknown() const { return first().sureness == Sureness::unknown; }
    bool numbered() const { return static_cast<bool>(first().key); }
};

/// All pieces of the strips, by layer and place in it.
std::vector<Piece> pieces_of(const Strips& strips);

} // namespace film
