#pragma once
// Cutlist files of cuts that are made in code.

#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "tests/support/recording_logger.h"

#include <string>
#include <utility>
#include <vector>

namespace made_cut {

/// An event of 35mm film: `length` frames from frame `frame` of a roll.
struct Shot {
    std::string roll = "KJ123456";
    int frame = 0;
    int length = 0;
    std::string name = "shot";
    double speed = 1.0;
    std::string cam_reel = "A001";
    int ink = -1; ///< frame of its first ink number; -1: none
    std::string in_op, out_op;
    int in_length = 0, out_length = 0;
    int special = 0;
    int missing = 0;
    int optical_record = 0;
    int track = 1;
    int layers = 0;
    std::string scene = "1", take = "2";
};

inline Shot black(int length) {
    Shot shot;
    shot.roll = "__BLACK_";
    shot.length = length;
    shot.name = "";
    shot.cam_reel = "__BLACK";
    shot.special = special_black;
    return shot;
}

using Cut = std::vector<Shot>;

/// What stands in a cutlist's header.
struct Header {
    std::string film = "35mm-4p";
    std::string channel = "V00";
    std::string type = "cutting-copy";
    std::string mixed = "0";
    std::string timecode = "24fps";
    std::string start = "01:00:00:00";
};

inline LightweightString<wchar_t> wide(const std::string& text) { return fromUTF8(text.c_str(), -1); }

inline LabelPoint point_at(label_t kind, const std::string& prefix, int frame, double speed) {
    LabelPoint point(0, kind);
    point.set_prefix(prefix.c_str());
    point.set_sample(static_cast<int>(frame * speed) * point.cvt()->samples_per_frame());
    return point;
}

inline void put_film(cut_s& cut, const Shot& shot, label_t kind) {
    cut.keycode_in = point_at(kind, shot.roll, shot.frame, 1);
    cut.keycode_out = point_at(kind, shot.roll, shot.frame + static_cast<int>(shot.length * shot.speed), 1);
    if (shot.ink < 0) return;
    const label_t ink_kind = label_t_to_ink_label_t(kind);
    cut.inkcode_in = point_at(ink_kind, "AA12", shot.ink, 1);
    cut.inkcode_out = point_at(ink_kind, "AA12", shot.ink + shot.length, 1);
}

inline cut_s cut_of(const Shot& shot, int edit_in, label_t kind) {
    cut_s cut;
    cut.optical_record = shot.optical_record;
    cut.optical_layer_count = shot.layers;
    cut.track = shot.track;
    cut.special = shot.special;
    cut.keycode_missing = shot.missing;
    cut.edit_in = edit_in;
    cut.edit_out = edit_in + shot.length;
    cut.shot_name = wide(shot.name);
    cut.speed = shot.speed;
    cut.direction = shot.speed < 0 ? -1 : 1;
    put_text(cut.cam_reel, shot.cam_reel.c_str());
    put_text(cut.fx_op_in, shot.in_op.c_str());
    put_text(cut.fx_op_out, shot.out_op.c_str());
    cut.fx_len_in = shot.in_length;
    cut.fx_len_out = shot.out_length;
    put_text(cut.scene, shot.scene.c_str());
    put_text(cut.take, shot.take.c_str());
    put_film(cut, shot, kind);
    cut.prim_tc = EditLabel(label_tc_24, MediumRollIdent(medium_source_picture, 1));
    cut.prim_tc.set_start(shot.frame);
    cut.prim_tc.end = shot.length;
    return cut;
}

/// Opticals lie beside the cut: they take no room of their own. A transition lies behind the event that it ends.
inline bool write_cut(const std::string& path, const Cut& cut, const Header& header = {}) {
    RecordingLogger log;
    cutdb table(&log);
    for (const auto& [name, value] : {std::pair<const char*, const std::string&>{"channel", header.channel},
                                      {"cutlist_type", header.type},
                                      {"mixed_kc_standard", header.mixed},
                                      {"film label_std", header.film},
                                      {"edit_vidtc_std", header.timecode},
                                      {"edit_vidtc_start", header.start}})
        table.add_param(name, value.c_str());
    const label_t kind = edlstr_to_label_type(header.film.c_str());
    int edit_in = 0;
    for (const Shot& shot : cut) {
        cut_of(shot, edit_in, kind).to_record(*table.get_record(static_cast<unsigned>(table.add_records(1))));
        if (shot.optical_record == 0) edit_in += shot.length + shot.out_length;
    }
    table.set_filename(wide(path));
    return table.save_text() == 0;
}

} // namespace made_cut
