#include "documents/svg.h"

#include "documents/html_text.h"
#include "documents/text_width.h"

#include <algorithm>
#include <string_view>

namespace documents {
namespace {

struct PenStyle {
    const char* colour;
    int width; ///< units
    const char* dashes;
};
constexpr PenStyle pens[] = {{"none", 0, ""},      {"#111", 12, ""},     {"#111", 28, ""}, {"#111", 9, ""},
                             {"#777", 8, "32 24"}, {"#111", 9, "10 24"}, {"#777", 6, ""}};

/// A pattern of 7 pixels: what it is called, and what is drawn in it.
struct Pattern {
    Ink ink;
    const char* name;
    int size; ///< units
    const char* marks;
};
constexpr Pattern patterns[] = {
    {Ink::dots, "dots", 56, R"(<circle cx="28" cy="28" r="8" fill="#555"/>)"},
    {Ink::hatched, "hatched", 56, R"(<path d="M-8 64 64-8M-8 8 8-8M48 64 64 48" stroke="#666" stroke-width="11"/>)"},
    {Ink::crossed, "crossed", 56, R"(<path d="M-8 64 64-8M-8-8 64 64" stroke="#666" stroke-width="8"/>)"},
};

class SvgWriter {
public:
    SvgWriter(const Drawing& drawing, const SvgOptions& options)
        : drawing_(drawing), options_(options), sketch_(sketch_of(drawing, options.sketch)) {}

    std::string run() {
        if (options_.inside_page)
            put_by_parts();
        else
            put_whole();
        return std::move(out_);
    }

private:
    static constexpr std::int64_t foot_size = 10 * units_of_pixel, foot_height = 22 * units_of_pixel;

    std::int64_t width() const {
        const std::int64_t foot = (text_width(sketch_.foot, Letters::sans) * foot_size + 999) / 1000;
        const std::int64_t widest = std::max(sketch_.width, foot) + 2 * units_of_pixel;
        return (widest + units_of_pixel - 1) / units_of_pixel * units_of_pixel;
    }
    std::int64_t height() const {
        std::int64_t sum = foot_height;
        for (const SketchPart& part : sketch_.parts)
            sum += part.height;
        return sum;
    }

    void put_whole() {
        out_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        begin(R"(role="img" xmlns="http://www.w3.org/2000/svg")", height());
        put_words();
        out_ += R"(<rect width="100%" height="100%" fill="#fff"/>)"
                "\n";
        put_patterns();
        std::int64_t y = 0;
        for (const SketchPart& part : sketch_.parts) {
            out_ += "<g transform=\"translate(0 " + std::to_string(y) + ")\">\n";
            put(part);
            out_ += "</g>\n";
            y += part.height;
        }
        put_foot(y);
        out_ += "</svg>\n";
    }

    /// A picture for each, so that paper is turned between them. The first one says what there is to say of all.
    void put_by_parts() {
        for (const SketchPart& part : sketch_.parts) {
            const bool first = &part == &sketch_.parts.front(), last = &part == &sketch_.parts.back();
            const std::string label = "role=\"img\" aria-label=\"" + html_text(sketch_.title) + '"';
            const std::int64_t high = part.height + (last ? foot_height : 0);
            out_ += "<div class=strip style=\"--wide:" + std::to_string(width() / units_of_pixel) +
                    "px;--tall:" + std::to_string(in_pixels(high)) + "px\">";
            begin(first ? label : R"(aria-hidden="true")", high);
            if (first) put_words();
            if (first) put_patterns();
            put(part);
            if (last) put_foot(part.height);
            out_ += "</svg></div>\n";
        }
    }

    static std::int64_t in_pixels(std::int64_t units) { return (units + units_of_pixel - 1) / units_of_pixel; }

    void begin(const std::string& role, std::int64_t high) {
        out_ += "<svg " + role;
        attribute("width", width() / units_of_pixel);
        attribute("height", in_pixels(high));
        out_ +=
            " viewBox=\"0 0 " + std::to_string(width()) + ' ' + std::to_string(in_pixels(high) * units_of_pixel) + '"';
        attribute("data-units", sketch_.units_of_frame);
        attribute("data-begin", drawing_.begin);
        attribute("data-frames", drawing_.length());
        out_ += R"( font-family="'DejaVu Sans',Inter,'Noto Sans',sans-serif" fill="none">)"
                "\n";
    }
    void put_words() {
        out_ +=
            "<title>" + html_text(sketch_.title) + "</title>\n<desc>" + html_text(sketch_.description) + "</desc>\n";
    }

    void attribute(const char* name, std::int64_t value) {
        out_ += std::string(" ") + name + "=\"" + std::to_string(value) + '"';
    }
    void attribute(const char* name, std::string_view value) {
        out_ += std::string(" ") + name + "=\"" + html_text(value) + '"';
    }

    std::string name_of(const Pattern& pattern) const {
        return options_.inside_page ? drawing_.id + '-' + pattern.name : pattern.name;
    }

    void put_patterns() {
        std::string defs;
        for (const Pattern& pattern : patterns) {
            if (!is_used(pattern.ink)) continue;
            const std::string size = std::to_string(pattern.size);
            defs += "<pattern id=\"" + html_text(name_of(pattern)) + R"(" patternUnits="userSpaceOnUse" width=")" +
                    size + "\" height=\"" + size + "\"><rect width=\"" + size + "\" height=\"" + size +
                    "\" fill=\"#fff\"/>" + pattern.marks + "</pattern>\n";
        }
        if (!defs.empty()) out_ += "<defs>\n" + defs + "</defs>\n";
    }
    bool is_used(Ink ink) const {
        return std::any_of(sketch_.parts.begin(), sketch_.parts.end(), [ink](const SketchPart& part) {
            return std::any_of(part.shapes.begin(), part.shapes.end(),
                               [ink](const SketchShape& shape) { return shape.ink == ink; });
        });
    }

    void put(const SketchPart& part) {
        for (const SketchShape& shape : part.shapes)
            put(shape);
        for (const SketchText& text : part.texts)
            put(text);
    }

    void put(const SketchShape& shape) {
        const bool box = is_box(shape);
        out_ += box ? "<rect" : shape.closed ? "<polygon" : "<line";
        put_place(shape, box);
        put_ink(shape.ink);
        put_pen(shape);
        put_meaning(shape.of);
        if (shape.of.told.empty()) {
            out_ += "/>\n";
            return;
        }
        out_ += "><title>" + html_text(shape.of.told) + "</title></" +
                (box            ? "rect"
                 : shape.closed ? "polygon"
                                : "line") +
                ">\n";
    }

    static bool is_box(const SketchShape& shape) {
        const std::vector<SketchPoint>& at = shape.points;
        return shape.closed && at.size() == 4 && at[0].x == at[3].x && at[1].x == at[2].x && at[0].y == at[1].y &&
               at[2].y == at[3].y && at[0].x <= at[1].x && at[0].y <= at[2].y;
    }

    void put_place(const SketchShape& shape, bool box) {
        const std::vector<SketchPoint>& at = shape.points;
        if (box) {
            attribute("x", at[0].x);
            attribute("y", at[0].y);
            attribute("width", at[1].x - at[0].x);
            attribute("height", at[2].y - at[0].y);
        } else if (shape.closed) {
            std::string points;
            for (const SketchPoint& point : at)
                points += (points.empty() ? "" : " ") + std::to_string(point.x) + ',' + std::to_string(point.y);
            attribute("points", points);
        } else {
            attribute("x1", at[0].x);
            attribute("y1", at[0].y);
            attribute("x2", at[1].x);
            attribute("y2", at[1].y);
        }
    }

    void put_ink(Ink ink) {
        if (ink == Ink::white) attribute("fill", "#fff");
        if (ink == Ink::black) attribute("fill", "#111");
        if (ink == Ink::grey) out_ += R"( fill="#bbb" fill-opacity=".4")";
        for (const Pattern& pattern : patterns)
            if (pattern.ink == ink) attribute("fill", "url(#" + name_of(pattern) + ')');
    }
    void put_pen(const SketchShape& shape) {
        const PenStyle& pen = pens[static_cast<std::size_t>(shape.pen)];
        if (pen.width == 0) return;
        attribute("stroke", shape.light ? "#fff" : pen.colour);
        attribute("stroke-width", pen.width);
        if (*pen.dashes != '\0') attribute("stroke-dasharray", std::string_view(pen.dashes));
    }
    void put_meaning(const SketchOf& of) {
        if (*of.kind == '\0') return;
        attribute("data-kind", std::string_view(of.kind));
        if (!of.film.empty()) attribute("data-film", of.film);
        attribute("data-lane", of.lane);
        attribute("data-start", of.start);
        attribute("data-frames", of.length);
    }

    void put(const SketchText& text) {
        static constexpr const char* anchors[] = {"", "middle", "end"};
        out_ += "<text";
        attribute("x", text.at.x);
        attribute("y", text.at.y);
        attribute("font-size", text.size);
        if (text.letters == Letters::bold) attribute("font-weight", "bold");
        if (text.letters == Letters::mono) attribute("font-family", "'DejaVu Sans Mono',monospace");
        if (text.anchor != Anchor::start) attribute("text-anchor", anchors[static_cast<std::size_t>(text.anchor)]);
        attribute("fill", text.light ? "#fff" : text.grey ? "#555" : "#111");
        if (!text.light) out_ += R"( stroke="#fff" stroke-width="32" stroke-linejoin="round" paint-order="stroke")";
        out_ += '>' + html_text(text.text) + "</text>\n";
    }

    void put_foot(std::int64_t y) {
        SketchText foot;
        foot.at = {0, y + 16 * units_of_pixel};
        foot.size = foot_size;
        foot.grey = true;
        foot.text = sketch_.foot;
        put(foot);
    }

    const Drawing& drawing_;
    const SvgOptions& options_;
    const Sketch sketch_;
    std::string out_;
};

} // namespace

std::string svg_of(const Drawing& drawing, const SvgOptions& options) { return SvgWriter(drawing, options).run(); }

} // namespace documents
