#pragma once
// The reel in running order.

#include "host/recdb.h"
#include "host/settings.h"
#include "reports/cut_s.h"
#include "reports/report.h"

/// In cutting-copy form events stand as they are cut, with their ink numbers; in neg-cut form an optical is one
/// line.
void print_assembly_list(report& out, recdb& table, LoggerHandle& logger);

/// The heading of a layered optical.
void print_effect_block(report& out, cut_report& cut);
/// The result is the event's `edit_out`.
int print_cutting_copy_event(report& out, cut_report& cut);
/// The result is the frame where the line ends.
int print_neg_cut_event(report& out, cut_report& cut);
