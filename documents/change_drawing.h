#pragma once
// A recut as pictures: the old reel above the new one, and the reel around each step, before it and behind it.

#include "documents/cut_film.h"
#include "documents/drawing.h"
#include "quillbrook/changelist.h"

#include <vector>

namespace documents {

/// Both cuts by reels, and the steps of the bench list, which make the new one of the old.
struct Recut {
    std::vector<CutFilmPtr> old_reels, new_reels; ///< none is null
    std::vector<change_step> steps;               ///< by number
};

/// Old above new for each reel that either cut has: crossed is out, hatched new, dotted moved; bands tie what stays.
/// Pieces carry "step-4" of the step that they are about. Where the steps don't make a reel as long as the new one
/// there are no bands, and it is said.
std::vector<Drawing> change_drawings(const Recut& recut);

/// What a reel looks like ahead of each step and behind it, both to one scale: all of it, or where it is long the film
/// around the step. In the order of the steps.
std::vector<Drawing> step_drawings(const Recut& recut);

} // namespace documents
