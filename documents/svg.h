#pragma once
// Drawings as SVG: self-contained, without script or style sheet, good as a file and inside a page.

#include "documents/drawing.h"
#include "documents/sketch.h"

#include <string>

namespace documents {

struct SvgOptions {
    SketchOptions sketch;
    /// For pages: no XML declaration, names that no other drawing of the page has, and a picture for each part, so that
    /// paper can be turned between them.
    bool inside_page = false;
};

/// The same drawing gives the same bytes. Shapes tell what they are of:
///
///     data-kind    film, spacer, black, transition, band, optical
///     data-film    the row's `film`; lacks where there is none
///     data-lane    from 0
///     data-start, data-frames    whole frames; a shape is as long as its frames times the root's `data-units`
std::string svg_of(const Drawing& drawing, const SvgOptions& options = {});

} // namespace documents
