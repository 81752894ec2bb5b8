#pragma once
// Rows by their numbers, for orders other than the one they stand in.

#include "host/text.h"

#include <algorithm>
#include <cstddef>

/// From `from` up to the one before `to`.
inline Vector<std::size_t> row_numbers(std::size_t from, std::size_t to) {
    Vector<std::size_t> numbers(to - from);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = from + i;
    return numbers;
}

/// The same, sorted by `comes_before(a, b)` of two numbers.
template <class Before> Vector<std::size_t> sorted_numbers(std::size_t from, std::size_t to, Before comes_before) {
    Vector<std::size_t> numbers = row_numbers(from, to);
    std::sort(numbers.begin(), numbers.end(), comes_before);
    return numbers;
}
