#pragma once
// One entry of a pull list.

#include "reports/cut_s.h"
#include "reports/report.h"

/// Prints what is to be pulled for an event, its handles included. Material that isn't film prints nothing.
/// Sorted by roll, a roll is named in the first of its entries and again on each page: the operation remembers
/// the last roll and page, and `first` makes it forget them. `optical_list` not 0 numbers by optical.
void print_pull_event(report& out, cut_report& cut, int reused, bool first, int optical_list);
/// The next list starts as the first of the process does.
void forget_pulled_roll();
