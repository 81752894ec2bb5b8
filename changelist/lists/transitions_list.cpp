// The transitions of the new cut, at both ends of each event.

#include "base/code_text.h"
#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "changelist/change_reports.h"
#include "changelist/lists/change_units.h"
#include "changelist/lists/list_section.h"
#include "changelist/lists/listed_row.h"
#include "host/settings.h"
#include "reports/report.h"

namespace {

constexpr int transition_stops[] = {1, 17, 34, 54, 0};

constexpr ListHeads transition_heads = {transition_stops,
                                        "\t  First/Last\t  First/Last\t      First/Last\t      Length",
                                        "\t      Seq TC\t     Elapsed\t             Key"};

constexpr char no_transitions[] = "There are no transitions in the new edit\n";

/// The frames of an event that a transition covers, counted from the event's first.
struct Stretch {
    int first;
    int last;
    int length;
};

//      in-coming      out-going
//      |<-len1->|     |<-len2->|
//      [=========event=========]
//
Stretch incoming(const ListedRow& row) {
    const int length = row.number(hf_fx_len1);
    return {0, frame_difference(length, 1), length};
}

Stretch outgoing(const ListedRow& row) {
    const int event = row.number(hf_edit_length);
    const int length = row.number(hf_fx_len2);
    return {frame_difference(event, length), frame_difference(event, 1), length};
}

/// One end of an event: where its transition stands and what it is called.
struct EventEnd {
    chgdb_field operation;
    Stretch (*stretch)(const ListedRow& row);
    const char* fade;
    const char* other;
};

constexpr EventEnd event_ends[] = {
    {hf_fx_op1, incoming, "\t\tFade IN-COMING", "\t\tTransition IN-COMING"},
    {hf_fx_op2, outgoing, "\t\tFade OUT_GOING", "\t\tTransition OUT_GOING"},
};

ListText key_at(const ListedRow& row, int frame) {
    LabelPoint key = row.key(hf_keycode_in);
    key.set_sample(frame_sum(key.sample, frame_product(frame, key.cvt()->samples_per_frame())));
    return point_text(key);
}

void print_stretch(report& out, const ListedRow& row, const Stretch& stretch, const ChangeUnits& units) {
    const bool missing = row.key_missing();
    const int in = row.number(hf_edit_in);
    const int first = frame_sum(in, stretch.first);
    const int last = frame_sum(in, stretch.last);
    out.print("\t%s\t%s\t%s\t%s\n", units.sequence_timecode(first), units.length(first).text,
              missing ? "NO KEYKODE" : key_at(row, stretch.first).text, units.length(stretch.length).text);
    out.print("\t%s\t%s\t%s\t\n", units.sequence_timecode(last), units.length(last).text,
              missing ? "NO KEYKODE" : key_at(row, stretch.last).text);
}

/// The number of transitions printed.
int print_transitions(report& out, const ListedRow& row, const ChangeUnits& units) {
    int printed = 0;
    for (const EventEnd& end : event_ends) {
        const char operation = *row.text(end.operation);
        if (operation == '\0') continue;
        out.print("%s\n", operation == 'F' ? end.fade : end.other);
        print_stretch(out, row, end.stretch(row), units);
        ++printed;
    }
    return printed;
}

} // namespace

void write_transitions(report& out, chgdb& new_events, LoggerHandle& log) {
    say(log, text_writing_transitions);
    start_section(out, "TRANSITIONS IN NEW SEQUENCE:\n\n", transition_heads);
    show_all(new_events);
    sort_by(new_events, {hf_reel_seq, hf_edit_in, -1});
    if (new_events.get_num_records() == 0) {
        out.print(no_transitions);
        return;
    }
    const RowLabels labels(new_events.film_std());
    const ChangeUnits units(new_events.film_std());
    int printed = 0;
    for (unsigned index = 0; const dbrecord* record = new_events.get_record(index); ++index) {
        const ListedRow row(*record, labels);
        if (row.number(hf_optical) != 1) printed += print_transitions(out, row, units);
    }
    if (printed == 0) out.print(no_transitions);
    out.plain_rule();
}
