#include "documents/pdf_strokes.h"

#include <algorithm>
#include <cmath>

namespace documents {
namespace {

constexpr double dark = 0.07, box_line = 0.8;

void set_grey(cairo_t* page, double grey) { cairo_set_source_rgb(page, grey, grey, grey); }

} // namespace

void PdfStrokes::rule(double left, double right, double y, double width, double grey) {
    auto kind = std::find_if(rules_.begin(), rules_.end(), [width, grey](const Rules& rules) {
        return !(rules.width < width || width < rules.width) && !(rules.grey < grey || grey < rules.grey);
    });
    if (kind == rules_.end()) kind = rules_.insert(kind, Rules{width, grey, {}});
    kind->places.push_back({left, y, right - left, 0.0});
}

void PdfStrokes::box(double x, double y, double size) { boxes_.push_back({x, y, size, size}); }

void PdfStrokes::bar(double x, double y, double width, double height) { bars_.push_back({x, y, width, height}); }

void PdfStrokes::flush() {
    for (Rules& rules : rules_) {
        if (rules.places.empty()) continue;
        set_grey(page_, rules.grey);
        cairo_set_line_width(page_, rules.width);
        for (const Place& place : rules.places) {
            cairo_move_to(page_, place.x, place.y);
            cairo_line_to(page_, place.x + place.width, place.y);
        }
        cairo_stroke(page_);
        rules.places.clear();
    }
    set_grey(page_, dark);
    const auto trace = [this](std::vector<Place>& places) {
        for (const Place& place : places)
            cairo_rectangle(page_, place.x, place.y, place.width, place.height);
        places.clear();
    };
    trace(bars_);
    cairo_fill(page_);
    cairo_set_line_width(page_, box_line);
    trace(boxes_);
    cairo_stroke(page_);
}

// A single line as thick as the area is high, dashed and slanted: the same to see, in a hundredth of the bytes.
//
//       / / / /      dashes that stand upright on a line from left to right,
//      / / / /       each row of the area moved by how far it lies from the middle
void put_hatch(cairo_t* page, const PdfArea& area, double step, double width, double slope) {
    const double height = area.bottom - area.top, middle = (area.top + area.bottom) / 2;
    if (height <= 0.0) return;
    const double across = std::min(width * std::sqrt(2.0), step), ends = slope * height / 2;
    const double first = std::floor((area.left - height) / step) * step + ends - across / 2;
    const cairo_matrix_t slanted{1.0, 0.0, -slope, 1.0, slope * middle, 0.0};
    const double dashes[] = {across, step - across};
    cairo_save(page);
    cairo_transform(page, &slanted);
    cairo_set_line_cap(page, CAIRO_LINE_CAP_BUTT);
    cairo_set_line_width(page, height);
    cairo_set_dash(page, dashes, 2, 0.0);
    cairo_move_to(page, first, middle);
    cairo_line_to(page, area.right + height, middle);
    cairo_stroke(page);
    cairo_restore(page);
}

// A row of dots is a line of dashes without a length, with round ends; rows run the longer way. The last may reach in
// from outside.
void put_dots(cairo_t* page, const PdfArea& area, double step, double width) {
    const double dashes[] = {0.0, step};
    const auto first = [step](double edge) { return std::floor(edge / step) * step + step / 2; };
    cairo_save(page);
    cairo_set_line_cap(page, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_width(page, width);
    cairo_set_dash(page, dashes, 2, 0.0);
    if (area.right - area.left < area.bottom - area.top) {
        for (double x = first(area.left); x < area.right + width / 2; x += step) {
            cairo_move_to(page, x, first(area.top));
            cairo_line_to(page, x, area.bottom + step);
        }
    } else {
        for (double y = first(area.top); y < area.bottom + width / 2; y += step) {
            cairo_move_to(page, first(area.left), y);
            cairo_line_to(page, area.right + step, y);
        }
    }
    cairo_stroke(page);
    cairo_restore(page);
}

} // namespace documents
