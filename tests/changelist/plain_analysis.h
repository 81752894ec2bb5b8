#pragma once
// The comparison once more in the plainest way: by walks over a table that is read again each time, with recursion.

#include "changelist/change_record.h"
#include "changelist/chgdb.h"

/// The index of the candidate that an event is matched with by its key numbers, or -1.
int plain_find_match(const ChangeRecord& x, const chgdb& candidates);
/// The same for a varispeed event.
int plain_find_varispeed(const ChangeRecord& x, const chgdb& candidates);
void plain_match_event(ChangeRecord x, chgdb& candidates, chgdb& changes);
void plain_merge_events(chgdb& old_events, chgdb& new_events, chgdb& changes);
