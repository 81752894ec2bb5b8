// What to do at the bench, step by step. A moved shot is two steps: it is picked up, and put down elsewhere.

#include "base/code_text.h"
#include "base/frame_math.h"
#include "base/messages.h"
#include "changelist/change_reports.h"
#include "changelist/changelist_options.h"
#include "changelist/lists/change_units.h"
#include "changelist/lists/list_section.h"
#include "changelist/lists/listed_row.h"
#include "host/settings.h"
#include "reports/report.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr int scene_take_key_stops[] = {1, 7, 19, 34, 56, 72, 91, 108, 125, 0};
constexpr int scene_take_stops[] = {1, 7, 19, 34, 56, 72, 89, 106, 0};
constexpr int name_key_stops[] = {1, 7, 19, 34, 56, 72, 91, 108, 0};
constexpr int name_stops[] = {1, 7, 19, 34, 56, 72, 89, 0};

constexpr ListLayouts layouts = {
    {scene_take_key_stops,
     "\t  Step\t     At This\t      At This\t      Do This\t    For This\t  First/Last KEY\t Scene\t Take\t          "
     "TOTAL",
     "\t\t      Seq TC\t     Position\t\t      Length\t\t\t\t         CHANGE"},
    {scene_take_stops,
     "\t  Step\t     At This\t      At This\t      Do This\t    For This\t Scene\t Take\t          TOTAL",
     "\t\t      Seq TC\t     Position\t\t      Length\t\t\t         CHANGE"},
    {name_key_stops,
     "\t  Step\t     At This\t      At This\t      Do This\t    For This\t  First/Last KEY\t Shot Name\t          "
     "TOTAL",
     "\t\t      Seq TC\t     Position\t\t      Length\t\t\t         CHANGE"},
    {name_stops, "\t  Step\t     At This\t      At This\t      Do This\t    For This\t Shot Name\t          TOTAL",
     "\t\t      Seq TC\t     Position\t\t      Length\t\t         CHANGE"},
};

/// How a step is printed, and what it does to the film.
struct StepForm {
    const char* action;
    const char* other_step; ///< ahead of the number of a move's other step; empty where there is none
    const char* key_lead;   ///< ahead of the last key number
    bool removes;
};

constexpr StepForm pick_up = {"   MOVE SHOT(s)", "\t       TO ", "\t\t ", true};
constexpr StepForm put_down = {"   INSERT SHOT(s)", "\t     FROM ", "\t\t ", false};
constexpr StepForm remove_film = {"   DELETE SHOT(s)", "", "\t\t\t ", true};
constexpr StepForm insert_film = {"   INSERT SHOT", "", "\t\t\t ", false};
// The parts of a deletion are told by the deletion.
constexpr StepForm not_printed = {};

/// The steps that a kind of change makes, in the old cut and in the new one.
struct ChangeForms {
    const char* kind;
    const StepForm* departure;
    const StepForm* arrival;
};

constexpr ChangeForms change_forms[] = {
    {"I", nullptr, &insert_film},  {"MF", &pick_up, &put_down},   {"MB", &pick_up, &put_down},
    {"DU", &not_printed, nullptr}, {"DC", &remove_film, nullptr},
};

struct Step {
    int event = 0;
    int subevent = 0;
    int relpos = 0; ///< frames, on the film as the steps ahead leave it
    int other_event = 0;
    unsigned row = 0;
    const StepForm* form = nullptr;
};

Step departure_of(const ListedRow& row, unsigned index, const StepForm* form) {
    return {
        row.number(hf_event1), row.number(hf_subevent1), row.number(hf_relpos1), row.number(hf_event2), index, form};
}

// Of an insertion the other event is the step itself, and isn't printed.
Step arrival_of(const ListedRow& row, unsigned index, const StepForm* form) {
    return {
        row.number(hf_event2), row.number(hf_subevent2), row.number(hf_relpos2), row.number(hf_event1), index, form};
}

