#include "documents/pdf_sketch.h"

#include "documents/pdf_strokes.h"

namespace documents {
namespace {

struct PenStyle {
    double grey, width; ///< units
    double dash, hole;
};
constexpr PenStyle pens[] = {{0, 0, 0, 0},      {0.07, 12, 0, 0},  {0.07, 28, 0, 0}, {0.07, 9, 0, 0},
                             {0.47, 8, 32, 24}, {0.07, 9, 10, 24}, {0.47, 6, 0, 0}};

class SketchPage {
public:
    SketchPage(cairo_t* page, PdfText& text, double scale) : page_(page), text_(text), unit_(points_of_unit * scale) {}

    void draw(const SketchPart& part) {
        for (const SketchShape& shape : part.shapes)
            draw(shape);
        std::vector<PdfLabel> labels;
        for (const SketchText& text : part.texts)
            labels.push_back(label_of(text));
        text_.show(labels);
    }

private:
    void trace(const SketchShape& shape) {
        cairo_new_path(page_);
        for (const SketchPoint& point : shape.points)
            cairo_line_to(page_, static_cast<double>(point.x) * unit_, static_cast<double>(point.y) * unit_);
        if (shape.closed) cairo_close_path(page_);
    }

    void draw(const SketchShape& shape) {
        if (shape.points.empty()) return;
        if (shape.ink != Ink::none) fill(shape);
        const PenStyle& pen = pens[static_cast<std::size_t>(shape.pen)];
        if (pen.width <= 0.0) return;
        trace(shape);
        const double dashes[] = {pen.dash * unit_, pen.hole * unit_};
        cairo_set_dash(page_, dashes, pen.dash > 0.0 ? 2 : 0, 0.0);
        cairo_set_line_width(page_, pen.width * unit_);
        cairo_set_line_join(page_, CAIRO_LINE_JOIN_MITER);
        paint(shape.light ? 1.0 : pen.grey);
        cairo_stroke(page_);
        cairo_set_dash(page_, nullptr, 0, 0.0);
    }

    void paint(double grey) { cairo_set_source_rgb(page_, grey, grey, grey); }

    void fill(const SketchShape& shape) {
        trace(shape);
        paint(shape.ink == Ink::black ? 0.07 : shape.ink == Ink::grey ? 0.88 : 1.0);
        cairo_fill(page_);
        if (shape.ink == Ink::dots || shape.ink == Ink::hatched || shape.ink == Ink::crossed) fill_pattern(shape);
    }

    // At places of the whole drawing, and neighbours go on in each other.
    void fill_pattern(const SketchShape& shape) {
        cairo_save(page_);
        trace(shape);
        cairo_clip(page_);
        PdfArea area{};
        cairo_clip_extents(page_, &area.left, &area.top, &area.right, &area.bottom);
        const double step = 56 * unit_;
        if (shape.ink == Ink::dots) {
            paint(0.33);
            put_dots(page_, area, step, step * 2 / 7);
        } else {
            paint(0.4);
            const double width = (shape.ink == Ink::hatched ? 11 : 8) * unit_;
            put_hatch(page_, area, step, width, 1.0);
            if (shape.ink == Ink::crossed) put_hatch(page_, area, step, width, -1.0);
        }
        cairo_restore(page_);
    }

    PdfLabel label_of(const SketchText& text) const {
        PdfLabel label;
        label.text = text.text;
        label.bold = text.letters == Letters::bold;
        label.mono = text.letters == Letters::mono;
        label.light = text.grey;
        label.white = text.light;
        label.size = static_cast<double>(text.size) * unit_;
        label.x = static_cast<double>(text.at.x) * unit_;
        label.y = static_cast<double>(text.at.y) * unit_;
        label.anchor = text.anchor == Anchor::start ? 0.0 : text.anchor == Anchor::middle ? 0.5 : 1.0;
        return label;
    }

    cairo_t* page_;
    PdfText& text_;
    const double unit_;
};

} // namespace

void draw_sketch(cairo_t* page, PdfText& text, const SketchPart& part, double x, double y, double scale) {
    cairo_save(page);
    cairo_translate(page, x, y);
    SketchPage(page, text, scale).draw(part);
    cairo_restore(page);
}

} // namespace documents
