#include "reports/pull_event.h"

#include "reports/report_context.h"

#include "base/code_text.h"
#include "base/format_text.h"
#include "base/frame_math.h"
#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"

#include <cstring>

namespace {

char last_roll[16] = "";
int last_page = 0;

CodePair codes_with_handles(LabelPoint in, LabelPoint out, const cut_report& cut) {
    const int handle = frame_product(in.cvt()->samples_per_frame(), cutlist_options().pull_handle);
    const bool forward = cut.direction > 0;
    in.set_sample(forward ? frame_difference(in.sample, handle) : frame_sum(in.sample, handle));
    out.set_sample(forward ? frame_sum(out.sample, handle) : frame_difference(out.sample, handle));
    return {point_text(in), last_frame_text(out, cut.speed)};
}

CodePair key_codes(const cut_report& cut) {
    if (cut.keycode_missing) return missing_codes("NO KEYKODE");
    return codes_with_handles(cut.cut_key_in, cut.cut_key_out, cut);
}

CodePair ink_codes(const cut_report& cut) {
    if (!cut.cut_ink_in.is_valid()) return missing_codes("NO INKCODE");
    return codes_with_handles(cut.cut_ink_in, cut.cut_ink_out, cut);
}

ListText entry_number(const cut_report& cut, int optical_list) {
    ListText out;
    if (optical_list) {
        format_text(out.text, "OPTICAL#%d", cut.optical_ref);
    } else {
        format_text(out.text, "%d", cut.event);
    }
    return out;
}

bool is_roll_known(const cut_report& cut) {
    return !cutlist_options().pull_sort_by_keycode && std::strcmp(cut.cam_reel, last_roll) == 0;
}

ListText pulled_length(const cut_report& cut) {
    return length_text(frame_sum(cut.cut_length, frame_product(2, cutlist_options().pull_handle)));
}

} // namespace

void forget_pulled_roll() {
    last_roll[0] = '\0';
    last_page = 0;
}

void print_pull_event(report& out, cut_report& cut, int reused, bool first, int optical_list) {
    if (out.page + 1 != last_page || first) {
        last_roll[0] = '\0';
        last_page = out.page + 1;
    }
    if (cut.special != special_none) return;

    const bool sound = cutlist_options().chan_type == sound_channel;
    const ListText number = entry_number(cut, optical_list);
    const char* const roll = is_roll_known(cut) ? "" : cut.cam_reel;
    const LightweightString<char> shot = toUTF8(cut.shot_name);
    const ListText length = pulled_length(cut);
    const char* const mark = reused ? "**" : "  ";
    const CodePair key = key_codes(cut);
    if (cutlist_options().pull_match_assembly || sound) {
        const CodePair ink = ink_codes(cut);
        out.print("%s\t%.9s\t%.18s\t%s\t%s %s\t%s\n", number.text, roll, shot.c_str(), length.text, mark,
                  sound ? "" : key.in.text, ink.in.text);
        out.print("\t\t\t\t   %s\t%s\n\n", sound ? "" : key.out.text, ink.out.text);
    } else {
        out.print("%s\t%.9s\t%.18s\t%s\t%s %s\n", number.text, roll, shot.c_str(), length.text, mark, key.in.text);
        out.print("\t\t\t\t   %s\n\n", key.out.text);
    }
    put_text(last_roll, cut.cam_reel);
}
