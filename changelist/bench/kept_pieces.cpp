#include "changelist/bench/kept_pieces.h"

#include "base/row_numbers.h"

#include <algorithm>

namespace {

ReelNumbers reels_of(const KeptRun& run) {
    ReelNumbers reels;
    for (const Vector<CutEvent>* cut : {&run.old_cut, &run.new_cut}) {
        for (const CutEvent& event : *cut)
            reels.add(event.reel);
    }
    reels.close();
    return reels;
}

/// In the order of `place`; drops what lies on a piece that begins before it.
template <FilmPlace KeptPiece::*place> void drop_overlaps_on(KeptPieces& pieces) {
    std::sort(pieces.begin(), pieces.end(), [](const KeptPiece& a, const KeptPiece& b) {
        if (a.*place != b.*place) return a.*place < b.*place;
        return a.length != b.length ? a.length > b.length : a.old_at + a.new_at < b.old_at + b.new_at;
    });
    FilmPlace free_from = 0;
    std::erase_if(pieces, [&](const KeptPiece& piece) {
        if (piece.*place < free_from) return true;
        free_from = piece.*place + piece.length;
        return false;
    });
}

bool continues(const KeptPiece& ahead, const KeptPiece& behind) {
    return ahead.old_reel == behind.old_reel && ahead.new_reel == behind.new_reel && ahead.stays == behind.stays &&
           ahead.old_end() == behind.old_at && ahead.new_end() == behind.new_at;
}

} // namespace

BenchCuts::BenchCuts(const KeptRun& run)
    : reels(reels_of(run)), old_film(run.old_cut, reels), new_film(run.new_cut, reels) {}

void drop_overlaps(KeptPieces& pieces) {
    drop_overlaps_on<&KeptPiece::new_at>(pieces);
    drop_overlaps_on<&KeptPiece::old_at>(pieces);
}

void join_neighbours(KeptPieces& pieces) {
    KeptPieces joined;
    for (const KeptPiece& piece : pieces) {
        if (!joined.empty() && continues(joined.back(), piece)) {
            joined.back().length += piece.length;
            joined.back().in_order |= piece.in_order;
        } else {
            joined.push_back(piece);
        }
    }
    pieces = std::move(joined);
}

Vector<std::size_t> in_new_order(const KeptPieces& pieces) {
    return sorted_numbers(0, pieces.size(),
                          [&](std::size_t a, std::size_t b) { return pieces[a].new_at < pieces[b].new_at; });
}
