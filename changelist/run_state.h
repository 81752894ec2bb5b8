#pragma once
// What the passes of a change run share. It stands until the next run overwrites it.

#include "host/labels.h"

constexpr int reel_slots = 50; ///< a side has at most one reel less

/// What loading a side leaves for the lists.
struct ChangeSide {
    int reel_start[reel_slots] = {}; ///< frames ahead of each reel; the whole length behind the last
    EditLabel reel_label[reel_slots];
    label_t film_std = label_none;
};

struct ChangeRun {
    int reel_max = 0; ///< the greater of both reel counts
    int multi_reel = 0;
    int track_seen = 0; ///< a cutlist has been accepted
    int sound_list = 0;
    int sound_track = 0;
    bool labels_held = true; ///< the labels of all rows stay as they are when they are read and written again
    ChangeSide old_side;
    ChangeSide new_side;
};

ChangeRun& change_run();
