#include "base/guard.h"
#include "changelist/change_analysis.h"
#include "changelist/change_reports.h"
#include "changelist/changelist_options.h"
#include "changelist/load_cutlists.h"
#include "changelist/run_state.h"
#include "changelist/steps/kept_steps.h"
#include "changelist/steps/moves.h"
#include "reports/report.h"

namespace {

constexpr const char* old_cut_file = "oldcut__.chg";
constexpr const char* new_cut_file = "newcut__.chg";

/// Tells the host's watchdog of a long run, for as long as it lives.
struct LifeSupport {
    LifeSupport() { SystemWatchdog::beginLifeSupport(); }
    ~LifeSupport() {
        survives([] { SystemWatchdog::endLifeSupport(); });
    }
    LifeSupport(const LifeSupport&) = delete;
    LifeSupport& operator=(const LifeSupport&) = delete;
};

LightweightString<wchar_t> working_file(const char* name) {
    return joinPaths(getListsDirectory(), Qb::WStringFromAscii(name));
}

const char* load_side(ChangeSide& side, const LightweightString<wchar_t>& file, const CutlistSet& set,
                      LoggerHandle& log) {
    return load_cutlist_set(side.reel_start, side.reel_label, &side.film_std, file, set, log);
}

bool any_list_wanted() {
    const ChangelistOptions& options = changelist_options();
    return options.summary_list || options.pull_list || options.verbose_list || options.dissolve_list ||
           options.bench_list;
}

/// The four tables of a comparison.
struct Tables {
    chgdb old_events;
    chgdb new_events;
    chgdb changes;
    chgdb reused;

    Tables(const LightweightString<wchar_t>& old_file, const LightweightString<wchar_t>& new_file, label_t film_std,
           LoggerHandle& log)
        : old_events(old_file, &log), new_events(new_file, &log), changes(film_std, &log), reused(film_std, &log) {}

    bool valid() const {
        return old_events.get_valid() && new_events.get_valid() && changes.get_valid() && reused.get_valid();
    }
};

const char* compare(Tables& tables, LoggerHandle& log) {
    KeptRun& kept = kept_run();
    keep_cut(tables.old_events, kept.old_cut);
    keep_cut(tables.new_events, kept.new_cut);
    if (const char* error =
            merge_events(tables.old_events, tables.new_events, tables.changes, log, change_run().labels_held))
        return error;
    keep_matches(tables.changes, kept.matched);
    if (const char* error = classify_moves(tables.changes, log)) return error;
    if (const char* error = merge_rows(tables.changes, log)) return error;
    if (const char* error = find_reused_material(tables.changes, tables.old_events, tables.reused, log)) return error;
    if (const char* error = number_steps(tables.changes, log)) return error;
    keep_detailed_steps(tables.changes, kept.detailed);
    kept.goal = changelist_options().goal();
    kept.bench_due = kept.done = true;
    return nullptr;
}

} // namespace

const char* run_changelist(const CutlistSet& old_set, const CutlistSet& new_set,
                           const LightweightString<wchar_t>& report_file, LoggerHandle& log) {
    const LifeSupport life_support;
    ChangeRun& run = change_run();
    if (old_set.reel_count >= reel_slots || new_set.reel_count >= reel_slots)
        return "maximum cutting-copy reel count exceeded\n";

    const LightweightString<wchar_t> old_file = working_file(old_cut_file);
    const LightweightString<wchar_t> new_file = working_file(new_cut_file);
    run.track_seen = run.sound_list = run.sound_track = 0;
    run.labels_held = true;
    if (const char* error = load_side(run.old_side, old_file, old_set, log)) return error;
    if (const char* error = load_side(run.new_side, new_file, new_set, log)) return error;
    if (run.old_side.film_std != run.new_side.film_std)
        return "The old and new cutlists have different film standards!\n";
    if (!any_list_wanted()) return "No reports have been requested!\n";

    Qb::Ptr<stream> target = OS()->files().open(report_file, 2, 3, 0, 0);
    if (!target) return "ERROR: Couldn't create changelist report file\n";
    report out(target);
    Tables tables(old_file, new_file, run.old_side.film_std, log);
    if (!tables.valid()) return "Error opening the changelist database files\n";
    if (const char* error = compare(tables, log)) return error;
    write_change_reports(out, tables.changes, tables.new_events, log);
    return nullptr;
}
