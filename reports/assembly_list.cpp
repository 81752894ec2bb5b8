#include "reports/assembly_list.h"

#include "base/code_text.h"
#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"
#include "reports/list_headings.h"
#include "reports/report_context.h"

#include <cstring>

namespace {

constexpr int assembly_stops[] = {5, 16, 27, 37, 47, 67, 0};

constexpr char no_key[] = "NO KEYKODE";
constexpr char no_ink[] = "NO INKCODE";

bool is_sound() { return cutlist_options().chan_type == sound_channel; }

bool is_neg_cut_form() { return cutlist_options().pull_match_assembly == 0 && !is_sound(); }

CodePair codes_between(const LabelPoint& in, const LabelPoint& out, double speed) {
    return {point_text(in), last_frame_text(out, speed)};
}

CodePair key_codes(const cut_report& cut) {
    if (cut.keycode_missing) return missing_codes(no_key);
    return codes_between(cut.cut_key_in, cut.cut_key_out, cut.speed);
}

CodePair ink_codes(const cut_report& cut) {
    if (!cut.cut_ink_in.is_valid()) return missing_codes(no_ink);
    return codes_between(cut.cut_ink_in, cut.cut_ink_out, cut.speed);
}

char star(const cut_report& cut) { return cut.special == special_starred ? '*' : ' '; }

void print_fade_in(report& out, const cut_report& cut) {
    if (std::strcmp(cut.fx_op_in, "FI") != 0) return;
    out.print("\n***** FADE-IN            Length %d\t\t\t\tMARK FROM CUT\n", cut.fx_len_in);
}

void print_mark_out(report& out, const cut_report& cut) {
    if (!cut.fx_op_out[0] || cut.fx_len_out < 1) return;
    const ListText key = cut.keycode_missing ? missing_codes(no_key).in : point_text(cut.keycode_out);
    const bool ink_known = cut.inkcode_out.is_valid() && cutlist_options().pull_match_assembly;
    const ListText ink = ink_known ? point_text(cut.inkcode_out) : missing_codes(no_ink).in;
    if (cut.fx_op_out[0] == 'F') {
        out.print("\n***** FADE-OUT           Length %d \t\t\t\tMARK FROM\t%s\t%s\n", cut.fx_len_out, key.text,
                  ink.text);
    } else {
        out.print("\n***** %-18.18s Length %d \t\t\t\tMARK FROM\t%s\t%s\n", cut.fx_name_out, cut.fx_len_out, key.text,
                  ink.text);
    }
}

void print_speed(report& out, const cut_report& cut, const char* indent) {
    if (cut.speed == 1.0) return;
    if (cut.speed == 0.0) {
        out.print("%sFREEZE-FRAME -- The shot above was frozen\n", indent);
    } else {
        out.print("%sVARISPEED -- The shot above was run at %s times play-speed\n", indent, speed_text(cut.speed).text);
    }
}

int print_neg_cut_optical(report& out, const cut_report& cut) {
    out.print("%-4d\t%s\t%s\t   -- OPTICAL#%d --\n", cut.event, position_text(cut.optical_in).text,
              length_text(frame_difference(cut.optical_out, cut.optical_in)).text, cut.optical_ref);
    return cut.optical_out;
}

int print_neg_cut_shot(report& out, const cut_report& cut) {
    const CodePair key = key_codes(cut);
    out.print("%-4d\t%s\t%s\t%-9.9s\t%-9.9s\t%s%c\n", cut.event, position_text(cut.edit_in).text,
              length_text(cut.cut_length).text, cut.cam_reel, toUTF8(cut.shot_name).c_str(), key.in.text, star(cut));
    out.print("\t\t\t\t\t%s\n", key.out.text);
    print_speed(out, cut, "\t");
    return cut.edit_out;
}

void print_neg_cut_record(report& out, dbrecord& row, int& total) {
    const CutlistOptions& options = cutlist_options();
    cut_report cut;
    cut.load_listed(row, 0, options.chan_type, options.audio_opticals);
    const bool listed = cut.event != 0 && (cut.optical_record == 0 || cut.optical_error == 0);
    if (listed) total = print_neg_cut_event(out, cut);
}

void print_cutting_copy_record(report& out, dbrecord& row, int& total) {
    const CutlistOptions& options = cutlist_options();
    cut_report cut;
    cut.load_listed(row, 1, options.chan_type, options.audio_opticals);
    if (cut.optical_record == 1 && cut.optical_layer_count > 0 && cut.optical_error == 0) {
        print_effect_block(out, cut);
    } else if (cut.event != 0) {
        total = print_cutting_copy_event(out, cut);
    }
}

void sort_for_assembly(recdb& table) {
    if (is_neg_cut_form() || is_sound()) {
        sort_by(table, {cf_event, -1});
    } else {
        sort_by(table, {cf_edit_in, cf_optical_record, -1});
    }
}

} // namespace

