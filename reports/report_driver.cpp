#include "reports/report_driver.h"

#include "base/guard.h"
#include "base/messages.h"
#include "base/number_text.h"
#include "base/substitute.h"
#include "cutlist/cutlist_options.h"
#include "host/os.h"
#include "host/recdb.h"
#include "reports/assembly_list.h"
#include "reports/cutdb.h"
#include "reports/opticals_list.h"
#include "reports/pull_event.h"
#include "reports/pull_list.h"
#include "reports/report_context.h"
#include "reports/reuse_scan.h"
#include "reports/roll_list.h"
#include "reports/timecode_list.h"

#include <limits>
#include <string_view>
#include <utility>

namespace {

struct List {
    int CutlistOptions::*wanted;
    bool picture_only;
    void (*print)(report& out, recdb& table, LoggerHandle& logger);
};

// In the order of printing. The list of rolls needs the file's own order, so it comes before any that sorts.
constexpr List lists[] = {
    {&CutlistOptions::roll_list, false, print_roll_list},
    {&CutlistOptions::pull_list, false, print_pull_list},
    {&CutlistOptions::assembly_list, false, print_assembly_list},
    {&CutlistOptions::optical_list, true, print_opticals_list},
};

/// Gives the scan back while the table that it looked through still stands.
struct ScanOfRun {
    ScanOfRun() = default;
    ~ScanOfRun() { release_reuse_scan(); }
    ScanOfRun(const ScanOfRun&) = delete;
    ScanOfRun& operator=(const ScanOfRun&) = delete;
};

bool refuse(LoggerHandle& logger, const char* why) {
    say(logger, why, level_fatal);
    return false;
}

void set_layout(report& out) {
    out.passthrough = 0;
    out.page_length = 60;
    out.top_margin = out.bottom_margin = 1;
    if (out.page_width / 2 > 2) out.left_margin = out.right_margin = 2;
}

int host_switch(const char* key) {
    return config_int(key, 0, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

void print_lists(report& out, recdb& table, LoggerHandle& logger) {
    const ScanOfRun scan;
    const CutlistOptions& options = cutlist_options();
    if (options.chan_type == sound_channel && host_switch("audio_cutlist_by_timecode_test")) {
        print_timecode_assembly_list(out, table, logger);
        return;
    }
    for (const List& list : lists) {
        const bool wanted = options.some_lists == 0 || options.*list.wanted != 0;
        if (wanted && (!list.picture_only || options.chan_type == picture_channel)) list.print(out, table, logger);
    }
}

} // namespace

bool print_saved_lists(const LightweightString<wchar_t>& cdb_path, const LightweightString<wchar_t>& report_path,
                       LoggerHandle& logger, bool overwrite_report, const configb* options) {
    if (options) read_cutlist_options(options);
    logger.message(substitute(resourceStrW(text_making_reports), L"$FILE$", cdb_path), level_progress);

    recdb table(cdb_path, std::numeric_limits<int>::max(), false);
    if (!table.get_valid()) return refuse(logger, "Unable to read CUTDB database");
    if (revision_number(table.get_param_val("cutdb")) < cutdb_revision) {
        return refuse(logger, "Old format cutting database: can't process");
    }
    take_film_standard(table);
    if (report_context().film_label == label_none) {
        return refuse(logger, "No film-label standard in CUTDB header");
    }
    choose_unit();

    say(logger, "Writing cutting list to file", level_progress);
    file_service& files = OS()->files();
    if (overwrite_report) files.remove(report_path);
    Qb::Ptr<stream> target = files.open(report_path, 2, 1, 0, 0);
    if (!target) return refuse(logger, "ERROR: Couldn't create report file");

    report out(std::move(target));
    set_layout(out);
    print_lists(out, table, logger);
    return true;
}

bool print_cutlist_reports(const LightweightString<wchar_t>& cdb_path, const LightweightString<wchar_t>& report_path,
                           LoggerHandle& logger, bool overwrite_report, const configb* options) {
    bool done = false;
    const auto run = [&] { done = print_saved_lists(cdb_path, report_path, logger, overwrite_report, options); };
    return !run_alone(run, &logger, forget_ended_run) && done;
}

void forget_ended_run() { forget_pulled_roll(); }
