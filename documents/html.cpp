#include "documents/html.h"

#include "documents/characters.h"
#include "documents/html_assets.h"
#include "documents/html_text.h"
#include "documents/svg.h"

#include <algorithm>
#include <cstdint>

namespace documents {
namespace {

constexpr std::size_t rows_together = 40; ///< that a browser lays out or skips as one
constexpr std::size_t rems_of_row = 4;    ///< about as high as it becomes
constexpr std::size_t widest_words = 26;  ///< characters that a column of words asks for at most
constexpr std::size_t narrow_words = 14;  ///< and that it is not narrower than, where its texts are as long

std::string quoted(std::string_view text) { return '"' + html_text(text) + '"'; }

/// Tells documents apart, so that ticks of one aren't shown in another (FNV-1a).
std::string mark_of(const Document& document) {
    std::uint64_t hash = 14695981039346656037ULL;
    const TitleBlock& title = document.title;
    for (const std::string* text : {&title.edit, &title.project, &title.track, &title.reel, &title.cut_date})
        for (const char c : *text + '\n')
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += digits[hash >> shift & 15U];
    return text;
}

constexpr std::pair<std::string_view, std::string_view> run_tags[][2] = {
    {{"<span class=p>", "</span>"}, {"<span class=m>", "</span>"}},
    {{"<b class=p>", "</b>"}, {"<b class=m>", "</b>"}},
    {{"<span class=\"p l\">", "</span>"}, {"<span class=\"m l\">", "</span>"}},
};

void put_line(std::string& out, const Line& line) {
    for (const Run& run : line) {
        const auto& [open, close] = run_tags[static_cast<std::size_t>(run.weight)][run.mono ? 1 : 0];
        out += open;
        put_html_text(out, run.text);
        out += close;
    }
}

constexpr std::string_view line_tags[] = {"<i>", "<i class=m>", "<i class=l>", "<i class=\"m l\">"};

/// Elements are few where they can be, as long lists have a million.
void put_lines(std::string& out, const std::vector<Line>& lines) {
    const auto is_simple = [](const Line& line) { return line.size() == 1 && line[0].weight != Weight::strong; };
    if (lines.size() == 1) {
        const Line& line = lines.front();
        const bool bare = is_simple(line) && line[0].weight == Weight::plain && !line[0].mono;
        return bare ? put_html_text(out, line[0].text) : put_line(out, line);
    }
    for (const Line& line : lines) {
        const bool simple = is_simple(line);
        const bool light = simple && line[0].weight == Weight::light, mono = simple && line[0].mono;
        out += line_tags[(light ? 2 : 0) + (mono ? 1 : 0)];
        simple ? put_html_text(out, line[0].text) : put_line(out, line);
        out += "</i>";
    }
}

void put_note(std::string& out, const Note& note) {
    out += "<span class=\"note ";
    out += name_of(note.mark);
    out += "\">";
    if (!note.head.empty()) out += "<b>" + html_text(note.head) + ".</b> ";
    put_html_text(out, note.text);
    if (!note.advice.empty()) out += " <span class=l>" + html_text(note.advice) + "</span>";
    out += "</span>";
}

std::size_t width_of(const Line& line) {
    std::size_t width = 0;
    for (const Run& run : line)
        width += display_width(run.text);
    return width;
}

/// "The Lamplighter R2, reel 2, cut of 20 September 2026".
std::string subject_of(const TitleBlock& title) {
    return joined({title.edit, title.reel.empty() ? "" : "reel " + title.reel,
                   title.cut_date.empty() ? "" : "cut of " + title.cut_date},
                  ", ");
}

std::string format_of(const TitleBlock& title) {
    return joined({title.edit, title.track, joined({title.gauge, title.rate}, ", ")}, " \xC2\xB7 ");
}

std::string sheet_name(const List& list, const Part& part) { return html_name(list.id + '-' + part.id); }

class ListPage {
public:
    ListPage(const List& list, const TitleBlock& title, std::string& out)
        : list_(list), title_(title), out_(out), note_column_(column_of_notes(list)), shown_(shown_columns(list)) {
        classes_.resize(list.columns.size());
        for (const std::size_t i : shown_)
            classes_[i] = classes_of(i);
        measure();
    }

