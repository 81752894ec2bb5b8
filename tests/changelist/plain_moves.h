#pragma once
// The passes done row by row, record by record, with nothing kept between two looks at a row: slow, and easy to
// see through. They say what the quick ones must come to.

#include "changelist/chgdb.h"

void plain_classify_moves(chgdb& changes);
void plain_merge_rows(chgdb& changes);
/// Pieces of film must be regular: one roll's texts in the order of their samples, no empty pieces.
void plain_find_reused(chgdb& changes, chgdb& old_events, chgdb& reused);
void plain_number_steps(chgdb& changes, int reel_max);
