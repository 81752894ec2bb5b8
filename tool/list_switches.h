#pragma once
// The options that choose lists by words: short ways to set options of the library.

#include "tool/job_parts.h"
#include "tool/option_table.h"

#include <vector>

namespace tool {

/// --lists of a cutlist. `doubts` is set where the list of missing and doubtful elements is asked for, which the
/// library doesn't print.
Option printed_lists_option(LibraryOptions& library, bool& doubts);
/// --single-layer.
Option single_layer_option(LibraryOptions& library);
/// --lists of a changelist. Sets which are on by default.
Option change_lists_option(LibraryOptions& library);
/// --cost of a changelist.
Option bench_cost_option(LibraryOptions& library);
/// --units of a changelist.
Option change_units_option(LibraryOptions& library);

/// The extensions of the single-layer lists that a run with these options makes.
std::vector<const char*> single_layer_extensions(const LibraryOptions& options);
/// The extensions of all single-layer lists that there are.
std::vector<const char*> all_single_layer_extensions();

} // namespace tool
