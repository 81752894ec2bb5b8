#include "changelist/load_cutlists.h"

#include "base/frame_math.h"
#include "base/messages.h"
#include "base/substitute.h"
#include "changelist/change_record.h"
#include "changelist/changelist_options.h"
#include "changelist/held_labels.h"
#include "changelist/run_state.h"
#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"

#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace {

constexpr int sound_channel = 2;
constexpr int first_picture_track = 1;

const char* parameter(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

// The text stands until the next error with a name in it.
const char* error_with_name(const char* format, const LightweightString<wchar_t>& file) {
    static char text[128];
    std::snprintf(text, sizeof text, format, toUTF8(file).c_str());
    return text;
}

void set_up_reel_label(EditLabel& label, const cutdb& list) {
    char standard[12] = "";
    char start[20] = "";
    put_text(standard, parameter(list, "edit_vidtc_std"));
    put_text(start, parameter(list, "edit_vidtc_start"));
    label.set_MediumRoll(MediumRollIdent(medium_video, 1));
    label.set_type(edlstr_to_label_type(standard));
    label.set_start(start);
}

/// What makes a cutlist unfit to be compared; null where nothing does.
const char* refusal(const cutdb& list, const LightweightString<wchar_t>& file) {
    const label_t standard = edlstr_to_label_type(parameter(list, "film label_std"));
    if (standard == label_none) return error_with_name("CUTDB <%s> has an invalid film label standard", file);
    if (std::string_view(parameter(list, "mixed_kc_standard")) == "1")
        return error_with_name("CUTDB <%s> has mixed film gauges - unsuitable for changelists", file);
    if (label_t_to_foot_label_t(standard) == label_none)
        return error_with_name("CUTDB <%s> - cannot currently generate changelists with this film gauge", file);
    if (std::string_view(parameter(list, "cutlist_type")) != "cutting-copy")
        return "The cutlist was made for a NEG-CUT - must be a CUTTING-COPY";
    return nullptr;
}

struct Channel {
    int type = 0;
    int number = 0;

    explicit Channel(const cutdb& list) { parse_channel_text(parameter(list, "channel"), type, number); }
};

/// Holds all files of a run to one kind of track, that of the first.
const char* take_track(const cutdb& list) {
    ChangeRun& run = change_run();
    const Channel channel(list);
    const bool sound = channel.type == sound_channel;
    if (run.track_seen && sound != (run.sound_list != 0))
        return "Cutlists were made for different picture/sound tracks";
    run.sound_track = sound ? channel.number : 0;
    run.sound_list = sound ? 1 : 0;
    if (sound) changelist_options().dissolve_list = 0;
    run.track_seen = 1;
    return nullptr;
}

/// One side on its way into a table.
class SideLoader {
public:
    SideLoader(int* reel_start, EditLabel* reel_label, label_t* film_std, const LightweightString<wchar_t>& chg_file,
               LoggerHandle& log)
        : reel_start_(reel_start), reel_label_(reel_label), film_std_(film_std), chg_file_(chg_file), log_(log) {}

    const char* add(const CutlistSetRec& record);
    void finish();

private:
    const char* start_reel(int reel);
    const char* add_list(cutdb& list);

    int* reel_start_;
    EditLabel* reel_label_;
    label_t* film_std_;
    const LightweightString<wchar_t>& chg_file_;
    LoggerHandle& log_;
    std::unique_ptr<chgdb> table_;
    int reel_ = 0;
    int side_total_ = 0; ///< frames of the finished reels
    int reel_total_ = 0; ///< frames of the present one
};

const char* SideLoader::start_reel(int reel) {
    side_total_ = frame_sum(side_total_, reel_total_);
    if (reel != reel_ + 1) return "Reel number sequence error\n";
    reel_ = reel;
    reel_start_[reel_ - 1] = side_total_;
    reel_total_ = 0;
    return nullptr;
}

const char* SideLoader::add(const CutlistSetRec& record) {
    if (record.subreel == 1) {
        if (const char* error = start_reel(record.reel)) return error;
    }
    log_.message(substitute(resourceStrW(text_reading_cutlist), L"$FILE$", record.file), level_progress);
    cutdb list(record.file, &log_);
    if (!list.get_valid() || list.get_num_records() == 0)
        return error_with_name("Unable to read CUTDB database %s", record.file);
    set_up_reel_label(reel_label_[reel_ - 1], list);
    if (const char* error = refusal(list, record.file)) return error;
    if (const char* error = take_track(list)) return error;
    return add_list(list);
}

const char* SideLoader::add_list(cutdb& list) {
    const label_t standard = edlstr_to_label_type(parameter(list, "film label_std"));
    if (!table_) {
        *film_std_ = standard;
        table_ = std::make_unique<chgdb>(standard, &log_);
        table_->set_filename(chg_file_);
    }
    if (standard != *film_std_) return "The cutlists have different film standards\n";
    int length = 0;
    if (const char* error = flatten_cutlist(&length, reel_total_, reel_, *table_, list, *film_std_)) return error;
    reel_total_ = frame_sum(reel_total_, length);
    return nullptr;
}

void SideLoader::finish() {
    for (int reel = reel_; reel < reel_slots; ++reel)
        reel_start_[reel] = frame_sum(side_total_, reel_total_);
    OS()->files().remove(chg_file_);
    if (table_) table_->save_text();
}

void fill_optical(int frame_offset, int reel, ChangeRecord& row, const cut_report& cut) {
    row.optical = 1;
    row.reel_seq = reel;
    row.edit_in = frame_sum(frame_offset, cut.edit_in);
    row.edit_length = frame_difference(cut.edit_out, cut.edit_in);
    row.shot_name = fromUTF8(cut.optical_name, -1);
}

bool is_listed_optical(const cut_report& cut) { return cut.track == 0 && cut.optical_layer_count != 0; }

bool is_listed_event(const cut_report& cut) {
    return cut.optical_record == 0 && (cut.track == first_picture_track || change_run().sound_list);
}

/// The rows of a cutlist on their way into the table, each linked to its neighbours. An event waits until the next one
/// is known, with an empty row in its place.
class Flattener {
public:
    Flattener(chgdb& table, label_t film_std) : table_(table), held_(film_std), blank_(film_std), waiting_(film_std) {}

    const ChangeRecord& blank() const { return blank_; }
    void add_optical(const ChangeRecord& record) { record.write(*table_.get_record(add_row())); }
    void add_event(ChangeRecord& record);
    void finish();
    int total() const { return total_; }

private:
    unsigned add_row() { return static_cast<unsigned>(table_.add_records(1)); }
    void close_bracket(const LabelPoint& next);

    chgdb& table_;
    HeldLabels held_;
    ChangeRecord blank_;
    ChangeRecord waiting_;
    bool is_waiting_ = false;
    unsigned waiting_row_ = 0;
    LabelPoint previous_last_;
    int total_ = 0;
};

/// Of the last event, and of one ahead of black, which is no neighbour.
void Flattener::finish() {
    if (!is_waiting_) return;
    dbrecord& row = *table_.get_record(waiting_row_);
    waiting_.write(row);
    change_run().labels_held &= held_.are_held(waiting_, row);
}

// Linked to its neighbour an event's labels are those that its row gives back.
void Flattener::close_bracket(const LabelPoint& next) {
    dbrecord& row = *table_.get_record(waiting_row_);
    waiting_.bracket_out = next;
    waiting_.write(row);
    const bool held = held_.are_held(waiting_, row);
    if (held && held_.is_bracket_in_held(waiting_, row)) return;
    ChangeRecord again = blank_;
    again.keycode_missing = waiting_.keycode_missing;
    again.read_names_and_labels(row);
    again.bracket_out = next;
    again.write_names_and_labels(row);
    if (!held) change_run().labels_held &= held_.are_held(again, row);
}

void Flattener::add_event(ChangeRecord& record) {
    total_ = frame_sum(total_, record.edit_length);
    record.bracket_in = previous_last_;
    previous_last_ = record.keycode_in;
    previous_last_.set_sample(record.key_last());
    if (is_waiting_ && record.keycode_in.is_valid() && !is_filler(record.keycode_in)) {
        close_bracket(record.keycode_in);
    } else {
        finish();
    }
    waiting_row_ = add_row();
    waiting_ = std::move(record);
    is_waiting_ = true;
}

/// The share of a transition that lies within the event: all of a fade, half of anything else.
int own_share(const char* operation, int length) { return operation[0] == 'F' ? length : length / 2; }

void fill_transitions(ChangeRecord& row, const cut_report& cut) {
    put_text(row.fx_op1, cut.fx_op_in);
    row.fx_len1 = own_share(row.fx_op1, cut.fx_len_in);
    put_text(row.fx_op2, cut.fx_op_out);
    put_text(row.fx_name2, cut.fx_name_out);
    row.fx_len2 = own_share(row.fx_op2, cut.fx_len_out);
}

LightweightString<wchar_t> listed_name(const cut_report& cut) {
    if (!cut.shot_name.empty() || cut.special == special_none) return cut.shot_name;
    if (cut.special == special_black) return resourceStrW(text_black, ResStrFmt::heading);
    return L"?????";
}

} // namespace

