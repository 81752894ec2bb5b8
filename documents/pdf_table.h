#pragma once
// The columns of a list on a page, and its rows as blocks.

#include "documents/pdf_pages.h"

#include <memory>
#include <string>
#include <vector>

namespace documents {

class PdfTable {
public:
    PdfTable(cairo_t* page, PdfText& text, const PdfPaper& paper, const List& list);

    double head_height() const { return head_height_; }
    void draw_head(double y);
    /// A row, in several blocks where it is higher than a page. `link` is where its first cell leads, `place` the name
    /// that others lead to; both may be empty.
    void add(std::vector<PdfBlock>& blocks, const Row& row, bool total, const std::string& link,
             const std::string& place);

private:
    struct PageColumn {
        std::size_t index = 0; ///< among those of the list
        double natural = 0.0, least = 0.0;
        double x = 0.0, width = 0.0;
    };
    struct LaidRow;

    void measure();
    void measure(const Row& row);
    void share_out();
    void shrink(double room);
    void add_band(std::vector<PdfBlock>& blocks, const Row& row);
    std::shared_ptr<LaidRow> lay(const Row& row);
    void lay_notes(const Row& row, LaidRow& laid);
    void draw(const LaidRow& row, std::size_t from, std::size_t to, double y, double height, bool total);
    void draw_notes(const LaidRow& row, double y);

    cairo_t* page_;
    PdfText& text_;
    const PdfPaper& paper_;
    const List& list_;
    bool ticks_ = false;
    double head_height_ = 0.0;
    std::vector<PageColumn> columns_;
    std::vector<std::vector<PdfLine>> heads_;
    double notes_x_ = 0.0;
};

/// A thin line across the page.
void draw_rule(cairo_t* page, double left, double right, double y, double width, double grey);
/// Something as a link to a place; nothing around it where that is empty.
void begin_link(cairo_t* page, const std::string& place);
void end_link(cairo_t* page, const std::string& place);

} // namespace documents
