#pragma once
// Count sheets as pictures: the rolls of an optical to scale, as they run through the printer.

#include "documents/cut_film.h"
#include "documents/drawing.h"

#include <vector>

namespace documents {

/// One drawing a layer, from the lowest: the shots by turns on the rolls A and B, of the next layer on C and D. Frames
/// of the optical count from 0 in its texts; the drawing's own are those of the reel. None where nothing is known of
/// its film.
std::vector<Drawing> drawings_of(const CutFilm& cut, const LabOptical& optical);

} // namespace documents
