#pragma once
// What both event converters and the opticals pass put into a record alike.

#include "host/edit.h"
#include "reports/cut_s.h"

/// How a converter ended: 0 leaves a record, any other value ends the track and leaves none.
enum convert_result : std::uint32_t {
    convert_done = 0,
    convert_effect_first = 0x20000000, ///< the in-point's object is an effect
    convert_out_of_step = 0x40000000,  ///< in-points and out-points don't alternate
    convert_ended = 0x80000000,        ///< the handle has run off the end
};

constexpr char black_prefix[] = "__BLACK_";

Cookie edit_cookie_of(const Cookie& cookie);
/// Puts one of the fixed words into all four reel fields.
void set_all_reels(cut_s& record, const char* word);
/// The log fields of the source; absent ones are left alone.
void read_log_fields(cut_s& record, Edit& source);
/// Marks the record with a cue.
void set_cue(cut_s& record, const Cue& cue);
/// Marks an effect that stands over an upper track.
void find_upper_track_effect(cut_s& record, const EditPtr& edit, const ce_handle& handle, int chan);
/// The node's name as that of the transition behind the record, or "Unknown Effect".
void set_transition_name(cut_s& record, const Qb::Ptr<FXGraphNodeBase>& node);
/// Play speed as the lists show it: 1 where it differs from that by at most 0.01, 0 (a freeze) where its
/// magnitude is below 0.01. Unless it is 1 the source's out position is rounded to the picture grid.
double settle_speed(double speed, double& source_out, double frame_length);
