#pragma once
// What a run leaves for those who ask for its steps: both cuts as film, what matched, and the steps of both lists.

#include "changelist/chgdb.h"
#include "quillbrook/changelist.h"

/// A stretch of film as it lies on a reel.
struct CutEvent {
    LabelPoint key_in;
    LabelPoint ink_in; ///< invalid where there is none
    char cam_reel[10] = "";
    double speed = 1.0;
    int missing = 0; ///< not 0: it has no real key number
    int reel = 0;
    int frame = 0;  ///< its first frame, as its cutlist has it
    int length = 0; ///< frames
    LightweightString<wchar_t> shot_name;
    char scene[30] = "";
    char take[30] = "";
};

/// A piece that is in both cuts, as the analysis cut it.
struct MatchedPiece {
    int old_reel = 0;
    int old_frame = 0;
    int new_reel = 0;
    int new_frame = 0;
    int length = 0;
};

struct KeptRun {
    bool done = false;        ///< all but the reports are made
    Vector<CutEvent> old_cut; ///< by reel and frame, without opticals
    Vector<CutEvent> new_cut;
    Vector<MatchedPiece> matched;
    Vector<change_step> detailed;
    bool bench_due = false; ///< the bench list, which is left until somebody asks for it
    bench_goal goal = bench_usual;
    Vector<change_step> bench;
    change_cost bench_cost;
    change_cost simple_cost;
};

/// The run that succeeded last, or is in progress; one a process.
KeptRun& kept_run();
/// The same with the bench list and its costs.
KeptRun& kept_run_with_bench();

// What keeps reads the rows that a table shows, and leaves their order, tags and view alone.

/// The events of a flattened cut, by reel and frame. To be called while the table shows all its rows.
void keep_cut(const chgdb& events, Vector<CutEvent>& cut);
/// The pieces of `changes` that are in both cuts; to be called before they are classified.
void keep_matches(const chgdb& changes, Vector<MatchedPiece>& matched);
/// The steps of the detailed list, by step. To be called once they are numbered.
void keep_detailed_steps(const chgdb& changes, Vector<change_step>& steps);
/// Plans the bench list's steps out of both cuts and what matched, and tells what they cost.
void plan_bench_steps(KeptRun& run, bench_goal goal = bench_usual);
