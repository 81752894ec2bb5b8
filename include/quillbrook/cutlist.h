#pragma once
// Cutlists: from an edit to a ".cdb" table and a paged report.

#include "host/edit.h"
#include "host/settings.h"
#include "quillbrook/export.h"

/// Turns an edit into a cutlist database and a report.
///
/// `options` holds the keys that `cutlist_option_keys` lists and "output_file", the UTF-8 path of the report;
/// the table goes beside it with the extension ".cdb". A key that the block lacks keeps its value of the run
/// before. `use_log` not 0 takes key numbers from the logging table in `log_file`, 0 from the labels of the
/// source edits. `cues` may be null; it stays the caller's. `overwrite_report` removes an existing report
/// first. A list holds at most 9,999 records.
///
/// True only when the table and the report were both made. All else is told to `logger`: level 4 ends the
/// run, level 0 is progress. One run at a time in a process: a
/// second one is refused. Raises no exception, whatever the host does.
QUILLBROOK_API bool make_cutlist_from_edit(EditPtr edit, LoggerHandle& logger, int use_log, const configb* options,
                                           CueList* cues, bool overwrite_report);

/// Prints the lists of a saved cutlist into one report file. Where `options` isn't null it is read first, as
/// above. True when the report was made.
QUILLBROOK_API bool print_cutlist_reports(const LightweightString<wchar_t>& cdb_path,
                                          const LightweightString<wchar_t>& report_path, LoggerHandle& logger,
                                          bool overwrite_report, const configb* options);

/// One key of the options block.
struct cutlist_option_key {
    const char* name; ///< null behind the last
    bool is_text;     ///< text of at most 63 bytes, else a whole number
    bool is_used;     ///< false: read and kept, or a word of the vocabulary that nothing reads
};

/// All keys, "output_file" apart, static.
QUILLBROOK_API const cutlist_option_key* cutlist_option_keys();
