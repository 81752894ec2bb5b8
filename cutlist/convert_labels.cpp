#include "cutlist/convert_labels.h"

#include "cutlist/cutlist_options.h"
#include "cutlist/generator_labels.h"

#include <memory>

namespace {

constexpr int printed_cue = 4;

/// The source edit of an event and the labels that it carries for its material.
struct source_material {
    EditPtr edit;
    double start = 0.0; ///< seconds at which its material starts
    EditLabel tc = *invalid_edit_label();
    EditLabel aud = *invalid_edit_label();
    EditLabel tc24 = *invalid_edit_label();
    EditLabel key = *invalid_edit_label();
    EditLabel ink = *invalid_edit_label();
};

void read_reels(cut_s& record, const Edit& source) {
    const int film_reel = cutlist_options().film_reel;
    set_reel(record.src_reelid, source.getReelId(MediumRollIdent(medium_source_picture, 2)));
    set_reel(record.aud_reelid, source.getReelId(MediumRollIdent(medium_sound, 3)));
    set_reel(record.src24P_reelid, source.getReelId(MediumRollIdent(medium_source_24p, 1)));
    set_reel(record.cam_reel, source.getReelId(MediumRollIdent(film_reel == 0 ? medium_film : film_reel, 1)));
}

// The first source with a key number sets the standard of the list; a later one of another kind is listed by
// its own numbers and marks the list as mixed.
void adopt_or_compare_standard(const EditLabel& key) {
    const int long_keycode = cutlist_options().long_keycode;
    if (generator().film_standard_set == 0) {
        set_film_standard(key.type(), long_keycode);
        return;
    }
    EditLabel copy = key;
    copy.modify_count_length(long_keycode + 4);
    if (copy.type() != generator().key_label.type()) generator().mixed_kc_standard = true;
}

void read_material(cut_s& record, source_material& source) {
    Edit& edit = *source.edit;
    read_reels(record, edit);
    record.shot_name = edit.getName();
    read_log_fields(record, edit);
    source.tc = *edit.getLabel(user_label_timecode, MediumRollIdent(medium_source_picture, 2));
    source.aud = *edit.getLabel(user_label_timecode, MediumRollIdent(medium_source_picture, 3));
    source.tc24 = *edit.getLabel(user_label_timecode, MediumRollIdent(medium_source_24p, 1));
    source.key = *edit.getLabel(user_label_key, MediumRollIdent(medium_source_picture, 1));
    if (source.key.is_valid()) adopt_or_compare_standard(source.key);
    source.ink = *edit.getLabel(user_label_ink, MediumRollIdent(medium_source_picture, 1));
    if (source.ink.is_valid() && generator().film_standard_set == 0)
        set_film_standard(source.ink.type(), cutlist_options().long_keycode);
}

void read_source(cut_s& record, const Cookie& cookie, source_material& source) {
    const source_state state = open_source(record, cookie, source.edit);
    if (state != source_state::absent) source.start = source.edit->getStartStripTime();
    if (state == source_state::logged) read_material(record, source);
}

/// The source's key label, or one that counts from 0 behind the source's cookie.
EditLabel working_key_label(cut_s& record, const EditLabel& key) {
    EditLabel working = key;
    if (working.is_valid()) return working;
    working.set_type(generator().key_label.type());
    const bool black = record.special == special_black;
    count_from_zero(working, black ? black_prefix : record.cookie);
    if (!black) record.keycode_missing = 1;
    return working;
}

/// One of the record's three timecodes: where the stretch begins and how long it is.
class timecode_stretch {
public:
    timecode_stretch(EditLabel& target, const EditLabel& source, double in, const EditPtr& edit)
        : target_(target), source_(source), edit_(edit), in_(translate(in)) {
        begin_timecode(target_, source_, in_);
    }
    void close(double out) { set_timecode_length(target_, translate(out) - in_); }

private:
    double translate(double posn) const { return mPosn_Xlate(posn, medium_edit, &source_, edit_); }

