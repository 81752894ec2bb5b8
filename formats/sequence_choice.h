#pragma once
// Which of the sequences of a file is meant.

#include "formats/edit_reading.h"

#include <cstddef>
#include <optional>

namespace formats {

/// Which of `all` the options name: the only one of that name, or the one at a place as "Reel 1 (line 12)", or without
/// a name the only one. Else nothing, and the error of `result` says which there are, and of several with one name
/// where they stand.
std::optional<std::size_t> choose_sequence(const std::vector<Sequence>& all, const ReadOptions& options,
                                           const std::string& path, ReadResult& result);

/// "\"Reel 1\" (line 12), \"Reel 2\" (line 300)".
std::string names_of(const std::vector<Sequence>& all);

} // namespace formats
