#include "cutlist/convert_labels.h"

#include "cutlist/cutlist_options.h"
#include "cutlist/generator_labels.h"
#include "host/fixed_text.h"

#include <cstdio>
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

template <std::size_t N> void read_reel(char (&target)[N], const Edit& source, const MediumRollIdent& ident) {
    const LightweightString<char> reel = source.getReelId(ident);
    if (!reel.empty()) put_text(target, reel.c_str());
}

void read_reels(cut_s& record, const Edit& source) {
    const int film_reel = cutlist_options().film_reel;
    read_reel(record.src_reelid, source, MediumRollIdent(medium_source_picture, 2));
    read_reel(record.aud_reelid, source, MediumRollIdent(medium_sound, 3));
    read_reel(record.src24P_reelid, source, MediumRollIdent(medium_source_24p, 1));
    read_reel(record.cam_reel, source, MediumRollIdent(film_reel == 0 ? medium_film : film_reel, 1));
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
    if (copy.type() != generator().key_label->type()) generator().mixed_kc_standard = true;
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

void mark_without_material(cut_s& record, const char* word, int special) {
    set_all_reels(record, word);
    record.special = special;
    record.shot_name = LightweightString<wchar_t>();
}

void open_source(cut_s& record, const Cookie& cookie, source_material& source) {
    source.edit.i_open(cookie, edit_open_default);
    record.special = special_none;
    if (!source.edit) {
        if (cookie.isBlack())
            mark_without_material(record, "__BLACK", special_black);
        else
            mark_without_material(record, "__NOLOG", special_no_material);
        return;
    }
    source.start = source.edit->getStartStripTime();
    if (RenderHistory::isRendered(cookie))
        mark_without_material(record, "RENDERED", special_no_material);
    else
        read_material(record, source);
}

/// The source's key label, or one that counts from 0 behind the source's cookie.
EditLabel working_key_label(cut_s& record, const EditLabel& key) {
    EditLabel working = key;
    if (working.is_valid()) return working;
    working.set_type(generator().key_label->type());
    working.modify_count_length(4);
    if (record.special == special_black) {
        working.set_prefix(black_prefix);
    } else {
        working.set_prefix(record.cookie);
        record.keycode_missing = 1;
    }
    working.set_start(0);
    return working;
}

/// One of the record's three timecodes: where the stretch begins and how long it is.
class timecode_stretch {
public:
    timecode_stretch(EditLabel& target, const EditLabel& source, double in, const EditPtr& edit)
        : target_(target), source_(source), edit_(edit), in_(translate(in)) {
        target_ = source_;
        target_.set_start(target_.get_abs_posn(0) + in_);
    }
    void close(double out) {
        target_.end = target_.posn_to_sample(translate(out) - in_);
        target_.end_set = 1;
    }

private:
    double translate(double posn) const { return mPosn_Xlate(posn, medium_edit, &source_, edit_); }

    EditLabel& target_;
    const EditLabel& source_;
    const EditPtr& edit_;
    double in_;
};

void set_first_printed_cue(cut_s& record, CueList* cues, double from, double to, const IdStamp& channel) {
    if (!cues) return;
    CueList* found = cues->extract(from, to, channel);
    if (!found) return;
    const unsigned count = found->getNumCuePoints(0);
    found->sort();
    for (unsigned i = 0; i < count; ++i) {
        const Cue* cue = found->getCuePoint(i, 0);
        if (!(cue->flags & printed_cue)) continue;
        set_cue(record, *cue);
        break;
    }
    delete found;
}

// The handle stands on the effect between two cuts; it ends on the next cut's in-point.
void fold_in_transition(cut_s& record, EditPtr& edit, ce_handle& handle, double start) {
    const Qb::Ptr<FXGraphNodeBase> node = edit->getVideoNode(handle.getEffectGraph());
    if (const auto* wipe = dynamic_cast<const DissolveWipeEffect*>(node.get())) {
        char mode[24];
        std::snprintf(mode, sizeof mode, "%1d.%03d", (wipe->isReversed() ? 1 : 0) + 1, wipe->getPattern());
        put_text(record.fx_op_out, "WO");
        put_text(record.fx_mod_out, mode);
    } else {
        put_text(record.fx_op_out, "DO");
    }
    set_transition_name(record, node);
    handle.increment(ce_all);
    record.fx_len_out = frames_of_duration(handle.get_channel_event().edit_time - start, edit);
    handle.increment(ce_all);
}

// Everything of the record but the transition behind it. The handle goes from the in-point to the out-point.
bool convert_stretch(cut_s& record, EditPtr& edit, int chan, CueList* cues, ce_handle& handle) {
    const ChannelEvent in = handle.get_channel_event();
    const Cookie cookie = edit_cookie_of(in.cookie);
    put_text(record.cookie, edit_cookie_of(cookie).asString(false).c_str());
    source_material source;
    open_source(record, cookie, source);
    const EditPtr& src = source.edit;

    const double pos_in = in.source_time - source.start;
    const EditLabel key = working_key_label(record, source.key);
    EditLabel ink = source.ink;
    if (ink.is_valid()) ink.set_type(generator().ink_label->type());
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

convert_result convert_event_from_labels(EditPtr& edit, int chan, CueList* cues, ce_handle& handle, cut_s*& out,
                                         int track) {
    out = nullptr;
    if (!handle.valid()) return convert_ended;
    if (!handle.is_in_point()) return convert_out_of_step;
    if (edit_cookie_of(handle.get_channel_event().cookie).isEffect()) return convert_effect_first;

    std::unique_ptr<cut_s> record(new cut_s);
    if (track != 1) find_upper_track_effect(*record, edit, handle, chan);
    if (!convert_stretch(*record, edit, chan, cues, handle)) return convert_out_of_step;

    handle.increment(ce_all);
    if (handle.valid()) {
        if (!handle.is_in_point()) return convert_out_of_step;
        const ChannelEvent next = handle.get_channel_event();
        if (next.cookie.isEffect()) fold_in_transition(*record, edit, handle, next.edit_time);
    }
    out = record.release();
    return convert_done;
}
