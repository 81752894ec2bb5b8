#include "film/doubt_list.h"

#include "film/doubt_texts.h"
#include "film/list_arithmetic.h"
#include "film/page_text.h"
#include "film/report_pages.h"
#include "host/settings.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <vector>

namespace film {
namespace {

using namespace doubt_texts;

constexpr std::size_t what_width = PageText::width - what_column;
constexpr int longest_block = 20; ///< lines that are kept on one page

DoubtSection section_of(const Finding& finding) {
    if (finding.place.frame < 0) return DoubtSection::whole;
    return finding.code == Code::not_listed ? DoubtSection::no_list : DoubtSection::lists;
}

std::string_view word_of(const Finding& finding) {
    switch (finding.code) {
    case Code::no_key:
    case Code::no_roll:
    case Code::no_log_row:
    case Code::no_ink:
    case Code::no_film:
        return missing;
    default:
        return finding.severity == Severity::wrong ? wrong : doubt;
    }
}

using PlaceInList = std::tuple<DoubtSection, std::int64_t, const std::string&, int, const std::string&>;

PlaceInList place_in_list(const Finding& finding) {
    const FoundAt& place = finding.place;
    return {section_of(finding), place.frame, place.channel, place.event, place.name};
}

/// What is listed, in its order.
std::vector<const Finding*> listed(const Findings& findings) {
    std::vector<const Finding*> list;
    for (const Finding& finding : findings)
        if (finding.severity != Severity::note) list.push_back(&finding);
    std::stable_sort(list.begin(), list.end(),
                     [](const Finding* a, const Finding* b) { return place_in_list(*a) < place_in_list(*b); });
    return list;
}

/// A text in lines of so many letters, broken at blanks where it has any.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        std::string_view line = first_letters(text, columns);
        if (line.size() < text.size() && text[line.size()] != ' ') {
            const std::size_t blank = line.rfind(' ');
            if (blank != std::string_view::npos && blank > 0) line = line.substr(0, blank);
        }
        lines.emplace_back(line);
        text.remove_prefix(line.size());
        if (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    }
    return lines;
}

/// "EDIT NAME" of "Edit:         EDIT NAME                 Project: ...".
std::string_view edit_of_head(std::string_view head) {
    constexpr std::size_t first = 14, bytes = 25;
    return head.size() < first ? std::string_view() : trimmed(head.substr(first, bytes));
}

std::string title_of_pages(std::string_view head) {
    constexpr std::size_t name_width = 21;
    date_def date;
    date.convert(present_time());
    return "Edit:  " + column_of(edit_of_head(head), name_width) + "   " + page_name + "    " + date.get_named_date();
}

/// At least a blank parts it from the next one.
std::string cell_of(std::string_view text, std::size_t columns) {
    return column_of(first_letters(text, columns - 1), columns);
}

class DoubtList {
public:
    explicit DoubtList(const DoubtStyle& style)
        : style_(style), units_(style.film), pages_(title_of_pages(style.head), {std::begin(heads), std::end(heads)}) {}

    std::string print(const std::vector<const Finding*>& list) {
        print_head();
        if (list.empty()) pages_.line(none);
        for (auto at = list.begin(); at != list.end();) {
            const auto behind = std::find_if(
                at, list.end(), [at](const Finding* other) { return place_in_list(**at) != place_in_list(*other); });
            print_section(section_of(**at));
            print_entry({at, behind});
            at = behind;
        }
        pages_.end(doubt_texts::end);
        return pages_.bytes();
    }

private:
    void print_head() {
        for (std::string_view rest = style_.head; !rest.empty();) {
            const std::size_t line_end = rest.find("\r\n");
            pages_.line(rest.substr(0, line_end));
            rest.remove_prefix(line_end == std::string_view::npos ? rest.size() : line_end + 2);
        }
        pages_.line(doubt_texts::title);
        pages_.rule();
        if (style_.by_table) pages_.line(by_table);
        for (const char* head : heads)
            pages_.line(head);
        pages_.rule();
        pages_.line();
    }

    void print_section(DoubtSection section) {
        if (section == section_) return;
        section_ = section;
        pages_.need_lines(6);
        pages_.line(sections[static_cast<int>(section)]);
        pages_.line();
    }

    void print_entry(const std::vector<const Finding*>& findings) {
        std::vector<std::string> lines;
        if (section_ != DoubtSection::whole) lines.push_back(place_line(findings.front()->place));
        for (const Finding* finding : findings)
            add_what(*finding, lines);
        pages_.need_lines(std::min(static_cast<int>(lines.size()), longest_block));
        for (const std::string& line : lines)
            pages_.line(line);
        pages_.line();
    }

    std::string place_line(const FoundAt& place) const {
        return cell_of(place.event > 0 ? std::to_string(place.event) : place.channel, position_column) +
               cell_of(units_.text_of(place.frame, style_.in_frames ? "" : "+"), roll_column - position_column) +
               cell_of(place.roll, tape_column - roll_column) + cell_of(place.tape, timecode_column - tape_column) +
               cell_of(place.source_timecode, name_column - timecode_column) +
               (place.name.empty() ? place.where : place.name);
    }

    static void add_what(const Finding& finding, std::vector<std::string>& lines) {
        std::string lead(indent);
        lead += word_of(finding);
        const std::string where =
            finding.place.frame < 0 && !finding.place.where.empty() ? finding.place.where + ": " : "";
        for (const std::string& line : wrapped(where + finding.what, what_width)) {
            lines.push_back(column_of(lead, what_column) + line);
            lead.clear();
        }
    }

    const DoubtStyle& style_;
    const ReelUnits units_;
    PageText pages_;
    DoubtSection section_ = DoubtSection::lists;
};

} // namespace

std::string doubt_pages(const Findings& findings, const DoubtStyle& style) {
    return DoubtList(style).print(listed(findings));
}

std::string_view head_of_report(std::string_view report) {
    ReportPages pages = read_pages(report.substr(0, report.find('\f')));
    if (pages.lists.empty()) pages = read_pages(report); // its first sheet has none
    if (pages.lists.empty()) return {};
    const auto title_at = static_cast<std::size_t>(pages.lists.front().title.data() - report.data());
    const std::size_t line = report.rfind('\n', title_at);
    return line == std::string_view::npos ? std::string_view() : report.substr(0, line + 1);
}

} // namespace film
