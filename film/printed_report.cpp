#include "film/printed_report.h"

namespace film {
namespace {

void read_list(const ListPages& pages, PrintedReport& report) {
    switch (pages.list) {
    case PrintedList::rolls:
        report.rolls = read_rolls(pages, report.faults);
        break;
    case PrintedList::pulls:
        report.pulls = read_pulls(pages, report.faults);
        break;
    case PrintedList::optical_pulls:
        report.optical_pulls = read_pulls(pages, report.faults);
        break;
    case PrintedList::reuse:
        report.reuse = read_reuse(pages, report.faults);
        break;
    case PrintedList::assembly:
        report.assembly = read_assembly(pages, report.faults);
        break;
    case PrintedList::timecodes:
        report.timecodes = read_timecodes(pages, report.faults);
        break;
    case PrintedList::opticals:
        report.opticals = read_opticals(pages, report.faults);
        break;
    case PrintedList::doubts:
        report.doubts = read_doubts(pages, report.faults);
        break;
    }
}

} // namespace

PrintedReport read_report(std::string_view bytes) {
    PrintedReport report;
    report.pages = read_pages(bytes);
    report.faults = report.pages.faults;
    for (const ListPages& pages : report.pages.lists)
        read_list(pages, report);
    return report;
}

} // namespace film