    void put() {
        const std::string id = html_name(list_.id);
        out_ += "<section id=\"" + id + "\" aria-labelledby=\"" + id + "-title\">\n";
        put_head(id);
        for (const Note& note : list_.notes) {
            out_ += "<p>";
            put_note(out_, note);
            out_ += "</p>\n";
        }
        put_drawings(list_.drawings);
        put_columns_menu();
        put_tables();
        if (!list_.counting.empty()) out_ += "<p class=counting>" + html_text(list_.counting) + "</p>\n";
        out_ += "</section>\n";
    }

private:
    // Widths of columns, in characters: a column of words may be narrower than its text, the others may not.
    void measure() {
        widths_.assign(list_.columns.size(), 0);
        for (const std::size_t i : shown_)
            widths_[i] = display_width(list_.columns[i].title);
        each_row(list_, [this](const Row& row) { measure(row); });
    }

    void measure(const Row& row) {
        for (const std::size_t i : shown_)
            if (i < row.cells.size())
                for (const Line& line : row.cells[i].lines)
                    widths_[i] = std::max(widths_[i], width_of(line));
    }

    /// Sans letters may be wider than the figure that a "ch" is.
    std::string width_text(std::size_t i) const {
        constexpr std::size_t wider = 2;
        if (static_cast<int>(i) == note_column_) return "minmax(14ch,3fr)";
        if (list_.columns[i].wrap == Wrap::none) return std::to_string(widths_[i]) + "ch";
        return "minmax(" + std::to_string(std::min(widths_[i], narrow_words) + wider) + "ch," +
               std::to_string(std::min(widths_[i], widest_words) + wider) + "ch)";
    }

    std::size_t least_width() const {
        std::size_t width = 4;
        for (const std::size_t i : shown_) {
            const bool words = list_.columns[i].wrap != Wrap::none || static_cast<int>(i) == note_column_;
            width += 2 + (words ? std::clamp<std::size_t>(widths_[i], 6, narrow_words) + 2 : widths_[i]);
        }
        return width;
    }

    void put_head(const std::string& id) {
        out_ += "<div class=head><div><h2 id=\"" + id + "-title\">" + html_text(list_.title) + "</h2><p>" +
                html_text(format_of(title_)) + "</p></div><div class=aside>";
        const std::string aside = joined({title_.reel.empty() ? "" : "Reel " + title_.reel, list_.aside}, ", ");
        if (!aside.empty()) out_ += "<b>" + html_text(aside) + "</b>";
        if (!title_.cut_date.empty()) out_ += "<p>Cut of " + html_text(title_.cut_date) + "</p>";
        out_ += "</div></div>\n";
        if (list_.facts.empty()) return;
        out_ += "<dl class=facts>";
        for (const Fact& fact : list_.facts)
            put_fact(fact);
        out_ += "</dl>\n";
    }

    void put_fact(const Fact& fact) {
        out_ += "<div><dt>" + html_text(fact.name) + "</dt><dd>";
        put_line(out_, fact.value);
        out_ += "</dd></div>";
    }

    void put_drawings(const std::vector<DrawingPtr>& drawings) {
        for (const DrawingPtr& drawing : drawings)
            out_ += "<figure>" + svg_of(*drawing, {{}, true}) + "<figcaption>" + html_text(drawing->title) +
                    "</figcaption></figure>\n";
    }

