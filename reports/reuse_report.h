#pragma once
// The cases of re-use, one a line.

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/report.h"

/// Prints nothing when the run's scan found no case, or when there was none.
void print_reuse_report(report& out, recdb& table, LoggerHandle& logger);
