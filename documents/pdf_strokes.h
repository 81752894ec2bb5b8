#pragma once
// Rules and boxes of a page, held back so that those of one kind are put down together.

#include <cairo.h>

#include <vector>

namespace documents {

/// Lengths are points; a grey is from 0, black, to 1.
class PdfStrokes {
public:
    explicit PdfStrokes(cairo_t* page) : page_(page) {}

    /// A line across the page.
    void rule(double left, double right, double y, double width, double grey);
    void box(double x, double y, double size);
    /// A dark area.
    void bar(double x, double y, double width, double height);
    void flush();

private:
    struct Place {
        double x, y, width, height;
    };
    struct Rules {
        double width, grey;
        std::vector<Place> places;
    };

    cairo_t* page_;
    std::vector<Rules> rules_; ///< of each width and grey that a page has
    std::vector<Place> boxes_, bars_;
};

/// Slanted lines over an area: `step` apart, `width` thick; of slope 1 they rise to the right, of -1 to the left. One
/// of them goes through x = 0 at the bottom, so that areas side by side go on in each other. Clipped by whoever calls.
struct PdfArea {
    double left, top, right, bottom;
};
void put_hatch(cairo_t* page, const PdfArea& area, double step, double width, double slope);
/// Dots over an area, in rows `step` apart.
void put_dots(cairo_t* page, const PdfArea& area, double step, double width);

} // namespace documents
