#include "reports/report.h"

#include "base/format_text.h"

#include <cstdarg>
#include <utility>

namespace {

constexpr char tab = 9;
constexpr char newline = 10;
constexpr char form_feed = 12;
constexpr char carriage_return = 13;
constexpr char bar = '|';

constexpr int default_spacing = 5;

/// Takes a column; bytes of 128 and above don't.
constexpr bool is_plain(char c) { return static_cast<signed char>(c) >= 32; }

} // namespace

int report::reports_built = 0;
int report::default_stops[20];

report::report(Qb::Ptr<::stream> target) : stream(std::move(target)) {
    if (reports_built++ == 0) {
        int column_number = 0;
        for (int& stop : default_stops)
            stop = column_number += default_spacing;
    }
    date.convert(0);
    date.convert(present_time());
}

report::~report() { stream = nullptr; }

void report::emit(char c) {
    if (stream) stream->write(&c, 1);
}

inline void report::put_plain(char c) {
    if (column < page_width) emit(c);
    ++column;
}

void report::put_char(char c) {
    if (is_plain(c)) return put_plain(c);
    switch (c) {
    case tab:
        passthrough ? emit(c) : next_tab();
        break;
    case newline:
        emit(carriage_return);
        emit(newline);
        column = tab_index = 0;
        ++line;
        if (line >= page_length - bottom_margin) new_page();
        break;
    case form_feed:
        ++page;
        line = top_margin;
        emit(form_feed);
        for (int blank = 0; blank < top_margin; ++blank)
            emit(newline);
        column = tab_index = 0;
        break;
    case carriage_return:
        break;
    default:
        emit(c);
    }
}

void report::next_tab() {
    // The closing 0 is never stepped over, so tabs behind the last stop pad nothing.
    if (!tab_stops || tab_stops[tab_index] == 0) return;
    while (column < tab_stops[tab_index])
        put_plain(' ');
    ++tab_index;
}

void report::print_text(const char* text) {
    if (!text) return;
    for (; *text; ++text) {
        if (*text != bar) {
            is_plain(*text) ? put_plain(*text) : put_char(*text);
        } else if (*++text == '\0') {
            return;
        } else {
            print_word(*text);
        }
    }
}

void report::print_word(char word) {
    if (word == 'd') {
        date.convert(present_time());
        print_text(date.get_named_date());
    } else if (word == 'p') {
        print("%d", page + 1);
    }
}

void report::print(const char* format, ...) {
    if (!format) return;
    char text[1024];
    va_list values;
    va_start(values, format);
    format_text(text, sizeof text, format, values);
    va_end(values);
    print_text(text);
}

void report::new_page() {
    if (passthrough) return;
    put_char(form_feed);
    print_page_header();
}

void report::print_page_header() {
    print_text(page_header);
    rule();
}

void report::rule() {
    put_char(newline);
    if (passthrough) return;
    for (int drawn = 1; drawn < page_width; ++drawn)
        put_plain('_');
    put_char(newline);
}

void report::plain_rule() {
    put_char(newline);
    for (int drawn = 1; drawn < page_width; ++drawn) {
        emit('_');
        ++column;
    }
    put_char(newline);
}

void report::need_lines(int lines) {
    if (page_length - line - bottom_margin - lines < 1) new_page();
}

void report::end_list(const char* text) {
    print_text(text);
    if (line + 1 < page_length - 1) rule();
    put_char(form_feed);
}
