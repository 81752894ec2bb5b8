#include "documents/pdf.h"

#include "documents/characters.h"
#include "documents/pdf_sketch.h"
#include "documents/pdf_table.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cctype>
#include <ctime>
#include <iterator>
#include <map>
#include <stdexcept>

namespace documents {
namespace {

cairo_status_t append_bytes(void* bytes, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

/// A surface and what draws on it, gone together.
class Surface {
public:
    Surface(const PdfPaper& paper, std::string& bytes)
        : surface_(cairo_pdf_surface_create_for_stream(append_bytes, &bytes, paper.width, paper.height)),
          page_(cairo_create(surface_)) {}
    ~Surface() {
        cairo_destroy(page_);
        cairo_surface_destroy(surface_);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    cairo_surface_t* surface() const { return surface_; }
    cairo_t* page() const { return page_; }
    void finish() {
        cairo_surface_finish(surface_);
        for (const cairo_status_t status : {cairo_status(page_), cairo_surface_status(surface_)})
            if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
    }

private:
    cairo_surface_t* surface_;
    cairo_t* page_;
};

std::string iso_time(std::int64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    gmtime_r(&time, &parts);
    char text[40];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

/// The name of a place in the document that film has.
std::string place_name(const std::string& film) {
    std::string name;
    for (const char c : film)
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-') name += c;
    return name.empty() ? "" : "film-" + name;
}

/// A list with all that is laid out of it.
struct LaidList {
    const List* list = nullptr;
    std::unique_ptr<PdfTable> table;
    PdfHeads heads;
    std::vector<PdfBlock> blocks;
};

class Book {
public:
    Book(const Document& document, Surface& surface)
        : document_(document), surface_(surface), page_(surface.page()), paper_(paper_of(document.paper)),
          text_(surface.page()), strokes_(surface.page()) {}

    void run() {
        for (const List& list : document_.lists)
            paper_.foot = std::max(paper_.foot, height_of_foot(running_foot(list, "page 9999 of 9999")));
        for (const List& list : document_.lists)
            lay(list);
        for (LaidList& laid : lists_)
            paginate(*laid.list, laid.blocks, laid.heads, paper_, pages_);
        // Links belong to a tree of tags, which is whole only where it has a root.
        cairo_tag_begin(page_, "Document", nullptr);
        for (std::size_t i = 0; i < pages_.size(); ++i)
            draw(i);
        if (pages_.empty()) cairo_show_page(page_);
        cairo_tag_end(page_, "Document");
    }

private:
    // What stands on the pages.

    void lay(const List& list) {
        LaidList laid;
        laid.list = &list;
        laid.table = std::make_unique<PdfTable>(PdfInk{page_, text_, strokes_}, paper_, list);
        laid.heads.columns = laid.table->head_height();
        laid.heads.first = first_head_height(list);
        laid.heads.other = height_of_head(running_head(list, nullptr));
        for (const Part& part : list.parts)
            laid.heads.other = std::max(laid.heads.other, height_of_head(running_head(list, &part)));
        const bool ahead = list.picture_first || drawings_height(list.drawings) < 300.0;
        if (ahead) add_drawings(laid.blocks, list.drawings, nullptr);
        for (const Note& note : list.notes)
            add_text(laid.blocks, {strong(note.head + ". "), plain(note.text + " " + note.advice)}, PdfSize::small);
        if (count_of_rows(list) == 0 && !list.empty.empty()) add_text(laid.blocks, {plain(list.empty)}, PdfSize::body);
        for (const Part& part : list.parts)
            lay(part, laid);
        for (const Row& row : list.totals)
            add(row, true, laid, laid.blocks);
        // What takes pages stands behind the rows.
        if (!ahead) add_drawings(laid.blocks, list.drawings, nullptr);
        lists_.push_back(std::move(laid));
    }

    void lay(const Part& part, LaidList& laid) {
        std::vector<PdfBlock> rows;
        for (const Row& row : part.rows)
            add(row, false, laid, rows);
        // Sums don't stand alone on a page.
        if (!part.totals.empty() && !rows.empty()) rows.back().with_next = true;
        for (const Row& row : part.totals)
            add(row, true, laid, rows);

        const std::size_t first = laid.blocks.size();
        if (!part.title.empty()) add_heading(laid.blocks, part);
        add_drawings(laid.blocks, part.drawings, &part, {680, drawing_height(part, laid, rows)});
        laid.blocks.insert(laid.blocks.end(), std::make_move_iterator(rows.begin()),
                           std::make_move_iterator(rows.end()));
        for (std::size_t i = first; i < laid.blocks.size(); ++i)
            laid.blocks[i].part = &part;
        if (first < laid.blocks.size() && part.sheet && first > 0) laid.blocks[first].new_page = true;
    }

    /// Pixels for the film of a sheet's drawing that leave room for its rows on the same page, where that can be.
    std::int64_t drawing_height(const Part& part, const LaidList& laid, const std::vector<PdfBlock>& rows) const {
        constexpr std::int64_t least = 320, most = 760, beside_film = 56;
        constexpr double heading_and_foot = 66.0, points_of_pixel = 0.75;
        double taken = laid.heads.first + laid.heads.columns + heading_and_foot;
        for (const PdfBlock& row : rows)
            taken += row.height;
        const double room = (paper_.bottom() - paper_.top() - taken) / points_of_pixel;
        const auto height = static_cast<std::int64_t>(room) - beside_film;
        return part.drawings.size() == 1 && height >= least ? std::min(height, most) : most - 2 * beside_film;
    }

    // The first row of a film is its place; those of later lists lead there.
    void add(const Row& row, bool total, LaidList& laid, std::vector<PdfBlock>& blocks) {
        const std::string film = total ? "" : place_name(row.film);
        const auto [known, fresh] = film_places_.emplace(film, laid.list);
        const bool leads = !film.empty() && !fresh && known->second != laid.list;
        laid.table->add(blocks, row, total, leads ? film : "", fresh && !film.empty() ? film : "");
    }

    void add_text(std::vector<PdfBlock>& blocks, const Line& line, PdfSize size) {
        for (const PdfLine& broken : text_.broken(line, size, paper_.room())) {
            PdfBlock block;
            block.height = line_height_of(size);
            block.draw = [this, broken](double y) { text_.show(broken, paper_.left(), y + 10.0); };
            blocks.push_back(std::move(block));
        }
        blocks.back().height += 6.0;
    }

    void add_heading(std::vector<PdfBlock>& blocks, const Part& part) {
        Line line{strong(part.title)};
        if (!part.about.empty()) line.push_back(light("   " + part.about));
        PdfBlock space;
        space.height = blocks.empty() ? 4.0 : 14.0;
        space.with_next = true;
        space.bookmark = part.title;
        space.draw = [](double) {};
        blocks.push_back(std::move(space));
        add_text(blocks, line, PdfSize::body);
        blocks.back().with_next = true;
    }

    static double drawings_height(const std::vector<DrawingPtr>& drawings) {
        std::int64_t height = 0;
        for (const DrawingPtr& drawing : drawings)
            for (const SketchPart& part : sketch_of(*drawing).parts)
                height += part.height;
        return static_cast<double>(height) * points_of_unit;
    }

    void add_drawings(std::vector<PdfBlock>& blocks, const std::vector<DrawingPtr>& drawings, const Part* part,
                      const SketchOptions& options = {}) {
        for (const DrawingPtr& drawing : drawings) {
            const auto sketch = std::make_shared<Sketch>(sketch_of(*drawing, options));
            const double width = static_cast<double>(sketch->width) * points_of_unit;
            const double wide = std::min(1.0, paper_.room() / std::max(width, 1.0));
            const bool named = drawings.size() > 1 || part == nullptr;
            if (named && !drawing->title.empty()) {
                add_text(blocks, {strong(drawing->title)}, PdfSize::small);
                blocks.back().with_next = true;
            }
            for (std::size_t i = 0; i < sketch->parts.size(); ++i)
                blocks.push_back(sketch_block(sketch, i, wide));
            blocks.back().with_next = true;
            add_text(blocks, {light(foot_of(*drawing, sketch->units_of_frame, wide))}, PdfSize::small);
            blocks.back().height += 8.0;
        }
    }

    PdfBlock sketch_block(const std::shared_ptr<Sketch>& sketch, std::size_t i, double wide) {
        const double high = static_cast<double>(sketch->parts[i].height) * points_of_unit;
        const double room = paper_.bottom() - paper_.top() - 150.0;
        const double scale = std::min(wide, room / std::max(high, 1.0));
        PdfBlock block;
        block.height = high * scale + 2.0;
        block.draw = [this, sketch, i, scale](double y) {
            draw_sketch(page_, text_, sketch->parts[i], paper_.left(), y, scale);
            link_pieces(sketch->parts[i], y, scale);
        };
        return block;
    }

    void link_pieces(const SketchPart& part, double y, double scale) {
        for (const SketchShape& shape : part.shapes) {
            const std::string place = place_name(shape.of.film);
            if (place.empty() || !shape.closed || film_places_.count(place) == 0) continue;
            const double unit = points_of_unit * scale;
            const SketchPoint &from = shape.points.front(), &to = shape.points[2];
            put_link(page_, place, paper_.left() + static_cast<double>(from.x) * unit,
                     y + static_cast<double>(from.y) * unit, static_cast<double>(to.x - from.x) * unit,
                     static_cast<double>(to.y - from.y) * unit);
        }
    }

    // Heads and feet.

    std::string about_edit() const {
        const TitleBlock& title = document_.title;
        return joined({title.edit, title.project == title.edit ? "" : title.project, title.track,
                       joined({title.gauge, title.rate}, ", ")},
                      " · ");
    }
    std::string about_cut() const {
        const TitleBlock& title = document_.title;
        return joined(
            {title.reel.empty() ? "" : "Reel " + title.reel, title.cut_date.empty() ? "" : "cut of " + title.cut_date},
            ", ");
    }
    double title_width() const { return paper_.room() * 0.66; }

    double first_head_height(const List& list) {
        const double titles =
            static_cast<double>(text_.broken({strong(list.title)}, PdfSize::title, title_width()).size()) *
                line_height_of(PdfSize::title) +
            static_cast<double>(about_lines().size()) * line_height_of(PdfSize::small);
        return std::max(titles, right_height(list)) + 14.0 + facts_height(list);
    }
    struct LaidFact {
        std::vector<PdfLine> name, value;
        double height() const {
            return static_cast<double>(name.size()) * line_height_of(PdfSize::small) +
                   static_cast<double>(value.size()) * line_height_of(PdfSize::body) + 6.0;
        }
    };
    double fact_width() const { return paper_.room() / facts_in_row; }
    LaidFact laid(const Fact& fact) {
        const double width = fact_width() - 6.0;
        return {text_.broken({light(fact.name)}, PdfSize::small, width),
                text_.broken(fact.value, PdfSize::body, width)};
    }
    /// Of the facts that stand side by side with this one.
    double height_beside(const List& list, std::size_t i) {
        double height = 0.0;
        const std::size_t first = i / facts_in_row * facts_in_row;
        for (std::size_t k = first; k < std::min(first + facts_in_row, list.facts.size()); ++k)
            height = std::max(height, laid(list.facts[k]).height());
        return height;
    }
    double facts_height(const List& list) {
        double height = list.facts.empty() ? 0.0 : 6.0;
        for (std::size_t i = 0; i < list.facts.size(); i += facts_in_row)
            height += height_beside(list, i);
        return height;
    }
    std::vector<PdfLine> about_lines() { return text_.broken({light(about_edit())}, PdfSize::small, title_width()); }

    std::vector<PdfLine> right_lines(const List& list) {
        std::vector<PdfLine> lines;
        const std::string made = document_.title.made.empty() ? "" : "made " + document_.title.made;
        for (const Line& line : {Line{strong(list.aside)}, Line{light(about_cut())}, Line{light(made)}})
            for (PdfLine& broken : text_.broken(line, PdfSize::small, paper_.room() - title_width()))
                lines.push_back(std::move(broken));
        return lines;
    }
    double right_height(const List& list) {
        return static_cast<double>(right_lines(list).size()) * line_height_of(PdfSize::small);
    }

    void draw_first_head(const List& list) {
        double y = paper_.top();
        const std::vector<PdfLine> title = text_.broken({strong(list.title)}, PdfSize::title, title_width());
        y = draw_lines(title, PdfSize::title, paper_.left(), y + 14.0) - 14.0;
        y = draw_lines(about_lines(), PdfSize::small, paper_.left(), y + 8.0) - 8.0;
        draw_lines(right_lines(list), PdfSize::small, paper_.right(), paper_.top() + 8.0, true);
        y = std::max(y, paper_.top() + right_height(list)) + 5.0;
        strokes_.rule(paper_.left(), paper_.right(), y, 1.2, 0.07);
        draw_facts(list, y + 6.0);
    }

    void draw_facts(const List& list, double y) {
        double top = y;
        for (std::size_t i = 0; i < list.facts.size(); ++i) {
            const double x = paper_.left() + static_cast<double>(i % facts_in_row) * fact_width();
            const LaidFact fact = laid(list.facts[i]);
            const double below = draw_lines(fact.name, PdfSize::small, x, top + 9.0);
            draw_lines(fact.value, PdfSize::body, x, below + 1.0);
            if (i % facts_in_row + 1 == facts_in_row) top += height_beside(list, i);
        }
    }

    /// The base line of what stands below them.
    double draw_lines(const std::vector<PdfLine>& lines, PdfSize size, double x, double y, bool to_the_left = false) {
        for (const PdfLine& line : lines) {
            text_.show(line, to_the_left ? x - line.width : x, y);
            y += line_height_of(size);
        }
        return y;
    }

    /// What stands at the left of the page and at its right, and again on each page: names that take more lines than
    /// there should be end in "…", as they stand whole where they first are.
    struct Sides {
        std::vector<PdfLine> left, right;
    };
    static double height_of(const Sides& sides, double around) {
        return around +
               static_cast<double>(std::max(sides.left.size(), sides.right.size())) * line_height_of(PdfSize::small);
    }
    std::vector<PdfLine> at_most(std::vector<PdfLine> lines, std::size_t most) {
        if (lines.size() <= most) return lines;
        lines.resize(most);
        PdfLine& last = lines.back();
        const PdfStyle style = last.spans.back().style;
        last.spans.push_back({last.width, "…", style});
        last.width += text_.width_of("…", style);
        return lines;
    }

    Sides running_head(const List& list, const Part* part) {
        constexpr std::size_t most = 4;
        Line line{strong(list.title)};
        if (part != nullptr && !part->title.empty()) line.push_back(strong(" · " + part->title + ", continued"));
        Sides head;
        head.right = at_most(text_.broken({light(about_cut())}, PdfSize::small, paper_.room() * 0.55), most);
        double widest = 0.0;
        for (const PdfLine& right : head.right)
            widest = std::max(widest, right.width);
        head.left = at_most(text_.broken(line, PdfSize::small, paper_.room() - widest - 12.0), most);
        return head;
    }
    static double height_of_head(const Sides& head) { return height_of(head, 19.0); }
    void draw_other_head(const PdfPage& page, double height) {
        const Sides head = running_head(*page.list, page.part);
        draw_lines(head.left, PdfSize::small, paper_.left(), paper_.top() + 8.0);
        draw_lines(head.right, PdfSize::small, paper_.right(), paper_.top() + 8.0, true);
        strokes_.rule(paper_.left(), paper_.right(), paper_.top() + height - 15.0, 0.9, 0.07);
    }

    Sides running_foot(const List& list, const std::string& number) {
        constexpr std::size_t most = 3;
        const double room = paper_.room() * 0.6;
        const std::string name = joined({document_.title.edit, list.title}, ", ");
        Sides foot;
        foot.right = text_.broken({light(name + " · " + number)}, PdfSize::small, room);
        if (foot.right.size() > most) {
            foot.right = at_most(text_.broken({light(name)}, PdfSize::small, room - 12.0), most - 1);
            foot.right.push_back(text_.broken({light(number)}, PdfSize::small, room).front());
        }
        double widest = 0.0;
        for (const PdfLine& line : foot.right)
            widest = std::max(widest, line.width);
        foot.left = text_.broken({light(list.counting)}, PdfSize::small, paper_.room() - widest - 24.0);
        return foot;
    }
    static double height_of_foot(const Sides& foot) { return height_of(foot, 30.0); }
    void draw_foot(const List& list, std::size_t i) {
        const double y = paper_.bottom() + 10.0;
        strokes_.rule(paper_.left(), paper_.right(), y, 0.4, 0.6);
        const Sides foot = running_foot(list, "page " + std::to_string(i + 1) + " of " + std::to_string(pages_.size()));
        draw_lines(foot.right, PdfSize::small, paper_.right(), y + 12.0, true);
        draw_lines(foot.left, PdfSize::small, paper_.left(), y + 12.0);
    }

    void draw(std::size_t i) {
        const PdfPage& page = pages_[i];
        if (page.first)
            draw_first_head(*page.list);
        else
            draw_other_head(page, laid_of(*page.list).heads.other);
        if (page.first) list_bookmark_ = bookmark(CAIRO_PDF_OUTLINE_ROOT, page.list->title, i, paper_.top());
        if (page.head >= 0.0) laid_of(*page.list).table->draw_head(page.head);
        for (const PdfPlace& place : page.places) {
            if (!place.block->bookmark.empty()) bookmark(list_bookmark_, place.block->bookmark, i, place.y);
            place.block->draw(place.y);
        }
        draw_foot(*page.list, i);
        text_.flush();
        strokes_.flush();
        cairo_show_page(page_);
    }

    const LaidList& laid_of(const List& list) const {
        return *std::find_if(lists_.begin(), lists_.end(), [&list](const LaidList& one) { return one.list == &list; });
    }

    int bookmark(int parent, const std::string& text, std::size_t page, double y) {
        const std::string where =
            "page=" + std::to_string(page + 1) + " pos=[0 " + std::to_string(static_cast<int>(y)) + "]";
        return cairo_pdf_surface_add_outline(surface_.surface(), parent, clean(text).c_str(), where.c_str(),
                                             static_cast<cairo_pdf_outline_flags_t>(0));
    }

    static constexpr std::size_t facts_in_row = 4;

    const Document& document_;
    Surface& surface_;
    cairo_t* page_;
    PdfPaper paper_;
    PdfText text_;
    PdfStrokes strokes_;
    std::vector<LaidList> lists_;
    std::vector<PdfPage> pages_;
    std::map<std::string, const List*> film_places_; ///< the list that has the film's place
    int list_bookmark_ = 0;
};

void set_metadata(cairo_surface_t* surface, const Document& document, const PdfOptions& options) {
    const std::string title = clean(document.title.edit);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE, title.c_str());
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATOR, "Quillbrook");
    if (!options.made) return;
    const std::string time = iso_time(*options.made);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATE_DATE, time.c_str());
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_MOD_DATE, time.c_str());
}

} // namespace

std::string pdf_of(const Document& document, const PdfOptions& options) {
    std::string bytes;
    Surface surface(paper_of(document.paper), bytes);
    set_metadata(surface.surface(), document, options);
    Book(document, surface).run();
    surface.finish();
    return bytes;
}

} // namespace documents
