// The lists of a change run in their order, on one page layout.

#include "changelist/change_reports.h"

#include "base/messages.h"
#include "changelist/bench/bench_list.h"
#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "changelist/steps/kept_steps.h"
#include "reports/report.h"

namespace {

void set_up_page(report& out) {
    out.page_width = 130;
    if (out.page_length / 2 > 1) out.top_margin = out.bottom_margin = 1;
    out.left_margin = out.right_margin = 2;
    out.passthrough = 0;
}

} // namespace

void write_change_reports(report& out, chgdb& changes, chgdb& new_events, LoggerHandle& log) {
    const ChangelistOptions& options = changelist_options();
    say(log, "Writing", level_progress);
    set_up_page(out);
    write_banner(out);
    if (options.summary_list) write_summary(out, changes, log);
    if (options.pull_list) write_new_material(out, changes, log);
    if (options.verbose_list) write_changes(out, changes, log);
    if (options.dissolve_list && !change_run().sound_list) write_transitions(out, new_events, log);
    if (options.bench_list) write_bench_list(out, kept_run_with_bench());
}
