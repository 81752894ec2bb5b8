#include "documents/pdf_table.h"

#include <algorithm>
#include <cmath>

namespace documents {
namespace {

constexpr double column_gap = 9.0, tick_width = 17.0, padding = 4.5, base = 9.6;

double base_of(PdfSize size) { return size == PdfSize::small ? 8.2 : base; }

/// With two places, whatever the locale's point is.
std::string decimal_of(double number) {
    const auto hundredths = static_cast<std::int64_t>(std::abs(number) * 100);
    const std::string rest = std::to_string(100 + hundredths % 100);
    return (number < 0.0 ? "-" : "") + std::to_string(hundredths / 100) + '.' + rest.substr(1);
}

} // namespace

struct PdfTable::LaidRow {
    const Row* row = nullptr;
    std::vector<std::vector<PdfLine>> cells; ///< by column of the page
    std::size_t lines = 1;                   ///< of the highest cell
    struct LaidNote {
        std::vector<PdfLine> lines;
    };
    std::vector<LaidNote> notes;
    double notes_height = 0.0;
    std::string link, place;
};

PdfTable::PdfTable(const PdfInk& ink, const PdfPaper& paper, const List& list)
    : page_(ink.page), text_(ink.text), strokes_(ink.strokes), paper_(paper), list_(list) {
    for (const std::size_t i : shown_columns(list))
        columns_.push_back({i, 0.0, 0.0, 0.0, 0.0});
    measure();
    share_out();
    std::size_t lines = 1;
    for (const PageColumn& column : columns_) {
        heads_.push_back(text_.broken({strong(list_.columns[column.index].title)}, PdfSize::small, column.width));
        lines = std::max(lines, heads_.back().size());
    }
    head_height_ = static_cast<double>(lines) * line_height_of(PdfSize::small) + 8.0;
}

/// How narrow columns may become: as narrow as the page needs, and no narrower.
enum class PdfTable::Least : unsigned char {
    as_declared,
    numbers_parted, ///< at their blanks
    words_parted,   ///< too, between any two letters
};

void PdfTable::measure() {
    for (const Least least : {Least::as_declared, Least::numbers_parted, Least::words_parted}) {
        measure(least);
        double sum = 0.0;
        for (const PageColumn& column : columns_)
            sum += column.least;
        if (sum <= room()) return;
    }
}

double PdfTable::room() const {
    return paper_.room() - (ticks_ ? tick_width : 0.0) -
           column_gap * static_cast<double>(columns_.empty() ? 0 : columns_.size() - 1);
}

void PdfTable::measure(Least least) {
    for (PageColumn& column : columns_) {
        const Line title{strong(list_.columns[column.index].title)};
        column.natural = text_.width_of(title, PdfSize::small);
        column.least = text_.widest_word(title, PdfSize::small);
    }
    each_row(list_, [this, least](const Row& row) { measure(row, least); });
}

void PdfTable::measure(const Row& row, Least least) {
    ticks_ = ticks_ || row.tick;
    for (PageColumn& column : columns_) {
        if (column.index >= row.cells.size()) continue;
        Wrap wrap = list_.columns[column.index].wrap;
        if (wrap == Wrap::words && least == Least::words_parted) wrap = Wrap::anywhere;
        if (wrap == Wrap::none && least != Least::as_declared) wrap = Wrap::words;
        for (const Line& line : row.cells[column.index].lines) {
            const double width = text_.width_of(line, PdfSize::body);
            column.natural = std::max(column.natural, width);
            if (width <= column.least) continue;
            const double needed = wrap == Wrap::none    ? width
                                  : wrap == Wrap::words ? text_.widest_word(line, PdfSize::body)
                                                        : std::min(width, 40.0);
            column.least = std::max(column.least, needed);
        }
    }
}

// Each gets what its longest text takes; where that is too much the widest give way, down to their widest word.
void PdfTable::share_out() {
    double sum = 0.0;
    for (PageColumn& column : columns_) {
        column.width = column.natural;
        sum += column.width;
    }
    if (sum > room()) shrink(room());
    const double rest = std::max(0.0, room() - sum);
    const int of_notes = column_of_notes(list_);
    double x = paper_.left() + (ticks_ ? tick_width : 0.0);
    for (PageColumn& column : columns_) {
        const bool notes = of_notes >= 0 && static_cast<std::size_t>(of_notes) == column.index;
        if (notes) column.width += rest;
        column.x = x;
        if (notes) notes_x_ = x;
        x += column.width + column_gap;
    }
    if (notes_x_ <= 0.0) notes_x_ = paper_.left() + (ticks_ ? tick_width : 0.0);
    notes_x_ = std::min(notes_x_, paper_.right() - std::min(paper_.room(), 220.0));
}

void PdfTable::shrink(double room) {
    const auto width_at = [this](double most) {
        double sum = 0.0;
        for (const PageColumn& column : columns_)
            sum += std::max(std::min(column.natural, most), std::min(column.least, column.natural));
        return sum;
    };
    double low = 0.0, high = room;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (width_at(middle) > room ? high : low) = middle;
    }
    for (PageColumn& column : columns_)
        column.width = std::max(std::min(column.natural, low), std::min(column.least, column.natural));
    const double sum = width_at(low);
    // Even their words are too wide: then these are broken.
    if (sum > room)
        for (PageColumn& column : columns_)
            column.width = std::max(column.width * room / sum, 12.0);
}

