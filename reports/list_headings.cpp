#include "reports/list_headings.h"

#include "cutlist/cutlist_options.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"
#include "reports/report_context.h"

#include <cstdio>
#include <string_view>

namespace {

const char* parameter(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

} // namespace

UpperParameter::UpperParameter(const recdb& table, const char* name, unsigned max_chars) {
    put_text(text, std::string_view(parameter(table, name)).substr(0, max_chars));
    ascii::make_upper(text);
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
    if (options.chan_type == sound_channel) {
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
