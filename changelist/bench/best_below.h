#pragma once
// The best of what has been seen ahead of a rank.

#include "host/text.h"

#include <cstddef>

/// A binary indexed tree. `Best` has a default that everything is at least as good as, and `<`.
template <class Best> class BestBelow {
public:
    explicit BestBelow(std::size_t ranks) : best_(ranks + 1) {}

    /// Of ranks below `rank`.
    Best best_below(std::size_t rank) const {
        Best best;
        for (; rank > 0; rank -= rank & (~rank + 1)) {
            if (best < best_[rank]) best = best_[rank];
        }
        return best;
    }
    /// Of two as good as each other the later one counts.
    void add(std::size_t rank, const Best& found) {
        for (std::size_t at = rank + 1; at < best_.size(); at += at & (~at + 1)) {
            if (!(found < best_[at])) best_[at] = found;
        }
    }

private:
    Vector<Best> best_;
};