    EditLabel& target_;
    const EditLabel& source_;
    const EditPtr& edit_;
    double in_;
};

void set_first_printed_cue(cut_s& record, CueList* cues, double from, double to, const IdStamp& channel) {
    if (!cues) return;
    const std::unique_ptr<CueList> found(cues->extract(from, to, channel));
    if (!found) return;
    const unsigned count = found->getNumCuePoints(0);
    found->sort();
    for (unsigned i = 0; i < count; ++i) {
        const Cue* cue = found->getCuePoint(i, 0);
        if (!(cue->flags & printed_cue)) continue;
        set_cue(record, *cue);
        break;
    }
}

// Whatever isn't a wipe counts as a dissolve.
void read_kind_from_node(cut_s& record, EditPtr&, const ce_handle&, const FXGraphNodeBase* node) {
    if (const auto* wipe = dynamic_cast<const DissolveWipeEffect*>(node))
        set_wipe(record, wipe->isReversed() ? 1 : 0, wipe->getPattern());
    else
        put_text(record.fx_op_out, "DO");
}

// Everything of the record but the transition behind it. The handle goes from the in-point to the out-point.
bool convert_stretch(cut_s& record, EditPtr& edit, int chan, CueList* cues, ce_handle& handle) {
    const ChannelEvent in = handle.get_channel_event();
    const Cookie cookie = edit_cookie_of(in.cookie);
    put_text(record.cookie, edit_cookie_of(cookie).asString(false).c_str());
    source_material source;
    read_source(record, cookie, source);
    const EditPtr& src = source.edit;

    const double pos_in = in.source_time - source.start;
    const EditLabel key = working_key_label(record, source.key);
    EditLabel ink = source.ink;
    if (ink.is_valid()) ink.set_type(generator().ink_label.type());
    timecode_stretch timecodes[] = {{record.prim_tc, source.tc, pos_in, src},
                                    {record.aud_tc, source.aud, pos_in, src},
                                    {record.src24P_tc, source.tc24, pos_in, src}};
    const double film_in = mPosn_Xlate(pos_in, medium_edit, medium_film, src);
    record.keycode_in = record.special == special_black ? key.get_label_point(0) : key.get_label_point(film_in);
    record.inkcode_in = ink.get_label_point(film_in);
    record.edit_in = frame_of_position(in.edit_time, edit);

    handle.increment(ce_all);
    if (!handle.is_out_point()) return false;
    const ChannelEvent end = handle.get_channel_event();
    record.edit_out = frame_of_position(end.edit_time, edit);
    set_first_printed_cue(record, cues, in.edit_time, end.edit_time, edit->getId(chan));

    // The timecodes show the out point as it stands; only key and ink numbers follow the rounding.
    double pos_out = end.source_time - source.start;
    for (timecode_stretch& timecode : timecodes)
        timecode.close(pos_out);
    if (src) record.speed = settle_speed(static_cast<double>(end.speed), pos_out, handle.cel->resolution);
    if (record.special == special_black) pos_out = end.edit_time - in.edit_time;
    const double film_out = mPosn_Xlate(pos_out, medium_edit, medium_film, src);
    record.keycode_out = key.get_label_point(film_out);
    record.inkcode_out = ink.get_label_point(film_out);
    return true;
}

} // namespace

convert_result convert_event_from_labels(EditPtr& edit, int chan, CueList* cues, ce_handle& handle,
                                         std::unique_ptr<cut_s>& out, int track) {
    out = nullptr;
    convert_result result = check_in_point(handle);
    if (result != convert_done) return result;

    auto record = std::make_unique<cut_s>();
    if (track != 1) find_upper_track_effect(*record, edit, handle, chan);
    if (!convert_stretch(*record, edit, chan, cues, handle)) return convert_out_of_step;
    result = go_to_next_cut(*record, edit, handle, read_kind_from_node);
    if (result == convert_done) out = std::move(record);
    return result;
}
