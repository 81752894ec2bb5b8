#pragma once
// Film that is in both cuts and needn't be made anew.

#include "changelist/bench/film_on_reels.h"

/// Both cuts on the bench.
struct BenchCuts {
    explicit BenchCuts(const KeptRun& run);

    ReelNumbers reels;
    FilmOnReels old_film;
    FilmOnReels new_film;
};

/// A piece that runs through on both sides. It may hold several shots that are neighbours in both cuts.
struct KeptPiece {
    FilmPlace old_at = 0;
    FilmPlace new_at = 0;
    std::int64_t length = 0;
    std::size_t old_reel = 0; ///< index
    std::size_t new_reel = 0;
    bool stays = false;    ///< where it lies, otherwise it is moved
    bool in_order = false; ///< holds a whole shot that stands in the same order on its reel in both cuts

    FilmPlace old_end() const { return old_at + length; }
    FilmPlace new_end() const { return new_at + length; }
};

/// By old place; no two share a frame on either side.
using KeptPieces = Vector<KeptPiece>;

/// One frame is at most in one of them: what begins ahead of the end of another on either side is dropped.
void drop_overlaps(KeptPieces& pieces);
/// Makes one of neighbours that are neighbours on both sides, and stay or move together.
void join_neighbours(KeptPieces& pieces);
/// The indices of pieces by new place.
Vector<std::size_t> in_new_order(const KeptPieces& pieces);

/// What is found in both cuts, at three depths.
struct FilmInBoth {
    KeptPieces in_order;    ///< whole shots in the same order on a reel of both cuts; all of them stay
    KeptPieces whole_shots; ///< with them the whole shots that lie elsewhere
    KeptPieces all;         ///< with these parts of shots; which ones stay is open
    /// Shots of either cut that aren't of `in_order`: as many steps delete and insert what differs, shot by shot.
    std::int64_t shots_that_differ = 0;
};

/// Of film that is used again, whole shots in order come first, then whole shots elsewhere, then parts between the
/// same shots, then parts elsewhere. `any_part` takes of the last even those that are no whole shot of either cut.
FilmInBoth film_in_both(const BenchCuts& cuts, const Vector<MatchedPiece>& matched, bool any_part);
