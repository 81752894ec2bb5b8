#pragma once
// Text on the pages of a PDF: measured, broken into lines, and put down. Lengths are points.

#include "documents/document.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
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
    double x = 0.0;
    std::string text;
    PdfStyle style;
};
struct PdfLine {
    std::vector<PdfSpan> spans;
    double width = 0.0;
};

/// A text of any size, on white or white itself, with its base line at `y`.
struct PdfLabel {
    std::string text;
    bool bold = false, mono = false, light = false, white = false;
    double size = 0.0;
    double x = 0.0, y = 0.0;
    double anchor = 0.0; ///< the part of its width that lies ahead of `x`
};

/// The fonts of one PDF. Plain Latin letters go by tables, all else through Pango, which knows scripts, directions and
/// where to find their letters.
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

    /// Puts a text on its base line, at the latest when `flush` is called.
    void show(const std::string& text, const PdfStyle& style, double x, double y);
    void show(const PdfLine& line, double x, double y);
    /// Puts down what is held back: letters of one font together cost a fraction of what they cost word by word.
    void flush();
    /// Puts them down at once, all halos below all texts.
    void show(const std::vector<PdfLabel>& labels);

private:
    static constexpr char32_t first_printed = 0x20, behind_printed = 0x180;
    /// A font with the glyphs of Latin.
    struct Face {
        struct Letter {
            unsigned long glyph = 0;
            double width = -1.0; ///< below 0: it goes through Pango
        };
        cairo_scaled_font_t* font = nullptr;
        std::array<Letter, behind_printed - first_printed> letters{};

        const Letter* letter(char32_t code) const;
    };
    using Glyphs = std::vector<cairo_glyph_t>;
    struct Shaped {
        PangoLayout* layout = nullptr;
        double width = 0.0;
    };

    Face& face_of(const PdfStyle& style);
    void load(Face& face, const PdfStyle& style);
    static void load(Face& face, char32_t code);
    /// False, and nothing put, where a letter has to go through Pango.
    static bool put(const Face& face, std::string_view text, double x, double y, Glyphs& glyphs);
    void show(const Face& face, const Glyphs& glyphs, double grey);
    void show_scaled(double scale, const std::function<void()>& show);
    void show_shaped(const std::string& text, const PdfStyle& style, double grey, double x, double y);
    const Shaped& shaped(const std::string& text, const PdfStyle& style);
    PangoLayout* layout_of(const std::string& text, const PdfStyle& style);
    PdfLine whole(const Line& line, PdfSize size);
    void append(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width);
    void append_parts(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width);

    cairo_t* page_;
    PangoContext* context_ = nullptr;
    std::array<Face, 12> faces_;
    std::array<Glyphs, 24> held_; ///< of each face what is dark, then what is light
    std::unordered_map<std::string, Shaped> shaped_;
};

} // namespace documents
