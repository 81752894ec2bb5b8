#pragma once
// The reel as a strip: its shots and black in their order, with rolls, opticals and doubts.

#include "documents/cut_film.h"
#include "documents/drawing.h"

namespace documents {

Drawing reel_drawing(const CutFilm& cut);

} // namespace documents
