#pragma once
// Film that two pieces want, or that lies too close between them to be cut.

#include "documents/cut_film.h"

#include <vector>

namespace documents {

/// All film that two pieces want, or that lies closer than `CutOptions::butt` says; by reel. Of three uses of one frame
/// each is held against the one before it on the film that reaches furthest. Time goes with pieces times their
/// logarithm.
std::vector<Meeting> meetings_of(const CutFilm& cut);

} // namespace documents
