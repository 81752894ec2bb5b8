#pragma once
// Lines of a text file in the way of `fgets`, CR LF being one line end on every system.

#include <cstdio>

/// How a read ended. A line that ends with the file without a line end is both.
struct line_read {
    bool got = false;    ///< there was something to read
    bool at_end = false; ///< the file ended, or failed
};

/// Reads up to and with the next line end, at most `limit` - 1 characters, and closes them with a zero. At the
/// end of the file `out` is left alone.
line_read read_line(std::FILE* file, char* out, int limit);
