#pragma once
// Changelists: from the cutlists of an old and a new edit to what has to be done to the cutting copy.

#include "host/labels.h"
#include "host/settings.h"
#include "host/text.h"
#include "quillbrook/export.h"

#include <cstdint>
#include <utility>
#include <vector>

/// One pair a reel, in order: the old cutlist file and the new one. A side with fewer reels is filled up with
/// ".CDB", which ends it.
using changelist_reels = std::vector<std::pair<LightweightString<wchar_t>, LightweightString<wchar_t>>>;

/// Compares two cuts by key number and prints what changed into `report_file`.
///
/// `config` holds the keys that `changelist_option_keys` lists; one that the block lacks keeps its value of the
/// run before, but for the units of length, the bench list and its cost, which start as frames, off and 0 with every
/// run; null stands for a block without keys. At most 49 reels a side. Two working files, "oldcut__.chg" and
/// "newcut__.chg", stay in the lists directory.
///
/// Null when the report was made, otherwise the text of the error, which stays good until the next call and
/// isn't the caller's. `log` is told the progress. One run at a time in a process: a
/// second one is refused. Raises no exception, whatever the host does.
QUILLBROOK_API const char* mr_make_changelist(changelist_reels& reels, const LightweightString<wchar_t>& report_file,
                                              configb* config, LoggerHandle& log);

/// One key of the options block.
struct changelist_option_key {
    const char* name; ///< null behind the last
    bool is_text;     ///< text, else a whole number
    bool is_list;     ///< a list to print, where not 0
};

/// All keys, static.
QUILLBROOK_API const changelist_option_key* changelist_option_keys();

/// The two lists that tell what to do step by step.
enum change_list : std::int32_t {
    detailed_changes = 0, ///< "DETAILED LIST OF CHANGES"
    bench_changes = 1,    ///< "BENCH LIST"
};

enum change_action : std::int32_t {
    change_remove = 0,  ///< film leaves the cut
    change_pick_up = 1, ///< film leaves its place, to be put down by another step
    change_put_down = 2,
    change_insert = 3, ///< new film
};

/// One thing to do at the bench.
struct change_step {
    std::int32_t step = 0; ///< its number in the list, from 1
    change_action action = change_remove;
    std::int32_t reel = 0;             ///< from 1
    std::int32_t position = 0;         ///< frames from the reel's start, on the film as it then stands
    std::int32_t printed_position = 0; ///< as the list prints it; the detailed list counts on over the reels
    std::int32_t length = 0;           ///< frames
    std::int32_t other_step = 0;       ///< where picked up film goes, where put down film comes from; else 0
    std::int32_t reel_length = -1;     ///< frames of the reel after the step; -1 where the list doesn't tell
    LabelPoint first_key;              ///< of its first frame; a lift of several shots is named after the first
    LabelPoint last_key;
    std::int32_t first_key_missing = 0; ///< not 0: that film has no number, and the key only tells it from other film
    std::int32_t last_key_missing = 0;
    LabelPoint first_ink; ///< invalid where there is none
    LabelPoint last_ink;
    double speed = 1.0;
    char cam_reel[10] = "";
    LightweightString<wchar_t> shot_name;
    char scene[30] = "";
    char take[30] = "";
    std::int32_t old_reel = 0;  ///< where the film lay in the old cut; 0 for new film
    std::int32_t old_frame = 0; ///< as the old cutlist counts frames
};

/// The steps of the last run, in order; null where it failed. They stay good until the next run. The bench list has
/// steps whether it was printed or not: they are planned when somebody first asks, and null where memory ends then.
QUILLBROOK_API const change_step* change_steps(change_list list, unsigned& count);

/// What the bench list is to save, by the number that the key "chg_bench_cost" takes.
enum bench_goal : std::int32_t {
    bench_usual = 0,          ///< no more steps than shots differ, and as much film as that leaves
    bench_fewest_moves = 1,   ///< `change_cost::moves`
    bench_fewest_splices = 2, ///< `change_cost::splices`, as long as whole shots that are in order stay
    bench_least_film = 3,     ///< `change_cost::frames`
};

/// What it costs to make the new cut of the old one.
struct change_cost {
    std::int64_t steps = 0;
    std::int64_t moves = 0;   ///< pieces handled: lifts, insertions, and film that is moved, which is two steps
    std::int64_t splices = 0; ///< places where the old cut is parted, and joins of the new one that weren't there
    std::int64_t frames = 0;  ///< of film deleted, inserted and moved
};

/// What the bench list of the last run costs, and what it would cost to delete and insert each shot that differs;
/// nothing where the run failed.
QUILLBROOK_API void bench_list_costs(change_cost& planned, change_cost& simple);

/// What came of carrying steps out.
struct change_proof {
    bool proved = false;
    std::int32_t steps = 0;    ///< carried out
    std::int32_t step = 0;     ///< the one at which film and list part; 0 where no step put the film there
    std::int32_t reel = 0;     ///< where they part
    std::int32_t position = 0; ///< frames from the start of that reel as it stands
    char reason[200] = "";     ///< what is wrong there, a sentence without its full stop
};

/// Carries the steps of the last run out on the old cut, in order, and holds what comes of it against the new.
/// A run without changes is proved by no steps; where no run succeeded nothing is. Film at a speed of its own is
/// told by the frame of the cut.
QUILLBROOK_API change_proof prove_change_steps(change_list list);
