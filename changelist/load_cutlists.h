#pragma once
// Flattens the cutlists of one side into a table of changes.

#include "changelist/chgdb.h"
#include "changelist/cutlist_set.h"

class ChangeRecord;
class cut_report;
class cutdb;

/// Flattens the files of `set` into a table, saved as `chg_file`. `reel_start` and `reel_label` have 50 entries.
/// Null, or the text of the error, good until the next.
const char* load_cutlist_set(int* reel_start, EditLabel* reel_label, label_t* film_std,
                             const LightweightString<wchar_t>& chg_file, const CutlistSet& set, LoggerHandle& log);

/// Appends one cutlist to the table. `length_out` takes the frames that it adds.
const char* flatten_cutlist(int* length_out, int frame_offset, int reel, chgdb& table, cutdb& list, label_t film_std);

int fill_change_record(int frame_offset, int reel, ChangeRecord& row, const cut_report& cut);
