#pragma once
// The order in which a pass wants the rows of a table.

#include "host/recdb.h"

#include <cstddef>

/// Sorts by fields, most significant first, closed by -1.
template <std::size_t N> void sort_by(recdb& table, const int (&fields)[N]) {
    int list[N];
    for (std::size_t place = 0; place < N; ++place)
        list[place] = fields[place];
    table.set_sortfields(list);
    table.sort(1, 0);
}
