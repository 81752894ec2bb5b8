#pragma once
// The columns of logging tables.

#include "host/recdb.h"

/// A film log, and a log without film columns. Built when first asked for, so that a process without memory gets as
/// far as saying so, and kept for good; closed by an entry without a name.
DBFieldDesc* filmdb_fields();
DBFieldDesc* videolog_fields();

/// What a table of another revision must have to be merged; closed by null.
extern const char* const filmdb_required_fields[];

/// Columns of a film log that others count by number.
enum filmdb_column : int {
    fc_name = 0,
    fc_reel = 1,
    fc_start_time = 2,
    fc_end_time = 3,
    fc_label_std = 4,
    fc_sequence = 7,
    fc_start_keycode = 12,
    fc_snd_start = 19,
    fc_snd_label_std = 20,
    fc_start_inkcode = 24,
    fc_notes = 29,
};
