#pragma once
// A drawing laid out: shapes and words at places, for any emitter to put down as they stand.
//
// Lengths are in units, of which eight make a pixel of 1/96 inch; a frame is a whole number of them, so that what is
// drawn is as long as its frames, exactly.

#include "documents/drawing.h"
#include "documents/text_width.h"

#include <cstdint>
#include <string>
#include <vector>

namespace documents {

constexpr std::int64_t units_of_pixel = 8;

enum class Pen : unsigned char { none, film, strong, thin, dashed, dotted, fine };
enum class Ink : unsigned char { none, white, black, grey, dots, hatched, crossed };

struct SketchPoint {
    std::int64_t x = 0, y = 0;
};

/// What a shape is of, for those who read a picture back.
struct SketchOf {
    const char* kind = ""; ///< "film", "spacer", "black", "transition", "band"; empty: an aid
    std::string film;
    int lane = 0;
    std::int64_t start = 0, length = 0; ///< frames; of a piece that is cut by the end of a line, those drawn
    std::string told;
};

struct SketchShape {
    std::vector<SketchPoint> points;
    bool closed = true;
    Ink ink = Ink::none;
    Pen pen = Pen::film;
    SketchOf of;
    bool light = false; ///< drawn in white, over black
};

enum class Anchor : unsigned char { start, middle, end };

/// A line of text on a halo; `at` is on its base line.
struct SketchText {
    SketchPoint at;
    Anchor anchor = Anchor::start;
    Letters letters = Letters::sans;
    std::int64_t size = 0;
    bool grey = false;
    bool light = false; ///< white, without a halo
    std::string text;
};

/// What stays together on a page. Shapes lie in their order, all texts above them.
struct SketchPart {
    std::int64_t height = 0;
    std::vector<SketchShape> shapes;
    std::vector<SketchText> texts;
};

struct Sketch {
    std::string title, description;
    std::string foot; ///< the scale, and what the patterns mean
    std::int64_t units_of_frame = 1;
    std::int64_t width = 0;
    std::vector<SketchPart> parts;
};

struct SketchOptions {
    std::int64_t width = 680;  ///< pixels that a line of film should take at most
    std::int64_t height = 760; ///< those of a part where lanes go down
};

/// What stands below a drawing that is put down smaller by that factor: how long a foot is on paper, and what patterns
/// mean.
std::string foot_of(const Drawing& drawing, std::int64_t units_of_frame, double shrunk);

Sketch sketch_of(const Drawing& drawing, const SketchOptions& options = {});

} // namespace documents
