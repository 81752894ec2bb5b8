#pragma once
// A cut held against the negative: what of it can't be conformed, and what would mend it.

#include "film/spent_film.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace film {

enum class Trouble : unsigned char {
    gone,  ///< splices spent frames that a use needs
    twice, ///< two uses need the same frames
    close, ///< there is too little film beyond an end for its splice
};

enum class Mending : unsigned char {
    shorten,
    duplicate, ///< print the use from the negative, and cut that
    print,     ///< make it from a print or an intermediate: the negative is gone
};

/// One of several ways out.
struct Mend {
    Mending mending = Mending::shorten;
    std::size_t use = 0;             ///< that is shortened or made
    std::int64_t head = 0, tail = 0; ///< frames that go, of the use and so of the edit
};

constexpr std::size_t no_use = static_cast<std::size_t>(-1);

struct Conflict {
    Trouble trouble = Trouble::gone;
    std::size_t use = 0;
    std::size_t other = no_use; ///< ahead of `use` on the film; of `twice`, and of `close` unless it is an old splice
    Side side = Side::head;     ///< of `close`, the end of `use`
    Stretches frames{};         ///< gone, or used by both; of `close` none
    std::int64_t lacking = 0;   ///< the frames of `frames`, or those by which the two ends lie too close
    /// Of `gone`: shortening the use there leaves more than half of it. Neither: they lie in its midst.
    bool at_head = false, at_tail = false;
    std::vector<Mend> mends{}; ///< the best first
};

struct Conform {
    std::vector<Conflict> conflicts;              ///< in the order of the uses
    std::int64_t standing_ends = 0, new_ends = 0; ///< of what is cut: where a splice stands, and where one is made
};

/// Holds a cut against what was carried out before. Of film that several uses need, each use is held against the one
/// before it on the film that reaches furthest. An optical needs its frames whole, unless an earlier cut's optical
/// holds them. n log n with the uses.
Conform conform_of(const CutUses& uses, const SpentFilm& spent);

} // namespace film
