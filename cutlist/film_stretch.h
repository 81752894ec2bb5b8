#pragma once
// The film of a stretch of an event, and what joins it to its neighbours.

#include "cutlist/single_layer_records.h"
#include "reports/cut_s.h"

/// Sets the film codes of the first and the last frame of a stretch of `event`. The reel of `clip` must be set:
/// black and rendered material have no codes. Frames are the edit's, `to` is exclusive.
///
///     key numbers:   in|                    |out
///     event:           |--------------------|
///     stretch:              |from ----- to|
void set_film_codes(clip_part& clip, const cut_s& event, int from, int to);

/// Sets a transition of `length` frames, if that is above 0. `operation` is the event's own code of it.
void set_transition_in(clip_part& clip, const char* operation, int length);
void set_transition_out(clip_part& clip, const char* operation, int length);

/// The stretch of an event with its transitions.
struct full_stretch {
    int from;
    int to; ///< exclusive

    explicit full_stretch(const cut_s& event);
    /// The same of a cutlist's row, as a new record would read it.
    explicit full_stretch(const dbrecord& row);
};

/// Letters the rolls that pieces with transitions go to in turn: A, B, A, ...
class roll_letters {
public:
    void start_again() { used_ = 0; }
    char next() { return used_++ % 2 == 0 ? 'A' : 'B'; }

private:
    unsigned used_ = 0;
};
