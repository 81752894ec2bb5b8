#pragma once
// The labels that one run of the generator counts with.

#include "host/edit.h"
#include "host/labels.h"

/// Module state of one run. The labels are invalid between runs.
struct generator_labels {
    EditLabel edit_tc_label; ///< the master edit's own timecode
    EditLabel key_label;     ///< key numbers: the film standard of the whole list
    EditLabel foot_label;    ///< the same in feet and frames: edit positions to frames
    EditLabel ink_label;
    int film_standard_set = 0;      ///< 1 once a source's standard has been adopted
    bool mixed_kc_standard = false; ///< a source counts key numbers in another standard
};

generator_labels& generator();

/// Makes the four labels of a run. `film_type` is the kind of the key numbers, `long_keycode` the option.
void make_generator_labels(Edit& edit, label_t film_type, int long_keycode);
/// At the end of a run. The marks behind the labels stay until the next.
void clear_generator_labels();

/// Clears them when it goes.
struct labels_of_run {
    labels_of_run() = default;
    ~labels_of_run() { clear_generator_labels(); }
    labels_of_run(const labels_of_run&) = delete;
    labels_of_run& operator=(const labels_of_run&) = delete;
};

/// Adopts the film standard of a source edit, once a run; later calls do nothing.
void set_film_standard(label_t type, int long_keycode);

/// The film frame of a position on the master edit, in seconds.
int frame_of_position(double time, const EditPtr& edit);
/// The film frames of a stretch of the master edit, in seconds.
int frames_of_duration(double duration, const EditPtr& edit);
