#pragma once

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/report.h"

/// Each camera roll of the table once, in the table's present order.
void print_roll_list(report& out, recdb& table, LoggerHandle& logger);
