#pragma once
// What a row says of doubts: those of its film, those of a check, and where else its film is used.

#include "documents/cut_film.h"
#include "documents/film_cells.h"

#include <map>
#include <vector>

namespace documents {

/// Two pieces that meet on the negative.
struct Meeting {
    const film::Piece* first = nullptr; ///< earlier in the reel
    const film::Piece* second = nullptr;
    std::int64_t shared = 0; ///< frames that both use
    std::int64_t apart = 0;  ///< where none are, frames that lie between them
    film::Count key;         ///< of the first shared frame, or of the first frame of the later stretch
};

/// All film that two pieces want, or that lies closer than `CutOptions::butt` says; by reel. Of three uses of one frame
/// each is held against the one before it on the film that reaches furthest. Time goes with pieces times their
/// logarithm.
std::vector<Meeting> meetings_of(const CutFilm& cut);

class RowNotes {
public:
    /// `cut` outlives it.
    explicit RowNotes(const CutFilm& cut);
    /// What there is to say of a piece whose row shows these runs, worst first.
    std::vector<Note> of(const film::Piece& piece, const std::vector<FilmRun>& runs) const;

private:
    Note reuse_note(const Meeting& meeting, const film::Piece& piece) const;

    const Units units_;
    std::vector<Meeting> meetings_;
    std::multimap<int, const film::Finding*> findings_; ///< by event
    std::multimap<const film::Piece*, const Meeting*> met_;
};

} // namespace documents
