#pragma once
// Events to records by the labels of their source edits.

#include "cutlist/event_details.h"

#include <memory>

/// Makes a record of the event at the handle, with the transition behind it folded in. On success `out` holds
/// it and the handle rests on the next in-point; otherwise `out` is null. `track` is the picture
/// track from 1, and 1 for sound.
convert_result convert_event_from_labels(EditPtr& edit, int chan, CueList* cues, ce_handle& handle,
                                         std::unique_ptr<cut_s>& out, int track);
