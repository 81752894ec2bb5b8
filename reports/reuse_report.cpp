#include "reports/reuse_report.h"

#include "base/code_text.h"
#include "base/messages.h"
#include "base/number_text.h"
#include "host/labels.h"
#include "reports/list_headings.h"
#include "reports/report_context.h"
#include "reports/reuse_scan.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr char no_key[] = "(NO KEYKODE)";

struct CodeField {
    char text[20] = "";

    CodeField(const dbrecord& row, reuse_field field) { row.in_field(field, text, sizeof text - 1); }
};

LabelPoint read_code(const dbrecord& row, reuse_field field, label_t kind) {
    LabelPoint point(0, kind);
    point.set_sample(CodeField(row, field).text);
    return point;
}

const char* behind_prefix(const LabelPoint& point, const ListText& text) {
    const auto prefix = static_cast<std::size_t>(point.cvt()->prefix_length());
    return text.text + std::min(prefix, std::strlen(text.text));
}

const char* text_of(const dbrecord& row, reuse_field field) {
    const char* text = row.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

void print_case(report& out, const dbrecord& row) {
    const label_t kind = edlstr_to_label_type(CodeField(row, rf_labeltype).text);
    const LabelPoint low = read_code(row, rf_keycode_in, kind);
    const LabelPoint high = read_code(row, rf_keycode_out, kind);
    const bool butt = std::int64_t{low.sample} - high.sample == low.cvt()->samples_per_frame();
    const bool missing = decimal_number(text_of(row, rf_keycode_missing)) != 0;

    const ListText low_text = point_text(low);
    const ListText high_text = point_text(high);
    const char* const from = missing ? no_key : low_text.text;
    const char* const to = missing ? no_key : behind_prefix(high, high_text);
    out.print(missing ? " roll %-8.8s shot %-13.13s %s%s %s%s\n" : " roll: %-8.8s shot: %-13.13s %s%s %s%s\n",
              text_of(row, rf_cam_reel), text_of(row, rf_shot_name), butt ? "" : "from ", from, butt ? "" : "to ",
              butt ? "(butt edit)" : to);
}

} // namespace

void print_reuse_report(report& out, recdb& table, LoggerHandle& logger) {
    const ReuseScan* const scan = report_context().reuse_scan;
    if (!scan || scan->reuse_count == 0) return;
    say(logger, text_writing_reuse);
    print_list_header(out, table, "                               RE-USE OF MATERIAL");
    set_page_heading(out, table, 63, "   RE-USE LIST       ", "", "");
    for (unsigned index = 0; const dbrecord* row = scan->cases->get_record(index); ++index)
        print_case(out, *row);
    out.end_list("\nEnd of re-use report");
}
