#pragma once
// What can stay in place when a row is put into a new order.

#include "host/text.h"

#include <cstdint>

/// Something that has a place in the new order, no two the same, and a weight above 0.
struct WeighedPlace {
    std::int64_t place = 0;
    std::int64_t weight = 0;
};

/// The indices of the heaviest run whose places rise. Of runs that weigh the same it is the one that ends with
/// the later item.
Vector<std::size_t> heaviest_rising_run(const Vector<WeighedPlace>& row);
