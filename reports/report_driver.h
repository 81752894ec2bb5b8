#pragma once
// Prints the lists of a saved cutlist, and holds what the lists of a run share.

#include "host/labels.h"
#include "host/recdb.h"
#include "host/settings.h"
#include "quillbrook/cutlist.h"
#include "reports/report.h"

#include <cstddef>

class ReuseScan;

constexpr int report_version = 9;

/// State of the run in progress. Each run overwrites it, but for `mixed_standards`.
struct ReportContext {
    label_t film_label = label_none; ///< the film standard in its key form
    label_t ink_label = label_none;
    label_cvt* film_cvt = nullptr; ///< not owned
    label_cvt* ink_cvt = nullptr;
    EditLabel frame_label;
    int mixed_standards = 0;         ///< set by the first mixed file and never cleared
    ReuseScan* reuse_scan = nullptr; ///< made by the pull list, released when the run ends
};

ReportContext& report_context();

/// The first-page heading of a list; restarts the page count.
void print_list_header(report& out, recdb& table, const char* title);

/// A header parameter, cut to `max_chars` bytes and in upper case; empty when it is missing.
struct UpperParameter {
    char text[64];

    UpperParameter(const recdb& table, const char* name, unsigned max_chars = sizeof text - 1);
};

/// Makes "Edit:  NAME", `list` and "|d  page |p", with `gap` and `heads` behind it, the heading of the report's
/// following pages. The text stands until the next list sets its own. `name_chars` limits the edit's name.
void set_page_heading(report& out, const recdb& table, unsigned name_chars, const char* list, const char* gap,
                      const char* heads);

/// The heads of a list's columns, with a rule and a blank line below.
void print_heads(report& out, const char* heads);

/// Sorts by fields, most significant first, closed by -1.
template <std::size_t N> void sort_by(recdb& table, const int (&fields)[N]) {
    int list[N];
    for (std::size_t place = 0; place < N; ++place)
        list[place] = fields[place];
    table.set_sortfields(list);
    table.sort(1, 0);
}
