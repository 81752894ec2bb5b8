#include "reports/report_driver.h"

#include "cutlist/cutlist_options.h"
#include "host/fixed_text.h"
#include "reports/assembly_list.h"
#include "reports/code_text.h"
#include "reports/cutdb.h"
#include "reports/number_text.h"
#include "reports/opticals_list.h"
#include "reports/pull_list.h"
#include "reports/reuse_scan.h"
#include "reports/roll_list.h"
#include "reports/substitute.h"
#include "reports/timecode_list.h"

#include <cstdio>
#include <limits>
#include <string_view>
#include <utility>

namespace {

struct List {
    int CutlistOptions::*wanted;
    bool picture_only;
    void (*print)(report& out, recdb& table, LoggerHandle& logger);
};

// In the order of printing. The list of rolls needs the file's own order, so it comes before any that sorts.
constexpr List lists[] = {
    {&CutlistOptions::roll_list, false, print_roll_list},
    {&CutlistOptions::pull_list, false, print_pull_list},
    {&CutlistOptions::assembly_list, false, print_assembly_list},
    {&CutlistOptions::optical_list, true, print_opticals_list},
};

constexpr int end_of_run = 4;

bool refuse(LoggerHandle& logger, const wchar_t* why) {
    logger.message(why, end_of_run);
    return false;
}

void take_film_standard(const recdb& table) {
    ReportContext& context = report_context();
    const char* standard = table.get_param_val("film label_std");
    if (!standard) standard = "";
    context.film_label = edlstr_to_label_type(standard, user_label_key);
    context.ink_label = edlstr_to_label_type(standard, user_label_ink);

    const char* mixed = table.get_param_val("mixed_kc_standard");
    if (mixed && std::string_view(mixed) == "1") context.mixed_standards = cutlist_options().edit_units = 1;
}

// A standard without feet is listed in frames.
void choose_unit() {
    ReportContext& context = report_context();
    context.film_cvt = get_static_label_cvt(context.film_label);
    context.ink_cvt = get_static_label_cvt(context.ink_label);
    context.frame_label = EditLabel(label_t_to_foot_label_t(context.film_label), MediumRollIdent(medium_film, 1));
    const label_t feet = context.frame_label.type();
    if (feet != label_none && feet != label_frames) return;
    context.frame_label.set_type(context.film_label);
    cutlist_options().edit_units = 1;
}

void set_layout(report& out) {
    out.passthrough = 0;
    out.page_length = 60;
    out.top_margin = out.bottom_margin = 1;
    if (out.page_width / 2 > 2) out.left_margin = out.right_margin = 2;
}

int host_switch(const char* key) {
    return config_int(key, 0, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

void print_lists(report& out, recdb& table, LoggerHandle& logger) {
    const CutlistOptions& options = cutlist_options();
    if (options.chan_type == 2 && host_switch("audio_cutlist_by_timecode_test")) {
        print_timecode_assembly_list(out, table, logger);
        return;
    }
    for (const List& list : lists) {
        const bool wanted = options.some_lists == 0 || options.*list.wanted != 0;
        if (wanted && (!list.picture_only || options.chan_type == 1)) list.print(out, table, logger);
    }
}

const char* format_name() {
    const ReportContext& context = report_context();
    return context.mixed_standards ? "-- Mixed Edgecode Format --" : edgecode_name(context.film_cvt->label_type());
}

const char* parameter(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

} // namespace

ReportContext& report_context() {
    static ReportContext context;
    return context;
}

bool print_cutlist_reports(const LightweightString<wchar_t>& cdb_path, const LightweightString<wchar_t>& report_path,
                           LoggerHandle& logger, bool overwrite_report, const configb* options) {
    if (options) read_cutlist_options(options);
    logger.message(substitute(resourceStrW(10471), L"$FILE$", cdb_path), 0);

    recdb table(cdb_path, std::numeric_limits<int>::max(), false);
    if (!table.get_valid()) return refuse(logger, L"Unable to read CUTDB database");
    if (revision_number(table.get_param_val("cutdb")) < cutdb_revision) {
        return refuse(logger, L"Old format cutting database: can't process");
    }
    take_film_standard(table);
    if (report_context().film_label == label_none) {
        return refuse(logger, L"No film-label standard in CUTDB header");
    }
    choose_unit();

    logger.message(L"Writing cutting list to file", 0);
    file_service& files = OS()->files();
    if (overwrite_report) files.remove(report_path);
    Qb::Ptr<stream> target = files.open(report_path, 2, 1, 0, 0);
    if (!target) return refuse(logger, L"ERROR: Couldn't create report file");

    report out(std::move(target));
    set_layout(out);
    print_lists(out, table, logger);
    release_reuse_scan();
    return true;
}

UpperParameter::UpperParameter(const recdb& table, const char* name, unsigned max_chars) {
    put_text(text, std::string_view(parameter(table, name)).substr(0, max_chars));
    for (char* c = text; *c; ++c) {
        if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 'a' + 'A');
    }
}

void print_list_header(report& out, recdb& table, const char* title) {
    const CutlistOptions& options = cutlist_options();
    out.page = 0;
    out.print("Edit:         %-25.25s Project: %s \nEdit dated:   %-26.26sFormat:  %s\nReport dated: %-26.26s",
              UpperParameter(table, "edit_name").text, UpperParameter(table, "project_name").text,
              parameter(table, "edit_date"), format_name(), out.date.get_named_date());
    out.print("%s version %d ", options.pull_match_assembly ? "CUTTING-COPY" : "NEG-CUT", report_version);
    if (options.pgm_id[0]) out.print("(%s)", options.pgm_id);
    out.print("\n");
    if (options.chan_type == 2) {
        out.print("                                  SOUND TRACK %d\n", options.chan_num);
    } else if (options.pull_match_assembly) {
        out.print("\n                                PICTURE TRACK 1\n");
    } else {
        out.print("\n                                 PICTURE TRACK\n");
    }
    out.print("%s", title);
    out.rule();
}

void set_page_heading(report& out, const recdb& table, unsigned name_chars, const char* list, const char* gap,
                      const char* heads) {
    // Static, as a page may break in the first heading of the next list.
    static char heading[318];
    std::snprintf(heading, sizeof heading, "Edit:  %-21.21s%s|d  page |p%s%s",
                  UpperParameter(table, "edit_name", name_chars).text, list, gap, heads);
    out.page_header = heading;
}

void print_heads(report& out, const char* heads) {
    out.print("%s", heads);
    out.rule();
    out.print("\n");
}
