#pragma once
// Prints the lists of a saved cutlist.

#include "quillbrook/cutlist.h"

/// `print_cutlist_reports` inside of a run.
bool print_saved_lists(const LightweightString<wchar_t>& cdb_path, const LightweightString<wchar_t>& report_path,
                       LoggerHandle& logger, bool overwrite_report, const configb* options);
/// Behind a run that something of the host ended: the next one starts as the first of the process does.
void forget_ended_run();