    void put_columns_menu() {
        out_ += "<details class=columns hidden><summary>Columns</summary>";
        for (const std::size_t i : shown_)
            out_ += "<label><input type=checkbox autocomplete=off checked value=" + std::to_string(place_of(i)) + "> " +
                    html_text(list_.columns[i].title) + "</label>";
        out_ += "</details>\n";
    }

    /// Of a column among those of the grid; the box comes first.
    std::size_t place_of(std::size_t column) const {
        return static_cast<std::size_t>(std::find(shown_.begin(), shown_.end(), column) - shown_.begin()) + 1;
    }

    void put_tables() {
        const bool any =
            std::any_of(list_.parts.begin(), list_.parts.end(), [](const Part& p) { return !p.rows.empty(); });
        if (!any) {
            out_ += "<p class=empty>" + html_text(list_.empty) + "</p>\n";
            return;
        }
        const bool sheets = std::any_of(list_.parts.begin(), list_.parts.end(), [](const Part& p) { return p.sheet; });
        if (sheets) {
            for (const Part& part : list_.parts)
                put_sheet(part);
            return;
        }
        for (const Part& part : list_.parts)
            put_drawings(part.drawings);
        std::size_t rows = 0;
        for (const Part& part : list_.parts)
            rows += part.rows.size();
        begin_table(list_.title, rows);
        for (const Part& part : list_.parts)
            put_part(part);
        end_table(list_.totals);
    }

    void put_sheet(const Part& part) {
        const bool first = &part == &list_.parts.front();
        out_ += std::string("<div class=\"sheet") + (first ? " first" : "") + "\" id=\"" + sheet_name(list_, part) +
                "\"><h3>" + html_text(part.title) + " <span class=about>" + html_text(part.about) + "</span></h3>\n";
        put_drawings(part.drawings);
        begin_table(part.title, part.rows.size());
        put_rows(part.rows);
        end_table(part.totals);
        out_ += "</div>\n";
    }

    // Roles are said as browsers forget them where a table is laid out as a grid.
    void begin_table(const std::string& name, std::size_t rows) {
        std::string widths = "2.2rem";
        for (const std::size_t i : shown_)
            widths += '|' + width_text(i);
        std::string grid = widths;
        std::replace(grid.begin(), grid.end(), '|', ' ');
        out_ += "<div class=scroll style=\"--tall:" + std::to_string((rows + 1) * rems_of_row) +
                "rem\"><table role=table aria-label=" + quoted(name) + " data-widths=\"" + widths +
                "\" style=\"--cols:" + grid + ";--least:" + std::to_string(least_width()) +
                "ch\">\n<thead role=rowgroup><tr role=row><td role=cell class=tick></td>";
        for (const std::size_t i : shown_)
            out_ += "<th scope=col role=columnheader class=\"" + classes_[i] +
                    "\" style=\"--w:" + std::to_string(std::min<std::size_t>(widths_[i], narrow_words)) + "ch\">" +
                    html_text(list_.columns[i].title) + "</th>";
        out_ += "</tr></thead>\n";
    }

    void end_table(const std::vector<Row>& totals) {
        if (!totals.empty()) {
            out_ += "<tfoot role=rowgroup>\n";
            for (const Row& row : totals)
                put_row(row, "total");
            out_ += "</tfoot>";
        }
        out_ += "</table></div>\n";
    }

    void put_part(const Part& part) {
        if (!part.title.empty()) {
            out_ += "<tbody role=rowgroup class=part style=\"--tall:3rem\"><tr role=row class=part>"
                    "<th role=rowheader scope=rowgroup colspan=" +
                    std::to_string(shown_.size() + 1) + "><b>" + html_text(part.title) + "</b> <span class=about>" +
                    html_text(part.about) + "</span></th></tr></tbody>\n";
        }
        put_rows(part.rows);
        if (part.totals.empty()) return;
        out_ += "<tbody role=rowgroup>\n";
        for (const Row& row : part.totals)
            put_row(row, "total");
        out_ += "</tbody>\n";
    }

