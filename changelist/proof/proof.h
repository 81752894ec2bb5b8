#pragma once
// Carries steps out on the old cut and holds what comes of it against the new one.
//
// It reads nothing but both cuts and the steps, and shares no code with what found the steps. Where it parts from
// the list it stops. A step that takes film must find it: the first frame is the one of the old cut that the step
// names; all of it lay there from the start, so that nothing leaves that an earlier step brought; what is picked up
// runs through on the old cut's reel; and where film runs at its plain speed, its first and last key numbers are
// the step's. A lift may pass over film that an earlier step took from between.

#include "changelist/steps/kept_steps.h"

change_proof prove_steps(const KeptRun& run, const Vector<change_step>& steps);
