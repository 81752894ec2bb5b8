#include "cutlist/event_details.h"

#include "cutlist/fx_opticals.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <cmath>

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

} // namespace

Cookie edit_cookie_of(const Cookie& cookie) { return convertCookie(cookie, cookie_edit, any_subtype); }

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

void set_transition_name(cut_s& record, const Qb::Ptr<FXGraphNodeBase>& node) {
    const LightweightString<char> name = node ? toUTF8(node->getName()) : LightweightString<char>();
    put_text(record.fx_name_out, name.empty() ? unknown_effect : name.c_str());
}

double settle_speed(double speed, double& source_out, double frame_length) {
    constexpr double nearly = 0.01;
    if (!(std::fabs(speed - 1.0) > nearly)) return 1.0;
    source_out = round_frames(source_out / frame_length) * frame_length;
    return std::fabs(speed) < nearly ? 0.0 : speed;
}
