#pragma once
// Lines cut into cells.

#include "formats/logs/log_row.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// The cells between delimiters, without changes.
std::vector<LogCell> cells_between(std::string_view line, char delimiter);
std::vector<std::string_view> texts_of(const std::vector<LogCell>& cells);
/// The column of the first cell at or behind `known` that holds something but blanks; 0 without one.
int first_extra_cell(const std::vector<LogCell>& cells, std::size_t known);

} // namespace formats
