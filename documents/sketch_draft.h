#pragma once
// What both ways of laying a drawing out share.

#include "documents/film_count.h"
#include "documents/sketch.h"

#include <cstdint>
#include <string>
#include <vector>

namespace documents {

constexpr std::int64_t pixels(std::int64_t count) { return count * units_of_pixel; }

constexpr std::int64_t name_size = pixels(12), detail_size = pixels(11), number_size = pixels(11),
                       ruler_size = pixels(10);

/// The frames of one part of a drawing.
struct Stretch {
    std::int64_t begin = 0, end = 0;
    std::int64_t length() const { return end - begin; }
    bool empty() const { return end <= begin; }
};
Stretch shared(const Stretch& a, const Stretch& b);

/// The drawing's frames in stretches of `frames`; always one at least.
std::vector<Stretch> stretches_of(const Drawing& drawing, std::int64_t frames);
/// Of which stretches, by place, something over `over` is drawn: `first` to `last`; what is empty or outside has none.
struct Places {
    std::size_t first = 1, last = 0;
};
Places places_of(const Drawing& drawing, const Stretch& over, std::int64_t frames);

/// Units of a text of that size.
std::int64_t width_of(const std::string& text, Letters letters, std::int64_t size);

/// Text that is wanted at a place of a line, and how much of the line it takes.
struct Wanted {
    std::int64_t centre = 0, height = 0;
};
/// Where the centres come to lie so that none is over another and none above `top`, each as near to where it is wanted
/// as that allows. `wanted` is by centre.
std::vector<std::int64_t> spread(const std::vector<Wanted>& wanted, std::int64_t top);

/// Rows of text below each other, each filled from left to right.
class TextRows {
public:
    explicit TextRows(std::size_t most) : most_(most) {}
    /// The first row in which the units from `left` to `right` are free, now taken; -1 where none is.
    int take(std::int64_t left, std::int64_t right) { return take(left, right, most_); }
    /// The same of the rows that hold something already.
    int take_existing(std::int64_t left, std::int64_t right) { return take(left, right, taken_.size()); }
    std::size_t count() const { return taken_.size(); }

private:
    int take(std::int64_t left, std::int64_t right, std::size_t most);

    std::size_t most_;
    std::vector<std::vector<std::pair<std::int64_t, std::int64_t>>> taken_;
};

/// Marks of a ruler that stand at least `least` units apart.
struct RulerMark {
    std::int64_t frame = 0;
    std::string text;
};
std::vector<RulerMark> ruler_marks(label_t film, const Stretch& over, std::int64_t units_of_frame, std::int64_t least);
const char* ruler_name(label_t film);

SketchShape rectangle(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height, Ink ink, Pen pen);
SketchShape line(const SketchPoint& from, const SketchPoint& to, Pen pen);
/// Colour and outline of a piece, and what it is.
SketchShape piece_shape(SketchShape shape, const DrawnPiece& piece, const Stretch& drawn);

Sketch sketch_along(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options);
Sketch sketch_down(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options);

} // namespace documents