const char* load_cutlist_set(int* reel_start, EditLabel* reel_label, label_t* film_std,
                             const LightweightString<wchar_t>& chg_file, const CutlistSet& set, LoggerHandle& log) {
    SideLoader loader(reel_start, reel_label, film_std, chg_file, log);
    for (unsigned index = 0; index < set.size(); ++index) {
        if (const char* error = loader.add(set.reel(index))) return error;
    }
    loader.finish();
    return nullptr;
}

const char* flatten_cutlist(int* length_out, int frame_offset, int reel, chgdb& table, cutdb& list, label_t film_std) {
    const int type = Channel(list).type;
    Flattener flattener(table, film_std);
    for (unsigned index = 0; index < list.get_num_records(); ++index) {
        ChangeRecord row = flattener.blank();
        cut_report cut;
        cut.load(*list.get_record(index), 1, type, 0);
        if (cut.optical_record == 1) {
            if (!is_listed_optical(cut)) continue;
            fill_optical(frame_offset, reel, row, cut);
            flattener.add_optical(row);
        } else if (is_listed_event(cut)) {
            fill_change_record(frame_offset, reel, row, cut);
            if (row.edit_length >= 1) flattener.add_event(row);
        }
    }
    flattener.finish();
    *length_out = flattener.total();
    return nullptr;
}

int fill_change_record(int frame_offset, int reel, ChangeRecord& row, const cut_report& cut) {
    row.reel_seq = reel;
    row.edit_in = frame_sum(frame_offset, cut.edit_in);
    row.edit_length = cut.cut_length;
    row.speed = cut.speed;
    row.keycode_in = cut.cut_key_in;
    row.inkcode_in = cut.cut_ink_in;
    row.keycode_missing = cut.keycode_missing;
    row.set_outs();
    row.prim_tc_in = cut.prim_tc.get_label_point(0);
    row.prim_tc_out = cut.prim_tc.get_label_point(cut.prim_tc.end);
    put_text(row.cam_reel, cut.cam_reel);
    row.shot_name = listed_name(cut);
    put_text(row.description, cut.description);
    put_text(row.scene, cut.scene);
    put_text(row.take, cut.take);
    fill_transitions(row, cut);
    return 0;
}
