#include "changelist/steps/kept_steps.h"

#include "base/frame_math.h"
#include "base/guard.h"
#include "base/lasting.h"
#include "base/row_numbers.h"
#include "changelist/reel_numbers.h"
#include "changelist/row_fields.h"

namespace {

/// What a stretch of film is called, on a reel and in a step alike.
template <class Film> void read_names(const dbrecord& row, Film& film) {
    if (const char* speed = row.get_field(hf_speed)) film.speed = floating_number(speed);
    copy_field(row, hf_cam_reel, film.cam_reel);
    film.shot_name = shot_name_field(row);
    copy_field(row, hf_scene, film.scene);
    copy_field(row, hf_take, film.take);
}

CutEvent event_of(const dbrecord& row, const RowLabels& labels) {
    CutEvent event;
    event.key_in = labels.key(row, hf_keycode_in);
    event.ink_in = labels.ink(row, hf_inkcode_in);
    event.missing = number_field(row, hf_keycode_missing);
    event.reel = number_field(row, hf_reel_seq);
    event.frame = number_field(row, hf_edit_in);
    event.length = number_field(row, hf_edit_length);
    read_names(row, event);
    return event;
}

bool lies_before(const CutEvent& a, const CutEvent& b) {
    return a.reel != b.reel ? a.reel < b.reel : a.frame < b.frame;
}

/// Which columns of a row tell about a step, and what the step does.
struct StepColumns {
    chgdb_field step;
    chgdb_field position;
    chgdb_field reel;
    change_action action;
};

constexpr StepColumns removal = {hf_event1, hf_relpos1, hf_old_reel_seq, change_remove};
constexpr StepColumns pick_up = {hf_event1, hf_relpos1, hf_old_reel_seq, change_pick_up};
constexpr StepColumns put_down = {hf_event2, hf_relpos2, hf_reel_seq, change_put_down};
constexpr StepColumns insertion = {hf_event2, hf_relpos2, hf_reel_seq, change_insert};

/// The raw position stands in `position` for now.
change_step step_of(const dbrecord& row, const RowLabels& labels, const StepColumns& columns) {
    change_step step;
    step.step = number_field(row, columns.step);
    step.action = columns.action;
    step.reel = number_field(row, columns.reel);
    step.position = number_field(row, columns.position);
    step.length = number_field(row, hf_edit_length);
    step.first_key = labels.key(row, hf_keycode_in);
    step.last_key = labels.key(row, hf_keycode_out);
    step.first_key_missing = step.last_key_missing = number_field(row, hf_keycode_missing);
    step.first_ink = labels.ink(row, hf_inkcode_in);
    step.last_ink = labels.ink(row, hf_inkcode_out);
    read_names(row, step);
    if (columns.action == change_insert) return step;
    step.old_reel = number_field(row, hf_old_reel_seq);
    step.old_frame = number_field(row, hf_old_edit_in);
    return step;
}

void add_steps_of(const dbrecord& row, const RowLabels& labels, Vector<change_step>& steps) {
    const RowKind kind(row);
    if (kind.is("DC")) steps.push_back(step_of(row, labels, removal));
    if (kind.is("I")) steps.push_back(step_of(row, labels, insertion));
    if (!kind.is("MF") && !kind.is("MB")) return;
    steps.push_back(step_of(row, labels, pick_up));
    steps.back().other_step = number_field(row, hf_event2);
    steps.push_back(step_of(row, labels, put_down));
    steps.back().other_step = number_field(row, hf_event1);
}

bool takes_film(const change_step& step) { return step.action == change_remove || step.action == change_pick_up; }

/// The raw position counts what earlier steps took as if it still lay there. The printed list takes that off
/// without starting afresh at a reel; the step itself counts what was taken from its own reel only.
void place_steps(Vector<change_step>& steps) {
    ReelNumbers reels;
    for (const change_step& step : steps)
        reels.add(step.reel);
    reels.close();

    Vector<int> taken(reels.size(), 0);
    int printed = 0;
    int mark = 0;
    for (change_step& step : steps) {
        const int raw = step.position;
        int& taken_here = taken[reels.index(step.reel)];
        printed = frame_sum(printed, frame_difference(raw, mark));
        mark = frame_sum(raw, step.length);
        step.printed_position = printed;
        step.position = frame_difference(raw, taken_here);
        int& count = takes_film(step) ? taken_here : printed;
        count = frame_sum(count, step.length);
    }
}

/// Sorts in the order of `before`; what it holds equal stays in order.
template <class Value, class Before> void sort_stably(Vector<Value>& values, Before before) {
    const Vector<std::size_t> order = sorted_numbers(0, values.size(), [&](std::size_t a, std::size_t b) {
        if (before(values[a], values[b])) return true;
        return !before(values[b], values[a]) && a < b;
    });
    Vector<Value> sorted;
    sorted.reserve(values.size());
    for (const std::size_t i : order)
        sorted.push_back(std::move(values[i]));
    values = std::move(sorted);
}

} // namespace

KeptRun& kept_run() {
    static Lasting<KeptRun> run;
    return run.value();
}

KeptRun& kept_run_with_bench() {
    KeptRun& run = kept_run();
    if (run.bench_due) plan_bench_steps(run, run.goal);
    run.bench_due = false;
    return run;
}

void keep_cut(const chgdb& events, Vector<CutEvent>& cut) {
    cut.clear();
    const RowLabels labels(events.film_std());
    for (unsigned index = 0; const dbrecord* row = events.get_record(index); ++index) {
        if (number_field(*row, hf_optical) == 0) cut.push_back(event_of(*row, labels));
    }
    if (!std::is_sorted(cut.begin(), cut.end(), lies_before)) sort_stably(cut, lies_before);
}

void keep_matches(const chgdb& changes, Vector<MatchedPiece>& matched) {
    matched.clear();
    for (unsigned index = 0; const dbrecord* row = changes.get_record(index); ++index) {
        if (*text_field(*row, hf_record_type) != '\0') continue;
        matched.push_back({number_field(*row, hf_old_reel_seq), number_field(*row, hf_old_edit_in),
                           number_field(*row, hf_reel_seq), number_field(*row, hf_edit_in),
                           number_field(*row, hf_edit_length)});
    }
}

void keep_detailed_steps(const chgdb& changes, Vector<change_step>& steps) {
    steps.clear();
    const RowLabels labels(changes.film_std());
    for (unsigned index = 0; const dbrecord* row = changes.get_record(index); ++index)
        add_steps_of(*row, labels, steps);
    sort_stably(steps, [](const change_step& a, const change_step& b) { return a.step < b.step; });
    place_steps(steps);
}

const change_step* change_steps(change_list list, unsigned& count) {
    static const Lasting<change_step> none;
    const change_step* first = nullptr;
    count = 0;
    run_alone([&] {
        const KeptRun& run = list == bench_changes ? kept_run_with_bench() : kept_run();
        const Vector<change_step>& steps = list == bench_changes ? run.bench : run.detailed;
        count = static_cast<unsigned>(steps.size());
        first = steps.empty() && run.done ? &none.value() : steps.data();
    });
    return first;
}

void bench_list_costs(change_cost& planned, change_cost& simple) {
    planned = simple = change_cost();
    run_alone([&] {
        const KeptRun& run = kept_run_with_bench();
        planned = run.bench_cost;
        simple = run.simple_cost;
    });
}
