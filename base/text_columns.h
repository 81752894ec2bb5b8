#pragma once
// The schema of a table whose columns are all texts.

#include "host/recdb.h"

#include <cstddef>

template <std::size_t N> struct TextColumns {
    DBFieldDesc columns[N + 1]; ///< closed by one without a name

    explicit TextColumns(const char* const (&names)[N]) {
        for (std::size_t column = 0; column < N; ++column)
            columns[column] = {names[column], DBFieldTypes::text};
    }
};
