#include "cutlist/cdbgen.h"

#include "base/guard.h"
#include "base/messages.h"
#include "cutlist/classify_opticals.h"
#include "cutlist/cutlist_options.h"
#include "cutlist/generator_labels.h"
#include "cutlist/single_layer_lists.h"
#include "cutlist/track_analysis.h"
#include "logging/log_shot_list.h"
#include "reports/cutdb.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <memory>

namespace {

constexpr int trace_switch = 0;
constexpr int delete_with_backups = 1;

/// Deletes the de-rendered copy of a run. A run that fails before its labels are made leaves the copy behind,
/// for the user to look at.
class unrendered_copy {
public:
    unrendered_copy() = default;
    ~unrendered_copy() {
        if (made_labels_) survives([&] { delete_stored(); });
    }
    unrendered_copy(const unrendered_copy&) = delete;
    unrendered_copy& operator=(const unrendered_copy&) = delete;
    const Cookie& cookie() const { return cookie_; }
    void keep_track_of(const Cookie& cookie) { cookie_ = cookie; }
    /// From here on the copy goes with the run.
    void labels_are_made() { made_labels_ = true; }

private:
    void delete_stored() const {
        if (cookie_.type != cookie_invalid)
            EditManager::deleteEditFileAndBackups(cookie_, LightweightString<char>(), delete_with_backups);
    }

    Cookie cookie_;
    bool made_labels_ = false;
};

bool fail(LoggerHandle& logger, const char* text) {
    say(logger, text, level_fatal);
    return false;
}

// Points `edit` at a copy without rendered material, where it has any and the host allows it.
bool unrender(EditPtr& edit, LoggerHandle& logger, unrendered_copy& copy) {
    if (config_int("allow_auto_unrender", 1, INT_MIN, INT_MAX) == 0) return true;
    if (!RenderHistory::editContainsRenderedMaterial(edit)) return true;
    say(logger, "Making a de-rendered copy of the edit", level_progress);
    const EditModifier modifier = RenderHistory::makeCopyAndUnrenderAll(edit);
    if (!modifier.edit) return fail(logger, "Unable to unrender edit");
    copy.keep_track_of(modifier.edit->cookie);
    edit.i_close();
    edit.i_open(copy.cookie(), edit_open_default);
    if (!edit) return fail(logger, "Unable to unrender edit");
    return true;
}

bool check_track(Edit& edit, LoggerHandle& logger) {
    const int chan = cutlist_options().chan_num;
    if (edit.getNumChans() <= chan) return fail(logger, "Track not present");
    const Qb::Ptr<Cel> cel = edit.get_edit_cel_p(chan);
    if (!cel || cel->num_events == 0) return fail(logger, "Track is empty");
    return true;
}

// The table itself is of no more use once its shots are read. Null when there are none.
std::unique_ptr<LogShotList> read_shots(LoggerHandle& logger) {
    const CutlistOptions& options = cutlist_options();
    recdb log(fromUTF8(options.log_file, -1), std::numeric_limits<int>::max(), false);
    if (!log.get_valid()) {
        fail(logger, "Unable to read logging database");
        return nullptr;
    }
    say(logger, "Converting database to list of shots", level_progress);
    auto shots = std::make_unique<LogShotList>(log, options.long_keycode, logger, options.film_reel);
    if (shots->result != -1) return shots;
    fail(logger, "Unable to convert logging database");
    return nullptr;
}

void add_label_params(cutdb& db, const EditLabel& label, const char* start_name, const char* standard_name) {
    db.add_param(start_name, label.get_string(0));
    db.add_param(standard_name, label_type_to_edlstr(label.type()));
}

// Known only after the analysis, which may have adopted another film standard.
void add_film_standard(cutdb& db) {
    db.add_param("film label_std", label_type_to_edlstr(generator().key_label.type()));
    db.add_param("mixed_kc_standard", generator().mixed_kc_standard ? "1" : "0");
}

// Before the opticals are numbered: these lists show them as the track analysis left them.
void write_single_layer_lists(cutdb& db, LoggerHandle& logger) {
    const CutlistOptions& options = cutlist_options();
    if (options.fsl_type1_file) write_sl1_file(&db, logger);
    if (options.fsl_type2_file) write_sl2_file(&db, logger);
    if (options.fsl_type3_file) write_sl3_file(&db, logger);
    if (options.fsl_type4_file) write_sl4_file(&db, logger);
}

bool fill_table(cutdb& db, EditPtr& edit, LoggerHandle& logger, CueList* cues, LogShotList* shots) {
    const CutlistOptions& options = cutlist_options();
    event_array events;
    const int use_log = shots != nullptr;
    if (!analyse_tracks(options.chan_type, options.chan_num, edit, 0, logger, use_log, cues, shots, events))
        return false;
    if (!generator().key_label.is_valid()) return false;
    add_film_standard(db);
    append_events(db, events);
    write_single_layer_lists(db, logger);
    classify_opticals(db, logger);
    return true;
}

bool save_table(cutdb& db, const LightweightString<wchar_t>& cdb_name, LoggerHandle& logger) {
    if (db.get_num_records() == 0) {
        say(logger, "CDB file: no records!", level_progress);
        return false;
    }
    OS()->files().remove(cdb_name);
    trace("cdbgen: about to call cut_db->save_text()\n");
    db.save_text();
    return true;
}

bool make_table(const LightweightString<wchar_t>& cdb_name, EditPtr& edit, LoggerHandle& logger, CueList* cues,
                LogShotList* shots) {
    cutdb db(&logger);
    db.set_filename(cdb_name);
    write_cutlist_header(db, *edit, cutlist_options().proj_name);
    return fill_table(db, edit, logger, cues, shots) && save_table(db, cdb_name, logger);
}

} // namespace

