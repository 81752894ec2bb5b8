#pragma once
// A cut held against the negative, with all that is told of it, whatever the output.

#include "film/conform.h"
#include "film/order_facts.h"

#include <string>
#include <vector>

namespace film {

struct ConformToTell {
    std::vector<OrderInput> reels;
    std::vector<std::vector<OrderInput>> cuts; ///< carried out one after another, each with its reels
    std::string log;                           ///< empty without one
    SpliceRules rules;
    CutUses uses;
    Conform conform;
    std::vector<UnknownFilm> unheld; ///< of the reels
    struct UnheldCut {
        std::size_t cut;
        UnknownFilm film; ///< its reel is that of the cut
    };
    std::vector<UnheldCut> unheld_cuts;     ///< whose splices aren't counted
    std::map<Strand, StrandState> negative; ///< as the cuts left it

    bool first_cut() const { return cuts.empty(); }
    bool conforms() const { return conform.conflicts.empty(); }
    /// Kinds of film that are cut, each once.
    std::vector<label_t> kinds() const;
};

/// Frames of the edit that go when a use is shortened, at its head and at its tail.
FrameRange head_of_edit(const CutUse& use, const Mend& mend);
FrameRange tail_of_edit(const CutUse& use, const Mend& mend);
/// How many uses can't be conformed as they stand.
std::int64_t troubled_uses(const Conform& conform);

} // namespace film
