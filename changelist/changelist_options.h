#pragma once
// The options of a change run.

#include "host/channel_kinds.h"
#include "host/edit.h"
#include "host/text.h"
#include "quillbrook/changelist.h"

class configb;

/// All options, with the values that they have when the library is loaded. A key that a block lacks keeps its
/// member, but for the units, the bench list and its cost.
struct ChangelistOptions {
    int summary_list = 0;
    int pull_list = 0; ///< the list of new material
    int verbose_list = 0;
    int dissolve_list = 0; ///< the list of transitions; a sound cutlist clears it
    int bench_list = 0;
    int bench_cost = 0; ///< what the bench list's plan is to save; printed with it
    unsigned use_scene_take = 0;
    bool show_edge_codes = true;
    int units_frames = 1; ///< exactly one of the three is set
    int units_feet = 0;
    int units_timecode = 0;
    unsigned chan_type = picture_channel; ///< anything else is sound
    unsigned chan_num = 0;                ///< from 0
    Cookie old_cookie;
    Cookie new_cookie;

    /// Any other number is none.
    bench_goal goal() const {
        const bool known = bench_cost >= bench_usual && bench_cost <= bench_least_film;
        return known ? static_cast<bench_goal>(bench_cost) : bench_usual;
    }
};

/// The record of the run in progress; it outlives the run.
ChangelistOptions& changelist_options();

/// Null stands for a block without keys.
void read_changelist_options(const configb* block);
