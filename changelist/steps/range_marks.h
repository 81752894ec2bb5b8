#pragma once
// Marks on ranges of places, where a later mark goes over an earlier one.

#include "host/text.h"

#include <cstddef>
#include <numeric>

/// Takes marks one by one and tells at the end which one each place carries. The cost doesn't grow with the
/// lengths of the ranges, however often they overlap.
template <class Mark> class RangeMarks {
public:
    struct Range {
        std::size_t first;
        std::size_t last; ///< exclusive
        Mark mark;
    };

    /// An empty range marks nothing.
    void mark(std::size_t first, std::size_t last, const Mark& with) {
        if (first < last) ranges_.push_back({first, last, with});
    }

    /// Calls `carry(place, range)` once for each marked place below `places`, with the range marked last.
    template <class Carry> void settle(std::size_t places, Carry carry) const {
        Vector<std::size_t> next_free(places + 1);
        std::iota(next_free.begin(), next_free.end(), std::size_t{0});
        for (auto range = ranges_.rbegin(); range != ranges_.rend(); ++range) {
            const std::size_t last = range->last < places ? range->last : places;
            for (std::size_t place = free_from(next_free, range->first, places); place < last;
                 place = free_from(next_free, place, places)) {
                next_free[place] = place + 1;
                carry(place, *range);
            }
        }
    }

private:
    // Each look halves the way of the next one.
    static std::size_t free_from(Vector<std::size_t>& next_free, std::size_t place, std::size_t places) {
        if (place > places) return places;
        while (next_free[place] != place) {
            next_free[place] = next_free[next_free[place]];
            place = next_free[place];
        }
        return place;
    }

    Vector<Range> ranges_;
};
