#pragma once
// The page writer behind every list: text to a paged file of fixed width.

#include "host/counted.h"
#include "host/os.h"
#include "host/settings.h"

/// Counts columns and lines, pads to tab stops, cuts lines at the page width and starts new pages, each with
/// its heading. Lines end in CR LF. In all text "|d" stands for the present date and "|p" for the page
/// number; a bar before anything else vanishes with what follows it.
class report {
public:
    explicit report(Qb::Ptr<::stream> target);
    virtual ~report();
    report(const report&) = delete;
    report& operator=(const report&) = delete;

    /// Writes one byte as it is.
    virtual void emit(char c);

    /// The one place of layout. Bytes of 128 and above pass without taking a column.
    void put_char(char c);
    void next_tab();
    void print_text(const char* text);
    /// At most 1023 bytes; a longer text is cut.
    void print(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void new_page();
    void print_page_header();
    /// A line of underscores, on a line of its own.
    void rule();
    /// The same without regard to the page width's cut and to `passthrough`.
    void plain_rule();
    /// Starts a new page unless a block of that many lines fits on this one.
    void need_lines(int lines);
    /// The "End of" line of a list, a rule where it fits, and the form feed.
    void end_list(const char* text);

    Qb::Ptr<::stream> stream;
    int passthrough = 0;    ///< not 0: the file's reader does the layout
    int page_length = 2000; ///< lines
    int page_width = 130;   ///< columns; what lies beyond is dropped
    int left_margin = 0;    ///< kept, and applied by nothing
    int right_margin = 0;
    int top_margin = 4; ///< blank lines behind a form feed
    int bottom_margin = 4;
    int page = 0; ///< pages finished
    int column = 0;
    int line = 4;
    const int* tab_stops = nullptr; ///< columns, closed by 0; not owned
    int tab_index = 0;
    const char* page_header = nullptr; ///< of the following pages; not owned
    date_def date;

    /// Writers made in this process.
    static int reports_built;
    /// Every fifth column up to 100, filled when the first writer is made. Not closed by 0, and no writer
    /// starts with it: a list brings its own stops.
    static int default_stops[20];

private:
    void put_plain(char c);
    /// What stands for a bar and this byte.
    void print_word(char word);
};