void PdfTable::draw_head(double y) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const PageColumn& column = columns_[i];
        double line_y = y + base_of(PdfSize::small);
        for (const PdfLine& line : heads_[i]) {
            const bool right = list_.columns[column.index].align == Align::right;
            text_.show(line, column.x + (right ? column.width - line.width : 0.0), line_y);
            line_y += line_height_of(PdfSize::small);
        }
    }
    strokes_.rule(paper_.left(), paper_.right(), y + head_height_ - 3.0, 0.9, 0.15);
}

std::shared_ptr<PdfTable::LaidRow> PdfTable::lay(const Row& row) {
    auto laid = std::make_shared<LaidRow>();
    laid->row = &row;
    for (const PageColumn& column : columns_) {
        laid->cells.emplace_back();
        if (column.index >= row.cells.size()) continue;
        const bool anywhere = list_.columns[column.index].wrap == Wrap::anywhere;
        for (const Line& line : row.cells[column.index].lines)
            for (PdfLine& broken : text_.broken(line, PdfSize::body, column.width + 0.1, anywhere))
                laid->cells.back().push_back(std::move(broken));
        laid->lines = std::max(laid->lines, laid->cells.back().size());
    }
    lay_notes(row, *laid);
    return laid;
}

void PdfTable::lay_notes(const Row& row, LaidRow& laid) {
    for (const Note& note : row.notes) {
        Line line{strong(note.head + ".")};
        for (const std::string& sentence : {note.text, note.advice})
            if (!sentence.empty()) line.push_back(plain(" " + sentence));
        LaidRow::LaidNote made;
        made.lines = text_.broken(line, PdfSize::small, paper_.right() - notes_x_ - 10.0);
        laid.notes_height += static_cast<double>(made.lines.size()) * line_height_of(PdfSize::small) + 4.0;
        laid.notes.push_back(std::move(made));
    }
}

void PdfTable::add(std::vector<PdfBlock>& blocks, const Row& row, bool total, const std::string& link,
                   const std::string& place) {
    if (row.kind == RowKind::band) return add_band(blocks, row);
    const std::shared_ptr<LaidRow> laid = lay(row);
    laid->link = link;
    laid->place = place;
    constexpr std::size_t most_lines = 40; // of a block; a page has some more
    for (std::size_t from = 0; from < laid->lines; from += most_lines) {
        const std::size_t to = std::min(from + most_lines, laid->lines);
        PdfBlock block;
        block.row = true;
        block.height = 2 * padding + static_cast<double>(to - from) * line_height_of(PdfSize::body);
        const double height = block.height;
        block.draw = [this, laid, from, to, height, total](double y) { draw(*laid, from, to, y, height, total); };
        blocks.push_back(std::move(block));
    }
    if (laid->notes.empty()) return;
    blocks.back().with_next = true;
    PdfBlock notes;
    notes.row = true;
    notes.height = laid->notes_height;
    notes.draw = [this, laid](double y) { draw_notes(*laid, y); };
    blocks.push_back(std::move(notes));
}

