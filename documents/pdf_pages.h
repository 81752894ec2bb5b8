#pragma once
// Lists laid out on pages, before any is drawn: blocks that stay whole, one below the other.

#include "documents/pdf_text.h"
#include "documents/sketch.h"

#include <functional>
#include <string>
#include <vector>

namespace documents {

/// The page, and what of it lists may take. Points.
struct PdfPaper {
    double width = 0.0, height = 0.0;
    double foot = 52.0; ///< what the foot takes, with the edge below it
    double left() const { return 42.0; }
    double right() const { return width - 42.0; }
    double top() const { return 40.0; }
    double bottom() const { return height - foot; }
    double room() const { return right() - left(); }
};
PdfPaper paper_of(Paper paper);

/// Something as wide as the page that isn't parted.
struct PdfBlock {
    double height = 0.0;
    bool with_next = false;     ///< stays on the page of the next block
    bool row = false;           ///< wants the head of the columns above it on its page
    const Part* part = nullptr; ///< that it belongs to
    bool new_page = false;
    std::string bookmark;
    std::function<void(double y)> draw;
};

struct PdfPlace {
    const PdfBlock* block;
    double y;
};

struct PdfPage {
    const List* list = nullptr;
    const Part* part = nullptr; ///< that goes on from the page before
    bool first = false;         ///< of its list
    double head = -1.0;         ///< y of the columns' head; below 0: none
    std::vector<PdfPlace> places;
};

/// Heights of what stands ahead of the blocks.
struct PdfHeads {
    double first = 0.0, other = 0.0; ///< of the first page of a list and of the others
    double columns = 0.0;
};

/// The blocks of a list on as many pages as they need. `blocks` stays where it is.
void paginate(const List& list, const std::vector<PdfBlock>& blocks, const PdfHeads& heads, const PdfPaper& paper,
              std::vector<PdfPage>& pages);

} // namespace documents
