#pragma once
// Numbers for the shots and the film of both cuts, so that what is the same can be told by a number.

#include "changelist/bench/film_on_reels.h"

/// What an event shows.
struct NumberedShot {
    static constexpr std::uint32_t no_film = 0;

    std::uint32_t shot = 0; ///< the same film from the same frame on, as long and as fast
    std::uint32_t film =
        no_film; ///< the same roll at the plain speed; of other film, and of filler, nothing tells parts
    std::int64_t first_frame = 0; ///< on that film
    bool filler = false;
};

/// By event.
struct NumberedCuts {
    Vector<NumberedShot> old_cut;
    Vector<NumberedShot> new_cut;
};

NumberedCuts number_shots(const FilmOnReels& old_film, const FilmOnReels& new_film);
