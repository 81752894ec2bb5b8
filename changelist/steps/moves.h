#pragma once
// Makes moves and steps out of matched, new and gone pieces. All operations return null.

#include "changelist/chgdb.h"

/// Marks what is in both cuts as kept in place, moved forward or moved back: the shorter stretch moves.
const char* classify_moves(chgdb& changes, LoggerHandle& log);
/// Joins pieces that are neighbours in both cuts, gives every row its outs and adds a "DC" row for each run of
/// neighbours that are gone.
const char* merge_rows(chgdb& changes, LoggerHandle& log);
/// Collects the new material that is in the old cut, or among the new material, too.
const char* find_reused_material(chgdb& changes, chgdb& old_events, chgdb& reused, LoggerHandle& log);
/// Numbers the steps along each reel.
const char* number_steps(chgdb& changes, LoggerHandle& log);
