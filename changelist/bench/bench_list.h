#pragma once
// Prints the bench list.

#include "changelist/steps/kept_steps.h"
#include "reports/report.h"

/// Key numbers stand in it whether `show_edge_codes` asks for them or not: the list is worked from by its numbers.
/// Where a cost was asked for, what the list costs stands behind the steps, beside what deleting and inserting would.
/// Positions and lengths are frames, with feet of the old cut's film standard below.
void write_bench_list(report& out, const KeptRun& run);
