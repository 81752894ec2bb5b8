#include "documents/pdf_sketch.h"

#include <cmath>

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
        for (const SketchText& text : part.texts)
            draw(text);
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

    // Lines and dots as such, at places of the whole drawing: they stay sharp, and neighbours go on in each other.
    void fill_pattern(const SketchShape& shape) {
        cairo_save(page_);
        trace(shape);
        cairo_clip(page_);
        double left = 0, top = 0, right = 0, bottom = 0;
        cairo_clip_extents(page_, &left, &top, &right, &bottom);
        const double step = 56 * unit_;
        if (shape.ink == Ink::dots) {
            paint(0.33);
            dots(left, top, right, bottom, step);
        } else {
            paint(0.4);
            cairo_set_line_width(page_, (shape.ink == Ink::hatched ? 11 : 8) * unit_);
            hatch(left, top, right, bottom, step, 1.0);
            if (shape.ink == Ink::crossed) hatch(left, top, right, bottom, step, -1.0);
            cairo_stroke(page_);
        }
        cairo_restore(page_);
    }
    void dots(double left, double top, double right, double bottom, double step) {
        for (double y = std::floor(top / step) * step + step / 2; y < bottom; y += step)
            for (double x = std::floor(left / step) * step + step / 2; x < right; x += step) {
                cairo_new_sub_path(page_);
                cairo_arc(page_, x, y, step / 7, 0.0, 6.2832);
            }
        cairo_fill(page_);
    }
    void hatch(double left, double top, double right, double bottom, double step, double slope) {
        const double height = bottom - top;
        for (double x = std::floor((left - height) / step) * step; x < right + height; x += step) {
            cairo_move_to(page_, x, slope > 0 ? bottom : top);
            cairo_line_to(page_, x + height, slope > 0 ? top : bottom);
        }
    }

    void draw(const SketchText& text) {
        PdfText::Halo halo;
        halo.bold = text.letters == Letters::bold;
        halo.mono = text.letters == Letters::mono;
        halo.light = text.grey;
        halo.white = text.light;
        halo.size = static_cast<double>(text.size) * unit_;
        halo.anchor = text.anchor == Anchor::start ? 0.0 : text.anchor == Anchor::middle ? 0.5 : 1.0;
        text_.show_on_halo(text.text, halo, static_cast<double>(text.at.x) * unit_,
                           static_cast<double>(text.at.y) * unit_);
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
