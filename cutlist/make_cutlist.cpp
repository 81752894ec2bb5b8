#include "base/guard.h"
#include "base/messages.h"
#include "cutlist/cdbgen.h"
#include "cutlist/cutlist_options.h"
#include "quillbrook/cutlist.h"
#include "reports/report_driver.h"

namespace {

// From a place among the channels of the chosen type to the channel's own number.
bool resolve_channel(const Edit& edit, LoggerHandle& logger) {
    CutlistOptions& options = cutlist_options();
    Vector<int> channels;
    edit.getChans(channels, static_cast<unsigned>(options.chan_type), 0);
    const int count = static_cast<int>(channels.size());
    if (options.chan_num < 0 || options.chan_num >= count) {
        say(logger, "Specified source track not present", level_fatal);
        return false;
    }
    options.chan_num = channels[static_cast<std::size_t>(options.chan_num)];
    return true;
}

bool make_lists(const EditPtr& edit, LoggerHandle& logger, int use_log, const configb* options, CueList* cues,
                bool overwrite_report) {
    read_cutlist_options(options);
    if (!edit) {
        say(logger, "Unable to open edit", level_fatal);
        return false;
    }
    if (!resolve_channel(*edit, logger)) return false;
    EditPtr listed = edit;
    LightweightString<wchar_t> cdb_name;
    if (!cdbgen(cdb_name, listed, logger, use_log, cues, nullptr)) return false;
    return print_saved_lists(cdb_name, cutlist_options().output_file, logger, overwrite_report, nullptr);
}

} // namespace

bool make_cutlist_from_edit(EditPtr edit, LoggerHandle& logger, int use_log, const configb* options, CueList* cues,
                            bool overwrite_report) {
    bool done = false;
    const auto run = [&] { done = make_lists(edit, logger, use_log, options, cues, overwrite_report); };
    return !run_alone(run, &logger, forget_ended_run) && done;
}
