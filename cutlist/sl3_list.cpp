// The main track as one single layer.

#include "base/frame_math.h"
#include "cutlist/film_stretch.h"
#include "cutlist/single_layer_lists.h"
#include "cutlist/single_layer_tables.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"

#include <algorithm>

namespace {

constexpr int main_track = 1;

/// Lays clips and opticals in edit order:
///
///     opticals:         |--- FX(1) ---|
///     main track:  |---- clip ----|------ clip ----|
///     list:        |clip|    FX(1)    |    clip    |
class layer_walk {
public:
    layer_walk(cutdb& db, sl2db& list) : db_(db), list_(list) { next_optical(); }

    void run() {
        const unsigned rows = db_.get_num_records();
        for (unsigned index = 0; index < rows; ++index) {
            dbrecord& row = *db_.get_record(index);
            if (number_in(row, cf_optical_record) == 1 || number_in(row, cf_track) != main_track) continue;
            cut_s event;
            event.read_listed(row);
            lay_event(event);
        }
    }

private:
    void next_optical() {
        const unsigned rows = db_.get_num_records();
        while (next_row_ < rows && number_in(*db_.get_record(next_row_), cf_optical_record) == 0)
            ++next_row_;
        no_more_fx_ = next_row_ >= rows;
        if (no_more_fx_) return;
        optical_ = cut_s();
        optical_.read_listed(*db_.get_record(next_row_++));
    }

    void lay_event(const cut_s& event) {
        const full_stretch full(event);
        int from = full.from;
        int to = full.to;
        for (bool done = false; !done;) {
            from = std::max(from, limit_);
            if (!no_more_fx_) to = std::min(to, optical_.edit_in);
            if (to > from) {
                add_clip(event, full, from, to);
            } else {
                done = true;
            }
            if (no_more_fx_ || optical_.edit_in >= full.to) return;
            add_optical();
            limit_ = optical_.edit_out;
            from = limit_;
            to = full.to;
            done = done || limit_ >= full.to;
            next_optical();
        }
    }

    void add_clip(const cut_s& event, const full_stretch& full, int from, int to) {
        sl2_rec record;
        record.event_num = event_count_++;
        record.type = 'C';
        record.at_edit_frame = from;
        record.track = main_track;
        clip_part& clip = record.clip;
        set_transition_in(clip, event.fx_op_in, frame_difference(event.fx_len_in, frame_difference(from, full.from)));
        set_transition_out(clip, event.fx_op_out, frame_difference(event.fx_len_out, frame_difference(full.to, to)));
        if (clip.trns_in_length != 0 || clip.trns_out_length != 0) {
            record.ab_roll = rolls_.next();
        } else {
            rolls_.start_again();
        }
        clip.clip_length = frame_difference(to, from);
        put_text(clip.reel_id, event.cam_reel);
        set_film_codes(clip, event, from, to);
        clip.speed = event.speed;
        clip.shot_name = event.shot_name;
        put_text(clip.comments, event.cue_description);
        append(list_, record);
    }

    void add_optical() {
        sl2_rec record;
        record.event_num = event_count_++;
        record.type = 'F';
        record.fx_num = fx_count_++;
        record.at_edit_frame = optical_.edit_in;
        record.clip.clip_length = frame_difference(optical_.edit_out, optical_.edit_in);
        record.clip.shot_name = optical_.shot_name;
        put_text(record.clip.comments, optical_.cue_description);
        append(list_, record);
    }

    cutdb& db_;
    sl2db& list_;
    cut_s optical_;
    roll_letters rolls_;
    unsigned next_row_ = 0;
    bool no_more_fx_ = false;
    int limit_ = 0; ///< the end of the optical laid last
    int event_count_ = 1;
    int fx_count_ = 1;
};

} // namespace

void write_sl3_file(cutdb* db, LoggerHandle& logger) {
    sl2db list;
    if (!begin_list(list, 3, *db, logger)) return;
    layer_walk(*db, list).run();
    save_list(list);
}
