#pragma once
// Text laid out in pages as those of a report's other lists.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace film {

/// Lines of 129 columns at most, 59 of them a page. A letter of UTF-8 takes one column.
class PageText {
public:
    static constexpr std::size_t width = 129;

    /// What stands on each page behind the first: `title` with the page's number, and below it `heads` over a rule.
    PageText(std::string title, std::vector<std::string> heads) : title_(std::move(title)), heads_(std::move(heads)) {}

    /// Cut at the page's width.
    void line(std::string_view text = {});
    void rule();
    /// Starts a new page unless so many lines fit on this one.
    void need_lines(int lines);
    /// The last line of a list, a rule, and the end of the page.
    void end(std::string_view text);

    const std::string& bytes() const { return bytes_; }

private:
    void put(std::string_view text);
    void close_page();
    void new_page();

    const std::string title_;
    const std::vector<std::string> heads_;
    std::string bytes_;
    int page_ = 1, line_ = 1;
};

/// The first `columns` letters of a text.
std::string_view first_letters(std::string_view text, std::size_t columns);
/// A text cut at that many letters, or filled up to them with blanks.
std::string column_of(std::string_view text, std::size_t columns);

} // namespace film
