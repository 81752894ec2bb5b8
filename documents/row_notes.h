#pragma once
// What a row says of doubts: those of its film, those of a check, and where else its film is used.

#include "documents/cut_film.h"
#include "documents/film_cells.h"

#include <map>
#include <vector>

namespace documents {

class RowNotes {
public:
    /// `cut` outlives it.
    explicit RowNotes(const CutFilm& cut);
    /// What there is to say of a piece whose row shows these runs, worst first.
    std::vector<Note> of(const film::Piece& piece, const std::vector<FilmRun>& runs) const;

private:
    Note reuse_note(const Meeting& meeting, const film::Piece& piece) const;

    const Units units_;
    std::multimap<int, const film::Finding*> findings_; ///< by event
    std::multimap<const film::Piece*, const Meeting*> met_;
};

} // namespace documents
