#pragma once
// Which channels of an edit are listed, in which order, and what is done to each before it is converted.

#include "cutlist/event_array.h"
#include "host/edit.h"

class LogShotList;

/// Fills `events`: opticals first, then the cuts of each picture track from V1 upward; for sound the cuts of
/// channel `chan_num`. Events are converted through `shots` where `use_log` isn't 0, else by the labels of
/// their sources. Nothing here fails the run but a list of more records than `event_array` holds: then the
/// message is logged and the result false.
bool analyse_tracks(int chan_type, int chan_num, EditPtr& edit, int keep_crossfades, LoggerHandle& logger, int use_log,
                    CueList* cues, LogShotList* shots, event_array& events);
