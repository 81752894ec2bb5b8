#pragma once
// Finds what in a log would spoil a conform.

#include "formats/logs/log_row.h"

#include <string>
#include <vector>

namespace formats {

enum class LogProblem {
    faulty_timecode,
    end_before_start,
    zero_length,
    very_long,
    overlap,
    doubled,
    standard_differs,
    past_day,
    no_reel,
    reel_cut,
    reel_begins,
    no_roll,
    no_key,
    bad_key,
    key_end_before_start,
    prefix_changes,
    length_differs,
    film_differs,
};

struct LogFinding {
    LogProblem problem;
    std::string file;
    int line = 0;
    std::string text; ///< what is wrong, in one line
};

/// The findings about all rows as one log, by file in the order of the rows, and by line. `tolerance` is how many
/// film frames a length on film may differ where there is pulldown; without it lengths must be the same.
std::vector<LogFinding> check_log(const std::vector<LogRow>& rows, int tolerance = 2);

} // namespace formats
