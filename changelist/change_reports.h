#pragma once
// The lists of a change run.

#include "changelist/chgdb.h"

class report;

/// Prints the lists that the options ask for.
void write_change_reports(report& out, chgdb& changes, chgdb& new_events, LoggerHandle& log);

void write_banner(report& out);
void write_summary(report& out, chgdb& changes, LoggerHandle& log);
void write_new_material(report& out, chgdb& changes, LoggerHandle& log);
void write_changes(report& out, chgdb& changes, LoggerHandle& log);
void write_transitions(report& out, chgdb& new_events, LoggerHandle& log);
