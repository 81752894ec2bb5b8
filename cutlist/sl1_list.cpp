// Opticals, and the material within each.

#include "base/frame_math.h"
#include "cutlist/film_stretch.h"
#include "cutlist/single_layer_lists.h"
#include "cutlist/single_layer_tables.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"

#include <algorithm>

namespace {

/// Where an event lies. Most lie under no optical, so the rest of a row is read where a piece of it is listed.
struct layer_event {
    unsigned row;
    full_stretch stretch;
    int latest_end; ///< of this event and those of its track before it
};

/// The events of one track; indices into all events.
struct track_run {
    int track;
    std::size_t begin;
    std::size_t end;
};

/// Lays the material of one optical after the other:
///
///     optical:         |------- span -------|
///     track 2:             |---- clip ----|
///     track 1:    |-- clip --|x|---- clip ------|
///     rows:            |- A -|
///                            |----- B ------|
class optical_walk {
public:
    optical_walk(cutdb& db, sl1db& list, bool cued_only) : db_(db), list_(list), cued_only_(cued_only) {
        load_events();
    }

    void run() {
        const unsigned rows = db_.get_num_records();
        for (unsigned index = 0; index < rows; ++index) {
            dbrecord& row = *db_.get_record(index);
            if (number_in(row, cf_optical_record) == 0) continue;
            ++fx_count_;
            if (cued_only_ && number_in(row, cf_clip_cue) == 0) continue;
            optical_ = cut_s();
            optical_.read_listed(row);
            lay_tracks();
        }
    }

private:
    void load_events() {
        const unsigned rows = db_.get_num_records();
        for (unsigned index = 0; index < rows; ++index) {
            const dbrecord& row = *db_.get_record(index);
            if (number_in(row, cf_optical_record) == 1) continue;
            const int track = number_in(row, cf_track);
            const bool first = runs_.empty() || runs_.back().track != track;
            if (first) runs_.push_back({track, events_.size(), events_.size()});
            const full_stretch stretch(row);
            const int latest = first ? stretch.to : std::max(stretch.to, events_.back().latest_end);
            events_.push_back({index, stretch, latest});
            runs_.back().end = events_.size();
        }
    }

    void lay_tracks() {
        int lowest = 1;
        for (const track_run& run : runs_) {
            if (run.track < lowest) continue;
            lowest = lay_track(run);
        }
    }

    // The result is the lowest track that is still of interest: the next one when this one goes on behind the optical.
    int lay_track(const track_run& run) {
        position_ = optical_.edit_in;
        rolls_.start_again();
        std::size_t i = first_within(run);
        for (; i < run.end; ++i) {
            const layer_event& found = events_[i];
            if (found.stretch.to <= optical_.edit_in) continue;
            if (found.stretch.from >= optical_.edit_out) break;
            add_piece(found, run.track);
        }
        return i < run.end ? frame_sum(run.track, 1) : run.track;
    }

    std::size_t first_within(const track_run& run) const {
        std::size_t begin = run.begin;
        std::size_t end = run.end;
        while (begin < end) {
            const std::size_t middle = begin + (end - begin) / 2;
            if (events_[middle].latest_end <= optical_.edit_in) {
                begin = middle + 1;
            } else {
                end = middle;
            }
        }
        return begin;
    }

    void add_piece(const layer_event& found, int track) {
        cut_s event;
        event.read_listed(*db_.get_record(found.row));
        sl1_rec record;
        clip_part& clip = record.clip;
        const int ahead = std::max(frame_difference(optical_.edit_in, found.stretch.from), 0);
        const int behind = std::max(frame_difference(found.stretch.to, optical_.edit_out), 0);
        set_transition_in(clip, event.fx_op_in, std::max(frame_difference(event.fx_len_in, ahead), 0));
        set_transition_out(clip, event.fx_op_out, std::max(frame_difference(event.fx_len_out, behind), 0));
        if (clip.trns_in_length > 0 || clip.trns_out_length > 0) record.ab_roll = rolls_.next();
        record.fx_num = fx_count_;
        record.at_edit_frame = position_;
        record.track = track;
        put_text(record.fx_type, optical_.optical_name);
        put_text(clip.comments, optical_.cue_description);
        put_text(clip.reel_id, event.cam_reel);
        const int end = std::min(found.stretch.to, optical_.edit_out);
        set_film_codes(clip, event, position_, end);
        clip.clip_length = frame_difference(end, position_);
        position_ = frame_difference(end, clip.trns_out_length);
        clip.speed = event.speed;
        clip.shot_name = event.shot_name;
        put_text(clip.clip_modification, event.utr_fx_name);
        append(list_, record);
    }

    cutdb& db_;
    sl1db& list_;
    const bool cued_only_;
    Vector<layer_event> events_;
    Vector<track_run> runs_;
    cut_s optical_;
    roll_letters rolls_;
    int fx_count_ = 0;
    int position_ = 0; ///< where the next piece of the track begins
};

void write_opticals(int number, bool cued_only, cutdb& db, LoggerHandle& logger) {
    sl1db list;
    if (!begin_list(list, number, db, logger)) return;
    optical_walk(db, list, cued_only).run();
    save_list(list);
}

} // namespace

void write_sl1_file(cutdb* db, LoggerHandle& logger) { write_opticals(1, false, *db, logger); }

void write_sl2_file(cutdb* db, LoggerHandle& logger) { write_opticals(2, true, *db, logger); }
