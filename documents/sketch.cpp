#include "documents/sketch.h"

#include "documents/sketch_draft.h"

#include <algorithm>
#include <cmath>

namespace documents {
namespace {

/// Lines and pages beyond which nobody looks at a drawing.
constexpr std::int64_t most_parts = 2000;

/// Units of a frame at which half of the names fit on their film.
std::int64_t scale_of_names(const Drawing& drawing, std::int64_t most) {
    std::vector<std::int64_t> scales;
    for (const DrawnPiece& piece : drawing.pieces) {
        if (piece.length <= 0 || piece.name.empty()) continue;
        const std::int64_t needed =
            drawing.way == Way::along ? std::min(width_of(piece.name, Letters::bold, name_size), pixels(90)) + pixels(8)
                                      : pixels(34);
        scales.push_back((needed + piece.length - 1) / piece.length);
    }
    if (scales.empty()) return 1;
    const auto middle = scales.begin() + static_cast<std::ptrdiff_t>(scales.size() / 2);
    std::nth_element(scales.begin(), middle, scales.end());
    return std::min(*middle, most);
}

/// A scale a little smaller, where that spares a last line of a few frames.
std::int64_t without_short_rest(std::int64_t scale, std::int64_t length, std::int64_t room) {
    const std::int64_t in_line = std::max<std::int64_t>(room / scale, 1);
    if (length <= in_line || length % in_line == 0) return scale;
    const std::int64_t in_longer_line = (length + length / in_line - 1) / (length / in_line);
    const std::int64_t smaller = room / in_longer_line;
    return smaller * 20 >= scale * 17 ? smaller : scale;
}

std::int64_t scale_of(const Drawing& drawing, const SketchOptions& options) {
    const bool along = drawing.way == Way::along;
    const std::int64_t room = pixels(along ? options.width : options.height);
    const std::int64_t length = std::max<std::int64_t>(drawing.length(), 1);
    const std::int64_t named = scale_of_names(drawing, along ? 16 : 24);
    const std::int64_t scale = std::clamp<std::int64_t>(std::max(room / length, named), 1, along ? 64 : 32);
    return std::max<std::int64_t>(without_short_rest(scale, length, room), 1);
}

/// Of so many units, a length in print with one digit behind the point.
std::string millimetres(std::int64_t units) {
    const std::int64_t tenths = (units * 254 / 96 + units_of_pixel / 2) / units_of_pixel;
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " mm";
}

Sketch too_long(const Drawing& drawing) {
    Sketch sketch;
    sketch.width = pixels(320);
    SketchText text;
    text.at = {0, pixels(16)};
    text.size = detail_size;
    text.text = "Too long to be drawn: " + std::to_string(drawing.length()) + " frames";
    SketchPart part;
    part.height = pixels(24);
    part.texts.push_back(text);
    sketch.parts.push_back(part);
    return sketch;
}

} // namespace

std::string foot_of(const Drawing& drawing, std::int64_t units_of_frame, double shrunk) {
    const FeetOfFilm feet = feet_of(drawing.film);
    const auto printed = [shrunk](std::int64_t units) { return std::llround(static_cast<double>(units) * shrunk); };
    std::string text = "To scale: ";
    if (feet)
        text += "one foot is " + millimetres(printed(units_of_frame * feet.perforations / feet.in_frame));
    else
        text += "100 frames are " + millimetres(printed(units_of_frame * 100));
    text += '.';
    if (!drawing.patterns.empty()) text += ' ' + drawing.patterns + '.';
    return text;
}

Sketch sketch_of(const Drawing& drawing, const SketchOptions& options) {
    const std::int64_t scale = scale_of(drawing, options);
    const std::int64_t room = pixels(drawing.way == Way::along ? options.width : options.height);
    Sketch sketch;
    if (drawing.length() / std::max<std::int64_t>(room / scale, 1) > most_parts)
        sketch = too_long(drawing);
    else
        sketch =
            drawing.way == Way::along ? sketch_along(drawing, scale, options) : sketch_down(drawing, scale, options);
    sketch.title = drawing.title;
    sketch.description = drawing.description;
    sketch.foot = foot_of(drawing, scale, 1.0);
    sketch.units_of_frame = scale;
    return sketch;
}

} // namespace documents