    void put_rows(const std::vector<Row>& rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i % rows_together == 0) {
                const std::size_t count = std::min(rows_together, rows.size() - i);
                out_ += (i == 0 ? "" : "</tbody>\n") +
                        ("<tbody role=rowgroup style=\"--tall:" + std::to_string(count * rems_of_row) + "rem\">\n");
            }
            rows[i].kind == RowKind::band ? put_band(rows[i]) : put_row(rows[i], "");
        }
        if (!rows.empty()) out_ += "</tbody>\n";
    }

    void put_band(const Row& row) {
        out_ += "<tr role=row class=band><td role=cell colspan=" + std::to_string(shown_.size() + 1) + ">";
        put_line(out_, row.band);
        out_ += "</td></tr>\n";
    }

    std::string classes_of(std::size_t column) const {
        const Column& one = list_.columns[column];
        std::string classes = "c" + std::to_string(place_of(column));
        if (one.align == Align::right) classes += " r";
        if (one.wrap == Wrap::none) classes += " n";
        if (one.wrap == Wrap::anywhere) classes += " a";
        return classes;
    }

    /// What tells the row from others: two of its columns.
    void put_first_words(const Row& row) {
        std::size_t words = 0;
        for (const std::size_t i : shown_) {
            if (words == 2) return;
            if (i >= row.cells.size() || row.cells[i].lines.empty()) continue;
            put_html_text(out_, (words++ == 0 ? "" : ", ") + list_.columns[i].title + ' ');
            for (const Run& run : row.cells[i].lines.front())
                put_html_text(out_, run.text);
        }
    }

    void put_row(const Row& row, const char* kind) {
        out_ += "<tr role=row";
        if (!row.id.empty() && *kind == 0) out_ += " id=\"" + html_name(row.id) + '"';
        if (!row.film.empty()) out_ += " data-film=\"" + html_name(row.film) + '"';
        if (*kind != 0) out_ += std::string(" class=") + kind;
        out_ += "><td role=cell class=tick>";
        if (row.tick) {
            out_ += "<label><input type=checkbox autocomplete=off aria-label=\"Done: ";
            put_first_words(row);
            out_ += "\"></label>";
        }
        out_ += "</td>";
        const std::size_t head = head_of(row);
        for (const std::size_t i : shown_)
            put_cell(row, i, i == head);
        out_ += "</tr>\n";
    }

    /// The row goes by the name of its first cell with words, be they a note's: a sum has no number of its own.
    std::size_t head_of(const Row& row) const {
        const auto full = std::find_if(shown_.begin(), shown_.end(), [&](std::size_t i) {
            return (i < row.cells.size() && !row.cells[i].lines.empty()) ||
                   (static_cast<int>(i) == note_column_ && !row.notes.empty());
        });
        return full == shown_.end() ? shown_.front() : *full;
    }

    void put_cell(const Row& row, std::size_t i, bool head) {
        out_ += head ? "<th scope=row role=rowheader class=\"" : "<td role=cell class=\"";
        out_ += classes_[i];
        out_ += "\">";
        if (i < row.cells.size()) put_lines(out_, row.cells[i].lines);
        if (static_cast<int>(i) == note_column_)
            for (const Note& note : row.notes)
                put_note(out_, note);
        out_ += head ? "</th>" : "</td>";
    }

    const List& list_;
    const TitleBlock& title_;
    std::string& out_;
    const int note_column_;
    const std::vector<std::size_t> shown_;
    std::vector<std::size_t> widths_;
    std::vector<std::string> classes_; ///< of the cells of each column
};

