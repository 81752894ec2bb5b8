#pragma once

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/report.h"

/// The reel in running order by timecode, for sound.
void print_timecode_assembly_list(report& out, recdb& table, LoggerHandle& logger);
