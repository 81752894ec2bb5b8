#pragma once
// The negative as the cuts left it that were carried out on it: which film their splices spent.
//
//     cut 1    - - - - x|. . . . . . . . . .|x - - -
//     cut 2    - - - - - - x|. . . . . . . .|            its end at the right stands as it was
//     spent    - - - - x - - x - - - - - - - x - - -

#include "film/cut_uses.h"
#include "film/stretches.h"

#include <map>
#include <set>
#include <vector>

namespace film {

enum class Side : bool { head, tail };

/// Of one strand, in perforations.
struct StrandState {
    Stretches spent;
    Stretches printed;            ///< what opticals were made of: their film is there a second time
    std::set<std::int64_t> heads; ///< the first perforations of stretches that were cut out
    std::set<std::int64_t> tails; ///< the last ones
    const std::set<std::int64_t>& ends(Side side) const { return side == Side::head ? heads : tails; }
};

class SpentFilm {
public:
    explicit SpentFilm(SpliceRules rules) : rules_(std::move(rules)) {}

    /// Cuts and splices all reels of a cut, after the cuts that were carried out before. A splice spends no film that
    /// the same cut uses: where one lay too close, something else was done. n log n with the uses.
    void carry_out(const CutUses& uses);

    const SpliceRules& rules() const { return rules_; }
    const std::map<Strand, StrandState>& strands() const { return strands_; }
    /// That of film which no cut touched is empty.
    const StrandState& state_of(const Strand& strand) const;

private:
    const SpliceRules rules_;
    std::map<Strand, StrandState> strands_;
};

/// The end of a use on its strand: its first or last perforation.
std::int64_t end_of(const CutUse& use, Side side);
/// Whether a use ends where film was cut before: the splice that stands there is as good for it.
bool stands(const CutUse& use, Side side, const StrandState& state);
/// What a splice at an end takes from beyond it.
FrameRange taken_beyond(std::int64_t end, Side side, std::int64_t perforations);
/// The frames of a run that any of the perforations lie in.
Stretches frames_holding(const FilmRun& run, const Stretches& perforations);

} // namespace film
