#include "cutlist/convert_shots.h"

#include "cutlist/generator_labels.h"
#include "logging/log_shot_list.h"

#include <memory>

namespace {

constexpr const char* no_shot = "__NOSHOT";

/// Pushes a position inside its frame, so that film doesn't fall back by one.
constexpr double inside_frame = 0.6;

/// The stretch of one event: seconds on the master edit and on its source.
struct event_stretch {
    double edit_in, edit_out;
    double src_in, src_out;
};

/// A source, and the labels that its stretch is counted on.
struct counted_source {
    EditPtr edit;
    EditLabel key = EditLabel(generator().key_label.type(), MediumRollIdent(medium_film, 1));
    EditLabel ink = EditLabel(label_t_to_ink_label_t(key.type()), MediumRollIdent(medium_ink, 1));
};

LabelPoint invalid_point() { return get_invalid_label()->get_label_point(0); }

void set_inks(cut_s& record, const LabelPoint& in, const LabelPoint& out) {
    record.inkcode_in = in;
    record.inkcode_out = out;
}

// Nothing but the cookie tells the material apart, and nothing but the source position tells where in it.
void number_by_cookie(cut_s& record, counted_source& source, const event_stretch& at, const EditPtr& scale) {
    record.keycode_missing = 1;
    count_from_zero(source.key, record.cookie);
    record.keycode_in = source.key.get_label_point(mPosn_Xlate(at.src_in, medium_edit, medium_film, scale));
    record.keycode_out = source.key.get_label_point(mPosn_Xlate(at.src_out, medium_edit, medium_film, scale));
    set_inks(record, invalid_point(), invalid_point());
}

// Black counts from 0 over the event's own length, whatever its speed.
void number_black(cut_s& record, counted_source& source, const event_stretch& at, const EditPtr& edit) {
    count_from_zero(source.key, black_prefix);
    const double length = mPosn_Xlate(at.edit_out - at.edit_in, medium_edit, medium_film, edit);
    record.keycode_in = source.key.get_label_point(0);
    record.keycode_out = source.key.get_label_point(length);
    set_inks(record, invalid_point(), invalid_point());
}

void mark_without_shot(cut_s& record) {
    record.special = special_no_material;
    put_text(record.aud_reelid, no_shot);
    put_text(record.src24P_reelid, no_shot);
    put_text(record.cam_reel, no_shot);
}

// Only as much of the reel is kept as can stand in a shot.
LogShot* look_up_shot(const counted_source& source, bool rendered, LogShotList& shots, const EditLabel& timecode,
                      double in, double out) {
    char reel[sizeof(LogShot::reel)] = "";
    if (!rendered) put_text(reel, source.edit->getReelId(0, -1).c_str());
    return find_shot(shots, timecode.get_unbounded_label_point(in), timecode.get_unbounded_label_point(out), reel);
}

void set_shot_reels(cut_s& record, const LogShot& shot) {
    put_text(record.cam_reel, *shot.film_roll ? shot.film_roll : shot.reel);
    put_text(record.aud_reelid, shot.snd_reel);
    put_text(record.src24P_reelid, shot.reel_24p);
}

void start_at_point(EditLabel& label, LabelPoint point) {
    if (point.is_valid())
        label.set_start(point.get_string());
    else
        label = *invalid_edit_label();
}

void start_keys(cut_s& record, EditLabel& key, const LogShot& shot) {
    if (shot.keycode.is_valid()) {
        start_at_point(key, shot.keycode);
        return;
    }
    record.keycode_missing = 1;
    count_from_zero(key, record.cookie);
}

/// A stretch inside a shot, on the scale of the source's timecode, counted from the shot's start:
///
///     shot    |start . . . . . . . . . . . . end|
///     event            |in . . . out|
class shot_stretch {
public:
    shot_stretch(const EditLabel& timecode, const LogShot& shot, double in, double out, const EditPtr& source)
        : label(timecode), medium_(timecode.get_MediumRoll().medium), source_(source) {
        label.set_start(shot.start);
        label.set_end(shot.end.sample);
        in_ = label.get_posn(timecode.get_label_point(in)) + inside_frame * timecode.posn_step;
        out_ = label.get_posn(timecode.get_label_point(out)) + inside_frame * timecode.posn_step;
    }

    void number(const EditLabel& film, LabelPoint& first, LabelPoint& behind) const {
        first = film.get_label_point(mPosn_Xlate(in_, medium_, medium_film, source_));
        behind = film.get_label_point(mPosn_Xlate(out_, medium_, medium_film, source_));
    }
    void take_own_timecode(EditLabel& target) const { take(target, label, in_, out_); }
    void take_timecode(EditLabel& target, const EditLabel& start) const {
        take(target, start, mPosn_Xlate(in_, medium_, &start, source_), mPosn_Xlate(out_, medium_, &start, source_));
    }

private:
    static void take(EditLabel& target, const EditLabel& start, double in, double out) {
        begin_timecode(target, start, in);
        set_timecode_length(target, out - in);
    }

