#pragma once
// What both event converters and the opticals pass put into a record alike.

#include "host/edit.h"
#include "host/fixed_text.h"
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

/// `convert_done` when a record can begin at the handle.
convert_result check_in_point(const ce_handle& handle);

/// What stands behind an event's cookie.
enum class source_state { absent, rendered, logged };
/// Opens the source of an event. Where it is absent or rendered, the record's reels say so and it has no name.
source_state open_source(cut_s& record, const Cookie& cookie, EditPtr& source);
/// Puts one of the fixed words into all four reel fields.
void set_all_reels(cut_s& record, const char* word);
/// Puts a reel into one of them; an absent one leaves it alone.
template <std::size_t N> void set_reel(char (&target)[N], const LightweightString<char>& reel) {
    if (!reel.empty()) put_text(target, reel.c_str());
}
/// The log fields of the source; absent ones are left alone.
void read_log_fields(cut_s& record, Edit& source);
/// Marks the record with a cue.
void set_cue(cut_s& record, const Cue& cue);
/// Marks an effect that stands over an upper track.
void find_upper_track_effect(cut_s& record, const EditPtr& edit, const ce_handle& handle, int chan);
/// Lets a label without numbers of its own count from 0 behind `prefix`.
void count_from_zero(EditLabel& label, const char* prefix);
/// One of the record's timecodes: a stretch of `source` that begins at `in` from its start. Positions are
/// the source's.
void begin_timecode(EditLabel& target, const EditLabel& source, double in);
void set_timecode_length(EditLabel& target, double length);

/// Marks the transition behind the record as a wipe. `direction` is 0 or 1.
void set_wipe(cut_s& record, int direction, int pattern);
/// Says of what kind a transition is. The handle stands on its in-point.
using transition_kind_reader = void (*)(cut_s& record, EditPtr& edit, const ce_handle& handle,
                                        const FXGraphNodeBase* node);
/// Goes on from the event's out-point to the next cut; a transition on the way is folded into the record:
///
///     | record   |in  fx  out|in  next     |
convert_result go_to_next_cut(cut_s& record, EditPtr& edit, ce_handle& handle, transition_kind_reader read_kind);
/// Play speed as the lists show it: 1 where it differs from that by at most 0.01, 0 (a freeze) where its
/// magnitude is below 0.01. Unless it is 1 the source's out position is rounded to the picture grid.
double settle_speed(double speed, double& source_out, double frame_length);
