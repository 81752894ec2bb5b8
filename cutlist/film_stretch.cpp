#include "cutlist/film_stretch.h"

#include "base/frame_math.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"

#include <string_view>

namespace {

constexpr const char* missing_prefix = "????????";
constexpr std::string_view reels_without_film[] = {"__BLACK", "RENDERED"};

bool has_film(const char* reel) {
    for (const std::string_view without : reels_without_film)
        if (reel == without) return false;
    return true;
}

LabelPoint moved_code(LabelPoint code, const cut_s& event, int frames) {
    if (event.keycode_missing != 0) code.set_prefix(missing_prefix);
    const double samples = frames * (code.cvt()->samples_per_frame() * event.speed);
    code.set_sample(frame_sum(code.sample, whole_part(samples)));
    return code;
}

const char* transition_word(const char* operation) { return operation[0] == 'W' ? "WIPE" : "DISSOLVE"; }

} // namespace

void set_film_codes(clip_part& clip, const cut_s& event, int from, int to) {
    if (!has_film(clip.reel_id)) return;
    clip.film_code_in = moved_code(event.keycode_in, event, frame_difference(from, event.edit_in));
    const int behind_end = frame_difference(to, event.edit_out);
    clip.film_code_out = moved_code(event.keycode_out, event, frame_difference(behind_end, 1));
}

void set_transition_in(clip_part& clip, const char* operation, int length) {
    if (length <= 0) return;
    clip.trns_in_length = length;
    put_text(clip.transition_in, transition_word(operation));
}

void set_transition_out(clip_part& clip, const char* operation, int length) {
    if (length <= 0) return;
    clip.trns_out_length = length;
    put_text(clip.transition_out, transition_word(operation));
}

full_stretch::full_stretch(const cut_s& event)
    : from(frame_difference(event.edit_in, event.fx_len_in)), to(frame_sum(event.edit_out, event.fx_len_out)) {}

full_stretch::full_stretch(const dbrecord& row)
    : from(frame_difference(number_in(row, cf_edit_in), number_in(row, cf_fx_len_in))),
      to(frame_sum(number_in(row, cf_edit_out), number_in(row, cf_fx_len_out))) {}
