#pragma once
// Prints the lists of a saved cutlist.

#include "quillbrook/cutlist.h"

/// `print_cutlist_reports` inside of a run.
bool print_saved_lists(const LightweightString<wchar_t>& cdb_path, const LightweightString<wchar_t>& report_path,
                       LoggerHandle& logger, bool overwrite_report, const configb* options);
