// The positions that lists print.

#include "base/frame_math.h"
#include "host/channel_kinds.h"
#include "host/recdb.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"

#include <cmath>

namespace {

/// A transition's length on one side of an event: in frames of the edit, and in frames of the film, which
/// runs at the event's speed.
struct Share {
    int raw;
    int scaled;
};

int scaled_length(int length, double speed) { return whole_part(round_frames(length * speed) + 1e-6); }

int lower_half(int value) { return value / 2; }
int upper_half(int value) { return static_cast<int>((std::int64_t{value} + 1) / 2); }

// Fades lie wholly on their event, and so do transitions to and from black, but for a dissolve's, which lies
// on the other side alone.
Share taken_share(Share share, char op, bool black, bool halves, int (*half)(int)) {
    if (op == 'F' || !halves) return share;
    if (!black) return {half(share.raw), half(share.scaled)};
    return op == 'D' ? Share{0, 0} : share;
}

void step(LabelPoint& point, int samples) { point.set_sample(frame_sum(point.sample, samples)); }

void step_frames(LabelPoint& point, int frames) {
    step(point, frame_product(point.cvt()->samples_per_frame(), frames));
}

// A start at or below 0 can't go back: the stored points and the end go forward in its stead.
void widen_start(LabelPoint& in, LabelPoint& out, LabelPoint& cut_in, LabelPoint& cut_out, int frames) {
    const int samples = frame_product(in.cvt()->samples_per_frame(), frames);
    if (in.sample > 0) {
        step(cut_in, frame_difference(0, samples));
    } else {
        for (LabelPoint* point : {&in, &out, &cut_out})
            step(*point, samples);
    }
}

} // namespace

double round_frames(double x) {
    double whole = 0.0;
    if (std::modf(std::fabs(x), &whole) < 0.05) return x;
    return std::copysign(std::ceil(std::fabs(x)), x);
}

cut_report::cut_report() { edit_out = 1; }

cut_report::~cut_report() = default;

int cut_report::to_record(dbrecord& row) const {
    const int result = cut_s::to_record(row);
    row.set_field(cf_edit_out, frame_sum(edit_out, 1));
    return result;
}

void cut_report::load(dbrecord& row, int widen_halves, int chan_type, int audio_opticals) {
    from_record(row);
    derive_positions(widen_halves, chan_type, audio_opticals);
}

void cut_report::load_listed(const dbrecord& row, int widen_halves, int chan_type, int audio_opticals) {
    read_listed(row);
    derive_positions(widen_halves, chan_type, audio_opticals);
}

void cut_report::load_film(const dbrecord& row, int widen_halves, int chan_type, int audio_opticals) {
    read_film(row);
    derive_positions(widen_halves, chan_type, audio_opticals);
}

void cut_report::derive_positions(int widen_halves, int chan_type, int audio_opticals) {
    reduced = 0;
    Share in = {fx_len_in, fx_len_in};
    Share out = {fx_len_out, fx_len_out};

    if (chan_type == picture_channel || audio_opticals) {
        const bool black = special == special_black;
        in.scaled = scaled_length(fx_len_in, speed);
        out.scaled = scaled_length(fx_len_out, speed);
        if (fx_op_in[0]) {
            in = taken_share(in, fx_op_in[0], black, widen_halves != 0, lower_half);
            edit_in = frame_difference(edit_in, in.raw);
        }
        if (fx_op_out[0]) {
            out = taken_share(out, fx_op_out[0], black, widen_halves != 0, upper_half);
            edit_out = frame_sum(edit_out, out.raw);
        }
        if (edit_out <= edit_in) reduced = 1;
    }

    cut_key_in = keycode_in;
    cut_ink_in = inkcode_in;
    cut_key_out = keycode_out;
    cut_ink_out = inkcode_out;
    step_frames(cut_key_out, out.scaled);
    step_frames(cut_ink_out, out.scaled);
    cut_length = frame_difference(edit_out, edit_in);
    widen_start(keycode_in, keycode_out, cut_key_in, cut_key_out, in.scaled);
    widen_start(inkcode_in, inkcode_out, cut_ink_in, cut_ink_out, in.scaled);
}
