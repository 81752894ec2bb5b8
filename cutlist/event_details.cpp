#include "cutlist/event_details.h"

#include "cutlist/fx_opticals.h"
#include "cutlist/generator_labels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr const char* unknown_effect = "Unknown Effect";
constexpr unsigned char any_subtype = 255;
constexpr int transition_magic = 2;

template <std::size_t N> void read_text(char (&target)[N], Edit& source, const char* key) {
    strp_field value;
    if (read_edit_field(&source, key, value) == 0) put_text(target, static_cast<const char*>(value));
}

// The name of the one effect that draws on one track; the record keeps "Unknown Effect" for all else.
void name_single_effect(cut_s& record, const EditGraphIterator& graph) {
    Vector<Qb::Ptr<FXGraphNodeBase>> components;
    graph.findComponentsForCurrentEffect(components);
    if (components.empty()) return;
    Vector<int> tracks;
    graph.findMaterialTracks(tracks);
    if (tracks.size() == 1 && components.size() == 1)
        put_text(record.utr_fx_name, toUTF8(components.front()->getName()).c_str());
}

void mark_without_material(cut_s& record, const char* word, int special) {
    set_all_reels(record, word);
    record.special = special;
    record.shot_name = LightweightString<wchar_t>();
}

void set_transition_name(cut_s& record, const FXGraphNodeBase* node) {
    const LightweightString<char> name = node ? toUTF8(node->getName()) : LightweightString<char>();
    put_text(record.fx_name_out, name.empty() ? unknown_effect : name.c_str());
}

// From the transition's in-point to the next cut's.
void fold_in_transition(cut_s& record, EditPtr& edit, ce_handle& handle, double start,
                        transition_kind_reader read_kind) {
    const Qb::Ptr<FXGraphNodeBase> node = edit->getVideoNode(handle.getEffectGraph());
    read_kind(record, edit, handle, node.get());
    set_transition_name(record, node.get());
    handle.increment(ce_all);
    record.fx_len_out = frames_of_duration(handle.get_channel_event().edit_time - start, edit);
    handle.increment(ce_all);
}

} // namespace

Cookie edit_cookie_of(const Cookie& cookie) { return convertCookie(cookie, cookie_edit, any_subtype); }

convert_result check_in_point(const ce_handle& handle) {
    if (!handle.valid()) return convert_ended;
    if (!handle.is_in_point()) return convert_out_of_step;
    return edit_cookie_of(handle.get_channel_event().cookie).isEffect() ? convert_effect_first : convert_done;
}

source_state open_source(cut_s& record, const Cookie& cookie, EditPtr& source) {
    source.i_open(cookie, edit_open_default);
    record.special = special_none;
    if (!source) {
        if (cookie.isBlack())
            mark_without_material(record, "__BLACK", special_black);
        else
            mark_without_material(record, "__NOLOG", special_no_material);
        return source_state::absent;
    }
    if (!RenderHistory::isRendered(cookie)) return source_state::logged;
    mark_without_material(record, "RENDERED", special_no_material);
    return source_state::rendered;
}

void set_all_reels(cut_s& record, const char* word) {
    put_text(record.src_reelid, word);
    put_text(record.aud_reelid, word);
    put_text(record.src24P_reelid, word);
    put_text(record.cam_reel, word);
}

void read_log_fields(cut_s& record, Edit& source) {
    read_text(record.scene, source, "scene");
    read_text(record.take, source, "take");
    read_text(record.description, source, "description");
}

void set_cue(cut_s& record, const Cue& cue) {
    record.clip_cue = 1;
    put_text(record.cue_description, toUTF8(cue.text).c_str());
}

void find_upper_track_effect(cut_s& record, const EditPtr& edit, const ce_handle& handle, int chan) {
    CelEventPair pair(edit, handle, chan);
    if (!is_optical_effect(classify_event_object(pair))) return;
    record.utr_fx_present = 1;
    put_text(record.utr_fx_name, unknown_effect);
    const IdStamp stamp = pair.inH().getEffectGraph();
    if (!stamp.valid() || stamp.getMagicType() == transition_magic) return;
    const double time = std::min(pair.editTime(), pair.endEditTime());
    const EditGraphIterator graph(edit, chan, time, 0);
    if (graph.found) name_single_effect(record, graph);
}

void count_from_zero(EditLabel& label, const char* prefix) {
    label.modify_count_length(4);
    label.set_prefix(prefix);
    label.set_start(0);
}

void begin_timecode(EditLabel& target, const EditLabel& source, double in) {
    target = source;
    target.set_start(target.get_abs_posn(0) + in);
}

void set_timecode_length(EditLabel& target, double length) {
    target.end = target.posn_to_sample(length);
    target.end_set = 1;
}

void set_wipe(cut_s& record, int direction, int pattern) {
    char mode[24];
    std::snprintf(mode, sizeof mode, "%1d.%03d", direction + 1, pattern);
    put_text(record.fx_op_out, "WO");
    put_text(record.fx_mod_out, mode);
}

convert_result go_to_next_cut(cut_s& record, EditPtr& edit, ce_handle& handle, transition_kind_reader read_kind) {
    handle.increment(ce_all);
    if (!handle.valid()) return convert_done;
    if (!handle.is_in_point()) return convert_out_of_step;
    const ChannelEvent next = handle.get_channel_event();
    if (next.cookie.isEffect()) fold_in_transition(record, edit, handle, next.edit_time, read_kind);
    return convert_done;
}

double settle_speed(double speed, double& source_out, double frame_length) {
    constexpr double nearly = 0.01;
    if (!(std::fabs(speed - 1.0) > nearly)) return 1.0;
    source_out = round_frames(source_out / frame_length) * frame_length;
    return std::fabs(speed) < nearly ? 0.0 : speed;
}