// Stays with the row above it.
void PdfTable::add_band(std::vector<PdfBlock>& blocks, const Row& row) {
    const auto lines =
        std::make_shared<std::vector<PdfLine>>(text_.broken(row.band, PdfSize::body, paper_.room() - 2 * tick_width));
    PdfBlock block;
    block.row = true;
    block.height = static_cast<double>(lines->size()) * line_height_of(PdfSize::body) + 7.0;
    const double height = block.height;
    block.draw = [this, lines, height](double y) {
        cairo_save(page_);
        cairo_rectangle(page_, paper_.left(), y, paper_.room(), height);
        cairo_clip(page_);
        cairo_set_source_rgb(page_, 0.86, 0.86, 0.86);
        put_hatch(page_, {paper_.left(), y, paper_.right(), y + height}, 9.0, 2.4, 1.0);
        cairo_restore(page_);
        double line_y = y + base + 3.0;
        for (const PdfLine& line : *lines) {
            const double x = paper_.left() + 2 * tick_width;
            cairo_set_source_rgb(page_, 1.0, 1.0, 1.0);
            cairo_rectangle(page_, x - 4.0, line_y - base + 0.5, line.width + 8.0, line_height_of(PdfSize::body) - 0.5);
            cairo_fill(page_);
            text_.show(line, x, line_y);
            line_y += line_height_of(PdfSize::body);
        }
        strokes_.rule(paper_.left(), paper_.right(), y + height, 0.4, 0.75);
    };
    if (!blocks.empty() && blocks.back().row) blocks.back().with_next = true;
    blocks.push_back(std::move(block));
}

void PdfTable::draw(const LaidRow& row, std::size_t from, std::size_t to, double y, double height, bool total) {
    if (from == 0 && !row.place.empty()) {
        const std::string attributes =
            "name='" + row.place + "' x=" + decimal_of(paper_.left()) + " y=" + decimal_of(y);
        cairo_tag_begin(page_, CAIRO_TAG_DEST, attributes.c_str());
        cairo_tag_end(page_, CAIRO_TAG_DEST);
    }
    if (row.row->tick && from == 0) {
        strokes_.box(paper_.left() + 0.5, y + padding + 1.2, 8.6);
    }
    // Line by line, as letters on one base line cost less.
    for (std::size_t k = from; k < to; ++k)
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (row.cells[i].size() <= k) continue;
            const PageColumn& column = columns_[i];
            const PdfLine& line = row.cells[i][k];
            const bool right = list_.columns[column.index].align == Align::right;
            text_.show(line, column.x + (right ? column.width - line.width : 0.0),
                       y + padding + base + static_cast<double>(k - from) * line_height_of(PdfSize::body));
        }
    if (from == 0 && !row.link.empty() && !columns_.empty())
        put_link(page_, row.link, columns_[0].x, y + padding, columns_[0].width, line_height_of(PdfSize::body));
    if (total && from == 0) strokes_.rule(paper_.left(), paper_.right(), y, 0.9, 0.15);
    if (row.notes.empty() && to == row.lines && !total)
        strokes_.rule(paper_.left(), paper_.right(), y + height, 0.4, 0.75);
}

void PdfTable::draw_notes(const LaidRow& row, double y) {
    double at = y - 2.0;
    for (const LaidRow::LaidNote& note : row.notes) {
        const double height = static_cast<double>(note.lines.size()) * line_height_of(PdfSize::small);
        strokes_.bar(notes_x_, at, 2.6, height);
        double line_y = at + base_of(PdfSize::small);
        for (const PdfLine& line : note.lines) {
            text_.show(line, notes_x_ + 8.0, line_y);
            line_y += line_height_of(PdfSize::small);
        }
        at += height + 4.0;
    }
    strokes_.rule(paper_.left(), paper_.right(), y + row.notes_height, 0.4, 0.75);
}

void put_link(cairo_t* page, const std::string& place, double x, double y, double width, double height) {
    std::string rect;
    for (const double number : {x, y, width, height})
        rect += (rect.empty() ? "" : " ") + decimal_of(number);
    const std::string attributes = "dest='" + place + "' rect=[" + rect + ']';
    cairo_tag_begin(page, CAIRO_TAG_LINK, attributes.c_str());
    cairo_tag_end(page, CAIRO_TAG_LINK);
}

} // namespace documents
