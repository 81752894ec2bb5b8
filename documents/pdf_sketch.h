#pragma once
// Drawings on the pages of a PDF, as vectors.

#include "documents/pdf_text.h"
#include "documents/sketch.h"

namespace documents {

/// Points of a sketch's unit, at its own size.
constexpr double points_of_unit = 0.75 / static_cast<double>(units_of_pixel);

/// Puts a part down with its upper left corner there, scaled.
void draw_sketch(cairo_t* page, PdfText& text, const SketchPart& part, double x, double y, double scale);

} // namespace documents
