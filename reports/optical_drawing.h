#pragma once
// The drawing of an optical: the rolls A and B side by side, one line of text below the other.

#include "reports/cut_s.h"
#include "reports/report.h"

/// Draws a shot that no transition joins to the next, and moves to the other roll.
///
///     SHOT: 1A roll: A001      -----SPACER 40 FRAMES-----
///                :             SHOT: 2 roll: A002
///
/// `side` is the roll that the shot takes, 0 left and 1 right; the ends are the frames up to which both rolls
/// are filled. `layer` counts from 1 and names the rolls. `more_on_track` tells that the layer goes on.
void print_optical_shot(report& out, cut_report& cut, int& side, int& left_end, int& right_end, int first_on_layer,
                        int layer, int more_on_track);

/// Draws two shots with the transition between them. The incoming shot takes the other roll; `side` moves there
/// only if it runs into a transition of its own, whose drawing then goes on from here.
///
///     SHOT: 1A roll: A001           :
///                V             SHOT: 2 roll: A002
///        *Dissolve* FX start 0002+00   FX end 0003+07   FX len 24
///                   ~~~~~~~~~~~~~~~~~~~~
void print_optical_transition(report& out, cut_report& outgoing, cut_report& incoming, int& side, int& left_end,
                              int& right_end, int first_on_layer, int layer);
