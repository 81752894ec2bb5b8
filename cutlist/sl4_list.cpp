// Events with cues.

#include "base/frame_math.h"
#include "cutlist/film_stretch.h"
#include "cutlist/single_layer_lists.h"
#include "cutlist/single_layer_tables.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"

namespace {

bool is_listed(const dbrecord& row) {
    return number_in(row, cf_optical_record) != 1 && number_in(row, cf_clip_cue) != 0;
}

sl3_rec full_event(const cut_s& event) {
    sl3_rec record;
    const full_stretch stretch(event);
    record.at_edit_frame = stretch.from;
    record.track = event.track;
    record.clip.clip_length = frame_difference(stretch.to, stretch.from);
    // A length below 0 stands in the list, though without a word.
    record.clip.trns_in_length = event.fx_len_in;
    set_transition_in(record.clip, event.fx_op_in, event.fx_len_in);
    record.clip.trns_out_length = event.fx_len_out;
    set_transition_out(record.clip, event.fx_op_out, event.fx_len_out);
    put_text(record.clip.reel_id, event.cam_reel);
    set_film_codes(record.clip, event, stretch.from, stretch.to);
    record.clip.speed = event.speed;
    record.clip.shot_name = event.shot_name;
    put_text(record.clip.comments, event.cue_description);
    put_text(record.clip.clip_modification, event.utr_fx_name);
    return record;
}

} // namespace

void write_sl4_file(cutdb* db, LoggerHandle& logger) {
    sl3db list;
    if (!begin_list(list, 4, *db, logger)) return;
    const unsigned rows = db->get_num_records();
    for (unsigned index = 0; index < rows; ++index) {
        dbrecord& row = *db->get_record(index);
        if (!is_listed(row)) continue;
        cut_s event;
        event.read_listed(row);
        append(list, full_event(event));
    }
    save_list(list);
}