bool cdbgen(LightweightString<wchar_t>& cdb_name, EditPtr& edit, LoggerHandle& logger, int use_log, CueList* cues,
            const configb* options) {
    generator().mixed_kc_standard = false;
    if (options) read_cutlist_options(options);
    cdb_name = stripExtension(cutlist_options().output_file) + L".cdb";
    if (!edit) return fail(logger, "Unable to open edit");

    unrendered_copy copy;
    if (!unrender(edit, logger, copy) || !check_track(*edit, logger)) return false;
    std::unique_ptr<LogShotList> shots;
    if (use_log) {
        shots = read_shots(logger);
        if (!shots) return false;
    }

    const label_t film_type = shots ? shots->film_label_type : label_key_35mm_4p;
    copy.labels_are_made();
    const labels_of_run labels;
    make_generator_labels(*edit, film_type, cutlist_options().long_keycode);
    return make_table(cdb_name, edit, logger, cues, shots.get());
}

void write_cutlist_header(cutdb& db, Edit& edit, const char* project_name) {
    CutlistOptions& options = cutlist_options();
    db.add_param("edit_cookie", edit.cookie.asString(false).c_str());
    db.add_param("project_name", project_name);
    db.add_param("edit_name", toUTF8(edit.getName()).c_str());

    int modified = 0;
    read_edit_field(&edit, "modification_time", modified);
    db.add_param("modification_time", StringFromInteger(modified).c_str());
    db.add_param("edit_date", timeAsString(static_cast<unsigned>(modified), false).c_str());

    TCInf standard;
    standard.rate = edit.getSourceFrameRate();
    standard.drop = Qb::CurrentProject::getUseDropFrameTimecode() ? 1 : 0;
    db.add_param("edit label_std", tv_standard_to_edlstr(standard));
    db.add_param("cutlist_type", options.pull_match_assembly != 0 ? "cutting-copy" : "neg-cut");
    db.add_param("channel", channel_text(options.chan_type, options.chan_num));
    add_label_params(db, generator().edit_tc_label, "edit_vidtc_start", "edit_vidtc_std");
    add_label_params(db, *edit.getLabel(user_label_timecode, MediumRollIdent(medium_edit_24p, 1)), "edit_24ptc_start",
                     "edit_24ptc_std");
}

void append_events(cutdb& db, const event_array& events) {
    for (const auto& record : events.records()) {
        const int row = db.add_records(1);
        record->to_record(*db.get_record(static_cast<unsigned>(row)));
    }
}

void trace(const char* format, ...) {
    if (trace_switch == 0) return;
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    trace_printf("%s", text);
}
