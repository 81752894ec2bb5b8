#include "base/guard.h"
#include "changelist/change_analysis.h"
#include "changelist/changelist_options.h"
#include "changelist/cutlist_set.h"
#include "changelist/run_state.h"
#include "changelist/steps/kept_steps.h"
#include "quillbrook/changelist.h"

#include <algorithm>

namespace {

using Names = changelist_reels::value_type;

constexpr std::wstring_view end_of_side = L".CDB";

/// Null, or the text of the error.
const char* fill_set(CutlistSet& set, const changelist_reels& reels, LightweightString<wchar_t> Names::*side) {
    if (reels.empty()) return "No edits in list\n";
    int reel = 1;
    for (const Names& names : reels) {
        const LightweightString<wchar_t>& file = names.*side;
        if (file.view() == end_of_side) break;
        if (const char* error = set.add_reel(std::make_unique<CutlistSetRec>(file, reel))) return error;
        ++reel;
    }
    set.reel_count = reel - 1;
    return nullptr;
}

const char* make_changelist(const changelist_reels& reels, const LightweightString<wchar_t>& report_file,
                            const configb* config, LoggerHandle& log) {
    CutlistSet old_set;
    CutlistSet new_set;
    if (const char* error = fill_set(old_set, reels, &Names::first)) return error;
    if (const char* error = fill_set(new_set, reels, &Names::second)) return error;
    read_changelist_options(config);
    if (old_set.reel_count < 1 || new_set.reel_count < 1) return "Error in reel count\n";

    ChangeRun& run = change_run();
    run.reel_max = std::max(old_set.reel_count, new_set.reel_count);
    run.multi_reel = run.reel_max > 1 ? 1 : 0;
    return run_changelist(old_set, new_set, report_file, log);
}

} // namespace

const char* mr_make_changelist(changelist_reels& reels, const LightweightString<wchar_t>& report_file, configb* config,
                               LoggerHandle& log) {
    const char* error = nullptr;
    const auto run = [&] {
        kept_run() = KeptRun();
        error = make_changelist(reels, report_file, config, log);
        if (error) kept_run() = KeptRun();
    };
    const char* failure = run_alone(run, nullptr, [] { kept_run() = KeptRun(); });
    return failure ? failure : error;
}
