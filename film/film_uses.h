#pragma once
// Makes the film strips of an edit, or of a saved cutlist table.

#include "film/film_strip.h"
#include "host/edit.h"
#include "host/recdb.h"

namespace film {

class LogRows;

/// A channel among those of its kind, and what of the lists' options changes what film is meant.
struct UseOptions {
    int kind = 1;   ///< 1 picture, 2 sound
    int number = 1; ///< of a sound channel, from 1. Picture is always listed from the lowest track up
    int film_reel = 2;
    bool neg_cut = false; ///< an optical has one number in the assembly, and what it covers none of its own
};

/// What the channel needs, by start, layer and role. With a log the numbers are those of the row in which each frame
/// lies, of the row's own reel where there is one, else of the one whose reel begins the event's; without a log they
/// are the edit's own labels. Time goes with events times the logarithm of rows and events.
Strips uses_of_edit(const EditPtr& edit, const UseOptions& options, const LogRows* log = nullptr);

/// What a saved table says is needed. Tables keep one number and a speed for each event, no source frames and no log
/// rows: `source` counts from the event's first frame, and film found past a row's end counts as exact.
Strips uses_of_table(const recdb& table);

} // namespace film
