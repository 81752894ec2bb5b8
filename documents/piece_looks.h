#pragma once
// What film is drawn as: the same in all drawings.

#include "documents/drawing.h"
#include "film/film_pieces.h"

#include <string>

namespace documents {

/// Stuff, pattern and name of a piece, and in its details what is remarkable of its film: another speed, no number.
DrawnPiece looks_of(const film::Piece& piece);

/// What the patterns of a drawing mean, those that it has.
std::string patterns_of(const Drawing& drawing);

} // namespace documents