void add_steps(Vector<Step>& steps, const ListedRow& row, unsigned index) {
    for (const ChangeForms& forms : change_forms) {
        if (!row.is_kind(forms.kind)) continue;
        if (forms.departure) steps.push_back(departure_of(row, index, forms.departure));
        if (forms.arrival) steps.push_back(arrival_of(row, index, forms.arrival));
    }
}

void show_changes(chgdb& changes) {
    show_all(changes);
    int add = 0;
    for (const ChangeForms& forms : change_forms) {
        tag_kind(changes, forms.kind, add);
        add = 1;
    }
    changes.set_show_tags_only(1);
}

/// All steps in their order; equal ones stay as the table has them.
Vector<Step> steps_of(const chgdb& changes) {
    Vector<Step> steps;
    const RowLabels labels(changes.film_std());
    for (unsigned index = 0; const dbrecord* record = changes.get_record(index); ++index)
        add_steps(steps, ListedRow(*record, labels), index);
    std::stable_sort(steps.begin(), steps.end(), [](const Step& a, const Step& b) {
        return std::tie(a.event, a.subevent) < std::tie(b.event, b.subevent);
    });
    return steps;
}

/// Prints the steps and follows the film as they are carried out. Frames throughout.
///
///      film as the steps count it    --------xxxx----------    x removed: the mark steps over it,
///      film on the bench             ------------------        the position doesn't
///
class StepPrinter {
public:
    StepPrinter(report& out, const chgdb& changes)
        : out_(out), changes_(changes), labels_(changes.film_std()), units_(changes.film_std()) {}

    void print(const Step& step) {
        if (step.form == &not_printed) return;
        const ListedRow row(*changes_.get_record(step.row), labels_);
        const int length = row.number(hf_edit_length);
        position_ = frame_sum(position_, frame_difference(step.relpos, film_mark_));
        total_ = step.form->removes ? frame_difference(total_, length) : frame_sum(total_, length);
        print_first_line(step, row, length);
        print_last_line(step, row, frame_difference(frame_sum(position_, length), 1));
        film_mark_ = frame_sum(step.relpos, length);
        if (!step.form->removes) position_ = frame_sum(position_, length);
    }

private:
    void print_first_line(const Step& step, const ListedRow& row, int length) {
        out_.print("\t %5d\t %s\t %s\t%s\t %s", step.event, units_.sequence_timecode(position_),
                   units_.length(position_).text, step.form->action, units_.length(length).text);
        if (changelist_options().show_edge_codes) out_.print("\t %.15s", point_text(row.key(hf_keycode_in)).text);
        row.print_shot(out_);
        out_.print("\t %16s\n", units_.signed_length(total_).text);
    }

    void print_last_line(const Step& step, const ListedRow& row, int last) {
        const StepForm& form = *step.form;
        out_.print("\t\t %s\t %s", units_.sequence_timecode(last), units_.length(last).text);
        if (*form.other_step) out_.print("%s%5d", form.other_step, step.other_event);
        if (changelist_options().show_edge_codes)
            out_.print("%s%.15s", form.key_lead, point_text(row.key(hf_keycode_out)).text);
        out_.print("\n");
    }

    report& out_;
    const chgdb& changes_;
    RowLabels labels_;
    ChangeUnits units_;
    int position_ = 0;  ///< of the step, on the film as it now stands
    int film_mark_ = 0; ///< how far the steps' own positions have come
    int total_ = 0;     ///< change in length so far
};

} // namespace

void write_changes(report& out, chgdb& changes, LoggerHandle& log) {
    say(log, text_writing_changes);
    show_changes(changes);
    const Vector<Step> steps = steps_of(changes);
    start_section(out, "DETAILED LIST OF CHANGES:\n\n", chosen_heads(layouts));
    if (steps.empty()) {
        out.print("\tTHERE ARE NO CHANGES TO MAKE\n");
        return;
    }
    StepPrinter printer(out, changes);
    for (const Step& step : steps)
        printer.print(step);
    out.plain_rule();
}
