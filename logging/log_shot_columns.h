#pragma once
// The columns that shots are read from, by number. One set for the process: a list is read to its end before
// the next one resolves its columns.

class LoggerHandle;
class recdb;

enum log_slot : int {
    slot_name,
    slot_reel,
    slot_start_time,
    slot_end_time,
    slot_label_std,
    slot_cam_reel,
    slot_snd_reel,
    slot_start_keycode,
    slot_start_perf,
    slot_film_label_std,
    slot_lab_reel,
    slot_comp_reel,
    slot_start_inkcode,
    slot_pulldown,
    slot_sequence,
    slot_snd_reel_again,
    slot_24p_reel,
    slot_snd_start,
    slot_snd_label_std,
    slot_start_24p,
    slot_film_roll, ///< has no name of its own: one of the columns above, by choice
    slot_count
};

/// Looks up all columns of a table and says what is missing. `film_reel` chooses the column of the film roll:
/// 2 "cam reel", 3 "reel", 4 "snd reel", 10 "lab reel", 11 "comp reel", any other the one chosen last. 0, or
/// -1 when the table can't serve as a list of shots.
int resolve_log_columns(recdb& log, LoggerHandle& logger, int film_reel);

/// The column's number, or -1.
int log_column(log_slot slot);
