#pragma once
// Text on the pages of a PDF: measured, broken into lines, and put down. Lengths are points.

#include "documents/document.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace documents {

enum class PdfSize : unsigned char { title, body, small };

double points_of(PdfSize size);
double line_height_of(PdfSize size);

struct PdfStyle {
    PdfSize size = PdfSize::body;
    Weight weight = Weight::plain;
    bool mono = false;
};

/// A stretch of one style, at a place of its line.
struct PdfSpan {
    double x = 0.0, width = 0.0;
    std::string text;
    PdfStyle style;
};
struct PdfLine {
    std::vector<PdfSpan> spans;
    double width = 0.0;
};

/// The fonts of one PDF. Plain ASCII goes by tables, all else through Pango, which knows scripts, directions and where
/// to find their letters.
class PdfText {
public:
    explicit PdfText(cairo_t* page);
    ~PdfText();
    PdfText(const PdfText&) = delete;
    PdfText& operator=(const PdfText&) = delete;

    double width_of(const std::string& text, const PdfStyle& style);
    double width_of(const Line& line, PdfSize size);
    /// Of the widest word, which isn't broken where there is room for it.
    double widest_word(const Line& line, PdfSize size);

    /// Lines of at most that width: broken between words, and in words that are wider, between characters. Always one
    /// at least.
    std::vector<PdfLine> broken(const Line& line, PdfSize size, double width, bool anywhere = false);

    /// Puts a text on its base line.
    void show(const std::string& text, const PdfStyle& style, double x, double y);
    void show(const PdfLine& line, double x, double y);
    /// Text of any size, in points: on white, or white itself. `anchor` is the part of its
    /// width that lies ahead of `x`.
    struct Halo {
        bool bold = false, mono = false, light = false, white = false;
        double size = 0.0, anchor = 0.0;
    };
    void show_on_halo(const std::string& text, const Halo& halo, double x, double y);

private:
    static constexpr int first_printed = 0x20, printed = 95;
    /// A font with the glyphs of ASCII.
    struct Face {
        cairo_scaled_font_t* font = nullptr;
        std::array<unsigned long, printed> glyphs{};
        std::array<double, printed> widths{};
    };
    struct Shaped {
        PangoLayout* layout = nullptr;
        double width = 0.0;
    };

    Face& face_of(const PdfStyle& style);
    void load(Face& face, const PdfStyle& style);
    const Shaped& shaped(const std::string& text, const PdfStyle& style);
    PangoLayout* layout_of(const std::string& text, const PdfStyle& style);
    void append(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width);
    void append_parts(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width);

    cairo_t* page_;
    bool white_ = false; ///< what is put down is white
    PangoContext* context_ = nullptr;
    std::array<Face, 16> faces_;
    std::unordered_map<std::string, Shaped> shaped_;
};

} // namespace documents
