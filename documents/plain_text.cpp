#include "documents/plain_text.h"

#include "documents/characters.h"

#include <algorithm>
#include <utility>

namespace documents {
namespace {

constexpr std::size_t widest_words = 32; ///< columns of words are wrapped at
constexpr std::size_t widest_note = 96;
constexpr const char* gap = "  ";
constexpr const char *box = "[ ] ", *no_box = "    ";

using Texts = std::vector<std::string>;

std::string fit(const std::string& text) { return closed_directions(clean(text)); }

/// The longest beginning of that width, at least a character.
std::size_t bytes_of_width(std::string_view text, std::size_t width) {
    std::size_t bytes = 0, used = 0;
    while (bytes < text.size()) {
        const CodePoint next = next_code(text.substr(bytes));
        used += static_cast<std::size_t>(display_width(next.code));
        if (used > width && bytes > 0) break;
        bytes += next.bytes;
    }
    return bytes;
}

/// Between words where that is possible, else between characters.
Texts wrapped(std::string text, std::size_t width) {
    Texts lines;
    while (display_width(text) > width) {
        const std::size_t most = bytes_of_width(text, width);
        const std::size_t blank = text.rfind(' ', most);
        const std::size_t end = blank == std::string::npos || blank == 0 ? most : blank;
        lines.push_back(text.substr(0, end));
        text.erase(0, end == blank ? end + 1 : end);
    }
    lines.push_back(std::move(text));
    return lines;
}

std::string padded(const std::string& text, std::size_t width, Align align) {
    const std::size_t own = display_width(text);
    const std::string blanks(own < width ? width - own : 0, ' ');
    return align == Align::right ? blanks + text : text + blanks;
}

void put_line(std::string& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
}

/// The lines of a cell, wrapped as its column has it.
Texts texts_of(const Column& column, const Cell& cell) {
    Texts texts;
    for (const Line& line : cell.lines) {
        if (column.wrap == Wrap::none)
            texts.push_back(fit(text_of(line)));
        else
            for (std::string& one : wrapped(clean(text_of(line)), widest_words))
                texts.push_back(closed_directions(std::move(one)));
    }
    return texts;
}

class ListText {
public:
    explicit ListText(const List& list) : list_(list), shown_(shown_columns(list)) {
        widths_.resize(list.columns.size());
        for (const std::size_t i : shown_)
            widths_[i] = display_width(fit(list.columns[i].title));
        each_row(list, [this](const Row& row) { measure(row); });
    }

    std::string text() {
        const bool any =
            std::any_of(list_.parts.begin(), list_.parts.end(), [](const Part& p) { return !p.rows.empty(); });
        if (!any) {
            put_line(out_, fit(list_.empty));
            return std::move(out_);
        }
        put_heads();
        for (const Part& part : list_.parts)
            put_part(part);
        for (const Row& row : list_.totals)
            put_item(row);
        return std::move(out_);
    }

private:
    void measure(const Row& row) {
        for (const std::size_t i : shown_)
            if (i < row.cells.size())
                for (const std::string& text : texts_of(list_.columns[i], row.cells[i]))
                    widths_[i] = std::max(widths_[i], display_width(text));
    }

    void put_heads() {
        std::string line = no_box, rule = no_box;
        for (const std::size_t i : shown_) {
            line += padded(fit(list_.columns[i].title), widths_[i], list_.columns[i].align) + gap;
            rule += std::string(widths_[i], '-') + gap;
        }
        put_line(out_, line);
        put_line(out_, rule);
    }

    void put_part(const Part& part) {
        if (!part.title.empty()) {
            out_ += '\n';
            put_line(out_, fit(part.title) + (part.about.empty() ? "" : ": " + fit(part.about)));
        }
        for (const Row& row : part.rows)
            row.kind == RowKind::band ? put_band(row) : put_item(row);
        for (const Row& row : part.totals)
            put_item(row);
    }

    void put_band(const Row& row) { put_line(out_, std::string(no_box) + "//// " + fit(text_of(row.band))); }

    void put_item(const Row& row) {
        std::vector<Texts> cells(list_.columns.size());
        std::size_t lines = 1;
        for (const std::size_t i : shown_) {
            if (i < row.cells.size()) cells[i] = texts_of(list_.columns[i], row.cells[i]);
            lines = std::max(lines, cells[i].size());
        }
        for (std::size_t n = 0; n < lines; ++n) {
            std::string line = row.tick && n == 0 ? box : no_box;
            for (const std::size_t i : shown_)
                line += padded(n < cells[i].size() ? cells[i][n] : "", widths_[i], list_.columns[i].align) + gap;
            put_line(out_, line);
        }
        for (const Note& note : row.notes)
            put_note(note);
    }

    void put_note(const Note& note) {
        for (const std::string& line : wrapped(clean(text_of(note)), widest_note))
            put_line(out_, std::string(no_box) + "| " + closed_directions(line));
    }

    const List& list_;
    const std::vector<std::size_t> shown_;
    std::vector<std::size_t> widths_;
    std::string out_;
};

void put_head(std::string& out, const TitleBlock& title, const List& list) {
    put_line(out, joined({fit(list.title), fit(list.aside)}, ", "));
    out += std::string(std::max<std::size_t>(display_width(fit(list.title)), 1), '=') + '\n';
    const std::string reel = title.reel.empty() ? "" : "reel " + title.reel;
    const std::string date = title.cut_date.empty() ? "" : "cut of " + title.cut_date;
    put_line(out, joined({fit(title.edit), fit(reel), fit(title.track), fit(title.gauge), fit(title.rate), fit(date)},
                         ", "));
    Texts facts;
    for (const Fact& fact : list.facts)
        facts.push_back(fit(fact.name) + ": " + fit(text_of(fact.value)));
    put_line(out, joined(facts, "; "));
    out += '\n';
}

} // namespace

std::string plain_text_of(const Document& document) {
    std::string out;
    for (const List& list : document.lists) {
        if (!out.empty()) out += "\n\n";
        put_head(out, document.title, list);
        out += ListText(list).text();
        out += '\n';
        if (!list.counting.empty()) put_line(out, fit(list.counting));
    }
    return out;
}

} // namespace documents
