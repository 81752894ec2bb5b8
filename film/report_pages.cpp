#include "film/report_pages.h"

#include "film/doubt_texts.h"
#include "film/plain_number.h"

#include <algorithm>
#include <optional>

namespace film {
namespace {

constexpr std::size_t rule_length = 129;
/// Headings of later pages hold so many bytes of a name at least, where it has so many.
constexpr std::size_t least_name = 18;

/// How the pages of a list are told from others.
struct ListForm {
    PrintedList list;
    const char* name;
    const char* title;     ///< a title begins so
    const char* page_name; ///< in the headings behind the first page; empty where they have none
    const char* end;       ///< the last line; null where there is none
};

constexpr ListForm forms[] = {
    {PrintedList::rolls, "list of rolls", "LIST OF ROLLS USED", "", "End of list of rolls used"},
    {PrintedList::pulls, "pull list", "PULL LIST BY ", "PULL LIST", "End of pull list"},
    {PrintedList::optical_pulls, "opticals pull list", "OPTICALS PULL LIST BY ", "OPTICALS PULL LIST",
     "End of opticals pull list"},
    {PrintedList::reuse, "re-use report", "RE-USE OF MATERIAL", "RE-USE LIST", "End of re-use report"},
    {PrintedList::assembly, "assembly list", "ASSEMBLY LIST", "ASSEMBLY LIST", "End of assembly list"},
    {PrintedList::timecodes, "timecode list", "TIMECODE ASSEMBLY LIST", "ASSEMBLY LIST",
     "End of timecode assembly list"},
    {PrintedList::opticals, "opticals list", "OPTICALS LIST", "OPTICALS LIST", nullptr},
    {PrintedList::doubts, "list of doubts", "MISSING AND DOUBTFUL ELEMENTS", doubt_texts::page_name, doubt_texts::end},
};

const ListForm& form_of(PrintedList list) { return forms[static_cast<std::size_t>(list)]; }

bool begins(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool is_rule(std::string_view text) {
    return text.size() == rule_length && text.find_first_not_of('_') == std::string_view::npos;
}

/// A part by bytes, as fields of a fixed width are filled up by bytes.
std::string_view part_of(std::string_view text, std::size_t from, std::size_t length) {
    return from < text.size() ? text.substr(from, length) : std::string_view();
}

bool takes_column(char c) { return static_cast<signed char>(c) >= 32; }

struct Sheet {
    std::vector<PrintedLine> lines;
};

/// Lines end in CR LF, and each sheet but the first begins with a line feed alone.
class SheetReader {
public:
    SheetReader(std::string_view report, std::vector<ReadFault>& faults) : rest_(report), faults_(faults) {}

    std::vector<Sheet> read() {
        std::vector<Sheet> sheets(1);
        while (!rest_.empty()) {
            const auto end = std::find_if(rest_.begin(), rest_.end(), [](char c) { return c == '\n' || c == '\f'; });
            const auto length = static_cast<std::size_t>(end - rest_.begin());
            const char closing = end == rest_.end() ? '\f' : *end;
            add_line(sheets.back(), rest_.substr(0, length), closing);
            if (end == rest_.end()) break;
            rest_.remove_prefix(length + 1);
            if (closing == '\f')
                sheets.emplace_back();
            else
                ++line_;
        }
        return sheets;
    }

private:
    void add_line(Sheet& sheet, std::string_view text, char closing) {
        const bool top = sheet.lines.empty() && text.empty();
        const bool closed = !text.empty() && text.back() == '\r';
        if (closing == '\n' && !closed && !top) fault("a line without its end");
        if (closed) text.remove_suffix(1);
        if (std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < 32; }))
            fault("a control character");
        if (closing == '\n' || !text.empty()) sheet.lines.push_back({text, {0, line_}});
    }
    void fault(const char* what) { faults_.push_back({"", {0, line_}, what}); }

    std::string_view rest_;
    std::vector<ReadFault>& faults_;
    int line_ = 1;
};

/// The lines of a sheet, one by one.
class Walk {
public:
    explicit Walk(const Sheet& sheet) : lines_(sheet.lines) {}

    bool at_end() const { return at_ >= lines_.size(); }
    const PrintedLine* peek() const { return at_end() ? nullptr : &lines_[at_]; }
    std::string_view next() { return at_end() ? std::string_view() : lines_[at_++].text; }
    Place place() const {
        if (lines_.empty()) return {};
        return lines_[std::min(at_, lines_.size() - 1)].place;
    }
    void skip_blank() {
        while (!at_end() && trimmed(lines_[at_].text).empty())
            ++at_;
    }

private:
    const std::vector<PrintedLine>& lines_;
    std::size_t at_ = 0;
};

bool starts_list(const Sheet& sheet) {
    Walk walk(sheet);
    walk.skip_blank();
    return begins(walk.next(), "Edit:         ") && begins(walk.next(), "Edit dated:   ");
}

/// What pull lists go by.
constexpr std::string_view orders[] = {"CAMERA ROLL", "KEYKODE ROLL", "REEL ID", "INKCODE"};

bool has_title(const ListForm& form, std::string_view title) {
    const std::string_view start = form.title;
    if (!begins(title, start)) return false;
    const std::string_view order = title.substr(start.size());
    return start.back() != ' ' ? order.empty()
                               : std::find(std::begin(orders), std::end(orders), order) != std::end(orders);
}

const ListForm* form_of_title(std::string_view title) {
    const auto found = std::find_if(std::begin(forms), std::end(forms),
                                    [title](const ListForm& form) { return has_title(form, title); });
    return found == std::end(forms) ? nullptr : &*found;
}

class PageReader {
public:
    explicit PageReader(ReportPages& report) : report_(report) {}

