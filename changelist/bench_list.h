#pragma once
// Prints the bench list.

#include "changelist/kept_steps.h"
#include "reports/report.h"

void write_bench_list(report& out, const KeptRun& run);
