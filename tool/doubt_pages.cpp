#include "tool/doubt_pages.h"

#include "film/doubt_list.h"
#include "quillbrook/cutlist.h"
#include "tool/cutlist_table.h"
#include "tool/file_bytes.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

/// The heading that all lists of a report have; where the report holds none, that of the table's list of rolls.
std::string head_of(const PrintedFrom& printed, const std::string& report) {
    const std::string head(film::head_of_report(report));
    if (!head.empty()) return head;
    embedded::settings_block options = printed.options;
    for (const char* list : {"pull_list", "assembly_list", "optical_list"})
        options.set(list, "0");
    options.set("some_lists", "1");
    options.set("roll_list", "1");
    const std::string rolls = work_file("rolls.txt");
    ToolLogger logger(printed.table, true);
    print_cutlist_reports(wide_path(printed.table), wide_path(rolls), logger, true, &options);
    check_written();
    return std::string(film::head_of_report(bytes_of(rolls)));
}

/// Mixed film and film without feet is always listed in frames.
bool has_feet(const CutlistTable& table) {
    const label_t feet = label_t_to_foot_label_t(table.film());
    return feet != label_none && feet != label_frames && table.parameter("mixed_kc_standard") != "1";
}

/// So that a list begins on a sheet of its own.
const char* end_of_page(const std::string& report) {
    constexpr std::string_view page_end = "\f\n";
    const bool ended = report.size() >= page_end.size() &&
                       report.compare(report.size() - page_end.size(), page_end.size(), page_end) == 0;
    return report.empty() || ended ? "" : page_end.data();
}

} // namespace

bool asks_for_frames(const LibraryOptions& options, bool otherwise) {
    const std::string units = options.value("edit_units");
    return units.empty() ? otherwise : units == "1";
}

void add_doubts(const PrintedFrom& printed, const film::Findings& findings, bool by_table) {
    std::string report = bytes_of(printed.report);
    const std::string head = head_of(printed, report);
    const film::DoubtStyle style{head, printed.head.film(), printed.in_frames || !has_feet(printed.head), by_table};
    report += end_of_page(report) + film::doubt_pages(findings, style);
    std::string why;
    if (!embedded::write_file_whole(printed.report, report, &why))
        throw JobError(printed.report + ": couldn't be written: " + why);
}

} // namespace tool