/// What stands below each page of that name: how it counts, and what and where it is.
std::string page_rule(const std::string& name, const TitleBlock& title, const std::string& what,
                      const std::string& counting) {
    const std::string font =
        " font: 8pt \"DejaVu Sans\", sans-serif; color: #444; vertical-align: top; padding-top: 3mm;";
    return "#" + name + " { page: " + name + "; }\n@page " + name +
           " {\n @bottom-left { content: " + css_string(counting) + ";" + font +
           " width: 40%; text-align: left; }\n @bottom-right { content: " +
           css_string(joined({subject_of(title), what, "page\xC2\xA0"}, " \xC2\xB7 ")) +
           " counter(page) \"\xC2\xA0of\xC2\xA0\" counter(pages);" + font + " text-align: right; }\n}\n";
}

std::string page_rules(const Document& document) {
    std::string style = document.paper == Paper::letter ? "@page { size: letter;" : "@page { size: A4;";
    style += " margin: 14mm 12mm 20mm; }\n";
    for (const List& list : document.lists) {
        style += page_rule(html_name(list.id), document.title, list.title, list.counting);
        for (const Part& part : list.parts)
            if (part.sheet)
                style +=
                    page_rule(sheet_name(list, part), document.title, list.title + ": " + part.title, list.counting);
    }
    return style;
}

/// On narrow screens the names of columns stand ahead of their cells.
std::string narrow_rules(const Document& document) {
    std::string style = "@media screen and (max-width: 46rem) {\n";
    for (const List& list : document.lists) {
        std::size_t place = 0;
        for (const Column& column : list.columns)
            if (!column.title.empty())
                style += "#" + html_name(list.id) + " tbody .c" + std::to_string(++place) +
                         "::before { content: " + css_string(column.title + "  ") +
                         "; color: var(--soft); font-size: .8rem; }\n";
    }
    return style + "}\n";
}

void put_top(const Document& document, std::string& out) {
    const TitleBlock& title = document.title;
    out += "<header class=top><h1>" + html_text(title.edit.empty() ? "Lists" : title.edit) + "</h1><p>" +
           html_text(joined({title.project, title.track, title.gauge, title.rate,
                             title.reel.empty() ? "" : "reel " + title.reel,
                             title.cut_date.empty() ? "" : "cut of " + title.cut_date,
                             title.made.empty() ? "" : "listed " + title.made},
                            " \xC2\xB7 ")) +
           "</p>\n<nav aria-label=Lists><ul>";
    for (const List& list : document.lists)
        out += "<li><a href=\"#" + html_name(list.id) + "\">" + html_text(list.title) + " <span class=l>(" +
               std::to_string(count_of_rows(list)) + ")</span></a></li>";
    out += "</ul></nav></header>\n"
           "<div class=tools hidden role=search><label>Filter rows <input type=search autocomplete=off></label>"
           "<output aria-live=polite></output></div>\n";
}

} // namespace

// What isn't needed of the bytes that are asked for at first is never touched.
std::string html_of(const Document& document) {
    constexpr std::size_t bytes_of_row = 1500;
    std::string out;
    for (const List& list : document.lists)
        out.reserve(out.capacity() + count_of_rows(list) * bytes_of_row);
    out += "<!DOCTYPE html>\n<html lang=en data-document=" + mark_of(document) +
           ">\n<head>\n<meta charset=utf-8>\n"
           "<meta name=viewport content=\"width=device-width, initial-scale=1\">\n"
           "<meta http-equiv=Content-Security-Policy content=\"default-src 'none'; style-src 'unsafe-inline'; "
           "script-src 'unsafe-inline'; img-src data:\">\n<title>" +
           html_text(joined({document.title.edit, document.title.track}, ", ")) + "</title>\n<style>" + html_style +
           page_rules(document) + narrow_rules(document) +
           "</style>\n</head>\n<body>\n"
           "<a class=skip href=\"#lists\">To the lists</a>\n";
    put_top(document, out);
    out += "<main id=lists>\n";
    for (const List& list : document.lists)
        ListPage(list, document.title, out).put();
    out += "</main>\n<script>" + std::string(html_script) + "</script>\n</body>\n</html>\n";
    return out;
}

} // namespace documents
