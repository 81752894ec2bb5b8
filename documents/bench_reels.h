#pragma once
// The film of a cutting copy as the steps of a changelist cut it up and put it together again.

#include "quillbrook/changelist.h"

#include <cstdint>
#include <map>
#include <vector>

namespace documents {

/// Frames that lie one behind the other in the old cut, or that a step brought.
struct BenchRun {
    int old_reel = 0;           ///< from 1; 0: new film
    std::int64_t old_start = 0; ///< on that reel; of new film from 0
    std::int64_t length = 0;
    int step = 0;    ///< that put it where it lies; 0: it always lay there
    int fetched = 0; ///< the step that picked it up; 0: none
};

using BenchReel = std::vector<BenchRun>;

std::int64_t length_of(const BenchReel& reel);

/// The runs of frames [from, to) of a reel.
BenchReel part_of(const BenchReel& reel, std::int64_t from, std::int64_t to);

class Bench {
public:
    /// Film of each reel of the old cut, in frames; a cut with more reels later has empty ones.
    Bench(const std::vector<std::int64_t>& lengths, std::size_t reels);

    /// False where the step can't be done: the reel is too short, or nothing was picked up for it.
    bool carry_out(const change_step& step);
    const std::vector<BenchReel>& reels() const { return reels_; }

    /// What left the reels for good: runs of the old cut, with the step that took them.
    const std::vector<BenchRun>& gone() const { return gone_; }

private:
    BenchReel take(BenchReel& reel, std::int64_t position, std::int64_t length) const;

    std::vector<BenchReel> reels_;
    std::vector<BenchRun> gone_;
    std::map<int, BenchReel> held_; ///< by the step that picked it up
};

} // namespace documents
