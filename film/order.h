#pragma once
// Orders: which pieces of which rolls are to be pulled or scanned, so that each frame that any reel needs lies in one
// piece and none is pulled twice.
//
//     needed       | . A . |      | . . B . . |               | . C . |
//     with handles - - - - - - - - - - - - - - - -         - - - - - - - -
//     pieces     [             1                  ]       [       2       ]

#include "film/film_needs.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace film {

struct OrderOptions {
    int handles = 0;          ///< frames beyond what is needed, at each end
    int min_handles = 0;      ///< fewer than these are told
    int join = 1;             ///< pieces with fewer frames between them become one
    bool whole_takes = false; ///< as far as the log's row or the media goes, where that is known
};

struct OrderPiece {
    FilmRun run;
    FrameRange frames;             ///< with handles
    FrameRange needed;             ///< from the first needed frame to the last
    std::vector<std::size_t> uses; ///< places in the needs, in order of their film

    std::int64_t head() const { return needed.first - frames.first; }
    std::int64_t tail() const { return frames.last - needed.last; }
};

using OrderPieces = std::vector<OrderPiece>;

/// Pieces by roll, kind, prefix and number. n log n with the needs.
OrderPieces order_of(const FilmNeeds& needs, const OrderOptions& options);

/// What an order was to be, and isn't: each failure in a sentence.
struct OrderProof {
    std::int64_t frames = 0; ///< needed frames that were held against the pieces
    std::vector<std::string> failures;
};

/// Holds an order against the needs, frame range by frame range, by itself: each needed frame lies in one piece, no
/// frame in two, and no piece goes beyond its handles, takes and joins.
OrderProof prove_order(const OrderPieces& pieces, const FilmNeeds& needs, const OrderOptions& options);

/// A piece that was pulled before.
struct HadPiece {
    FilmRun run;
    FrameRange frames;
};

/// An order against what was had.
struct ChangeOrder {
    FilmNeeds needs;    ///< what no piece holds; `OrderPiece::uses` are places in it
    OrderPieces pieces; ///< to be pulled now
    struct Longer {
        std::size_t piece; ///< of `pieces`
        std::size_t had;   ///< a piece that holds a part of what it is for
        friend auto operator<=>(const Longer& a, const Longer& b) = default;
    };
    std::vector<Longer> longer;      ///< in order, each pair once
    std::vector<std::size_t> unused; ///< had, and no reel needs a frame of it any more
};

/// What of the needs lies whole in no piece that was had, ordered with handles; `ends_alone` orders of a need that lies
/// partly in one only what goes beyond.
ChangeOrder change_order(const FilmNeeds& needs, const std::vector<HadPiece>& had, const OrderOptions& options,
                         bool ends_alone);

/// Each frame of the needs lies in one of the pieces at least, those that were had among them.
OrderProof prove_cover(const OrderPieces& pieces, const std::vector<HadPiece>& had, const FilmNeeds& needs);

} // namespace film
