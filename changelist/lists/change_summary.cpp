// How much film comes, goes and moves.

#include "base/frame_math.h"
#include "base/messages.h"
#include "changelist/change_reports.h"
#include "changelist/lists/change_units.h"
#include "changelist/lists/list_section.h"
#include "changelist/lists/listed_row.h"
#include "changelist/run_state.h"
#include "host/settings.h"
#include "reports/report.h"

namespace {

constexpr int summary_stops[] = {1, 17, 33, 49, 65, 83, 0};

constexpr ListHeads summary_heads = {summary_stops,
                                     "\t   Original\t   Inserted\t    Deleted\t      Moved\t       Total\t        New",
                                     "\t     Length\t\t\t\t       Change\t     Length"};

/// What stands ahead of a number.
struct Leads {
    const char* length;
    const char* loss;
    const char* gain;
};

// By unit.
constexpr Leads summary_leads[] = {
    {"     ", "    -", "    +"},
    {"    ", "   -", "   +"},
    {"", "-", "+"},
};

/// Frames.
struct ChangeSums {
    int inserted = 0;
    int deleted = 0;
    int moved = 0;

    int* sum_of(const ListedRow& row) {
        if (row.is_kind("MF") || row.is_kind("MB")) return &moved;
        if (row.is_kind("DC")) return &deleted;
        return row.is_kind("I") ? &inserted : nullptr;
    }
};

ChangeSums add_up(const chgdb& changes) {
    ChangeSums sums;
    const RowLabels labels(changes.film_std());
    for (unsigned index = 0; const dbrecord* record = changes.get_record(index); ++index) {
        const ListedRow row(*record, labels);
        if (int* sum = sums.sum_of(row)) *sum = frame_sum(*sum, row.number(hf_edit_length));
    }
    return sums;
}

// A loss in frames has never shown its amount.
LengthText total_text(const ChangeUnits& units, const Leads& leads, int total) {
    if (total >= 0) return units.behind(leads.gain, total);
    return units.behind(leads.loss, units.unit() == LengthUnit::frames ? 0 : magnitude(total));
}

} // namespace

void write_summary(report& out, chgdb& changes, LoggerHandle& log) {
    say(log, text_writing_summary);
    start_section(out, "SUMMARY OF CHANGES:\n\n", summary_heads);

    const ChangeSums sums = add_up(changes);
    const ChangeRun& run = change_run();
    const ChangeUnits units(changes.film_std());
    const Leads& leads = summary_leads[static_cast<int>(units.unit())];
    const auto length = [&](int frames) { return units.behind(leads.length, frames); };
    // The start of the second reel: the whole length of a cut of one reel.
    out.print("\t%s\t%s\t%s\t%s", length(run.old_side.reel_start[1]).text, length(sums.inserted).text,
              length(sums.deleted).text, length(sums.moved).text);
    out.print("\t  %s\t%s\n", total_text(units, leads, frame_difference(sums.inserted, sums.deleted)).text,
              length(run.new_side.reel_start[1]).text);
    out.plain_rule();
}
