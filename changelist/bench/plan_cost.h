#pragma once
// What it costs to make the new cut with the pieces that are kept.

#include "changelist/bench/kept_pieces.h"
#include "quillbrook/changelist.h"

/// Of the steps that the bench list makes of these pieces.
change_cost cost_of(const BenchCuts& cuts, const KeptPieces& pieces);

/// In how many steps the film from `from` to `to` is put in, an event each.
std::int64_t insertions(const FilmOnReels& film, FilmPlace from, FilmPlace to);

/// What would be saved by deleting and inserting a piece in place of moving it.
struct Saving {
    std::int64_t steps = 0;
    std::int64_t moves = 0;
    std::int64_t splices = 0;
};

/// Pieces some of which are no longer kept. What stays, stays.
class PlanLedger {
public:
    /// Holds on to both.
    PlanLedger(const BenchCuts& cuts, const KeptPieces& pieces);

    /// Of a piece that is moved and still kept.
    Saving saved_without(std::size_t piece) const;
    void drop(std::size_t piece);
    bool is_kept(std::size_t piece) const { return kept_[piece] != 0; }
    KeptPieces kept_pieces() const;

private:
    static constexpr std::size_t nobody = SIZE_MAX;

    /// Who is kept ahead and behind, by place on one side.
    struct Neighbours {
        std::size_t ahead = nobody;
        std::size_t behind = nobody;
    };
    /// Film of the piece's reel that isn't kept lies next to it.
    struct FreeFilm {
        bool ahead = false;
        bool behind = false;
    };

    void link(Vector<Neighbours>& side, const Vector<std::size_t>& order);
    void unlink(Vector<Neighbours>& side, std::size_t piece);
    void measure_gaps();
    FreeFilm free_of_old(std::size_t piece) const;
    FreeFilm free_of_event(std::size_t piece) const;

    const BenchCuts& cuts_;
    const KeptPieces& pieces_;
    Vector<char> kept_;
    Vector<Neighbours> old_side_;
    Vector<Neighbours> new_side_;
    Vector<std::size_t> gap_;        ///< between what stays, in which each piece lies
    Vector<std::int64_t> gap_lifts_; ///< frames that are lifted there
};
