#include "reports/pull_list.h"

#include "base/messages.h"
#include "base/table_order.h"
#include "cutlist/cutlist_options.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "reports/list_headings.h"
#include "reports/pull_event.h"
#include "reports/reuse_report.h"
#include "reports/reuse_scan.h"

#include <cstdio>

namespace {

constexpr int pull_stops[] = {5, 15, 34, 44, 65, 0};
constexpr int opticals_pull_stops[] = {13, 23, 42, 52, 0};

constexpr char sound_heads[] = "Evt\tRoll\tShot name\t  length\t\t Inkcode\n\t\t\t\t\tstart/end";
constexpr char cutting_copy_heads[] =
    "Evt\tRoll\tShot name\t  length\t        KeyKode\t Inkcode\n\t\t\t\t      start/end\tstart/end";
constexpr char neg_cut_heads[] = "Evt\tRoll\tShot name\t  length\t        KeyKode\t\n\t\t\t\t      start/end";
constexpr char opticals_heads[] = "Evt\tRoll\tShot name\t  length\t        KeyKode\n\t\t\t\t      start/end";

bool is_sound() { return cutlist_options().chan_type == sound_channel; }

bool is_neg_cut_form() { return cutlist_options().pull_match_assembly == 0 && !is_sound(); }

bool is_sorted_by_code() { return cutlist_options().pull_sort_by_keycode != 0; }

struct Title {
    char text[80];
};

void sort_for_pulling(recdb& table) {
    if (is_neg_cut_form()) {
        is_sorted_by_code() ? sort_by(table, {cf_keycode_in, cf_inkcode_in, cf_cam_reel, -1})
                            : sort_by(table, {cf_cam_reel, cf_keycode_in, cf_inkcode_in, -1});
    } else {
        is_sorted_by_code() ? sort_by(table, {cf_inkcode_in, cf_keycode_in, cf_cam_reel, -1})
                            : sort_by(table, {cf_cam_reel, cf_inkcode_in, cf_keycode_in, -1});
    }
}

Title pull_title() {
    Title title;
    if (is_neg_cut_form()) {
        std::snprintf(title.text, sizeof title.text, "                            PULL LIST BY %s ROLL",
                      is_sorted_by_code() ? "KEYKODE" : "CAMERA");
    } else {
        std::snprintf(title.text, sizeof title.text, "                              PULL LIST BY %s",
                      is_sorted_by_code() ? "INKCODE" : "REEL ID");
    }
    return title;
}

void print_reuse_note(report& out, int cases) {
    const char* const plural = cases == 1 ? "" : "s";
    if (cutlist_options().pull_match_assembly) {
        out.print("\n\n***NOTE: %d case%s of material re-use in this list\n", cases, plural);
        out.print("***  see summary report after pull-list\n");
    } else {
        out.print("\n\n***NOTE: %d case%s of material re-use in the pull-list and opticals pull-list\n", cases, plural);
        out.print("***  see summary report after the opticals pull-list\n");
    }
}

const char* pull_heads() {
    if (is_sound()) return sound_heads;
    return cutlist_options().pull_match_assembly ? cutting_copy_heads : neg_cut_heads;
}

/// Whether a record is an entry of the pull list, as far as the reel's layout decides it.
bool is_pulled(const dbrecord& row) {
    const CutlistOptions& options = cutlist_options();
    if (number_in(row, cf_optical_record) == 1) return false;
    if (options.chan_type != picture_channel) return true;
    return number_in(row, cf_track) == 1 && (options.pull_match_assembly || number_in(row, cf_optical_ref) == 0);
}

bool is_optical_pulled(const dbrecord& row) {
    return number_in(row, cf_optical_record) != 1 && number_in(row, cf_optical_ref) != 0;
}

/// Walks the whole table; entries are told by their kind, the first by its place among all records.
void print_entries(report& out, const recdb& table, int widen_halves, bool (*wanted)(const dbrecord&),
                   int optical_list) {
    const CutlistOptions& options = cutlist_options();
    for (unsigned index = 0; dbrecord* row = table.get_record(index); ++index) {
        if (!wanted(*row)) continue;
        cut_report cut;
        cut.load_listed(*row, widen_halves, options.chan_type, options.audio_opticals);
        const char* const flags = row->get_field(cf_flags);
        out.need_lines(3);
        print_pull_event(out, cut, flags && flags[0] == 'T', index == 0, optical_list);
    }
}

} // namespace

void print_pull_list(report& out, recdb& table, LoggerHandle& logger) {
    const CutlistOptions& options = cutlist_options();
    const int cases = run_reuse_scan(table, logger).reuse_count;
    say(logger, text_writing_pull_list);
    sort_for_pulling(table);
    print_list_header(out, table, pull_title().text);
    if (cases > 0 && options.chan_type == picture_channel) print_reuse_note(out, cases);
    out.rule();
    out.tab_stops = pull_stops;
    print_heads(out, pull_heads());
    set_page_heading(out, table, 63, "   PULL LIST         ", "\n\n", pull_heads());
    print_entries(out, table, options.pull_match_assembly, is_pulled, 0);
    out.end_list("\nEnd of pull list");

    if (is_neg_cut_form()) print_opticals_pull_list(out, table, logger);
    if (cases > 0 && options.chan_type == picture_channel) print_reuse_report(out, table, logger);
}

void print_opticals_pull_list(report& out, recdb& table, LoggerHandle& logger) {
    say(logger, text_writing_optical_pulls);
    Title title;
    std::snprintf(title.text, sizeof title.text, "                       OPTICALS PULL LIST BY %s ROLL",
                  is_sorted_by_code() ? "KEYKODE" : "CAMERA");
    print_list_header(out, table, title.text);
    out.tab_stops = opticals_pull_stops;
    print_heads(out, opticals_heads);
    set_page_heading(out, table, 63, " OPTICALS PULL LIST  ", "\n\n", opticals_heads);
    print_entries(out, table, 0, is_optical_pulled, 1);
    out.end_list("\nEnd of opticals pull list");
}
