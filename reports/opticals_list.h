#pragma once
// The opticals of a reel, each with a drawing of its rolls.

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/report.h"

/// Sorts the table by optical, track and position.
void print_opticals_list(report& out, recdb& table, LoggerHandle& logger);
