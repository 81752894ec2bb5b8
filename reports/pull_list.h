#pragma once
// What has to be pulled from the rolls, by roll or by code.

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/report.h"

/// Scans for re-use if the run hasn't done so yet. The opticals pull list and the re-use report follow where
/// they apply.
void print_pull_list(report& out, recdb& table, LoggerHandle& logger);
/// The shots inside opticals, in the table's present order.
void print_opticals_pull_list(report& out, recdb& table, LoggerHandle& logger);
