#pragma once
// Matches one event of the old cut with the new events of its roll.

#include "changelist/matching/candidates.h"

/// Cuts `x` and the candidates that it meets into pieces: what is in both cuts goes to `changes`, what is left of a
/// candidate back among the candidates, and what is left of `x` is matched again until it goes to `changes` as "DU".
/// Of an `x` that is a row's, only what matching needs has to have been read yet. Null for success.
const char* match_event(ChangeRecord& x, Candidates& candidates, chgdb& changes, const dbrecord* row = nullptr);
