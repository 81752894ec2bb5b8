#pragma once
// The lists of one cut, each filled in one place.

#include "documents/cut_film.h"
#include "documents/document.h"

namespace documents {

/// The reel in order, with its transitions. In a neg cut what the lab makes is one row.
List assembly_list(const CutFilm& cut);

enum class PullOrder : unsigned char { roll, key, scene, tape };

/// What to take out of the vault, once for each place that uses it.
List pull_list(const CutFilm& cut, PullOrder order);

/// A sheet for each optical.
List optical_list(const CutFilm& cut);

/// Film that two places want, or that lies too close for a splice between them.
List reuse_list(const CutFilm& cut);

List roll_list(const CutFilm& cut);

/// Each shot once, by scene and take.
List scene_list(const CutFilm& cut);

/// What is wrong, missing or in doubt.
List doubt_list(const CutFilm& cut);

/// The four facts below the head of a list.
std::vector<Fact> facts_of(const CutFilm& cut);

} // namespace documents
