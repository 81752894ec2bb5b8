#include "film/page_text.h"

namespace film {
namespace {

constexpr int last_line = 59, top_line = 1;

/// In UTF-8 all bytes of a letter but its first.
bool goes_on(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

} // namespace

std::string_view first_letters(std::string_view text, std::size_t columns) {
    if (text.size() <= columns) return text;
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (!goes_on(text[at]) && count++ == columns) return text.substr(0, at);
    return text;
}

std::string column_of(std::string_view text, std::size_t columns) {
    std::string shown(first_letters(text, columns));
    for (const char c : shown)
        columns -= goes_on(c) ? 0 : 1;
    return shown.append(columns, ' ');
}

void PageText::put(std::string_view text) {
    bytes_ += first_letters(text, width);
    bytes_ += "\r\n";
}

void PageText::line(std::string_view text) {
    put(text);
    if (++line_ >= last_line) new_page();
}

void PageText::rule() { line(std::string(width, '_')); }

void PageText::close_page() {
    bytes_ += "\f\n";
    line_ = top_line;
}

void PageText::new_page() {
    close_page();
    line(title_ + "  page " + std::to_string(++page_));
    line();
    for (const std::string& head : heads_)
        line(head);
    rule();
}

void PageText::need_lines(int lines) {
    if (line_ + lines >= last_line) new_page();
}

void PageText::end(std::string_view text) {
    put("");
    put(text);
    put(std::string(width, '_'));
    close_page();
}

} // namespace film
