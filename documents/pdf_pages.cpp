#include "documents/pdf_pages.h"

namespace documents {
namespace {

class Paginator {
public:
    Paginator(const List& list, const PdfHeads& heads, const PdfPaper& paper, std::vector<PdfPage>& pages)
        : list_(list), heads_(heads), paper_(paper), pages_(pages) {
        begin_page(nullptr);
    }

    void place(const std::vector<PdfBlock>& blocks) {
        for (std::size_t first = 0; first < blocks.size();) {
            std::size_t behind = first + 1;
            while (behind < blocks.size() && blocks[behind - 1].with_next)
                ++behind;
            place(blocks, first, behind);
            first = behind;
        }
    }

private:
    void begin_page(const Part* part) {
        PdfPage page;
        page.list = &list_;
        page.first = begun_ == 0;
        page.part = part;
        y_ = paper_.top() + (page.first ? heads_.first : heads_.other);
        pages_.push_back(page);
        ++begun_;
    }

    bool is_empty() const { return pages_.back().places.empty(); }
    bool has_head() const { return pages_.back().head >= 0.0; }

    double height_of(const PdfBlock& block, bool head_there) const {
        return block.height + (block.row && !head_there ? heads_.columns : 0.0);
    }

    void place(const std::vector<PdfBlock>& blocks, std::size_t first, std::size_t behind) {
        double height = 0.0;
        bool head_there = has_head();
        for (std::size_t i = first; i < behind; ++i) {
            height += height_of(blocks[i], head_there);
            head_there = head_there || blocks[i].row;
        }
        const bool turn = blocks[first].new_page || y_ + height > paper_.bottom();
        if (turn && !is_empty()) begin_page(blocks[first].new_page ? nullptr : going_on(blocks, first));
        for (std::size_t i = first; i < behind; ++i)
            put(blocks, i);
    }

    /// The part that began ahead of a block.
    static const Part* going_on(const std::vector<PdfBlock>& blocks, std::size_t i) {
        return i > 0 && blocks[i - 1].part == blocks[i].part ? blocks[i].part : nullptr;
    }

    void put(const std::vector<PdfBlock>& blocks, std::size_t i) {
        const PdfBlock& block = blocks[i];
        if (y_ + height_of(block, has_head()) > paper_.bottom() && !is_empty()) begin_page(going_on(blocks, i));
        if (block.row && !has_head()) {
            pages_.back().head = y_;
            y_ += heads_.columns;
        }
        pages_.back().places.push_back({&block, y_});
        y_ += block.height;
    }

    const List& list_;
    const PdfHeads& heads_;
    const PdfPaper& paper_;
    std::vector<PdfPage>& pages_;
    int begun_ = 0;
    double y_ = 0.0;
};

} // namespace

PdfPaper paper_of(Paper paper) {
    if (paper == Paper::letter) return {612.0, 792.0, 52.0};
    return {595.28, 841.89, 52.0};
}

void paginate(const List& list, const std::vector<PdfBlock>& blocks, const PdfHeads& heads, const PdfPaper& paper,
              std::vector<PdfPage>& pages) {
    Paginator(list, heads, paper, pages).place(blocks);
}

} // namespace documents
