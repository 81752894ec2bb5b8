#pragma once
// The lists of a recut: what to do to the cutting copy, what to pull for it, and what comes out.

#include "documents/cut_film.h"
#include "documents/document.h"
#include "quillbrook/changelist.h"

#include <vector>

namespace documents {

/// What a run of the changelist found.
struct ChangeFilm {
    TitleBlock title; ///< of the new cut; its date is that of both
    label_t film = label_none;
    bool frames = false;
    std::vector<change_step> changes, bench;      ///< the steps of the two lists
    std::vector<CutFilmPtr> old_reels, new_reels; ///< by reel
};

/// The steps of the last run, between these cuts. Each side has a reel at least.
ChangeFilm changes_of_last_run(std::vector<CutFilmPtr> old_reels, std::vector<CutFilmPtr> new_reels, bool frames);

/// The steps in the order in which the list of changes has them, which can't always be carried out one by one.
List change_list_of(const ChangeFilm& film);
/// The steps that can be carried out one after the other; positions are those of the reel as it then stands.
List bench_list_of(const ChangeFilm& film);
/// The film that is new, by key number.
List change_pull_of(const ChangeFilm& film);
/// The film that comes out, by key number, with where it lay.
List discard_list_of(const ChangeFilm& film);
/// The transitions of the new cut.
List transition_list_of(const ChangeFilm& film);
/// How long each reel is after each step.
List reel_list_of(const ChangeFilm& film);

} // namespace documents