    void read(const Sheet& sheet) {
        Walk walk(sheet);
        walk.skip_blank();
        if (walk.at_end()) return;
        if (starts_list(sheet)) return read_first(walk);
        if (report_.lists.empty()) return fault(walk.place(), "no heading of a list");
        read_following(walk);
    }

private:
    void fault(Place place, const std::string& what) {
        place.page = std::max(page_, 1);
        report_.faults.push_back({report_.lists.empty() ? "" : name_of(report_.lists.back().list), place, what});
    }

    void read_first(Walk& walk) {
        const Place place = walk.place();
        ListPages pages;
        pages.end = {1, place.line};
        read_heading(walk, pages.heading);
        walk.skip_blank();
        pages.title = trimmed(walk.next());
        const ListForm* form = form_of_title(pages.title);
        if (!form) return fault(place, "no list has the title \"" + std::string(pages.title) + '"');
        if (!report_.lists.empty() && form->list <= report_.lists.back().list)
            fault(place, std::string("a second ") + form->name + ", or one out of order");
        pages.list = form->list;
        report_.lists.push_back(std::move(pages));
        page_ = 1;
        if (!is_rule(walk.next())) fault(place, "no rule below the title");
        read_body(walk);
    }

    void read_heading(Walk& walk, ListHeading& heading) {
        const std::string_view edit = walk.next(), dated = walk.next(), kind = walk.next();
        heading.edit = trimmed(part_of(edit, 14, 25));
        heading.project = trimmed(part_of(edit, 49, std::string_view::npos));
        heading.dated = trimmed(part_of(dated, 14, 26));
        heading.format = trimmed(part_of(dated, 49, std::string_view::npos));
        const std::string_view form = part_of(kind, 40, std::string_view::npos);
        heading.cutting_copy = begins(form, "CUTTING-COPY ");
        if (!heading.cutting_copy && !begins(form, "NEG-CUT ")) fault(walk.place(), "neither kind of list is named");
        walk.skip_blank();
        const std::string_view track = trimmed(walk.next());
        const bool sound = begins(track, "SOUND TRACK ");
        if (sound) heading.sound_track = plain_number(track.substr(12)).value_or(-2);
        const std::string_view picture = heading.cutting_copy ? "PICTURE TRACK 1" : "PICTURE TRACK";
        if (sound ? heading.sound_track < 0 : track != picture) fault(walk.place(), "no track is named");
    }

    void read_following(Walk& walk) {
        ++page_;
        const ListPages& list = report_.lists.back();
        const ListForm& form = form_of(list.list);
        const Place place = walk.place();
        if (!is_rule(walk.peek()->text) && !is_own_heading(walk.next(), form))
            fault(place, "not the heading of page " + std::to_string(page_) + " of this list");
        while (!walk.at_end() && !is_rule(walk.peek()->text))
            walk.next();
        if (walk.at_end()) fault(place, "no rule below the heading");
        read_body(walk);
    }

    /// "Edit:  NAME                  PULL LIST         DATE  page 2", with as much of the name as there is room for.
    bool is_own_heading(std::string_view text, const ListForm& form) const {
        const std::string_view edit = report_.lists.back().heading.edit;
        const std::size_t name_end = text.rfind(form.page_name), number = text.rfind("  page ");
        if (!begins(text, "Edit:  ") || !*form.page_name || name_end == std::string_view::npos || name_end < 7)
            return false;
        const std::string_view name = trimmed(text.substr(7, name_end - 7));
        return begins(edit, name) && (name == edit || name.size() >= least_name) && number != std::string_view::npos &&
               plain_number(text.substr(number + 7)) == page_;
    }

    void read_body(Walk& walk) {
        ListPages& list = report_.lists.back();
        const char* const end = form_of(list.list).end;
        for (; !walk.at_end(); walk.next()) {
            PrintedLine line = *walk.peek();
            line.place.page = page_;
            if (is_rule(line.text) || trimmed(line.text).empty()) continue;
            if (list.ended) return fault(line.place, "text behind the end of the list");
            list.ended = end && line.text == end;
            list.end = line.place;
            if (!list.ended) list.lines.push_back(line);
        }
    }

    ReportPages& report_;
    int page_ = 0;
};

void check_ends(ReportPages& report) {
    for (const ListPages& pages : report.lists) {
        if (pages.ended || !form_of(pages.list).end) continue;
        report.faults.push_back({name_of(pages.list), pages.end, "the end of the list is missing"});
    }
}

} // namespace

const char* name_of(PrintedList list) { return form_of(list).name; }

ReportPages read_pages(std::string_view bytes) {
    ReportPages report;
    const std::vector<Sheet> sheets = SheetReader(bytes, report.faults).read();
    PageReader reader(report);
    for (const Sheet& sheet : sheets)
        reader.read(sheet);
    check_ends(report);
    if (report.lists.empty()) report.faults.push_back({"", {1, 1}, "no list"});
    return report;
}

std::string_view raw_cell(std::string_view line, int from, int to) {
    std::size_t at = 0;
    int column = 0;
    const auto place_of = [&](int wanted) {
        for (; at < line.size() && column < wanted; ++at)
            column += takes_column(line[at]) ? 1 : 0;
        return at;
    };
    const std::size_t first = place_of(from), last = to < 0 ? line.size() : place_of(to);
    return to >= 0 && to <= from ? std::string_view() : line.substr(first, last - first);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::string_view cell(std::string_view line, int from, int to) { return trimmed(raw_cell(line, from, to)); }

} // namespace film
