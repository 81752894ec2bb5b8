#pragma once
// Finds out which film of the old cut survives in the new one. All operations return null for success.

#include "changelist/change_record.h"
#include "changelist/chgdb.h"

class CutlistSet;

/// A whole run. Null, or the text of the error.
const char* run_changelist(const CutlistSet& old_set, const CutlistSet& new_set,
                           const LightweightString<wchar_t>& report_file, LoggerHandle& log);

/// Cuts the events of both tables into pieces that are in both cuts or in one, and adds them to `changes`. With
/// `labels_held` no label of either table changes when it is read and written again, so what stays whole is copied; so
/// are the brackets as they stand, which are read from the tables of the cuts alone.
const char* merge_events(chgdb& old_events, chgdb& new_events, chgdb& changes, LoggerHandle& log,
                         bool labels_held = false);

/// The transition of an end differs; a plain cut is none.
bool has_fx_changes(const ChangeRecord& old_rec, const ChangeRecord& new_rec);

/// Adds an "FX" row for each end at which the transition differs. Plain cuts are emptied in both records.
const char* record_fx_changes(ChangeRecord& old_rec, ChangeRecord& new_rec, chgdb& changes);
