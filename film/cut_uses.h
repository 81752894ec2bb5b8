#pragma once
// How the reels of a cut take film from the negative: which stretches are cut out of it, and which are printed.
//
//     edit    | A . . . . | A goes on . | B at half speed |      the cut between A and its own next frames is none
//     roll A  - -x|-----------------------|x- - - -              one stretch, cut at both ends
//     roll B  - - - - |-------| - - - -                          printed: it stays where it is

#include "film/edit_film.h"
#include "film/film_needs.h"
#include "film/splice_loss.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace film {

/// Film that hangs together: its perforations count from number 0 of the prefix, whatever roll it is wound on.
struct Strand {
    label_t kind = label_none;
    std::string prefix;
    std::string roll; ///< where numbers don't tell the film by themselves; else empty

    friend auto operator<=>(const Strand& a, const Strand& b) = default;
    friend bool operator==(const Strand& a, const Strand& b) = default;
};

Strand strand_of(const FilmRun& run);
/// Of a frame of that film; 1 for timecode, whose perforations aren't known.
int perforations_of_frame(label_t kind);
/// The perforations of some frames, counted from number 0 of the prefix.
FrameRange perforations_of(const FilmRun& run, const FrameRange& frames);

/// A stretch of film that a reel uses.
struct CutUse {
    FilmRun run;
    FrameRange frames;
    Fraction begins, ends;           ///< between frames of film where times lie there
    int reel = 0;                    ///< among the reels, from 0
    std::int64_t start = 0, end = 0; ///< frames of the edit, with the transitions
    int event = 0, last_event = 0;   ///< as the assembly numbers them; 0 where it shows none
    int layer = 0;
    bool printed = false; ///< it isn't cut: an optical, or another speed, is made of it
    int off = 0;          ///< its frames may be off by as many
    std::string name, where;

    FrameRange perforations() const { return perforations_of(run, frames); }
};

using CutUses = std::vector<CutUse>;

struct CutFilm {
    CutUses uses;
    std::vector<UnknownFilm> unheld; ///< what numbers don't tell frame by frame
};

/// Adds what a reel cuts and prints. Events that go on with each other's film are one use. `log` is the table that its
/// numbers came from; null without one.
void add_cut(const EditFilm& film, const LogRows* log, CutMethod method, int reel, CutFilm& all);

} // namespace film