    EditLabel label;
    MediumRollMedium medium_;
    const EditPtr& source_;
    double in_ = 0.0;
    double out_ = 0.0;
};

void number_from_shot(cut_s& record, counted_source& source, const LogShot& shot, const shot_stretch& stretch) {
    start_keys(record, source.key, shot);
    start_at_point(source.ink, shot.inkcode);
    set_shot_reels(record, shot);
    stretch.number(source.key, record.keycode_in, record.keycode_out);
    if (source.ink.is_valid())
        stretch.number(source.ink, record.inkcode_in, record.inkcode_out);
    else
        set_inks(record, invalid_point(), invalid_point());
}

void set_timecodes(cut_s& record, const LogShot& shot, const shot_stretch& stretch) {
    EditLabel sound(shot.snd_label_type, MediumRollIdent(medium_sound, 3));
    EditLabel code_24p(shot.code_24p_label_type, MediumRollIdent(medium_source_24p, 1));
    start_at_point(sound, shot.snd_start);
    start_at_point(code_24p, shot.start_24p);
    stretch.take_own_timecode(record.prim_tc);
    stretch.take_timecode(record.aud_tc, sound);
    stretch.take_timecode(record.src24P_tc, code_24p);
}

void number_by_shots(cut_s& record, counted_source& source, bool rendered, const event_stretch& at,
                     LogShotList& shots) {
    const EditLabel& timecode = *source.edit->getLabel(user_label_timecode, MediumRollIdent(medium_source_picture, 2));
    const double in = mPosn_Xlate(at.src_in, medium_edit, &timecode, source.edit);
    const double out = mPosn_Xlate(at.src_out, medium_edit, &timecode, source.edit);
    const LogShot* shot = look_up_shot(source, rendered, shots, timecode, in, out);
    if (!shot) {
        mark_without_shot(record);
        number_by_cookie(record, source, at, source.edit);
        return;
    }
    const shot_stretch stretch(timecode, *shot, in, out, source.edit);
    number_from_shot(record, source, *shot, stretch);
    set_timecodes(record, *shot, stretch);
}

void set_first_cue(cut_s& record, CueList* cues, double from, double to, const IdStamp& channel) {
    const std::unique_ptr<CueList> found(cues ? cues->extract(from, to, channel) : nullptr);
    if (!found) return;
    if (found->getNumCuePoints(0) != 0) set_cue(record, *found->getCuePoint(0, 0));
}

void read_log(cut_s& record, Edit& source) {
    set_reel(record.src_reelid, source.getReelId(0, -1));
    record.shot_name = source.getName();
    read_log_fields(record, source);
}

void read_kind_from_cookie(cut_s& record, EditPtr& edit, const ce_handle& handle, const FXGraphNodeBase*) {
    const Cookie effect = edit_cookie_of(edit->getED2CookieForED5Effect(handle));
    if (effect.isWipe())
        set_wipe(record, effect.wipeDirection(), static_cast<int>(effect.wipeType()));
    else
        put_text(record.fx_op_out, effect.isDissolve() || effect.isFilmDissolve() ? "DO" : "XX");
}

// Everything of the record but the transition behind it. The handle goes from the in-point to the out-point.
bool convert_stretch(cut_s& record, EditPtr& edit, int chan, CueList* cues, ce_handle& handle, LogShotList& shots) {
    const ChannelEvent in = handle.get_channel_event();
    const Cookie cookie = edit_cookie_of(in.cookie);
    put_text(record.cookie, edit_cookie_of(cookie).asString(false).c_str());
    counted_source source;
    const source_state state = open_source(record, cookie, source.edit);
    if (state == source_state::logged) read_log(record, *source.edit);

    handle.increment(ce_all);
    if (!handle.is_out_point()) return false;
    const ChannelEvent end = handle.get_channel_event();
    event_stretch at = {in.edit_time, end.edit_time, in.source_time, end.source_time};
    set_first_cue(record, cues, at.edit_in, at.edit_out, edit->getId(chan));
    record.edit_in = frame_of_position(at.edit_in, edit);
    record.edit_out = frame_of_position(at.edit_out, edit);
    record.speed = settle_speed(static_cast<double>(end.speed), at.src_out, handle.cel->resolution);

    if (state != source_state::absent)
        number_by_shots(record, source, state == source_state::rendered, at, shots);
    else if (record.special == special_black)
        number_black(record, source, at, edit);
    else
        number_by_cookie(record, source, at, edit);
    return true;
}

} // namespace

convert_result convert_event_from_shots(EditPtr& edit, int chan, CueList* cues, ce_handle& handle,
                                        std::unique_ptr<cut_s>& out, LogShotList* shots, int track) {
    out = nullptr;
    convert_result result = check_in_point(handle);
    if (result != convert_done) return result;

    auto record = std::make_unique<cut_s>();
    if (track != 1) find_upper_track_effect(*record, edit, handle, chan);
    if (!convert_stretch(*record, edit, chan, cues, handle, *shots)) return convert_out_of_step;
    result = go_to_next_cut(*record, edit, handle, read_kind_from_cookie);
    if (result == convert_done) out = std::move(record);
    return result;
}
