#pragma once
// The heads of lists and of their pages.

#include "host/recdb.h"
#include "reports/report.h"

constexpr int report_version = 9;

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
