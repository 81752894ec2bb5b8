#pragma once
// Opticals: effects on a channel that a film lab must make.

#include "cutlist/event_array.h"
#include "host/edit.h"

/// 1 and 2 are effects; 0, 3 and 4 aren't.
int classify_event_object(const CelEventPair& pair);
inline bool is_optical_effect(int object_class) { return object_class == 1 || object_class == 2; }

/// Adds an optical record for each effect of the channel that draws on picture tracks.
void analyse_fx_opticals(EditPtr& edit, int chan, CueList* cues, event_array& events);
