#include "changelist/kept_steps.h"

#include "changelist/reel_numbers.h"
#include "reports/frame_math.h"
#include "reports/number_text.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr int code_chars = 19;
constexpr int shot_name_chars = 1023;
constexpr int four_digits = 4;

int number_of(const dbrecord& row, chgdb_field field) {
    return decimal_number(row.get_field(static_cast<unsigned short>(field)));
}

std::string_view text_of(const dbrecord& row, chgdb_field field) {
    const char* text = row.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

template <std::size_t N> void read_text(const dbrecord& row, chgdb_field field, char (&text)[N]) {
    row.in_field(field, text, static_cast<int>(N) - 1);
}

/// Reads points of one table; rows without a real key number count in four digits.
class PointReader {
public:
    explicit PointReader(label_t film_std) : key_(film_std), ink_(label_t_to_ink_label_t(film_std)) {}

    LabelPoint key(const dbrecord& row, chgdb_field field) const {
        LabelPoint point;
        point.set_type(key_);
        if (number_of(row, hf_keycode_missing)) point.modify_count_length(four_digits);
        read(row, field, point);
        return point;
    }
    LabelPoint ink(const dbrecord& row, chgdb_field field) const {
        if (text_of(row, field).empty()) return {};
        LabelPoint point;
        point.set_type(ink_);
        read(row, field, point);
        return point.is_useful() ? point : LabelPoint();
    }

private:
    static void read(const dbrecord& row, chgdb_field field, LabelPoint& point) {
        char text[code_chars + 1] = "";
        row.in_field(field, text, code_chars);
        point.set_sample(text);
    }

    label_t key_;
    label_t ink_;
};

/// What a stretch of film is called, on a reel and in a step alike.
template <class Film> void read_names(const dbrecord& row, Film& film) {
    if (const char* speed = row.get_field(hf_speed)) film.speed = floating_number(speed);
    read_text(row, hf_cam_reel, film.cam_reel);
    char name[shot_name_chars + 1] = "";
    row.in_field(hf_shot_name, name, shot_name_chars);
    film.shot_name = fromUTF8(name, -1);
    read_text(row, hf_scene, film.scene);
    read_text(row, hf_take, film.take);
}

CutEvent event_of(const dbrecord& row, const PointReader& points) {
    CutEvent event;
    event.key_in = points.key(row, hf_keycode_in);
    event.ink_in = points.ink(row, hf_inkcode_in);
    event.missing = number_of(row, hf_keycode_missing);
    event.reel = number_of(row, hf_reel_seq);
    event.frame = number_of(row, hf_edit_in);
    event.length = number_of(row, hf_edit_length);
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
change_step step_of(const dbrecord& row, const PointReader& points, const StepColumns& columns) {
    change_step step;
    step.step = number_of(row, columns.step);
    step.action = columns.action;
    step.reel = number_of(row, columns.reel);
    step.position = number_of(row, columns.position);
    step.length = number_of(row, hf_edit_length);
    step.first_key = points.key(row, hf_keycode_in);
    step.last_key = points.key(row, hf_keycode_out);
    step.first_ink = points.ink(row, hf_inkcode_in);
    step.last_ink = points.ink(row, hf_inkcode_out);
    read_names(row, step);
    if (columns.action == change_insert) return step;
    step.old_reel = number_of(row, hf_old_reel_seq);
    step.old_frame = number_of(row, hf_old_edit_in);
    return step;
}

void add_steps_of(const dbrecord& row, const PointReader& points, Vector<change_step>& steps) {
    const std::string_view kind = text_of(row, hf_record_type);
    if (kind == "DC") steps.push_back(step_of(row, points, removal));
    if (kind == "I") steps.push_back(step_of(row, points, insertion));
    if (kind != "MF" && kind != "MB") return;
    steps.push_back(step_of(row, points, pick_up));
    steps.back().other_step = number_of(row, hf_event2);
    steps.push_back(step_of(row, points, put_down));
    steps.back().other_step = number_of(row, hf_event1);
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
    Vector<std::size_t> order(values.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
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
    static KeptRun run;
    return run;
}

void keep_cut(const chgdb& events, Vector<CutEvent>& cut) {
    cut.clear();
    const PointReader points(events.film_std());
    for (unsigned index = 0; const dbrecord* row = events.get_record(index); ++index) {
        if (number_of(*row, hf_optical) == 0) cut.push_back(event_of(*row, points));
    }
    if (!std::is_sorted(cut.begin(), cut.end(), lies_before)) sort_stably(cut, lies_before);
}

void keep_matches(const chgdb& changes, Vector<MatchedPiece>& matched) {
    matched.clear();
    for (unsigned index = 0; const dbrecord* row = changes.get_record(index); ++index) {
        if (!text_of(*row, hf_record_type).empty()) continue;
        matched.push_back({number_of(*row, hf_old_reel_seq), number_of(*row, hf_old_edit_in),
                           number_of(*row, hf_reel_seq), number_of(*row, hf_edit_in), number_of(*row, hf_edit_length)});
    }
}

void keep_detailed_steps(const chgdb& changes, Vector<change_step>& steps) {
    steps.clear();
    const PointReader points(changes.film_std());
    for (unsigned index = 0; const dbrecord* row = changes.get_record(index); ++index)
        add_steps_of(*row, points, steps);
    sort_stably(steps, [](const change_step& a, const change_step& b) { return a.step < b.step; });
    place_steps(steps);
}

const change_step* change_steps(change_list list, unsigned& count) {
    const Vector<change_step>& steps = list == bench_changes ? kept_run().bench : kept_run().detailed;
    count = static_cast<unsigned>(steps.size());
    return steps.data();
}
