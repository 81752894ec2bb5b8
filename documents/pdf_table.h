#pragma once
// The columns of a list on a page, and its rows as blocks.

#include "documents/pdf_pages.h"
#include "documents/pdf_strokes.h"

#include <memory>
#include <string>
#include <vector>

namespace documents {

/// What puts something on the pages; outlives all that uses it.
struct PdfInk {
    cairo_t* page;
    PdfText& text;
    PdfStrokes& strokes;
};

class PdfTable {
public:
    PdfTable(const PdfInk& ink, const PdfPaper& paper, const List& list);

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
    enum class Least : unsigned char;
    void measure(Least least);
    void measure(const Row& row, Least least);
    double room() const; ///< of the columns together
    void share_out();
    void shrink(double room);
    void add_band(std::vector<PdfBlock>& blocks, const Row& row);
    std::shared_ptr<LaidRow> lay(const Row& row);
    void lay_notes(const Row& row, LaidRow& laid);
    void draw(const LaidRow& row, std::size_t from, std::size_t to, double y, double height, bool total);
    void draw_notes(const LaidRow& row, double y);

    cairo_t* page_;
    PdfText& text_;
    PdfStrokes& strokes_;
    const PdfPaper& paper_;
    const List& list_;
    bool ticks_ = false;
    double head_height_ = 0.0;
    std::vector<PageColumn> columns_;
    std::vector<std::vector<PdfLine>> heads_;
    double notes_x_ = 0.0;
};

/// Leads from an area of the page to a place.
void put_link(cairo_t* page, const std::string& place, double x, double y, double width, double height);

} // namespace documents