void print_assembly_list(report& out, recdb& table, LoggerHandle& logger) {
    const bool neg_cut = is_neg_cut_form();
    const char* const heads =
        neg_cut ? "\tStart\t  Length\tRoll\tShot\tKeyKodes" : "\tStart\t  Length\tRoll\tShot\tKeyKodes\tInkcodes";
    say(logger, text_writing_assembly);
    sort_for_assembly(table);
    print_list_header(out, table, "                                 ASSEMBLY LIST");
    out.tab_stops = assembly_stops;
    print_heads(out, heads);
    set_page_heading(out, table, 20, "   ASSEMBLY LIST     ", "\n\n", heads);

    int total = 0;
    const auto print_record = neg_cut ? print_neg_cut_record : print_cutting_copy_record;
    for (unsigned index = 0; dbrecord* row = table.get_record(index); ++index)
        print_record(out, *row, total);
    out.print("\t%s", position_text(total).text);
    out.end_list("\nEnd of assembly list");
}

void print_effect_block(report& out, cut_report& cut) {
    const int length = frame_difference(cut.edit_out, cut.edit_in);
    out.need_lines(2);
    out.print("\t\tEFFECT - %s - (OPTICAL#%d)\n", cut.optical_name, cut.optical_ref);
    if (cutlist_options().edit_units == 1) {
        out.print("\t\t           Length %d   MARK FROM frame %6.6d\n\n", length, cut.edit_in);
    } else {
        out.print("\t\t           Length %d   MARK FROM footage %s\n\n", length, footage(cut.edit_in).text);
    }
}

int print_cutting_copy_event(report& out, cut_report& cut) {
    out.need_lines(4);
    if (cut.reduced) {
        out.print("%-4d  ** In cutting-copy, this event is reduced to nothing.\n\n", cut.event);
        return cut.edit_out;
    }
    const CodePair key = key_codes(cut);
    const CodePair ink = ink_codes(cut);
    const bool sound = is_sound();
    out.print("%-4d\t%s\t%s\t%-9.9s\t%-9.9s\t%s%c\t%s\n", cut.event, position_text(cut.edit_in).text,
              length_text(cut.cut_length).text, cut.cam_reel, toUTF8(cut.shot_name).c_str(), sound ? "" : key.in.text,
              star(cut), ink.in.text);
    out.print("\t\t\t\t\t%s\t%s\n", sound ? "" : key.out.text, ink.out.text);
    if (!sound) {
        print_fade_in(out, cut);
        print_mark_out(out, cut);
    }
    print_speed(out, cut, "\n\t\t");
    out.print("\n");
    return cut.edit_out;
}

int print_neg_cut_event(report& out, cut_report& cut) {
    const bool optical = cut.optical_record != 0;
    out.need_lines(optical ? 1 : 3);
    const int end = optical ? print_neg_cut_optical(out, cut) : print_neg_cut_shot(out, cut);
    out.print("\n");
    return end;
}
